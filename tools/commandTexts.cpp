// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "commandTexts.h"

#include <algorithm>
#include <utility>

namespace k520::cli::commandTexts {

Word wordOf(const Argument& argument) {
    static constexpr std::pair<std::string_view, Word> words[] = {
        {"FILE", Word::file},         {"OUT", Word::file},        {"OUT.csv", Word::file},
        {"PATH", Word::file},         {"DIR", Word::folder},      {"PORT", Word::port},
        {"KEY=VALUE...", Word::edit}, {"SECTION", Word::section}, {"KEY", Word::key},
        {"VALUE", Word::any}};
    const auto placeholder = placeholderOf(argument);
    for (const auto& [known, word] : words) {
        if (known == placeholder) {
            return word;
        }
    }
    return isPositional(argument) ? Word::file : Word::any;
}

bool isPositional(const Argument& argument) {
    return !argument.flags.starts_with('-');
}

std::string_view placeholderOf(const Argument& argument) {
    return argument.value.empty() && isPositional(argument) ? argument.name : argument.value;
}

std::vector<std::string> flagsOf(const Argument& argument) {
    std::vector<std::string> flags;
    std::string_view rest = argument.flags;
    while (!rest.empty()) {
        const auto end = std::min(rest.find(','), rest.size());
        flags.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return flags;
}

std::vector<Group> groups() {
    std::vector<Group> found;
    for (const Command& command : commands()) {
        const auto blank = command.name.find(' ');
        if (blank == std::string_view::npos) {
            continue;
        }
        const std::string name(command.name.substr(0, blank));
        auto group = std::ranges::find(found, name, &Group::name);
        if (group == found.end()) {
            group = found.insert(found.end(), Group{name, {}});
        }
        group->seconds.emplace_back(command.name.substr(blank + 1));
    }
    return found;
}

std::vector<std::string> firstWords() {
    std::vector<std::string> words;
    for (const Command& command : commands()) {
        std::string word(command.name.substr(0, command.name.find(' ')));
        if (std::ranges::find(words, word) == words.end()) {
            words.push_back(std::move(word));
        }
    }
    return words;
}

std::string summaryOf(std::string_view name) {
    const auto all = commands();
    const auto found = std::ranges::find(all, name, &Command::name);
    return say(found == all.end() ? groupSummary : found->summary);
}

}  // namespace k520::cli::commandTexts
