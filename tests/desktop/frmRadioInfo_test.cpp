// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/frmRadioInfo.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include "app/modSoftFace.h"
#include "desktop/Desktop.h"
#include "desktop/qtText.h"
#include "image/stamp.h"
#include "link/radioInfo.h"

namespace k520 {
namespace {

class RadioInfo : public test::Desktop {
  protected:
    RadioInfo() {
        start();
        radioInfo::state() = {};
    }
    ~RadioInfo() override { radioInfo::state() = {}; }
};

TEST_F(RadioInfo, ShowsModelBandAndLastWrite) {
    frmRadioInfo window;
    const auto fields = [&] {
        window.refresh();
        std::string all;
        for (const char* name : {"txtModel", "txtRange", "txtSoftVer", "txtLastPc"}) {
            const auto& field = find<QLineEdit>(window, name);
            EXPECT_TRUE(field.isReadOnly());
            all += stdText(field.text()) + "|";
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

TEST_F(RadioInfo, CaptionsFollowTheLanguage) {
    frmRadioInfo window;
    window.setObjectName(QStringLiteral("frmRadioInfo"));
    const std::tuple<std::int16_t, std::string, std::string, std::string> languages[] = {
        {mdimoduMain::languageChinese, "本机信息", "上次写频时间", "上次写频时间"},
        {mdimoduMain::languageTraditional, "", "", "txtLastPc"},
        {mdimoduMain::languageEnglish, "Radio Info", "Write Data Last Time",
         "Write Data Last Time"}};
    for (auto [language, frame, label, name] : languages) {
        modSoftFace::FillSoftFace(language);
        window.InitOpt();
        EXPECT_EQ(stdText(find<QGroupBox>(window, "fraMain").title()), frame);
        EXPECT_EQ(stdText(find<QLabel>(window, "lblLastPc").text()), label);
        EXPECT_EQ(stdText(find<QLineEdit>(window, "txtLastPc").accessibleName()), name);
        EXPECT_EQ(find<QLineEdit>(window, "txtModel").text(), softText(356));
        EXPECT_EQ(stdText(window.accessibleName()), frame.empty() ? "frmRadioInfo" : frame);
    }
}

TEST_F(RadioInfo, ClicksOnTheHiddenLabelSwitchTheDeveloperEntrance) {
    frmRadioInfo window;
    window.resize(1600, 900);
    window.show();
    const QSignalSpy wanted(&window, &frmRadioInfo::memDatWanted);
    auto& frame = find<QGroupBox>(window, "fraMain");
    auto& label = find<QLabel>(window, "lblDebug");
    EXPECT_FALSE(label.size().isEmpty());
    EXPECT_LT(frame.width(), 800);
    EXPECT_EQ(frame.pos().x(), frame.pos().y());
    const QPoint empty(4, frame.height() - 8);
    const auto enter = [&] {
        QTest::mouseDClick(&frame, Qt::LeftButton, {}, empty);
        return wanted.count();
    };
    EXPECT_EQ(enter(), 0);
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(enter(), 1);
    EXPECT_EQ(radioInfo::state().debugFlag, -1);
    QTest::mouseClick(&label, Qt::LeftButton);
    EXPECT_EQ(enter(), 1);
    // Two quick clicks are two clicks, and no double click on the frame.
    QTest::mouseDClick(&label, Qt::LeftButton);
    EXPECT_EQ(wanted.count(), 1);
    radioInfo::state().debugFlag = 5;
    radioInfo::lblDebug_Click();
    { const frmRadioInfo another; }
    EXPECT_EQ(radioInfo::state().debugFlag, -1) << "closing a window keeps it";
}

}  // namespace
}  // namespace k520
