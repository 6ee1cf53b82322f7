// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/cellText.h"

#include <algorithm>
#include <array>

#include "base/Checked.h"
#include "base/typedText.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/toneCode.h"

namespace k520::cellText {

namespace {

constexpr std::array<std::string_view, 2> frequencyUnits{"mhz", "兆赫"};
constexpr std::array<std::string_view, 3> toneUnits{"hz", "赫兹", "赫"};

bool isOff(std::string_view text) {
    const std::string typed = lowerAscii(typedText::plain(text));
    return typed.empty() || typed == lowerAscii(modCtdcs::state().CtdcsOffText) ||
           std::ranges::any_of(toneCode::allOffTexts(),
                               [&](std::string_view off) { return typed == lowerAscii(off); });
}

/// A spreadsheet makes 23 of the code 023. Only codes of the list: any other number of two digits
/// is more likely a slip.
std::optional<std::string> dcsWithoutZero(std::string_view digits) {
    const std::string code = "0" + std::string(digits);
    const auto codes = toneCode::dcsCodes();
    return std::ranges::find(codes, code) != codes.end() ? toneCode::normaliseTone(code)
                                                         : std::nullopt;
}

}  // namespace

bool isEmpty(std::string_view text) {
    return typedText::plain(text).empty();
}

std::optional<double> megahertz(std::string_view text) {
    return typedText::number(text, frequencyUnits);
}

std::optional<double> distanceFromReceive(std::string_view text) {
    const std::string whole = typedText::plain(text);
    if (!whole.starts_with('=')) {
        return std::nullopt;
    }
    const std::string distance = typedText::plain(std::string_view(whole).substr(1));
    if (distance.empty()) {
        return 0;
    }
    const bool isSigned = distance.front() == '+' || distance.front() == '-';
    return isSigned ? megahertz(distance) : std::nullopt;
}

std::optional<std::string> tone(std::string_view text) {
    if (isOff(text)) {
        return modCtdcs::state().CtdcsOffText;
    }
    const auto numeral = typedText::numeral(text, toneUnits);
    const auto known = toneCode::normaliseTone(numeral);
    return known ? known : dcsWithoutZero(numeral);
}

std::optional<std::string> name(std::string_view text) {
    std::string result = typedText::plain(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    const auto& valid = modChMem::state().ValidCharTbl;
    const bool isValid = std::ranges::all_of(
        result, [&](char c) { return std::ranges::find(valid, std::string(1, c)) != valid.end(); });
    return isValid ? std::optional(result) : std::nullopt;
}

}  // namespace k520::cellText
