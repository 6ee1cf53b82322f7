// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/frmRadioInfo.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include "desktop/Desktop.h"
#include "image/stamp.h"
#include "link/radioInfo.h"

namespace k520 {
namespace {

class RadioInfo : public test::Desktop {
  protected:
    RadioInfo() { start(); }
};

TEST_F(RadioInfo, ShowsModelBandAndLastWrite) {
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
