// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/scriptText.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>

#include "app/Checked.h"

namespace k520::scriptText {

namespace {

std::string marks(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "VA";
    }
    return text;
}

std::string blockHeader(int address, int length) {
    return addressText(address) + hexText(static_cast<std::uint32_t>(length), 2);
}

}  // namespace

std::string addressText(int address) {
    if (address < 0 || address > highestAddress) {
        throw RuntimeError(errNum::invalidCall,
                           fmt::format("address {} is outside 0..{}", address, highestAddress));
    }
    const auto bits = static_cast<std::uint32_t>(address);
    return hexText(bits / 1024, 1) + hexText(bits % 1024, 3);
}

std::string readBlock(int address, int length) {
    const std::string header = blockHeader(address, length);
    return "TX52" + header + "RX57" + header + marks(length) + "EN";
}

std::string writeBlock(int address, int length) {
    return "TX57" + blockHeader(address, length) + marks(length) + "RX06EN";
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
