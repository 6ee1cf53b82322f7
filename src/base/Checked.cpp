// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Checked.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "base/causeTexts.h"

namespace k520 {

namespace {

template <class Integer>
Integer toInteger(double value) {
    const double rounded = roundHalfEven(value);
    // Written so that a NaN fails as well.
    if (!(rounded >= std::numeric_limits<Integer>::min() &&
          rounded <= std::numeric_limits<Integer>::max())) {
        throw RuntimeError(errNum::overflow, say(texts::outOfRange, value));
    }
    return static_cast<Integer>(rounded);
}

double numberOrMismatch(std::string_view text) {
    const auto value = parseNumber(text);
    if (!value) {
        throw RuntimeError(errNum::typeMismatch, say(texts::notANumber, text));
    }
    return *value;
}

bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

}  // namespace

double roundHalfEven(double value) noexcept {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest != 0.5) {
        return std::round(value);
    }
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

std::uint8_t toByte(double value) {
    return toInteger<std::uint8_t>(value);
}

std::int16_t toInt16(double value) {
    return toInteger<std::int16_t>(value);
}

std::int32_t toInt32(double value) {
    return toInteger<std::int32_t>(value);
}

std::optional<double> parseNumber(std::string_view text) noexcept {
    std::string number(trimBlanks(text));
    if (number.starts_with('+') && !number.starts_with("+-")) {
        number.erase(0, 1);
    }
    const std::size_t first = number.starts_with('-') ? 1 : 0;
    // The digits must come at once: this keeps out "nan", "inf" and a second sign.
    if (first >= number.size() || !(isDigit(number[first]) || number[first] == '.')) {
        return std::nullopt;
    }
    std::replace_if(
        number.begin(), number.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    double value = 0;
    const char* end = number.data() + number.size();
    const auto [rest, error] = std::from_chars(number.data(), end, value);
    if (error != std::errc{} || rest != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::int32_t> parseWhole(std::string_view text) noexcept {
    std::int32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc{} && rest == end ? std::optional(value) : std::nullopt;
}

std::int16_t textToInt16(std::string_view text) {
    return toInt16(numberOrMismatch(text));
}

std::int32_t textToInt32(std::string_view text) {
    return toInt32(numberOrMismatch(text));
}

std::int16_t hexToInt16(std::string_view digits) {
    std::uint32_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, value, 16);
    if (error == std::errc::result_out_of_range && rest == end) {
        throw RuntimeError(errNum::overflow, say(texts::hexTooLarge, digits));
    }
    if (error != std::errc{} || rest != end) {
        throw RuntimeError(errNum::typeMismatch, say(texts::notHexadecimal, digits));
    }
    if (value > 0xFFFF) {
        throw RuntimeError(errNum::overflow, say(texts::hexTooLarge, digits));
    }
    return static_cast<std::int16_t>(value);
}

std::string numberText(std::int32_t value) {
    return fmt::format("{: d}", value);
}

std::string hexText(std::uint32_t value, int width) {
    return fmt::format("{:0{}X}", value, width);
}

std::string_view trimBlanks(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return lowerAscii(c); });
    return lower;
}

void throwSubscript(std::string_view arrayName, std::ptrdiff_t index) {
    throw RuntimeError(errNum::subscript, fmt::format("{}({})", arrayName, index));
}

}  // namespace k520
