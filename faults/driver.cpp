// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
//
// The desktop program without its windows, for tests that watch it from outside:
//
//   driver PROGRAM_FOLDER start           the start-up
//   driver PROGRAM_FOLDER save FILE       ... and Save As, with FILE chosen
//   driver PROGRAM_FOLDER lock            ... and the command that locks the channels
//
// Exit code 0 where the program said that it is done, 1 where it said what went wrong.
#include <fmt/format.h>

#include <csignal>
#include <cstdio>
#include <span>
#include <string>
#include <utility>

#include "app/modShowErr.h"
#include "app/ownTexts.h"
#include "app/programFolder.h"
#include "base/Dialogs.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"

namespace {

using namespace k520;

void report(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

/// Answers every question with yes and every choice of a file with the same one.
class YesDialogs : public Dialogs {
  public:
    explicit YesDialogs(std::string file) : file_(std::move(file)) {}
    bool ask(const std::string& /*title*/, const std::string& /*text*/, bool /*usual*/) override {
        return true;
    }
    SaveAnswer askToSave(const std::string& /*title*/, const std::string& /*text*/) override {
        return SaveAnswer::dontSave;
    }
    void tell(BoxIcon /*icon*/, const std::string& /*title*/, const std::string& text) override {
        report("box: " + text);
    }
    std::string openFile(const FileChoice& /*choice*/) override { return file_; }
    std::string saveFile(const FileChoice& /*choice*/) override { return file_; }
    void customRange() override {}
    void openDocument(const std::string& /*path*/) override {}
    void print(const std::string& /*html*/) override {}

  private:
    std::string file_;
};

bool done(const std::string& command, std::size_t mark) {
    // Nobody keeps what a start that has failed shows.
    if (command == "save" && mark != 0) {
        return false;
    }
    if (command == "save") {
        modFileCmd::SaveAsFile();
        report("remark: " + modFileCmd::shownRemark());
        return modFileCmd::shownRemark().starts_with(say(texts::fileSaved));
    }
    if (command == "lock") {
        modStartUp::lockChannels(true);
    }
    return modShowErr::state().entries.size() == mark;
}

}  // namespace

int main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (count < 3) {
        return 2;
    }
    std::signal(SIGXFSZ, SIG_IGN);
    YesDialogs dialogs(count > 3 ? arguments[3] : "");
    setDialogs(&dialogs);
    programFolder::state().own = arguments[1];
    programFolder::state().shipped = K520_SHARE_DIR;
    // The machine's own ports are useless to a test.
    modCommun::state().portMaker = [](std::int16_t) { return comPorts::portForDevice(""); };
    static_cast<void>(modStartUp::Form_Load());
    const bool good = done(arguments[2], modShowErr::state().entries.size());
    for (const auto& entry : modShowErr::state().entries) {
        report(fmt::format("{}: {} {}", entry.label, entry.number, entry.source));
    }
    setDialogs(nullptr);
    return good ? 0 : 1;
}
