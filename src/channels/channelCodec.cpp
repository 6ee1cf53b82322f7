// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/channelCodec.h"

#include <algorithm>
#include <string>
#include <utility>

#include "channels/channelRecord.h"
#include "channels/codecTexts.h"
#include "channels/toneCode.h"

namespace k520::channelCodec {

namespace {

using namespace channelRecord;

constexpr std::string_view wholeDecoder = "modChMem->IicDatToChInfo";
constexpr std::string_view digitSplitter = "modChMem->SeparateFreChar";
constexpr std::string_view toneWriter = "modChMem->QtDqtCharToIic";

/// By Part.
struct Names {
    std::string_view decoder;
    std::string_view encoder;
};
constexpr std::array<Names, parts.size()> names{{
    {"modChMem->IcChParaSol", "modChMem->CiChParaSol"},
    {"modChMem->IcRxFreSol", "modChMem->CiRxFreSol"},
    {"modChMem->IcTxFreSol", "modChMem->CiTxFreSol"},
    {"modChMem->IcCtdcsDecSol", "modChMem->CiCtdcsDecSol"},
    {"modChMem->IcCtdcsEncSol", "modChMem->CiCtdcsEncSol"},
}};

/// Returns whether the body came to its end.
template <class Body>
bool attempt(Faults& faults, std::string_view procedure, Body&& body) {
    try {
        body();
        return true;
    } catch (const RuntimeError& error) {
        faults.push_back({procedure, error});
        return false;
    }
}

// Parameters.

void readParameter(const MemoryImage& image, int record, const Parameter& parameter,
                   Channel& channel) {
    const int bits = image(record + parameter.offset) & parameter.mask;
    const auto& patterns = parameter.patterns;
    const auto found = bits == 0 ? patterns.end() : std::ranges::find(patterns, bits);
    channel.field(parameter.field) =
        found == patterns.end() ? 0 : static_cast<std::int32_t>(found - patterns.begin()) + 1;
}

void writeParameter(const Channel& channel, const Parameter& parameter, int record,
                    MemoryImage& image) {
    const auto value = static_cast<std::size_t>(channel.field(parameter.field));
    const auto& patterns = parameter.patterns;
    const int bits = value >= 1 && value <= patterns.size() ? patterns[value - 1] : 0;
    std::uint8_t& byte = image(record + parameter.offset);
    byte = static_cast<std::uint8_t>((byte & ~parameter.mask) | bits);
}

int readSharedWord(const MemoryImage& image) {
    return image(sharedWord + 1) * 256 + image(sharedWord);
}

void writeSharedWord(int word, MemoryImage& image) {
    image(sharedWord + 1) = static_cast<std::uint8_t>(word / 256);
    image(sharedWord) = static_cast<std::uint8_t>(word & 0xFF);
}

void readParameters(const MemoryImage& image, int number, Channel& channel) {
    const int record = address(number);
    readParameter(image, record, parameter5, channel);
    readParameter(image, record, parameter6, channel);
    channel.field(sharedField) = (readSharedWord(image) & sharedBit(number - 1)) != 0 ? 1 : 0;
    readParameter(image, record, parameter8, channel);
}

void writeParameters(const Channel& channel, int number, MemoryImage& image) {
    const int record = address(number);
    writeParameter(channel, parameter5, record, image);
    writeParameter(channel, parameter6, record, image);
    const int bit = sharedBit(number - 1);
    const int others = readSharedWord(image) & ~bit;
    writeSharedWord(channel.field(sharedField) == 1 ? others | bit : others, image);
    writeParameter(channel, parameter8, record, image);
}

// Frequencies.

std::int32_t readFrequency(const MemoryImage& image, int number, int place) {
    std::array<std::uint8_t, frequencyLength> bytes{};
    for (int i = 0; i < frequencyLength; ++i) {
        bytes[static_cast<std::size_t>(i)] = image(address(number) + place + i);
    }
    return naming(
        say(place == offset::rx ? texts::receiveFrequencyOf : texts::transmitFrequencyOf, number),
        [&] { return frequency::fromBcd(bytes); });
}

bool holdsFrequency(const MemoryImage& image, int number, int place) {
    return frequencyPresent(image(address(number) + place + frequencyLength - 1));
}

void writeFrequency(std::int32_t value, int number, int place, Faults& faults, MemoryImage& image) {
    std::array<std::uint8_t, frequencyLength> bytes{0xFF, 0xFF, 0xFF, 0xFF};
    if (value != frequency::none &&
        !attempt(faults, digitSplitter, [&] { bytes = pairsOfDigits(std::to_string(value)); })) {
        return;
    }
    // The text begins with the digits that the radio keeps last.
    if (value != frequency::none) {
        std::ranges::reverse(bytes);
    }
    for (int i = 0; i < frequencyLength; ++i) {
        image(address(number) + place + i) = bytes[static_cast<std::size_t>(i)];
    }
}

// Tones.

std::string readTone(const MemoryImage& image, int number, int place, std::string_view offText) {
    const int at = address(number) + place;
    return toneCode::toneText(static_cast<std::uint16_t>(image(at + 1) * 256 + image(at)), offText);
}

void writeTone(const std::string& text, int number, int place, std::string_view offText,
               Faults& faults, MemoryImage& image) {
    std::uint16_t word = 0;
    if (attempt(faults, toneWriter, [&] { word = toneCode::toneWord(text, offText); })) {
        const int at = address(number) + place;
        image(at) = static_cast<std::uint8_t>(word & 0xFF);
        image(at + 1) = static_cast<std::uint8_t>(word >> 8);
    }
}

// Parts.

void readPart(Part part, const MemoryImage& image, int number, std::string_view offText,
              Channel& channel) {
    switch (part) {
        case Part::parameters:
            return readParameters(image, number, channel);
        case Part::receive:
            channel.rxFre() = readFrequency(image, number, offset::rx);
            return;
        case Part::transmit:
            channel.txFre() = holdsFrequency(image, number, offset::tx)
                                  ? readFrequency(image, number, offset::tx)
                                  : frequency::none;
            return;
        case Part::decodeTone:
            channel.decodeTone = readTone(image, number, offset::decode, offText);
            return;
        case Part::encodeTone:
            channel.encodeTone = readTone(image, number, offset::encode, offText);
            return;
    }
}

void writePart(Part part, const Channel& channel, int number, std::string_view offText,
               Faults& faults, MemoryImage& image) {
    switch (part) {
        case Part::parameters:
            return writeParameters(channel, number, image);
        case Part::receive:
            return writeFrequency(channel.rxFre(), number, offset::rx, faults, image);
        case Part::transmit:
            return writeFrequency(channel.txFre(), number, offset::tx, faults, image);
        case Part::decodeTone:
            return writeTone(channel.decodeTone, number, offset::decode, offText, faults, image);
        case Part::encodeTone:
            return writeTone(channel.encodeTone, number, offset::encode, offText, faults, image);
    }
}

void addDecoded(Part part, const MemoryImage& image, int number, std::string_view offText,
                Faults& faults, Channel& channel) {
    attempt(faults, decoderOf(part), [&] { readPart(part, image, number, offText, channel); });
}

void addEncoded(Part part, const Channel& channel, int number, std::string_view offText,
                Faults& faults, MemoryImage& image) {
    attempt(faults, encoderOf(part),
            [&] { writePart(part, channel, number, offText, faults, image); });
}

// Whole channels.

/// The tones stay.
void setEmpty(Channel& channel, const Columns& columns) {
    channel.rxFre() = channel.txFre() = frequency::none;
    channel.field(3) = channel.field(4) = 0;
    for (int k = modChMem::firstParameter; k <= columns.last; ++k) {
        channel.field(k) = checkedAt(columns.definitions, k - 1, "ChColDef").defaultValue();
    }
}

void readChannel(const MemoryImage& image, int number, const Columns& columns, Decoded& decoded) {
    auto& [channel, faults] = decoded;
    channel.opened = channel.outOfBand = false;
    channel.texts.clear();
    if (!holdsFrequency(image, number, offset::rx)) {
        return setEmpty(channel, columns);
    }
    for (const Part part : parts) {
        addDecoded(part, image, number, columns.offText, faults, channel);
    }
}

}  // namespace

std::string_view decoderOf(Part part) noexcept {
    return names[static_cast<std::size_t>(part)].decoder;
}

std::string_view encoderOf(Part part) noexcept {
    return names[static_cast<std::size_t>(part)].encoder;
}

Faults decode(Part part, const MemoryImage& image, int number, std::string_view offText,
              Channel& channel) {
    Faults faults;
    addDecoded(part, image, number, offText, faults, channel);
    return faults;
}

Faults encode(Part part, const Channel& channel, int number, std::string_view offText,
              MemoryImage& image) {
    Faults faults;
    addEncoded(part, channel, number, offText, faults, image);
    return faults;
}

Decoded decode(const MemoryImage& image, int number, Channel before, const Columns& columns) {
    Decoded decoded{std::move(before), {}};
    attempt(decoded.faults, wholeDecoder, [&] { readChannel(image, number, columns, decoded); });
    return decoded;
}

Faults encode(const Channel& channel, int number, std::string_view offText, MemoryImage& image) {
    Faults faults;
    for (const Part part : parts) {
        addEncoded(part, channel, number, offText, faults, image);
    }
    return faults;
}

std::array<std::uint8_t, 4> pairsOfDigits(std::string_view text) {
    std::array<std::uint8_t, 4> pairs{};
    for (std::size_t i = 0; i < text.size(); i += 2) {
        checkedAt(pairs, static_cast<std::ptrdiff_t>(i / 2), "SepArr") =
            toByte(hexToInt16(text.substr(i, 2)));
    }
    return pairs;
}

std::uint16_t sharedBit(int index) {
    if (index < 0 || index >= codecChannels) {
        throwSubscript("ChBitMask", index);
    }
    return static_cast<std::uint16_t>(1U << index);
}

}  // namespace k520::channelCodec
