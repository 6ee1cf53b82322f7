// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "app/Guard.h"
#include "channels/channelRecord.h"
#include "channels/codecTexts.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/toneCode.h"
#include "image/modIicDat.h"

namespace k520::modChMem {

namespace {

using namespace channelRecord;

constexpr const char* decodeLabel = "modChMem->IicDatToChInfo";

std::uint8_t& recordByte(int channel, int byteOffset) {
    return modIicDat::IicDat()(address(channel) + byteOffset);
}

std::int32_t& fieldOf(int channel, int number) {
    return state().ChInfo(channel).field(number);
}

// Parameters.

void readParameter(int channel, const Parameter& parameter) {
    const int bits = recordByte(channel, parameter.offset) & parameter.mask;
    const auto& patterns = parameter.patterns;
    const auto found = bits == 0 ? patterns.end() : std::ranges::find(patterns, bits);
    fieldOf(channel, parameter.field) =
        found == patterns.end() ? 0 : static_cast<std::int32_t>(found - patterns.begin()) + 1;
}

void writeParameter(int channel, const Parameter& parameter) {
    const auto value = static_cast<std::size_t>(fieldOf(channel, parameter.field));
    const auto& patterns = parameter.patterns;
    const int bits = value >= 1 && value <= patterns.size() ? patterns[value - 1] : 0;
    std::uint8_t& byte = recordByte(channel, parameter.offset);
    byte = static_cast<std::uint8_t>((byte & ~parameter.mask) | bits);
}

int readSharedWord() {
    const auto& image = modIicDat::IicDat();
    return image(sharedWord + 1) * 256 + image(sharedWord);
}

void writeSharedWord(int word) {
    auto& image = modIicDat::IicDat();
    image(sharedWord + 1) = static_cast<std::uint8_t>(word / 256);
    image(sharedWord) = static_cast<std::uint8_t>(word & 0xFF);
}

// Frequencies.

std::int32_t readFrequency(int channel, int byteOffset) {
    std::array<std::uint8_t, frequencyLength> bytes{};
    for (int i = 0; i < frequencyLength; ++i) {
        bytes[static_cast<std::size_t>(i)] = recordByte(channel, byteOffset + i);
    }
    return naming(
        say(byteOffset == offset::rx ? texts::receiveFrequencyOf : texts::transmitFrequencyOf,
            channel),
        [&] { return frequency::fromBcd(bytes); });
}

void writeFrequency(int channel, int byteOffset, std::int32_t value) {
    std::array<std::uint8_t, frequencyLength> bytes{0xFF, 0xFF, 0xFF, 0xFF};
    if (value != frequency::none) {
        if (!SeparateFreChar(std::to_string(value))) {
            return;
        }
        // The text begins with the digits that the radio keeps last.
        std::ranges::reverse_copy(state().SepArr, bytes.begin());
    }
    for (int i = 0; i < frequencyLength; ++i) {
        recordByte(channel, byteOffset + i) = bytes[static_cast<std::size_t>(i)];
    }
}

// Tones.

std::string readTone(int channel, int byteOffset) {
    return QtDqtIicToChar(recordByte(channel, byteOffset + 1), recordByte(channel, byteOffset));
}

void writeTone(int channel, int byteOffset, const std::string& text) {
    if (QtDqtCharToIic(text)) {
        recordByte(channel, byteOffset) = state().SepArr[0];
        recordByte(channel, byteOffset + 1) = state().SepArr[1];
    }
}

// Whole channels.

void setEmpty(int number) {
    State& s = state();
    Channel& channel = s.ChInfo(number);
    channel.rxFre() = channel.txFre() = frequency::none;
    channel.field(3) = channel.field(4) = 0;
    for (int k = firstParameter; k <= s.ColNum; ++k) {
        channel.field(k) = columnOf(k).defaultValue();
    }
}

void decodeChannel(std::int16_t number) {
    Channel& channel = state().ChInfo(number);
    channel.opened = channel.outOfBand = false;
    channel.texts.clear();
    if (!frequencyPresent(recordByte(number, offset::rx + frequencyLength - 1))) {
        setEmpty(number);
        return;
    }
    IcChParaSol(number);
    IcRxFreSol(number);
    IcTxFreSol(number);
    IcCtdcsDecSol(number);
    IcCtdcsEncSol(number);
}

}  // namespace

void ChInfoSaveSol(std::int16_t direction) {
    guarded("modChMem->ChInfoSaveSol", [&] {
        if (direction == 1) {
            IicDatToChInfo();
        } else if (direction == 0) {
            ChInfoToIicDat();
        }
    });
}

void IicDatToChInfo() {
    guarded(decodeLabel, [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            // A number beyond the table ends the loop; what fails inside one channel does not.
            static_cast<void>(state().ChInfo(n));
            guarded(decodeLabel, [&] { decodeChannel(static_cast<std::int16_t>(n)); });
        }
    });
}

void ChInfoToIicDat() {
    guarded("modChMem->ChInfoToIicDat", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            if (state().ChInfo(n).modified() != -1) {
                encodeChannel(static_cast<std::int16_t>(n));
            }
        }
    });
}

void encodeChannel(std::int16_t channel) {
    CiChParaSol(channel);
    CiRxFreSol(channel);
    CiTxFreSol(channel);
    CiCtdcsDecSol(channel);
    CiCtdcsEncSol(channel);
}

void IcChParaSol(std::int16_t channel) {
    guarded("modChMem->IcChParaSol", [&] {
        readParameter(channel, parameter5);
        readParameter(channel, parameter6);
        fieldOf(channel, sharedField) = (readSharedWord() & ChBitMask(channel - 1)) != 0 ? 1 : 0;
        readParameter(channel, parameter8);
    });
}

void CiChParaSol(std::int16_t channel) {
    guarded("modChMem->CiChParaSol", [&] {
        writeParameter(channel, parameter5);
        writeParameter(channel, parameter6);
        const int word = readSharedWord();
        writeSharedWord(fieldOf(channel, sharedField) == 1 ? word | ChBitMask(channel - 1)
                                                           : word & ChBitClear(channel - 1));
        writeParameter(channel, parameter8);
    });
}

void IcRxFreSol(std::int16_t channel) {
    guarded("modChMem->IcRxFreSol",
            [&] { state().ChInfo(channel).rxFre() = readFrequency(channel, offset::rx); });
}

void IcTxFreSol(std::int16_t channel) {
    guarded("modChMem->IcTxFreSol", [&] {
        const bool present =
            frequencyPresent(recordByte(channel, offset::tx + frequencyLength - 1));
        state().ChInfo(channel).txFre() =
            present ? readFrequency(channel, offset::tx) : frequency::none;
    });
}

void CiRxFreSol(std::int16_t channel) {
    guarded("modChMem->CiRxFreSol",
            [&] { writeFrequency(channel, offset::rx, state().ChInfo(channel).rxFre()); });
}

void CiTxFreSol(std::int16_t channel) {
    guarded("modChMem->CiTxFreSol",
            [&] { writeFrequency(channel, offset::tx, state().ChInfo(channel).txFre()); });
}

void IcCtdcsDecSol(std::int16_t channel) {
    guarded("modChMem->IcCtdcsDecSol",
            [&] { state().ChInfo(channel).decodeTone = readTone(channel, offset::decode); });
}

void IcCtdcsEncSol(std::int16_t channel) {
    guarded("modChMem->IcCtdcsEncSol",
            [&] { state().ChInfo(channel).encodeTone = readTone(channel, offset::encode); });
}

void CiCtdcsDecSol(std::int16_t channel) {
    guarded("modChMem->CiCtdcsDecSol",
            [&] { writeTone(channel, offset::decode, state().ChInfo(channel).decodeTone); });
}

void CiCtdcsEncSol(std::int16_t channel) {
    guarded("modChMem->CiCtdcsEncSol",
            [&] { writeTone(channel, offset::encode, state().ChInfo(channel).encodeTone); });
}

bool SeparateFreChar(std::string_view text) {
    return guarded("modChMem->SeparateFreChar", [&] {
        for (std::size_t i = 0; i < text.size(); i += 2) {
            auto& element = checkedAt(state().SepArr, static_cast<std::ptrdiff_t>(i / 2), "SepArr");
            element = toByte(hexToInt16(text.substr(i, 2)));
        }
    });
}

std::string QtDqtIicToChar(std::uint8_t high, std::uint8_t low) {
    std::string text;
    guarded("modChMem->QtDqtIicToChar", [&] {
        text = toneCode::toneText(static_cast<std::uint16_t>(high * 256 + low),
                                  modCtdcs::state().CtdcsOffText);
    });
    return text;
}

bool QtDqtCharToIic(std::string_view text) {
    return guarded("modChMem->QtDqtCharToIic", [&] {
        const std::uint16_t word = toneCode::toneWord(text, modCtdcs::state().CtdcsOffText);
        state().SepArr[0] = static_cast<std::uint8_t>(word & 0xFF);
        state().SepArr[1] = static_cast<std::uint8_t>(word >> 8);
    });
}

std::uint16_t ChBitMask(int index) {
    if (index < 0 || index >= codecChannels) {
        throwSubscript("ChBitMask", index);
    }
    return static_cast<std::uint16_t>(1U << index);
}

std::uint16_t ChBitClear(int index) {
    return static_cast<std::uint16_t>(0xFFFF - ChBitMask(index));
}

}  // namespace k520::modChMem
