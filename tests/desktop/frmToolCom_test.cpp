// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/frmToolCom.h"

#include <gmock/gmock.h>

#include <QPushButton>
#include <QRadioButton>

#include "desktop/Desktop.h"

namespace k520 {
namespace {

using testing::HasSubstr;

class PortDialog : public test::Desktop {
  protected:
    /// COM2 has no device, COM3 none that is a serial port; all others are the simulated radio.
    void startAt(int port) {
        start(mdimoduMain::languageEnglish, fmt::format("COM={}\n", port));
        const std::vector<mdimoduMain::KeyValue> broken{{"COM2", (folder / "none").string()},
                                                        {"COM3", "/dev/null"}};
        mdimoduMain::writeSettings("Ports", broken);
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
    const frmToolCom dialog;
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

}  // namespace
}  // namespace k520
