// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/wideText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace k520::cli {

namespace {

struct Character {
    char32_t code = 0;
    std::string_view bytes;
};

/// The first character of a text that is not empty.
Character firstCharacter(std::string_view text) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto lead = byteAt(0);
    const std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 1 || length > text.size()) {
        return {lead, text.substr(0, 1)};
    }
    char32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80U) {
            return {lead, text.substr(0, 1)};
        }
        code = (code << 6U) | (byteAt(i) & 0x3FU);
    }
    return {code, text.substr(0, length)};
}

struct CodeRange {
    char32_t first;
    char32_t last;
};

/// What terminals show in two columns, as far as names and texts go.
constexpr std::array wideRanges{
    CodeRange{0x1100, 0x115F},  CodeRange{0x2E80, 0x303E},   CodeRange{0x3041, 0x33FF},
    CodeRange{0x3400, 0x4DBF},  CodeRange{0x4E00, 0xA4CF},   CodeRange{0xAC00, 0xD7A3},
    CodeRange{0xF900, 0xFAFF},  CodeRange{0xFE30, 0xFE6F},   CodeRange{0xFF00, 0xFF60},
    CodeRange{0xFFE0, 0xFFE6},  CodeRange{0x1F300, 0x1F64F}, CodeRange{0x1F900, 0x1F9FF},
    CodeRange{0x20000, 0x3FFFD}};

bool isWide(char32_t code) {
    return std::ranges::any_of(wideRanges, [&](const CodeRange& range) {
        return code >= range.first && code <= range.last;
    });
}

/// Marks that must not begin a line.
bool closes(char32_t code) {
    return std::u32string_view(U"，。；：、？！）”").find(code) != std::u32string_view::npos;
}

/// Marks that must not end one.
bool opens(char32_t code) {
    return std::u32string_view(U"（“").find(code) != std::u32string_view::npos;
}

/// The parts of a text between which a line may end; blanks stay with the part before them.
std::vector<std::string> piecesOf(std::string_view text) {
    std::vector<std::string> pieces;
    Character before;
    while (!text.empty()) {
        const auto next = firstCharacter(text);
        text.remove_prefix(next.bytes.size());
        const bool atBlank = before.code == U' ' && next.code != U' ';
        const bool atWide = (isWide(before.code) || isWide(next.code)) && before.code != U' ';
        const bool mayBreak =
            atBlank || (atWide && !closes(next.code) && !opens(before.code) && next.code != U' ');
        if (pieces.empty() || mayBreak) {
            pieces.emplace_back();
        }
        pieces.back() += next.bytes;
        before = next;
    }
    return pieces;
}

std::string withoutBlanksAtEnd(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

}  // namespace

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const auto next = firstCharacter(text);
        width += isWide(next.code) ? 2U : 1U;
        text.remove_prefix(next.bytes.size());
    }
    return width;
}

std::string paddedRight(std::string_view text, std::size_t width) {
    return std::string(text) + std::string(width - std::min(width, displayWidth(text)), ' ');
}

std::string wrapped(std::string_view text, std::size_t indent, std::size_t width) {
    std::string result;
    std::string line;
    for (const auto& piece : piecesOf(text)) {
        const auto needed = indent + displayWidth(line) + displayWidth(withoutBlanksAtEnd(piece));
        if (!line.empty() && needed > width) {
            result += withoutBlanksAtEnd(line) + '\n' + std::string(indent, ' ');
            line.clear();
        }
        line += piece;
    }
    return result + withoutBlanksAtEnd(line);
}

}  // namespace k520::cli
