// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/typedText.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "base/Checked.h"

namespace k520::typedText {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::size_t longestShown = 40;
/// Units that may stand after the number of an entry.
constexpr std::array<std::string_view, 3> entryUnits{"mhz", "s", "秒"};

/// Characters that have an ordinary form, beside the full-width ones.
struct Form {
    std::string_view written;
    char meant;
};
constexpr std::array forms{Form{"\u00A0", ' '}, Form{"\u3000", ' '}, Form{"\u3002", '.'},
                           Form{"\u2212", '-'}};

std::string_view trimmed(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The ordinary form of a full-width character at the front (U+FF01 to U+FF5E are "!" to "~"); 0
/// for all else.
char fullWidthForm(std::string_view text) noexcept {
    constexpr int first = 0xFF01;
    if (text.size() < 3 || text[0] != '\xEF') {
        return 0;
    }
    const auto bits = [&](std::size_t i) { return static_cast<unsigned char>(text[i]) & 0x3F; };
    const int offset = 0xF000 + bits(1) * 64 + bits(2) - first;
    return offset >= 0 && offset <= '~' - '!' ? static_cast<char>('!' + offset) : '\0';
}

std::string withOrdinaryForms(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const char wide = fullWidthForm(text);
        const auto* form = std::ranges::find_if(
            forms, [&](const Form& each) { return text.starts_with(each.written); });
        if (wide != 0) {
            result += wide;
            text.remove_prefix(3);
        } else if (form != forms.end()) {
            result += form->meant;
            text.remove_prefix(form->written.size());
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

bool endsLikeANumber(std::string_view text) noexcept {
    return !text.empty() && std::string_view("0123456789.,").find(text.back()) != text.npos;
}

/// What counts of an entry's text.
std::string folded(std::string_view text) {
    std::string result = lowerAscii(plain(text));
    std::ranges::replace(result, ',', '.');
    std::erase(result, ' ');
    return result;
}

std::string foldedNumeral(std::string_view text) {
    return folded(numeral(text, entryUnits));
}

using Reading = std::string (*)(std::string_view);

/// The first entry that is, read in this way, what is wanted.
std::optional<Entry> entryThatIs(const std::string& wanted, std::span<const std::string> list,
                                 Reading reading) {
    const auto found = std::ranges::find_if(
        list, [&](const std::string& text) { return reading(text) == wanted; });
    return found == list.end()
               ? std::nullopt
               : std::optional(Entry{static_cast<std::int32_t>(found - list.begin())});
}

std::optional<Entry> entryNumbered(std::string_view text, std::span<const std::string> list) {
    const auto index = parseWhole(plain(text));
    return index && *index >= 0 && *index < std::ssize(list) ? std::optional(Entry{*index, true})
                                                             : std::nullopt;
}

/// The number of bytes of the first `count` characters of a UTF-8 text.
std::size_t lengthOf(std::string_view text, std::size_t count) {
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const bool begins = (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
        if (begins && count-- == 0) {
            break;
        }
    }
    return at;
}

}  // namespace

std::string plain(std::string_view text) {
    return std::string(trimmed(withOrdinaryForms(text)));
}

std::string numeral(std::string_view text, std::span<const std::string_view> units) {
    std::string result = plain(text);
    const std::string lower = lowerAscii(result);
    for (const std::string_view unit : units) {
        const auto length = lower.ends_with(unit) ? lower.size() - unit.size() : 0;
        const auto before = trimmed(std::string_view(lower).substr(0, length));
        if (endsLikeANumber(before)) {
            result.resize(before.size());
            break;
        }
    }
    std::ranges::replace(result, ',', '.');
    return result;
}

std::optional<double> number(std::string_view text, std::span<const std::string_view> units) {
    return parseNumber(numeral(text, units));
}

std::optional<Entry> entry(std::string_view text,
                           std::span<const std::span<const std::string>> lists) {
    if (plain(text).empty() || lists.empty()) {
        return std::nullopt;
    }
    if (const auto same = entryThatIs(std::string(text), lists.front(),
                                      [](std::string_view each) { return std::string(each); })) {
        return same;
    }
    const std::pair<std::string, Reading> ways[] = {
        {folded(text), folded}, {foldedNumeral(text), folded}, {folded(text), foldedNumeral}};
    for (const auto& [wanted, reading] : ways) {
        for (const auto list : lists) {
            if (const auto found = entryThatIs(wanted, list, reading)) {
                return found;
            }
        }
    }
    return entryNumbered(text, lists.front());
}

std::string shown(std::string_view text) {
    const auto length = lengthOf(text, longestShown);
    std::string result(text.substr(0, length));
    std::ranges::replace_if(
        result, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return length < text.size() ? result + "…" : result;
}

}  // namespace k520::typedText
