// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <set>

#include "commandTexts.h"

namespace k520::cli::commandTexts {

namespace {

std::string_view nameOf(Word word) {
    switch (word) {
        case Word::file:
            return "file";
        case Word::folder:
            return "folder";
        case Word::port:
            return "port";
        case Word::edit:
            return "edit";
        case Word::section:
            return "section";
        case Word::key:
            return "key";
        case Word::any:
            break;
    }
    return "any";
}

std::string escaped(std::string_view text, std::string_view special, std::string_view escape) {
    std::string result;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) {
            result += escape;
        }
        result += c;
    }
    return result;
}

/// In single quotes, within which zsh and POSIX shells know no escape.
std::string shellQuoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

std::string fishQuoted(std::string_view text) {
    return "'" + escaped(text, "\\'", "\\") + "'";
}

std::string bashBranch(std::string_view name, std::span<const Argument> arguments,
                       const std::vector<std::string>& commands = {}) {
    std::vector<std::string> options = flagsOf(helpOption);
    std::vector<std::string> takes;
    std::vector<std::string_view> words;
    for (const Argument& argument : arguments) {
        const auto word = nameOf(wordOf(argument));
        if (isPositional(argument)) {
            words.push_back(word);
            continue;
        }
        for (const auto& flag : flagsOf(argument)) {
            options.push_back(flag);
            if (!placeholderOf(argument).empty()) {
                takes.push_back(fmt::format("[{}]={}", flag, word));
            }
        }
    }
    return fmt::format(
        "        {})\n            options=({})\n            takes=({})\n"
        "            words=({}) commands=({}) ;;\n",
        shellQuoted(name), fmt::join(options, " "), fmt::join(takes, " "), fmt::join(words, " "),
        fmt::join(commands, " "));
}

std::string zshArgument(const Argument& argument, const std::string& place) {
    const auto placeholder = placeholderOf(argument);
    const auto value = placeholder.empty()
                           ? std::string()
                           : fmt::format(":{}:_k520_cli_{}", escaped(placeholder, ":\\", "\\"),
                                         nameOf(wordOf(argument)));
    if (isPositional(argument)) {
        return " \\\n                " + shellQuoted(place + value);
    }
    const auto flags = flagsOf(argument);
    std::string result;
    for (const auto& flag : flags) {
        result += " \\\n                " +
                  shellQuoted(fmt::format("({}){}{}[{}]{}", fmt::join(flags, " "), flag,
                                          value.empty()            ? ""
                                          : flag.starts_with("--") ? "="
                                                                   : "+",
                                          escaped(say(argument.help), "[]\\", "\\"), value));
    }
    return result;
}

std::string zshBranch(const Command& command) {
    std::string text =
        fmt::format("        ({})\n            _arguments -s $help", shellQuoted(command.name));
    int place = 0;
    for (const Argument& argument : command.arguments) {
        const bool last = argument.kind == ArgumentKind::positionalList;
        place += isPositional(argument) ? 1 : 0;
        text += zshArgument(argument, last ? "*" : fmt::format("{}", place));
    }
    return text + " && ret=0 ;;\n";
}

std::string zshGroup(std::string_view name, const std::vector<std::string>& words) {
    std::string text = fmt::format("        ({})\n            commands=(", shellQuoted(name));
    for (const auto& word : words) {
        const auto full = name.empty() ? word : fmt::format("{} {}", name, word);
        text += "\n                " +
                shellQuoted(fmt::format("{}:{}", word, escaped(summaryOf(full), ":\\", "\\")));
    }
    return text + ") ;;\n";
}

std::string fishWord(std::string_view condition, std::string_view word, std::string_view summary) {
    return fmt::format("complete -c k520-cli -n \"__k520_cli_at {}\" -a {} -d {}\n", condition,
                       word, fishQuoted(summary));
}

std::string_view fishValues(Word word) {
    switch (word) {
        case Word::file:
            return "-rF";
        case Word::folder:
            return "-xa '(__fish_complete_directories)'";
        case Word::port:
            // A port may be any path.
            return "-rFa '(__k520_cli_ports)'";
        case Word::edit:
            return "-xa '(__k520_cli_edits)'";
        case Word::section:
            return "-xa '(__k520_cli_sections)'";
        case Word::key:
            return "-xa '(__k520_cli_keys)'";
        case Word::any:
            break;
    }
    return "-x";
}

std::string fishOption(std::string_view command, const Argument& argument) {
    std::string text = fmt::format("complete -c k520-cli -n \"__k520_cli_in {}\"", command);
    for (const auto& flag : flagsOf(argument)) {
        text += flag.starts_with("--") ? " -l " + flag.substr(2) : " -s " + flag.substr(1);
    }
    if (!placeholderOf(argument).empty()) {
        text += fmt::format(" {}", fishValues(wordOf(argument)));
    }
    return text + fmt::format(" -d {}\n", fishQuoted(say(argument.help)));
}

std::string fishCommand(const Command& command) {
    const auto name = fishQuoted(command.name);
    std::string text = fishOption(name, helpOption);
    int place = 0;
    for (const Argument& argument : command.arguments) {
        if (!isPositional(argument)) {
            text += fishOption(name, argument);
        } else if (++place, wordOf(argument) != Word::any) {
            const bool last = argument.kind == ArgumentKind::positionalList;
            // Without an option in front "-r" means nothing, so "-rF" and "-x" do for words, too.
            text += fmt::format("complete -c k520-cli -n \"__k520_cli_at {} {}{}\" {}\n", name,
                                place, last ? "+" : "", fishValues(wordOf(argument)));
        }
    }
    return text;
}

}  // namespace

std::string bashBranches() {
    std::string text = bashBranch("", std::array{versionOption, folderOption}, firstWords());
    for (const auto& [name, seconds] : groups()) {
        text += bashBranch(name, {}, seconds);
    }
    for (const Command& command : commands()) {
        text += bashBranch(command.name, command.arguments);
    }
    return text;
}

std::string zshBranches() {
    std::string text = zshGroup("", firstWords());
    for (const auto& [name, seconds] : groups()) {
        text += zshGroup(name, seconds);
    }
    for (const Command& command : commands()) {
        text += zshBranch(command);
    }
    return text;
}

std::string fishLines() {
    std::string text;
    for (const auto& option : {helpOption, versionOption, folderOption}) {
        text += fishOption("''", option);
    }
    for (const auto& word : firstWords()) {
        text += fishWord("'' 1", word, summaryOf(word));
    }
    for (const auto& [name, seconds] : groups()) {
        text += fishOption(fishQuoted(name), helpOption);
        for (const auto& second : seconds) {
            text += fishWord(fishQuoted(name) + " 1", second, summaryOf(name + " " + second));
        }
    }
    for (const Command& command : commands()) {
        text += fishCommand(command);
    }
    return text;
}

std::string fishOptionsWithValue() {
    std::set<std::string> found;
    const auto note = [&](const Argument& argument) {
        if (!isPositional(argument) && !placeholderOf(argument).empty()) {
            const auto flags = flagsOf(argument);
            found.insert(flags.begin(), flags.end());
        }
    };
    note(folderOption);
    for (const Command& command : commands()) {
        for (const Argument& argument : command.arguments) {
            note(argument);
        }
    }
    return fmt::format("{}", fmt::join(found, " "));
}

}  // namespace k520::cli::commandTexts
