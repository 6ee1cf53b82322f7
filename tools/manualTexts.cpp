// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <sstream>

#include "base/Checked.h"
#include "commandTexts.h"

namespace k520::cli::commandTexts {

namespace {

constexpr Text sentence{"{}。", "{}."};

/// Text as roff prints it letter by letter: hyphens are the ones that can be typed.
std::string plain(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '\\':
                result += "\\e";
                break;
            case '-':
                result += "\\-";
                break;
            default:
                result += c;
        }
    }
    // At the start of a line these would begin a macro.
    return result.starts_with('.') || result.starts_with('\'') ? "\\&" + result : result;
}

std::string bold(std::string_view text) {
    return "\\fB" + plain(text) + "\\fR";
}

std::string slanted(std::string_view text) {
    return "\\fI" + plain(text) + "\\fR";
}

/// "-o, --output OUT"
std::string tagOf(const Argument& argument) {
    auto value = slanted(placeholderOf(argument));
    if (isPositional(argument)) {
        return value;
    }
    std::vector<std::string> flags;
    for (const auto& flag : flagsOf(argument)) {
        flags.push_back(bold(flag));
    }
    return fmt::format("{}{}", fmt::join(flags, ", "),
                       placeholderOf(argument).empty() ? "" : " " + value);
}

std::string item(const std::string& tag, std::string_view text) {
    return fmt::format(".TP\n{}\n{}\n", tag, plain(text));
}

std::string usageOf(const Command& command) {
    std::string usage = bold("k520-cli " + std::string(command.name));
    for (const Argument& argument : command.arguments) {
        if (isPositional(argument)) {
            usage += " " + slanted(placeholderOf(argument));
            continue;
        }
        std::string option = bold(flagsOf(argument).front());
        if (!placeholderOf(argument).empty()) {
            option += " " + slanted(placeholderOf(argument));
        }
        usage += argument.kind == ArgumentKind::required ? " " + option : " [" + option + "]";
    }
    return usage;
}

/// The details are laid out for a terminal: an indented line is a name, blanks and its meaning,
/// which goes on in lines that are indented further.
std::string detailLine(const std::string& line) {
    const auto indent = line.find_first_not_of(' ');
    if (indent == std::string::npos || indent == 0) {
        return plain(line) + "\n";
    }
    const auto gap = line.find("  ", indent);
    if (indent > 2 || gap == std::string::npos) {
        return plain(line.substr(indent)) + "\n";
    }
    return item(bold(line.substr(indent, gap - indent)),
                line.substr(line.find_first_not_of(' ', gap)));
}

std::string detailsOf(const Text& details) {
    std::string text = ".PP\n";
    std::istringstream lines{say(details)};
    bool inList = false;
    for (std::string line; std::getline(lines, line);) {
        const bool indented = line.starts_with(' ');
        text += inList && !indented ? ".PP\n" : "";
        text += detailLine(line);
        inList = indented;
    }
    return text;
}

std::string exampleOf(const Command& command) {
    return fmt::format(".PP\n{}\n.PP\n.RS\n.nf\n{}\n.fi\n.RE\n",
                       trimBlanks(say(texts::exampleTitle)),
                       plain(fmt::format("k520-cli {}", command.example)));
}

}  // namespace

std::string manualOptions() {
    std::string text;
    for (const auto& option : {folderOption, helpOption, versionOption}) {
        text += item(tagOf(option), say(option.help));
    }
    return text;
}

std::string manualCommands() {
    std::string text;
    for (const Command& command : commands()) {
        text += fmt::format(".SS {}\n{}\n.PP\n{}\n", plain(command.name), usageOf(command),
                            plain(say(sentence, say(command.summary))));
        for (const Argument& argument : command.arguments) {
            text += item(tagOf(argument), say(argument.help));
        }
        text += command.details ? detailsOf(*command.details) : std::string();
        text += exampleOf(command);
    }
    return text;
}

}  // namespace k520::cli::commandTexts
