// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modPrint.h"

#include "app/modStartUp.h"
#include "support/ProgramFolder.h"
#include "support/ScriptedDialogs.h"

namespace k520::modPrint {
namespace {

using testing::HasSubstr;
using testing::Not;

class Paper : public test::ProgramFolder {
  protected:
    Paper() {
        mdimoduMain::state().shippedFolder = K520_SHARE_DIR;
        modStartUp::readSettings();
        modStartUp::prepareCore();
        modFileCmd::NewFileSol();
        optionPanel::InitFace();
        optionPanel::InitOpt();
    }
    test::ScriptedDialogs dialogs;
};

TEST_F(Paper, HoldsTheChannelsThatExistAndAllOptions) {
    modFileCmd::setCurrentFile("a<b>&c.dat");
    modChMem::DelOneChannel(2);
    const std::string html = documentHtml();
    EXPECT_THAT(html, HasSubstr("a&lt;b&gt;&amp;c.dat<br>400 - 470 MHz"));
    EXPECT_THAT(html, HasSubstr("<th>Receive [MHz]</th>"));
    const std::string first = modChMem::state().vsfgGridCh.text(1, 1);
    EXPECT_THAT(html, HasSubstr("<td>1</td><td>" + first + "</td>"));
    EXPECT_THAT(html, Not(HasSubstr("<td>2</td>")));
    for (const auto& control : optionPanel::state().controls) {
        EXPECT_THAT(html, HasSubstr("<tr><td>" + control.caption + "</td><td>"));
    }
    EXPECT_THAT(html, HasSubstr("<td>Crystal</td><td>12.8MHz</td>"));
    EXPECT_THAT(html, HasSubstr("<td>Beep</td><td>On</td>"));
}

TEST_F(Paper, APrinterThatFailsIsTold) {
    dialogs.answers = {"print ", "print fail"};
    Print();
    Print();
    const auto shown = dialogs.take();
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_EQ(shown[0], "print|" + documentHtml());
    EXPECT_EQ(shown[2], "critical|Notice|Print occur error!");
    EXPECT_EQ(failure(), "mdifrmMain->Print 57");
}

}  // namespace
}  // namespace k520::modPrint
