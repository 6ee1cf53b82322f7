// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/scriptText.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "base/Checked.h"
#include "link/port/portTexts.h"

namespace k520::scriptText {

namespace {

/// A mark for each byte of a block. A start builds a thousand scripts.
std::string_view marks(int count) {
    static constexpr std::string_view longest = "VAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVA";
    static_assert(longest.size() == 2 * blockLength);
    return longest.substr(0, 2 * static_cast<std::size_t>(count));
}

std::string blockHeader(int address, int length) {
    return addressText(address) + hexText(static_cast<std::uint32_t>(length), 2);
}

}  // namespace

std::string addressText(int address) {
    if (address < 0 || address > highestAddress) {
        throw RuntimeError(errNum::invalidCall,
                           say(texts::addressOutside, address, highestAddress));
    }
    const auto bits = static_cast<std::uint32_t>(address);
    return hexText(bits / 1024, 1) + hexText(bits % 1024, 3);
}

std::string readBlock(int address, int length) {
    const std::string header = blockHeader(address, length);
    return fmt::format("TX52{0}RX57{0}{1}EN", header, marks(length));
}

std::string writeBlock(int address, int length) {
    return fmt::format("TX57{}{}RX06EN", blockHeader(address, length), marks(length));
}

int percentBlocks(int start, int end) noexcept {
    const int blocks = static_cast<int>(roundHalfEven((end - start) / double{blockLength}));
    return blocks == 0 ? 1 : blocks;
}

std::int16_t blockPercent(int step, int blocks) noexcept {
    constexpr double forBlocks = highestBlockPercent - handshakePercent;
    const double percent = roundHalfEven((step - 1) * forBlocks / blocks + handshakePercent);
    return static_cast<std::int16_t>(std::min<double>(highestBlockPercent, percent));
}

std::vector<std::string> tokens(std::string_view script) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < script.size(); i += 2) {
        result.emplace_back(script.substr(i, 2));
    }
    return result;
}

std::uint8_t byteOfToken(std::string_view token) noexcept {
    std::uint8_t value = 0;
    const char* end = token.data() + token.size();
    const auto [rest, error] = std::from_chars(token.data(), end, value, 16);
    return error == std::errc{} && rest == end ? value : std::uint8_t{0};
}

}  // namespace k520::scriptText
