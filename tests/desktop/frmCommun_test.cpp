// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/frmCommun.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include "app/modSoftFace.h"
#include "desktop/Desktop.h"
#include "desktop/qtText.h"
#include "link/frmCommunLight.h"
#include "link/frmCommunList.h"
#include "link/virtualPort.h"

namespace k520 {
namespace {

using modIicDat::IicDat;
using testing::HasSubstr;

class CommunDialog : public test::Desktop {
  protected:
    CommunDialog() { start(); }

    void plug(SimFaults faults = {}) {
        std::vector<std::uint8_t> memory(SimRadio::memorySize, 0xFF);
        for (std::size_t i = 0x400; i < memory.size(); ++i) {
            memory[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
        }
        radio = std::make_shared<SimRadio>(memory, faults, 1'000'000);
        modCommun::state().portMaker = [this](std::int16_t) {
            return std::make_unique<VirtualPort>(radio);
        };
    }
    void open(Direction direction) {
        dialog.prepare(direction);
        dialog.show();
    }
    QPushButton& startButton(Direction direction) {
        return find<QPushButton>(dialog, direction == Direction::read ? "cmdRead" : "cmdWrite");
    }
    void session(Direction direction) {
        open(direction);
        startButton(direction).click();
    }
    std::string text(const char* label) { return stdText(find<QLabel>(dialog, label).text()); }
    /// Everything that the end of a session has to leave behind, whatever the end was.
    void expectIdle(Direction direction) {
        EXPECT_EQ(text("lblComStatus") + text("lblComPercent"), "");
        EXPECT_EQ(find<QProgressBar>(dialog, "prgCommunicate").value(), 0);
        EXPECT_FALSE(find<frmCommunLight>(dialog, "imgGreen").isLit());
        EXPECT_FALSE(dialog.findChild<QTimer*>(QStringLiteral("tmrLigGrint"))->isActive());
        EXPECT_FALSE(stopBox.isEnabled() || stopBox.isChecked());
        EXPECT_TRUE(startButton(direction).isEnabled());
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
    EXPECT_FALSE(startButton(Direction::write).isVisible());
    EXPECT_TRUE(std::ranges::equal(IicDat().bytes(), radio->memory()));
    EXPECT_EQ(text("lblAdvice"), "Radio read: 512 blocks.");
    const auto& list = find<QListView>(dialog, "listRtData");
    EXPECT_EQ(list.currentIndex().row(), modCommun::state().listRtData.size() - 1);
    expectIdle(Direction::read);

    find<QCheckBox>(dialog, "chkShowMemDat").setChecked(true);
    IicDat()(0x1FFF) = 0x5A;
    session(Direction::write);
    EXPECT_FALSE(startButton(Direction::read).isVisible());
    EXPECT_TRUE(startButton(Direction::write).isDefault());
    EXPECT_EQ(radio->memory()[0x1FFF], 0x5A);
    EXPECT_EQ(text("lblAdvice"), "Radio written: 512 blocks.");
    expectIdle(Direction::write);
    EXPECT_EQ(ended.count(), 2);
    EXPECT_EQ(ended[1][0].value<Direction>(), Direction::write);
    EXPECT_TRUE(ended[1][1].toBool());
    EXPECT_EQ(memDat.count(), 1);
    EXPECT_EQ(failures(), std::vector<std::string>{});
    open(Direction::read);
    EXPECT_EQ(text("lblAdvice"), "");
}

TEST_F(CommunDialog, StaysOpenAndAloneWhileASessionIsOn) {
    plug();
    modIicDat::state().readRange = {0x400, 0x41F};
    int rounds = 0;
    bool atWork = false;
    clock.onWait = [&] {
        ++rounds;
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.close());
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(find<QPushButton>(dialog, "cmdClose").isEnabled());
        EXPECT_FALSE(find<QLineEdit>(dialog, "txtWriteEndAddr").isEnabled());
        startButton(Direction::read).click();
        startButton(Direction::write).click();
        dialog.prepare(Direction::write);
        if (modSession::state().busyMark != 0) {
            EXPECT_FALSE(startButton(Direction::read).isEnabled());
            EXPECT_TRUE(dialog.findChild<QTimer*>(QStringLiteral("tmrLigGrint"))->isActive());
            atWork = true;
        }
    };
    session(Direction::read);
    clock.onWait = nullptr;
    EXPECT_TRUE(atWork);
    EXPECT_GT(rounds, 5);
    EXPECT_EQ(radio->counters().attempts, 1U);
    EXPECT_EQ(radio->counters().writes, 0U);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(text("lblAdvice"), "Radio read: 2 blocks.");
    expectIdle(Direction::read);
}

TEST_F(CommunDialog, StopBoxEndsItAfterFiveFailures) {
    plug({.silentFrom = 1});
    int enabledFrom = 0;
    clock.onWait = [&] {
        if (stopBox.isEnabled() && enabledFrom == 0) {
            enabledFrom = modCommun::state().attemptCounter;
        }
        if (!stopBox.isChecked()) {
            stopBox.click();
        }
    };
    session(Direction::write);
    clock.onWait = nullptr;
    EXPECT_EQ(enabledFrom, 6);
    EXPECT_EQ(modCommun::state().attemptCounter, 7);
    EXPECT_EQ(text("lblAdvice"), "Stopped on request. The radio is unchanged.");
    expectIdle(Direction::write);
}

TEST_F(CommunDialog, FailuresAreExplainedInTheRoomForIt) {
    const auto without = [](std::int16_t number, const std::string& source) {
        modCommun::state().portMaker = [=](std::int16_t) -> std::unique_ptr<SerialPort> {
            throw RuntimeError(number, source);
        };
    };
    const std::tuple<std::string, int, std::function<void()>> cases[] = {
        {"No valid answer from a radio in 20 attempts", 20, [&] { plug({.silentFrom = 1}); }},
        {"partly written (up to 001F)", 20, [&] { plug({.silentFrom = 5}); }},
        {"broke off in the middle", 20, [&] { plug({.goneAfter = 5}); }},
        {"no device at the port", 0, [&] { without(errNum::fileNotFound, "/dev/ttyUSB0: none"); }},
        {"sudo usermod", 0, [&] {
             without(errNum::permissionDenied,
                     "/dev/ttyUSB0: permission denied; members of group dialout may use it: sudo "
                     "usermod -aG dialout operator, then log in again");
         }}};
    auto& advice = find<QLabel>(dialog, "lblAdvice");
    for (const auto& [english, attempts, arrange] : cases) {
        SCOPED_TRACE(english);
        for (const auto language : {mdimoduMain::languageChinese, mdimoduMain::languageEnglish}) {
            mdimoduMain::state().Language = language;
            arrange();
            session(Direction::write);
            EXPECT_EQ(modCommun::state().attemptCounter, attempts);
            EXPECT_EQ(dialogs.take().size(), attempts == 0 ? 0U : 1U);
            EXPECT_LE(advice.heightForWidth(advice.width()), advice.height());
            EXPECT_FALSE(ended.takeLast()[1].toBool());
            expectIdle(Direction::write);
        }
        EXPECT_THAT(text("lblAdvice"), HasSubstr(english));
    }
    EXPECT_EQ(memDat.count(), 0);
}

TEST_F(CommunDialog, AddressFieldsFollowEveryKeystroke) {
    const std::string before = folder.read("Uninstall.exe");
    modIicDat::state().writeRange = {0x10, -1};
    open(Direction::read);
    EXPECT_EQ(find<QLineEdit>(dialog, "txtMaxAddr").text(), QStringLiteral("1FFF"));
    EXPECT_EQ(find<QLineEdit>(dialog, "txtWriteStartAddr").text(), QStringLiteral("0010"));
    EXPECT_EQ(find<QLineEdit>(dialog, "txtWriteEndAddr").text(), QStringLiteral("FFFF"));
    EXPECT_EQ(folder.read("Uninstall.exe"), before);

    auto& field = find<QLineEdit>(dialog, "txtReadEndAddr");
    const QColor plain = field.palette().color(QPalette::Base);
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral("1f0"));
    EXPECT_EQ(modIicDat::state().readRange.end, 0x1F0);
    EXPECT_TRUE(field.toolTip().isEmpty());
    QTest::keyClick(&field, Qt::Key_G);
    EXPECT_EQ(mdimoduMain::readSetting("Setting", "ReadEndAddr", ""), "1f0g");
    EXPECT_EQ(modIicDat::state().readRange.end, 0x1F0);
    EXPECT_THAT(stdText(field.toolTip()), HasSubstr("01F0 stays in force"));
    EXPECT_NE(field.palette().color(QPalette::Base), plain);
    EXPECT_THAT(failures(), testing::ElementsAre(HasSubstr("frmCommun->txtReadEndAddr_Change 13")));
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.palette().color(QPalette::Base), plain);
    EXPECT_TRUE(field.toolTip().isEmpty());
}

TEST_F(CommunDialog, CopiesTheSelectedLines) {
    open(Direction::read);
    for (const char* line : {"Tx: 06 ", "Rx: 06 ", "Tx: 45 "}) {
        modCommun::addDataLine(line);
    }
    auto& list = find<frmCommunList>(dialog, "listRtData");
    list.showNow();
    EXPECT_EQ(list.currentIndex().row(), 2);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Up, Qt::ShiftModifier);
    dialog.activateWindow();
    ASSERT_TRUE(served([&] { return list.hasFocus(); }));
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Rx: 06 \nTx: 45 "));
}

TEST_F(CommunDialog, EveryControlHasANameInEveryLanguage) {
    const std::tuple<std::int16_t, std::string, std::string, std::string> languages[] = {
        {mdimoduMain::languageChinese, "读频(&R)", "读频", "通信"},
        {mdimoduMain::languageTraditional, "", "cmdRead", ""},
        {mdimoduMain::languageEnglish, "&Read", "Read", "Communication"}};
    for (auto [language, caption, name, title] : languages) {
        mdimoduMain::state().Language = language;
        modSoftFace::FillSoftFace(language);
        open(Direction::read);
        auto& button = startButton(Direction::read);
        EXPECT_EQ(stdText(button.text()), caption);
        EXPECT_EQ(stdText(button.accessibleName()), name);
        EXPECT_EQ(stdText(dialog.windowTitle()), title);
        EXPECT_TRUE(button.isDefault());
        for (const char* control : {"chkStopCom", "chkShowMemDat", "listRtData", "prgCommunicate",
                                    "imgGreen", "txtMaxAddr", "txtReadStartAddr", "cmdClose"}) {
            EXPECT_FALSE(find<QWidget>(dialog, control).accessibleName().isEmpty()) << control;
        }
    }
}

}  // namespace
}  // namespace k520
