// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/helpText.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "cli/wideText.h"

namespace k520::cli::helpText {

namespace {

constexpr std::size_t lineWidth = 80;
constexpr std::size_t meaningColumn = 28;

bool isPositional(const Argument& argument) {
    return argument.kind == ArgumentKind::positional ||
           argument.kind == ArgumentKind::positionalList;
}

std::string_view placeholderOf(const Argument& argument) {
    return argument.value.empty() && isPositional(argument) ? argument.name : argument.value;
}

/// A name and its meaning; below the name where that is too long to stand beside it.
std::string row(const std::string& name, const Text& meaning) {
    const std::string head = "  " + name;
    const auto gap = displayWidth(head) + 2 > meaningColumn
                         ? '\n' + std::string(meaningColumn, ' ')
                         : std::string(meaningColumn - displayWidth(head), ' ');
    return head + gap + wrapped(say(meaning), meaningColumn, lineWidth) + '\n';
}

std::string section(const Text& title, const std::string& rows) {
    return rows.empty() ? rows : '\n' + say(title) + '\n' + rows;
}

std::string head(const Text& summary, const std::string& usage) {
    const auto title = say(texts::usageTitle);
    return wrapped(say(summary), 0, lineWidth) + '\n' + title +
           wrapped(usage, displayWidth(title), lineWidth) + '\n';
}

/// A word of the usage line; what need not be given stands in brackets.
std::string usageWord(const Argument& argument) {
    const auto flag = argument.flags.substr(0, argument.flags.find(','));
    switch (argument.kind) {
        case ArgumentKind::positional:
        case ArgumentKind::positionalList:
            break;
        case ArgumentKind::required:
            return fmt::format("{} {}", flag, argument.value);
        case ArgumentKind::option:
            return fmt::format("[{} {}]", flag, argument.value);
        case ArgumentKind::flag:
            return fmt::format("[{}]", flag);
    }
    return std::string(placeholderOf(argument));
}

std::string rowsOf(std::span<const Argument> arguments, bool positional) {
    std::string rows;
    for (const Argument& argument : arguments) {
        if (isPositional(argument) == positional) {
            rows += row(nameOf(argument), argument.help);
        }
    }
    return rows;
}

/// The commands with a first word, or the first words of all.
std::string commandRows(std::string_view group) {
    std::string rows;
    std::string_view last;
    for (const Command& command : commands()) {
        const auto blank = command.name.find(' ');
        const auto first = command.name.substr(0, blank);
        const bool inGroup = blank != std::string_view::npos;
        if (!group.empty()) {
            rows += inGroup && first == group
                        ? row(std::string(command.name.substr(blank + 1)), command.summary)
                        : std::string();
        } else if (first != last) {
            rows += row(std::string(first), inGroup ? groupSummary : command.summary);
        }
        last = first;
    }
    return rows;
}

}  // namespace

std::string nameOf(const Argument& argument) {
    if (isPositional(argument)) {
        return std::string(placeholderOf(argument));
    }
    std::string name(argument.flags);
    if (const auto comma = name.find(','); comma != std::string::npos) {
        name.insert(comma + 1, " ");
    }
    return argument.value.empty() ? name : fmt::format("{} {}", name, argument.value);
}

std::string usageOf(const Command& command) {
    std::string usage = fmt::format("k520-cli {}", command.name);
    for (const Argument& argument : command.arguments) {
        usage += ' ' + usageWord(argument);
    }
    return usage;
}

std::string ofProgram() {
    return head(texts::programSummary, "k520-cli [--program-folder DIR] COMMAND ...") +
           section(texts::commandsTitle, commandRows("")) +
           section(texts::optionsTitle, row(nameOf(folderOption), folderOption.help) +
                                            row(nameOf(helpOption), helpOption.help) +
                                            row(nameOf(versionOption), versionOption.help)) +
           '\n' + say(texts::explainsCommand, "") + '\n' + say(texts::exitCodes) + '\n';
}

std::string ofGroup(std::string_view name) {
    return head(groupSummary, fmt::format("k520-cli {} COMMAND ...", name)) +
           section(texts::commandsTitle, commandRows(name)) +
           section(texts::optionsTitle, row(nameOf(helpOption), helpOption.help)) + '\n' +
           say(texts::explainsCommand, fmt::format("{} ", name)) + '\n';
}

std::string ofCommand(const Command& command) {
    return head(command.summary, usageOf(command)) +
           section(texts::argumentsTitle, rowsOf(command.arguments, true)) +
           section(texts::optionsTitle,
                   rowsOf(command.arguments, false) + row(nameOf(helpOption), helpOption.help)) +
           '\n' + (command.details ? say(*command.details) + '\n' : std::string()) +
           fmt::format("{}k520-cli {}\n", say(texts::exampleTitle), command.example);
}

}  // namespace k520::cli::helpText
