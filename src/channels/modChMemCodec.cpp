// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <string>
#include <utility>

#include "app/Guard.h"
#include "channels/channelCodec.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/toneCode.h"
#include "image/modIicDat.h"

namespace k520::modChMem {

namespace {

using channelCodec::Part;

const std::string& offText() {
    return modCtdcs::state().CtdcsOffText;
}

void decodeChannel(int number) {
    Channel& channel = state().ChInfo(number);
    auto [decoded, faults] =
        channelCodec::decode(modIicDat::IicDat(), number, std::move(channel), columnsInForce());
    channel = std::move(decoded);
    logFaults(faults);
}

void decodePart(Part part, int number) {
    guarded(channelCodec::decoderOf(part), [&] {
        logFaults(channelCodec::decode(part, modIicDat::IicDat(), number, offText(),
                                       state().ChInfo(number)));
    });
}

void encodePart(Part part, int number) {
    guarded(channelCodec::encoderOf(part), [&] {
        logFaults(
            channelCodec::encode(part, ChInfo()(number), number, offText(), modIicDat::IicDat()));
    });
}

}  // namespace

channelCodec::Columns columnsInForce() {
    return {state().ChColDef, state().ColNum, offText()};
}

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
    guarded("modChMem->IicDatToChInfo", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            decodeChannel(n);
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
    logFaults(channelCodec::encode(ChInfo()(channel), channel, offText(), modIicDat::IicDat()));
}

void IcChParaSol(std::int16_t channel) {
    decodePart(Part::parameters, channel);
}

void CiChParaSol(std::int16_t channel) {
    encodePart(Part::parameters, channel);
}

void IcRxFreSol(std::int16_t channel) {
    decodePart(Part::receive, channel);
}

void IcTxFreSol(std::int16_t channel) {
    decodePart(Part::transmit, channel);
}

void CiRxFreSol(std::int16_t channel) {
    encodePart(Part::receive, channel);
}

void CiTxFreSol(std::int16_t channel) {
    encodePart(Part::transmit, channel);
}

void IcCtdcsDecSol(std::int16_t channel) {
    decodePart(Part::decodeTone, channel);
}

void IcCtdcsEncSol(std::int16_t channel) {
    decodePart(Part::encodeTone, channel);
}

void CiCtdcsDecSol(std::int16_t channel) {
    encodePart(Part::decodeTone, channel);
}

void CiCtdcsEncSol(std::int16_t channel) {
    encodePart(Part::encodeTone, channel);
}

std::optional<std::array<std::uint8_t, 4>> SeparateFreChar(std::string_view text) {
    std::optional<std::array<std::uint8_t, 4>> pairs;
    guarded("modChMem->SeparateFreChar", [&] { pairs = channelCodec::pairsOfDigits(text); });
    return pairs;
}

std::string QtDqtIicToChar(std::uint8_t high, std::uint8_t low) {
    std::string text;
    guarded("modChMem->QtDqtIicToChar", [&] {
        text = toneCode::toneText(static_cast<std::uint16_t>(high * 256 + low), offText());
    });
    return text;
}

std::optional<std::array<std::uint8_t, 2>> QtDqtCharToIic(std::string_view text) {
    std::optional<std::array<std::uint8_t, 2>> bytes;
    guarded("modChMem->QtDqtCharToIic", [&] {
        const std::uint16_t word = toneCode::toneWord(text, offText());
        bytes = {static_cast<std::uint8_t>(word & 0xFF), static_cast<std::uint8_t>(word >> 8)};
    });
    return bytes;
}

std::uint16_t ChBitMask(int index) {
    return channelCodec::sharedBit(index);
}

std::uint16_t ChBitClear(int index) {
    return static_cast<std::uint16_t>(0xFFFF - ChBitMask(index));
}

}  // namespace k520::modChMem
