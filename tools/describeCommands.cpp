// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Fills a template of a manual page or a shell's completions from the table of commands:
//   describeCommands TEMPLATE OUTPUT [LANGUAGE]
// A template marks the places as @name@. LANGUAGE is that of the settings file: 1 is Chinese, 3,
// the one without it, English.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <regex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/programFolder.h"
#include "base/Files.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/program.h"
#include "commandTexts.h"
#include "document/edit.h"
#include "settings/optionTable.h"

namespace {

using namespace k520;

constexpr std::size_t largestTemplate = 1 << 20;

std::string textOf(const std::filesystem::path& path) {
    const auto content = files::read(path, largestTemplate);
    return {content.bytes.begin(), content.bytes.end()};
}

/// Whether a character of Chinese, or of its punctuation, begins here in UTF-8.
bool isChinese(std::string_view text) {
    const auto first = text.empty() ? 0 : static_cast<unsigned char>(text.front());
    return (first >= 0xE3 && first <= 0xE9) || first == 0xEF;
}

bool isPunctuation(std::string_view character) {
    const auto first = static_cast<unsigned char>(character.front());
    return first == 0xE3 || first == 0xEF;
}

/// Chinese has no blanks between words, but a reader of a manual page shows one where a line goes
/// on in the next. So lines of one paragraph become one; macros and the tag of a list stay alone.
std::string withoutBlanksInChinese(std::string_view page) {
    constexpr std::size_t bytesOfOne = 3;
    std::string joined;
    std::string_view last;  // character of a line that may go on
    bool isTag = false;
    while (!page.empty()) {
        const auto line = page.substr(0, page.find('\n'));
        page.remove_prefix(std::min(page.size(), line.size() + 1));
        const bool isMacro = line.starts_with('.');
        if (!isMacro && isChinese(last) && (isChinese(line) || isPunctuation(last))) {
            joined.pop_back();
        }
        joined.append(line).push_back('\n');
        last = isMacro || isTag || line.size() < bytesOfOne ? std::string_view()
                                                            : line.substr(line.size() - bytesOfOne);
        isTag = line == ".TP";
    }
    return joined;
}

std::string channelFields() {
    std::vector<std::string> names;
    for (int col = 1; col <= modChMem::state().ColNum; ++col) {
        names.push_back(document::nameOfColumn(col));
    }
    return fmt::format("{}", fmt::join(names, " "));
}

std::string optionNames() {
    std::vector<std::string_view> names;
    for (const auto& option : optionTable::options()) {
        names.push_back(option.name);
    }
    return fmt::format("{}", fmt::join(names, " "));
}

/// Names in the shipped settings file, in its order: of all sections, or of the keys of one.
std::string settingNames(std::string_view section) {
    const std::string text = textOf(programFolder::state().own / programFolder::settingsFileName);
    std::vector<std::string> names;
    std::string current;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto end = std::min(text.find('\n', begin), text.size());
        const auto line = std::string_view(text).substr(begin, end - begin);
        begin = end + 1;
        if (line.starts_with('[')) {
            current = line.substr(1, line.find(']') - 1);
            if (section.empty()) {
                names.push_back(current);
            }
        } else if (current == section && !line.starts_with(';') &&
                   line.find('=') != std::string_view::npos) {
            names.emplace_back(line.substr(0, line.find('=')));
        }
    }
    return fmt::format("{}", fmt::join(names, " "));
}

struct Place {
    std::string_view name;
    std::string (*text)();
};

constexpr Place places[] = {
    {"version", [] { return std::string(K520_VERSION); }},
    {"bash branches", cli::commandTexts::bashBranches},
    {"zsh branches", cli::commandTexts::zshBranches},
    {"fish lines", cli::commandTexts::fishLines},
    {"fish options with value", cli::commandTexts::fishOptionsWithValue},
    {"manual options", cli::commandTexts::manualOptions},
    {"manual commands", cli::commandTexts::manualCommands},
    {"groups",
     [] {
         std::string names;
         for (const auto& group : cli::commandTexts::groups()) {
             names += (names.empty() ? "" : " ") + group.name;
         }
         return names;
     }},
    {"channels", [] { return fmt::format("{}", modChMem::state().ChNum); }},
    {"channel fields", channelFields},
    {"option names", optionNames},
    {"sections", [] { return settingNames(""); }},
    {"setting keys", [] { return settingNames("Setting"); }},
};

void fillIn(std::string& text, const Place& place) {
    const std::string mark = fmt::format("@{}@", place.name);
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
        std::string filling = place.text();
        const bool wholeLine = filling.ends_with('\n');
        text.replace(at, mark.size() + (wholeLine ? 1 : 0), filling);
        at += filling.size();
    }
}

int run(std::span<char* const> words) {
    if (words.size() != 2 && words.size() != 3) {
        cli::refuse("usage: describeCommands TEMPLATE OUTPUT [LANGUAGE]");
    }
    programFolder::state().own = K520_SHARE_DIR;
    cli::startCore();
    const bool chinese = words.size() == 3 && std::string_view(words[2]) == "1";
    const SpeakingIn reader(chinese ? TextLanguage::chinese : TextLanguage::english);
    std::string text = textOf(words[0]);
    for (const Place& place : places) {
        fillIn(text, place);
    }
    if (std::smatch left; std::regex_search(text, left, std::regex("@[a-z]+( [a-z]+)*@"))) {
        cli::fail(fmt::format("{}: nothing is known for {}", words[0], left.str()));
    }
    if (chinese) {
        text = withoutBlanksInChinese(text);
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    files::replace(words[1], {bytes, text.size()});
    return 0;
}

}  // namespace

int main(int count, char** words) {
    try {
        return run({words + 1, words + count});
    } catch (const std::exception& error) {
        fmt::print(stderr, "describeCommands: {}\n", error.what());
        return 1;
    }
}
