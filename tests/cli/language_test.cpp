// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gmock/gmock.h>
#include <pty.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "cli/Command.h"
#include "cli/ConsoleView.h"
#include "cli/Program.h"
#include "cli/wideText.h"

namespace k520 {
namespace {

using test::Outcome;
using test::Program;
using testing::HasSubstr;
using testing::Not;

bool hasChinese(const std::string& text) {
    // The lead bytes of U+4000 to U+9FFF.
    return std::ranges::any_of(text, [](char c) { return c >= '\xE4' && c <= '\xE9'; });
}

/// Three English words in a row, with nothing but blanks between; empty where there are none. A
/// command line of the program is none, and the system's own words stay as they are.
std::string sentenceIn(const std::string& text) {
    static const std::regex system("No such file or directory|Is a directory");
    static const std::regex commandLine("k520-cli [ -~]*");
    static const std::regex words("[A-Za-z]?[a-z]{2,} [a-z]{2,} [a-z]{2,}");
    const auto prose = std::regex_replace(std::regex_replace(text, commandLine, ""), system, "");
    std::smatch found;
    return std::regex_search(prose, found, words) ? found.str() : std::string();
}

class Language : public testing::Test {
  protected:
    Language() {
        EXPECT_EQ(run("new @fleet.dat").code, 0);
        EXPECT_EQ(run("set @fleet.dat ch1.rx=447 -o @other.dat").code, 0);
        run.folder.write("empty.dat", "");
        run.folder.write("short.dat", std::string(0x200, '\xFF'));
    }

    void speak(const std::string& language) {
        EXPECT_EQ(run("config set Setting Language " + language).code, 0);
    }

    /// Runs a line in both languages.
    void expectBothLanguages(const std::string& line, int code) {
        for (const char* language : {"1", "3"}) {
            SCOPED_TRACE(line + ", language " + language);
            speak(language);
            const Outcome outcome = run(line);
            EXPECT_EQ(outcome.code, code) << outcome.err;
            const auto said = outcome.out + outcome.err;
            const bool chinese = std::string(language) == "1";
            EXPECT_EQ(hasChinese(said), chinese) << said;
            EXPECT_EQ(chinese ? sentenceIn(said) : "", "") << said;
            EXPECT_LE(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        }
    }

    Program run;
};

TEST_F(Language, HelpTablesAndComplaintsFollowTheSetting) {
    std::vector<std::pair<std::string, int>> lines{
        {"--help", 0},
        {"config --help", 0},
        {"show @fleet.dat", 0},
        {"show @short.dat", 0},
        {"show @empty.dat", 1},
        {"set @short.dat band=1", 1},
        {"diff @fleet.dat @other.dat", 1},
        {"hex @fleet.dat --from xyz", 2},
        {"hex @fleet.dat --to 7000", 2},
        {"export @fleet.dat -o @fleet.dat", 2},
        {"config set Setting a=b c", 2},
        {"new @none/a.dat", 1},
        {"show @home", 1},
        {"ports", 0},
        // around sessions
        {"read -p 17 -o @r.dat", 2},
        {"read -p /dev/none -o @r.dat", 1},
        {"read -p @home -o @r.dat", 1},
        {"restore -p virtual", 1},
        {"restore -p /dev/none --from @fleet.dat", 1},
        {"restore", 2},
        {"restore --list", 0},
        {"restore --list -p virtual", 2},
        {"restore --forget none.dat", 1},
        {"write -p virtual @short.dat", 1},
        {"write -p virtual @fleet.dat --backup @b.dat --keep-copy", 2},
        {"simulate --lose x", 2},
        {"simulate --delay 3:x", 2},
        {"simulate --link @fleet.dat", 1},
        // the parser's complaints
        {"frob", 2},
        {"", 2},
        {"config", 2},
        {"show", 2},
        {"show @fleet.dat --frob", 2},
        {"show --json=x @fleet.dat", 2},
        {"hex @fleet.dat --from", 2},
        {"hex @fleet.dat --to 1 --to 2", 2},
        {"set @fleet.dat [a=b]", 2}};
    for (const auto& command : cli::commands()) {
        lines.emplace_back(std::string(command.name) + " --help", 0);
    }
    for (const auto& [line, code] : lines) {
        expectBothLanguages(line, code);
    }
}

TEST_F(Language, ALanguageWithoutTextsShowsTheModelAllTheSame) {
    speak("2");
    EXPECT_THAT(run("show @fleet.dat").out, testing::HasSubstr("ZEV-K520"));
}

TEST_F(Language, WhatScriptsReadNeverChanges) {
    for (const char* line : {"show @fleet.dat --json", "diff @fleet.dat @other.dat --json",
                             "ports --json", "hex @fleet.dat", "export @fleet.dat --help"}) {
        speak("3");
        const auto english = run(line);
        speak("1");
        const auto chinese = run(line);
        EXPECT_EQ(chinese.code, english.code) << line;
        EXPECT_EQ(chinese.out == english.out, !std::string(line).ends_with("--help")) << line;
    }
}

TEST_F(Language, TheLocaleDecidesWhereTheSettingsCannotBeRead) {
    const std::pair<const char*, bool> locales[] = {
        {"zh_CN.UTF-8", true}, {"zh_TW.UTF-8", false}, {"C", false}};
    for (const auto& [locale, chinese] : locales) {
        run.command = {"/usr/bin/env",
                       "-u",
                       "LC_ALL",
                       "-u",
                       "LC_MESSAGES",
                       std::string("LANG=") + locale,
                       K520_CLI,
                       "--program-folder",
                       run.file("fleet.dat")};
        for (const char* line : {"--help", "frob", "show x"}) {
            const auto outcome = run(line);
            EXPECT_EQ(hasChinese(outcome.out + outcome.err), chinese) << locale << line;
        }
    }
    // A setting that can be read comes before the locale; Traditional Chinese has no texts.
    run.command[5] = "LANG=zh_CN.UTF-8";
    run.command.back() = run.home().string();
    for (const char* language : {"2", "3"}) {
        speak(language);
        EXPECT_FALSE(hasChinese(run("--help").out)) << language;
    }
}

/// What a terminal as stderr is sent while a view is driven.
std::string drawn(const std::function<void(cli::ConsoleView&)>& drive) {
    int terminal = -1;
    int program = -1;
    EXPECT_EQ(::openpty(&terminal, &program, nullptr, nullptr, nullptr), 0);
    const int kept = ::dup(STDERR_FILENO);
    ::dup2(program, STDERR_FILENO);
    {
        cli::ConsoleView view(false);
        drive(view);
    }
    ::dup2(kept, STDERR_FILENO);
    ::close(program);
    ::close(kept);
    std::string bytes;
    std::array<char, 256> piece{};
    for (ssize_t count = 0; (count = ::read(terminal, piece.data(), piece.size())) > 0;) {
        bytes.append(piece.data(), static_cast<std::size_t>(count));
    }
    ::close(terminal);
    return bytes;
}

TEST(ProgressLine, EndsAtAHundredPercentAndIsTakenAway) {
    const SpeakingIn chinese(TextLanguage::chinese);
    const std::string cleared = "\r\x1b[K";
    const auto sent = drawn([](cli::ConsoleView& view) {
        for (const auto stage : {Stage::backUp, Stage::write}) {
            view.beginStage(stage);
            for (const int percent : {2, 50, 100, 0}) {
                view.setProgress(static_cast<std::int16_t>(percent));
            }
            view.setStatus("");
        }
    });
    for (const char* stage : {"正在备份", "正在写入"}) {
        const auto line = cleared + stage + " [" + std::string(30, '#') + "] 100 %  " + cleared;
        EXPECT_THAT(sent, HasSubstr(line));
    }
    EXPECT_TRUE(sent.ends_with("100 %  " + cleared)) << sent;
    EXPECT_THAT(sent.substr(sent.find("正在写入")), Not(HasSubstr("正在备份")));
}

TEST(WideText, LinesAndColumnsCountWhatTheTerminalShows) {
    const std::pair<const char*, std::size_t> widths[] = {
        {"", 0},     {"abc", 3},  {"信道", 4},       {"“信道”：", 8}, {"é–", 2},
        {"\xFF", 1}, {"ＯＫ", 4}, {"信\xE4\xBF", 4}, {"한글", 4}};
    for (const auto& [text, width] : widths) {
        EXPECT_EQ(cli::displayWidth(text), width) << text;
    }
    EXPECT_EQ(cli::paddedRight("信道", 6) + "|", "信道  |");
    const std::tuple<const char*, std::size_t, const char*> lines[] = {
        {"one two three", 8, "one two\n three"},
        {"写入对讲机，然后比较", 11, "写入对讲\n 机，然后比\n 较"},
        {"读取（COM1）数据", 7, "读取\n （COM1）\n 数据"},
        {"unbreakable", 4, "unbreakable"}};
    for (const auto& [text, width, expected] : lines) {
        EXPECT_EQ(cli::wrapped(text, 1, width), expected);
    }
}

}  // namespace
}  // namespace k520
