// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdimoduMain.h"
#include "app/settingsStore.h"
#include "channels/modModel.h"
#include "desktop/Desktop.h"
#include "desktop/link/frmCommun.h"
#include "desktop/link/frmCommunLight.h"
#include "desktop/link/frmCommunList.h"
#include "desktop/link/frmRadioInfo.h"
#include "desktop/link/frmToolCom.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/session/radioInfo.h"
#include "link/simulator/virtualPort.h"

namespace k520 {
namespace {

using modIicDat::IicDat;
using testing::HasSubstr;

class CommunDialog : public test::Desktop {
  protected:
    CommunDialog() {
        start();
        for (const auto& row : safeguards::choiceRows) {
            safeguards::choose(row, false);
        }
    }

    void plug(SimFaults faults = {}) {
        std::vector<std::uint8_t> memory(SimRadio::memorySize, 0xFF);
        memory[0x400] = 0x11;
        memory[0x1FFE] = 0x22;
        radio = std::make_shared<SimRadio>(memory, faults, 1'000'000);
        modCommun::state().portMaker = [this](std::int16_t) {
            return std::make_unique<VirtualPort>(radio);
        };
    }
    QPushButton& startButton(Direction direction) {
        return find<QPushButton>(dialog, direction == Direction::read ? "cmdRead" : "cmdWrite");
    }
    void session(Direction direction) {
        dialog.prepare(direction);
        dialog.show();
        startButton(direction).click();
    }
    std::string headline() { return said(dialog, "lblResult"); }
    std::string advice() { return said(dialog, "lblAdvice"); }
    int progress() { return find<QProgressBar>(dialog, "prgCommunicate").value(); }
    /// What a user does in the list of backups that opens next.
    static void inTheList(const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(0, qApp, [act] {
            auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(list != nullptr && list->objectName() == QLatin1String("frmCommunRestore"));
            act(*list);
            if (list->isVisible()) {
                ADD_FAILURE() << "the list is still open";
                list->reject();
            }
        });
    }
    bool blinks() { return dialog.findChild<QTimer*>(QStringLiteral("tmrLigGrint"))->isActive(); }
    /// Everything that the end of a session has to leave as it should be, whatever the end was.
    void expectIdle(Direction direction, bool succeeded) {
        EXPECT_EQ(said(dialog, "lblComStatus") + said(dialog, "lblComPercent") +
                      said(dialog, "lblTimeLeft"),
                  "");
        EXPECT_EQ(progress(), succeeded ? 100 : 0) << "a full bar stays to be seen";
        EXPECT_FALSE(find<frmCommunLight>(dialog, "imgGreen").isLit() || blinks());
        EXPECT_FALSE(stopBox.isEnabled() || stopBox.isChecked());
        EXPECT_TRUE(startButton(direction).isEnabled());
        // A mere Return never begins again after a success.
        EXPECT_EQ(find<QPushButton>(dialog, "cmdClose").isDefault(), succeeded);
        EXPECT_EQ(startButton(direction).isDefault(), !succeeded);
        EXPECT_EQ(dialog.focusWidget(),
                  succeeded ? &find<QPushButton>(dialog, "cmdClose") : &startButton(direction));
        EXPECT_TRUE(find<QLineEdit>(dialog, "txtReadEndAddr").isEnabled());
        EXPECT_TRUE(dialog.close() && !dialog.isVisible());
    }

    frmCommun dialog;
    QCheckBox& stopBox = find<QCheckBox>(dialog, "chkStopCom");
    QSignalSpy ended{&dialog, &frmCommun::sessionEnded};
    QSignalSpy memDat{&dialog, &frmCommun::memDatWanted};
    std::shared_ptr<SimRadio> radio;
};

TEST_F(CommunDialog, ReadsAndWritesThroughItsButtons) {
    plug();
    session(Direction::read);
    EXPECT_TRUE(std::ranges::equal(IicDat().bytes(), radio->memory()));
    EXPECT_EQ(headline() + advice(), "Radio read: 512 blocks.");
    EXPECT_EQ(find<QListView>(dialog, "listRtData").currentIndex().row(),
              modCommun::state().listRtData.size() - 1);
    expectIdle(Direction::read, true);

    find<QCheckBox>(dialog, "chkShowMemDat").setChecked(true);
    IicDat()(0x1FFF) = 0x5A;
    session(Direction::write);
    EXPECT_FALSE(startButton(Direction::read).isVisible());
    EXPECT_EQ(radio->memory()[0x1FFF], 0x5A);
    EXPECT_EQ(headline() + advice(), "Radio written: 512 blocks.");
    expectIdle(Direction::write, true);
    EXPECT_EQ(ended.count(), 2);
    EXPECT_TRUE(ended[1][0].value<Direction>() == Direction::write && ended[1][1].toBool());
    EXPECT_EQ(memDat.count(), 1);
    EXPECT_EQ(failures(), std::vector<std::string>{});
    dialog.prepare(Direction::read);
    EXPECT_EQ(headline(), "Ready to read the radio");
    EXPECT_EQ(progress(), 0);
    EXPECT_TRUE(startButton(Direction::read).isDefault());
}

TEST_F(CommunDialog, ReturnAfterAGoodWriteClosesInsteadOfWritingAgain) {
    plug();
    modIicDat::state().writeRange = {0x400, 0x41F};
    dialog.prepare(Direction::write);
    ASSERT_TRUE(showActive(dialog));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(headline(), "Radio written: 2 blocks.");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(radio->counters().writes, 1U);
}

TEST_F(CommunDialog, SafeguardsAreStagesAndABrokenWriteIsOneClickFromItsBackup) {
    const auto ticked = [&](Direction direction) {
        dialog.prepare(direction);
        dialog.show();
        std::string stages;
        for (const auto& row : safeguards::choiceRows) {
            auto& box = find<QCheckBox>(dialog, row.control.data());
            if (box.isVisible() && !box.isChecked()) {
                box.click();
            }
            stages += box.isVisible() ? "+" : "-";
        }
        return stages;
    };
    plug();
    modIicDat::state().readRange = modIicDat::state().writeRange = {0x3F0, 0x42F};
    EXPECT_EQ(ticked(Direction::read), "+-+");
    EXPECT_EQ(said(dialog, "lblStages", "accessibleName"), "1. Read → 2. Read again and compare");
    startButton(Direction::read).click();
    EXPECT_EQ(said(dialog, "lblStages", "accessibleName"), "✓ Read → ✓ Read again and compare");
    EXPECT_THAT(advice(), HasSubstr("Both passes agree. A copy is kept in Data/Backups/"));

    EXPECT_EQ(ticked(Direction::write), "-++");
    auto& restore = find<QPushButton>(dialog, "cmdRestore");
    // The backup has 2 + 4 + 1 exchanges; the write stops in its third block.
    plug({.silentFrom = 7 + 5});
    const std::vector before(radio->memory().begin(), radio->memory().end());
    std::string underWay;
    clock.onWait = [&] {
        underWay = blinks() ? said(dialog, "lblStages", "accessibleName") : underWay;
        EXPECT_FALSE(restore.isEnabled() || find<QCheckBox>(dialog, "chkReadBack").isEnabled());
    };
    startButton(Direction::write).click();
    clock.onWait = nullptr;
    EXPECT_EQ(underWay, "✓ Backup → 2. Write 50 % → 3. Compare");
    EXPECT_EQ(said(dialog, "lblStages", "accessibleName"), "✓ Backup → ✗ Write 50 % → 3. Compare");
    EXPECT_THAT(advice(), HasSubstr("Restore puts it back."));
    dialogs.take();

    const std::vector half(radio->memory().begin(), radio->memory().end());
    EXPECT_NE(half, before);
    plug();
    std::ranges::copy(half, radio->memory().begin());
    // Nothing to choose and nothing to lose: two clicks.
    inTheList([](QDialog& list) { find<QPushButton>(list, "cmdRestoreThis").click(); });
    restore.click();
    EXPECT_EQ(said(dialog, "lblStages", "accessibleName"), "✓ Restore → ✓ Compare");
    EXPECT_EQ(headline(), "The backup was written back to the radio.");
    EXPECT_TRUE(std::ranges::equal(radio->memory(), before));
    // Once the radio is as it was, another press may cost something, and is asked about.
    dialogs.answers = {"ask no"};
    inTheList([](QDialog& list) {
        auto& rows = find<QTreeWidget>(list, "lstBackups");
        EXPECT_EQ(rows.topLevelItemCount(), 2);
        const QRect oldest = rows.visualItemRect(rows.topLevelItem(1));
        QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, oldest.center());
        QTest::mouseDClick(rows.viewport(), Qt::LeftButton, {}, oldest.center());
    });
    restore.click();
    EXPECT_THAT(dialogs.take(), testing::ElementsAre(HasSubstr("_read_03F0-042F.dat")));
    EXPECT_EQ(radio->counters().writes, 1U);
}

TEST_F(CommunDialog, AWriteThatDidNotFinishIsToldAgainUntilNobodyNeedsIt) {
    for (const auto& row : safeguards::choiceRows) {
        safeguards::choose(row, true);
    }
    modIicDat::state().readRange = modIicDat::state().writeRange = {0x3F0, 0x42F};
    plug({.silentFrom = 7 + 5});
    session(Direction::write);
    EXPECT_EQ(headline(), "The radio is only partly written!");
    dialogs.take();
    dialog.close();

    // As after a restart of the program.
    frmCommun later;
    for (const auto direction : {Direction::read, Direction::write}) {
        later.prepare(direction);
        later.show();
        EXPECT_EQ(said(later, "lblResult"), "The last write did not finish!");
        EXPECT_THAT(said(later, "lblAdvice"), HasSubstr("The radio written on 2026-11-21 13:05"));
        EXPECT_TRUE(find<QPushButton>(later, "cmdRestore").isVisible() &&
                    find<QPushButton>(later, "cmdRestore").isEnabled());
    }
    dialogs.answers = {"ask no", "ask yes"};
    inTheList([](QDialog& list) {
        auto& forget = find<QPushButton>(list, "cmdForget");
        forget.click();
        EXPECT_TRUE(forget.isEnabled());
        forget.click();
        EXPECT_FALSE(forget.isEnabled());
        QTest::keyClick(&list, Qt::Key_Escape);
    });
    find<QPushButton>(later, "cmdRestore").click();
    EXPECT_EQ(dialogs.take().size(), 2U);
    EXPECT_EQ(said(later, "lblResult"), "Ready to write to the radio");
}

TEST_F(CommunDialog, FitsOnSmallScreensAndGivesTheRoomOfItsDetailsBack) {
    // 1024 x 768 at 150 %, less a panel and the window's frame.
    constexpr QSize smallest(1024 * 2 / 3 - 10, 768 * 2 / 3 - 60);
    for (const auto language : {TextLanguage::chinese, TextLanguage::english}) {
        setTextLanguage(language);
        dialog.prepare(Direction::write);
        dialog.resize(dialog.sizeHint());
        dialog.show();
        const QSize closed = dialog.size();
        auto& details = find<QPushButton>(dialog, "cmdDetails");
        details.click();
        EXPECT_GT(dialog.height(), closed.height());
        EXPECT_TRUE(find<QListView>(dialog, "listRtData").isVisible());
        const QSize least = dialog.minimumSizeHint();
        EXPECT_TRUE(least.width() <= smallest.width() && least.height() <= smallest.height())
            << least.width() << " x " << least.height();
        dialog.resize(3000, 3000);
        dialog.hide();
        dialog.show();
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        dialog.resize(closed.width(), closed.height() + 200);
        details.click();
        EXPECT_LE(dialog.height(), closed.height()) << "empty room stays";
    }
}

TEST_F(CommunDialog, StaysOpenAndAloneWhileASessionIsOn) {
    plug();
    modIicDat::state().readRange = {0x400, 0x41F};
    int rounds = 0;
    clock.onWait = [&] {
        for (const auto& close : std::initializer_list<std::function<void()>>{
                 [&] { QTest::keyClick(&dialog, Qt::Key_Escape); }, [&] { dialog.accept(); },
                 [&] { EXPECT_FALSE(dialog.close()); }, [&] { dialog.refuseClose(); },
                 [&] { find<QPushButton>(dialog, "cmdClose").click(); }}) {
            find<QLabel>(dialog, "lblResult").clear();
            close();
            EXPECT_EQ(headline(), "A session is running. It cannot be closed now.");
            EXPECT_THAT(advice(), HasSubstr("after the sixth failed attempt"));
        }
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(find<QLineEdit>(dialog, "txtWriteEndAddr").isEnabled());
        startButton(Direction::read).click();
        startButton(Direction::write).click();
        dialog.prepare(Direction::write);
        if (modSession::state().busyMark != 0) {
            EXPECT_TRUE(!startButton(Direction::read).isEnabled() && blinks());
            ++rounds;
        }
    };
    session(Direction::read);
    clock.onWait = nullptr;
    EXPECT_GT(rounds, 5);
    EXPECT_EQ(radio->counters().attempts, 1U);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(headline() + advice(), "Radio read: 2 blocks.");
    expectIdle(Direction::read, true);
    dialog.refuseClose();
    EXPECT_EQ(headline(), "Radio read: 2 blocks.") << "there is nothing to refuse";
}

TEST_F(CommunDialog, StopBoxEndsItAfterFiveFailures) {
    plug({.silentFrom = 1});
    int enabledFrom = 0;
    clock.onWait = [&] {
        if (stopBox.isEnabled() && !stopBox.isChecked()) {
            enabledFrom = modCommun::state().attemptCounter;
            EXPECT_THAT(advice(), HasSubstr("Tick Stop"));
            stopBox.click();
        }
    };
    session(Direction::write);
    clock.onWait = nullptr;
    EXPECT_EQ(enabledFrom, 6);
    EXPECT_EQ(modCommun::state().attemptCounter, 7);
    EXPECT_EQ(headline(), "Nothing was written.");
    EXPECT_EQ(advice(), "Stopped on request. The radio is unchanged.");
    expectIdle(Direction::write, false);
}

TEST_F(CommunDialog, FailuresAreExplainedInTheRoomForIt) {
    const auto without = [](std::int16_t number, const std::string& source) {
        modCommun::state().portMaker = [=](std::int16_t) -> std::unique_ptr<SerialPort> {
            throw RuntimeError(number, source);
        };
    };
    const std::tuple<std::string, int, std::function<void()>> cases[] = {
        {"partly written (up to 001F)", 20, [&] { plug({.silentFrom = 5}); }},
        {"no device at the port", 0, [&] { without(errNum::fileNotFound, "/dev/ttyUSB0: none"); }},
        {"sudo usermod", 0, [&] {
             without(errNum::permissionDenied,
                     "/dev/ttyUSB0: permission denied; members of group dialout may use it: sudo "
                     "usermod -aG dialout operator, then log in again");
         }}};
    auto& label = find<QLabel>(dialog, "lblAdvice");
    dialogs.onTell = [&] {
        EXPECT_FALSE(blinks() || find<frmCommunLight>(dialog, "imgGreen").isLit());
        EXPECT_EQ(said(dialog, "lblComStatus"), "");
        EXPECT_THAT(said(dialog, "lblStages", "accessibleName"), testing::StartsWith("✗"));
        const bool english = textLanguage() == TextLanguage::english;
        EXPECT_EQ(headline(),
                  english ? "The radio is only partly written!" : "对讲机只写入了一部分！");
        EXPECT_THAT(advice(), HasSubstr(english ? "The radio answered" : "对讲机有应答"));
        EXPECT_FALSE(dialog.close());
    };
    for (const auto& [english, attempts, arrange] : cases) {
        SCOPED_TRACE(english);
        for (const auto language : {TextLanguage::chinese, TextLanguage::english}) {
            setTextLanguage(language);
            arrange();
            session(Direction::write);
            EXPECT_EQ(modCommun::state().attemptCounter, attempts);
            EXPECT_EQ(dialogs.take().size(), attempts == 0 ? 0U : 1U);
            EXPECT_LE(label.heightForWidth(label.width()), label.height());
            EXPECT_FALSE(ended.takeLast()[1].toBool());
            expectIdle(Direction::write, false);
        }
        EXPECT_THAT(advice(), HasSubstr(english));
    }
    EXPECT_EQ(memDat.count(), 0);
}

TEST_F(CommunDialog, AddressFieldsFollowEveryKeystroke) {
    const std::string before = folder.read("Uninstall.exe");
    modIicDat::state().writeRange = {0x10, -1};
    dialog.prepare(Direction::read);
    EXPECT_EQ(said(dialog, "txtMaxAddr"), "1FFF");
    EXPECT_EQ(said(dialog, "txtWriteStartAddr") + said(dialog, "txtWriteEndAddr"), "0010FFFF");
    EXPECT_EQ(folder.read("Uninstall.exe"), before);

    auto& field = find<QLineEdit>(dialog, "txtReadEndAddr");
    const QColor plain = field.palette().color(QPalette::Base);
    const auto marked = [&] {
        return field.palette().color(QPalette::Base) != plain && !field.toolTip().isEmpty();
    };
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral("1f0"));
    EXPECT_FALSE(marked());
    EXPECT_EQ(modIicDat::state().readRange.end, 0x1F0);
    QTest::keyClick(&field, Qt::Key_G);
    EXPECT_TRUE(marked());
    EXPECT_THAT(stdText(field.toolTip()), HasSubstr("01F0 is still used"));
    EXPECT_THAT(failures(), testing::ElementsAre(HasSubstr("frmCommun->txtReadEndAddr_Change 13")));
    EXPECT_EQ(settingsStore::read("Setting", "ReadEndAddr", ""), "1f0g");
    EXPECT_EQ(modIicDat::state().readRange.end, 0x1F0);
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_FALSE(marked());
}

TEST_F(CommunDialog, CopiesTheSelectedLines) {
    for (const char* line : {"Tx: 06 ", "Rx: 06 ", "Tx: 45 "}) {
        modCommun::addDataLine(line);
    }
    auto& list = find<frmCommunList>(dialog, "listRtData");
    list.showNow();
    EXPECT_EQ(list.currentIndex().row(), 2);
    ASSERT_TRUE(showActive(dialog));
    EXPECT_FALSE(list.isVisible());
    find<QPushButton>(dialog, "cmdDetails").click();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Rx: 06 \nTx: 45 "));
}

using CommunInTheMainWindow = test::MainWindow;

TEST_F(CommunInTheMainWindow, TheProgramStaysDuringASessionAndSaysWhy) {
    open(mdimoduMain::languageEnglish, "ReadEndAddr=001F\n");
    action("mnuReadFre").trigger();
    auto& dialog = find<frmCommun>(*main, "frmCommun");
    int refused = 0;
    clock.onWait = [&] {
        if (modSession::running() && modSession::state().busyMark != 0) {
            EXPECT_FALSE(main->close());
            EXPECT_THAT(said(dialog, "lblResult"), HasSubstr("cannot be closed now"));
            ++refused;
        }
    };
    find<QPushButton>(dialog, "cmdRead").click();
    clock.onWait = nullptr;
    EXPECT_GT(refused, 0);
    EXPECT_THAT(said(dialog, "lblResult"), HasSubstr("Radio read"));
}

class PortDialog : public test::Desktop {
  protected:
    /// COM2 has no device, COM3 none that is a serial port; all others are the simulated radio.
    void startAt(int port) {
        start(mdimoduMain::languageEnglish, fmt::format("COM={}\n", port));
        const std::vector<settingsStore::KeyValue> broken{{"COM2", (folder / "none").string()},
                                                          {"COM3", "/dev/null"}};
        settingsStore::write("Ports", broken);
    }
    static QRadioButton& radio(const frmToolCom& dialog, int port) {
        return find<QRadioButton>(dialog, fmt::format("COM1_{}", port - 1).c_str());
    }
    /// The first line of that key, as it stands in the settings file.
    [[nodiscard]] std::string stored() const {
        const std::string file = folder.read("Uninstall.exe");
        const auto at = file.find("\nCOM=") + 5;
        return file.substr(at, file.find('\n', at) - at);
    }
};

TEST_F(PortDialog, OkStoresAndCancelRestores) {
    startAt(5);
    for (const auto& [button, number, text] :
         {std::tuple("cmdCancel", 5, "5"), {"cmdOk", 7, " 7"}, {"cmdCancel", 7, " 7"}}) {
        frmToolCom dialog;
        dialog.show();
        EXPECT_TRUE(radio(dialog, modCommun::state().portNumber).isChecked());
        radio(dialog, 7).click();
        find<QPushButton>(dialog, button).click();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(modCommun::state().portNumber, number);
        EXPECT_EQ(stored(), text);
    }
    frmToolCom dialog;
    modCommun::state().portNumber = 9;
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(modCommun::state().portNumber, 7);
}

TEST_F(PortDialog, ShowsWhatEachPortIsAndWhyOneIsNot) {
    startAt(5);
    frmToolCom dialog;
    dialog.show();
    EXPECT_TRUE(comPorts::ProbeCom(16)) << "a probe has left the radio's cable taken";
    const std::tuple<int, bool, std::string, std::string> ports[] = {
        {1, true, "virtual simulated radio", ""},
        {2, false, "none no device", "is the cable plugged in?"},
        {3, false, "/dev/null not a serial port", "/dev/null: is not a serial device"},
        {16, true, "virtual simulated radio", ""},
    };
    for (const auto& [port, usable, beside, tip] : ports) {
        const auto& button = radio(dialog, port);
        EXPECT_EQ(stdText(button.text()), fmt::format("COM{}", port));
        EXPECT_EQ(button.isEnabled(), usable) << port;
        EXPECT_THAT(stdText(button.accessibleDescription()), testing::EndsWith(beside));
        EXPECT_THAT(stdText(button.toolTip()), HasSubstr(tip));
    }
    EXPECT_GT(radio(dialog, 2).y(), radio(dialog, 16).y()) << "what can be used comes first";
    EXPECT_GT(radio(dialog, 3).y(), radio(dialog, 2).y());
}

TEST_F(PortDialog, ShowsAllPortsWhereTheScreenHasRoom) {
    for (const int language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
        resetModules();
        start(language);
        frmToolCom dialog;
        dialog.show();
        QApplication::processEvents();
        const auto* bar = dialog.findChild<QScrollArea*>()->verticalScrollBar();
        EXPECT_EQ(bar->maximum(), 0) << language;
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
    }
}

TEST_F(PortDialog, ArrowsMoveAmongThePortsThatCanBeUsed) {
    startAt(1);
    frmToolCom dialog;
    ASSERT_TRUE(showActive(dialog) && radio(dialog, 1).hasFocus());
    QTest::keyClick(&radio(dialog, 1), Qt::Key_Down);
    EXPECT_TRUE(radio(dialog, 4).isChecked());
    QTest::keyClick(&radio(dialog, 4), Qt::Key_Up);
    EXPECT_TRUE(radio(dialog, 1).isChecked());
}

TEST_F(PortDialog, APortThatCannotBeUsedNowStaysTicked) {
    startAt(1);
    modCommun::state().portNumber = 2;
    frmToolCom dialog;
    ASSERT_TRUE(showActive(dialog) && radio(dialog, 1).hasFocus());
    EXPECT_TRUE(radio(dialog, 2).isChecked() && !radio(dialog, 1).isChecked());
    dialog.accept();
    EXPECT_EQ(stored(), " 2");
    // A number that no port has is nobody's tick.
    modCommun::state().portNumber = 40;
    frmToolCom none;
    none.accept();
    EXPECT_EQ(modCommun::state().portNumber, 40);
    EXPECT_EQ(stored(), " 2");
    EXPECT_EQ(failures(), std::vector<std::string>{});
}

using RadioInfo = test::Desktop;

TEST_F(RadioInfo, ShowsModelBandAndLastWrite) {
    start();
    frmRadioInfo window;
    const auto fields = [&] {
        window.refresh();
        std::string all;
        for (const char* name : {"txtModel", "txtRange", "txtSoftVer", "txtLastPc"}) {
            EXPECT_TRUE(find<QLineEdit>(window, name).isReadOnly());
            all += said(window, name) + "|";
        }
        return all;
    };
    auto& band = modModel::state();
    band.bandLow = 40'000'000;
    band.bandHigh = 47'000'000;
    stamp::write(modIicDat::IicDat(), {2026, 11, 21, 13, 5, 9});
    EXPECT_EQ(fields(), "ZEV-K520|400.00000 - 470.00000MHz||2026-11-21 13:05|");
    band.bandLow = 13'600'625;
    modIicDat::IicDat()(stamp::address + 1) = 0x13;
    EXPECT_EQ(fields(), "ZEV-K520|136.00625 - 470.00000MHz||Unknown Time|");
}

TEST_F(RadioInfo, ClicksOnTheHiddenLabelSwitchTheDeveloperEntrance) {
    start();
    frmRadioInfo window;
    window.resize(1600, 900);
    window.show();
    const QSignalSpy wanted(&window, &frmRadioInfo::memDatWanted);
    auto& frame = find<QGroupBox>(window, "fraMain");
    auto& label = find<QLabel>(window, "lblDebug");
    const QPoint empty(4, frame.height() - 8);
    const auto enter = [&] {
        QTest::mouseDClick(&frame, Qt::LeftButton, {}, empty);
        return wanted.count();
    };
    EXPECT_EQ(enter(), 0);
    QTest::mouseClick(&label, Qt::LeftButton);
    QTest::mouseClick(&label, Qt::RightButton);
    QTest::mouseDClick(&frame, Qt::RightButton, {}, empty);
    EXPECT_EQ(enter(), 1);
    EXPECT_EQ(radioInfo::state().debugFlag, -1);
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(enter(), 1);
    // Two quick clicks are two clicks, and no double click on the frame.
    QTest::mouseDClick(&label, Qt::LeftButton);
    EXPECT_EQ(wanted.count(), 1);
}

}  // namespace
}  // namespace k520
