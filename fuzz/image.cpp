// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any 8 KiB image through the tables and back. What the tables cannot hold is settled by the first
// encoding; from there on nothing changes any more, and what belongs to no table never does.

#include <array>

#include "app/modShowErr.h"
#include "channels/modChMem.h"
#include "document/imageMap.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "settings/modSysSet.h"
#include "settings/optionTable.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;

bool isEncoded(const imageMap::Field& field) {
    return field.owner == imageMap::Owner::channel
               ? !field.codec.empty()
               : field.owner == imageMap::Owner::option &&
                     optionTable::optionAt(field.number).ownedMask != 0;
}

/// By address, the bits that encoding may change.
std::vector<std::uint8_t> ownedBits(std::size_t size) {
    MemoryImage mask(size);
    for (const auto& field : imageMap::fields()) {
        for (int i = 0; i < field.length && isEncoded(field); ++i) {
            mask(field.address + i) |= field.mask;
        }
    }
    return {mask.bytes().begin(), mask.bytes().end()};
}

void requireOthersKept(const MemoryImage& before, const MemoryImage& after) {
    static const auto owned = ownedBits(before.size());
    bool kept = true;
    for (std::size_t i = 0; i < owned.size(); ++i) {
        kept = kept && ((before.bytes()[i] ^ after.bytes()[i]) & ~owned[i]) == 0;
    }
    require(kept, "bits of no table stay");
}

struct Tables {
    fuzz::Channels channels = fuzz::theChannels();
    modSysSet::OptionSet options = modSysSet::OptNow();
    friend bool operator==(const Tables&, const Tables&) = default;
};

Tables decoded() {
    modChMem::SoftDisplay();
    return {};
}

MemoryImage encoded() {
    const auto failures = modShowErr::state().entries.size();
    modChMem::SetConvIicDat();
    require(modShowErr::state().entries.size() == failures, "what was decoded can be encoded");
    return modIicDat::IicDat();
}

/// Digits below 100 MHz are encoded without padding, which moves them; that is the format.
bool hasShortFrequency(const fuzz::Channels& channels) {
    constexpr std::int32_t leastOfEightDigits = 10'000'000;
    const auto isShort = [](std::int32_t f) { return f >= 0 && f < leastOfEightDigits; };
    return std::ranges::any_of(channels, [&](const modChMem::Channel& channel) {
        return isShort(channel.rxFre()) || isShort(channel.txFre());
    });
}

void requireShown(const fuzz::Channels& channels) {
    const auto& grid = modChMem::state().vsfgGridCh;
    int n = 0;
    for (const auto& channel : channels) {
        ++n;
        require(grid.text(n, modChMem::column::rx) ==
                    (channel.present() ? frequency::mhzText(channel.rxFre()) : ""),
                "the grid shows the receive frequency");
        require(grid.text(n, modChMem::column::tx) == (channel.present() && channel.transmits()
                                                           ? frequency::mhzText(channel.txFre())
                                                           : ""),
                "the grid shows the transmit frequency");
        require(channel.present() || grid.text(n, modChMem::column::decode).empty(),
                "an empty channel's row is blank");
    }
}

void requireLayoutReversible(MemoryImage image) {
    MemoryImage expected = image;
    for (int i = 0; i < datFile::lostCount; ++i) {
        expected(datFile::lostAddress + i) = image(datFile::lostAddress - datFile::lostCount + i);
    }
    datFile::makeRoom(image);
    datFile::closeRoom(image);
    require(image == expected, "the data file's layout loses sixteen bytes and no other");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::freshCore();
    auto& image = modIicDat::IicDat();
    Source source(data, size);
    std::ranges::fill(image.bytes(), source.byte());
    std::ranges::copy(source.bytes(image.size()), image.bytes().begin());
    const MemoryImage given = image;

    const Tables first = decoded();
    requireShown(first.channels);
    require(image == given, "decoding changes no byte");
    static constexpr std::array<std::string_view, 2> labels{"modChMem->IcRxFreSol",
                                                            "modChMem->IcTxFreSol"};
    fuzz::requireLabels(labels);
    const bool settled = modShowErr::state().entries.empty() && !hasShortFrequency(first.channels);

    MemoryImage once = encoded();
    requireOthersKept(given, once);
    Tables second = decoded();
    require(!settled || first == second, "the second decoding equals the first");
    MemoryImage twice = encoded();
    require(!settled || once == twice, "a second encoding changes nothing more");
    if (!settled) {
        once = twice;
        second = decoded();
        twice = encoded();
        require(once == twice && decoded() == second, "all is settled by then");
    }
    requireLayoutReversible(twice);
    return 0;
}
