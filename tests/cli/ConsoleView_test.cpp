// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/ConsoleView.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>

#include "base/posix/Descriptor.h"

namespace k520::cli {
namespace {

/// Standard error as a terminal, for as long as it lives.
class Terminal {
  public:
    Terminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY)), kept_(::dup(2)) {
        EXPECT_TRUE(::grantpt(master_.get()) == 0 && ::unlockpt(master_.get()) == 0);
        const Descriptor slave(::open(::ptsname(master_.get()), O_RDWR | O_NOCTTY));
        EXPECT_EQ(::dup2(slave.get(), 2), 2);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { ::dup2(kept_.get(), 2); }

    /// What was printed since the last call, less what took the line away before.
    [[nodiscard]] std::string line() const {
        // What was printed takes a moment to arrive: all of it is there once a mark after it is.
        constexpr char mark = '\x01';
        EXPECT_EQ(::write(2, &mark, 1), 1);
        std::string text;
        char byte = 0;
        while (::read(master_.get(), &byte, 1) == 1 && byte != mark) {
            text += byte;
        }
        const auto cleared = text.rfind("\x1b[K");
        return cleared == std::string::npos ? text : text.substr(cleared + 3);
    }

  private:
    Descriptor master_;
    Descriptor kept_;
};

TEST(ConsoleView, FollowsEachStageFromItsStart) {
    const Terminal terminal;
    ConsoleView view(false);
    view.setProgress(7);
    EXPECT_EQ(terminal.line(), "") << "no stage has begun";
    view.beginStage(Stage::read);
    const auto empty = terminal.line();
    EXPECT_THAT(empty, testing::EndsWith(" [" + std::string(30, ' ') + "]   0 %  "));
    view.setStatus(" 3 failed ");
    EXPECT_THAT(terminal.line(), testing::EndsWith("  0 %  3 failed"));
    view.setProgress(50);
    const std::string half = " [" + std::string(15, '#') + std::string(15, ' ') + "]  50 %  ";
    EXPECT_THAT(terminal.line(), testing::EndsWith(half + "3 failed"));
    view.setStatus("51%");
    EXPECT_THAT(terminal.line(), testing::EndsWith("3 failed")) << "the bar has the percents";
    view.beginStage(Stage::write);
    const auto next = terminal.line();
    EXPECT_THAT(next, testing::EndsWith("]   0 %  ")) << "nothing of the stage before";
    EXPECT_NE(next, empty);
    view.setProgress(100);
    EXPECT_THAT(terminal.line(), testing::EndsWith("[" + std::string(30, '#') + "] 100 %  "));
    view.setProgress(0);
    EXPECT_EQ(terminal.line(), "") << "taken away";
    view.setStatus("over");
    EXPECT_EQ(terminal.line(), "") << "and stays so";
    {
        ConsoleView brief(false);
        brief.beginStage(Stage::read);
    }
    EXPECT_EQ(terminal.line(), "") << "goes with its view";
}

TEST(ConsoleView, AQuietOneHasNoLine) {
    const Terminal terminal;
    ConsoleView view(true);
    view.beginStage(Stage::read);
    view.setProgress(50);
    EXPECT_EQ(terminal.line(), "");
}

}  // namespace
}  // namespace k520::cli
