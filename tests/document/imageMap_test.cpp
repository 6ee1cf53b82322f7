// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/imageMap.h"

#include <fmt/format.h>

#include <map>
#include <vector>

#include "channels/ChannelFixture.h"
#include "channels/modModel.h"
#include "image/stamp.h"
#include "settings/modSysSet.h"
#include "settings/optionTable.h"

namespace k520::imageMap {
namespace {

class ImageMap : public test::ChannelFixture {
  protected:
    /// The bits of a byte that something reads or writes; kept bits of a record are left out.
    int ownedBits(int address) const {
        int bits = 0;
        for (const auto& field : all_) {
            bits |= !field.codec.empty() && field.touches(address, 0xFF) ? field.mask : 0;
        }
        return bits;
    }
    const std::vector<Field> all_ = fields();
};

TEST_F(ImageMap, EveryBitHasAtMostOneOwner) {
    std::map<int, int> taken;
    for (const auto& field : all_) {
        for (int address = field.address; address < field.address + field.length; ++address) {
            EXPECT_EQ(taken[address] & field.mask, 0)
                << fmt::format("{:04X} belongs to {}, too", address, name(field));
            taken[address] |= field.mask;
        }
    }
    EXPECT_EQ(taken.rbegin()->first, 0x3FF);
}

/// What decoding makes of the image: fields 1 to 20 and the tones of each channel, options, band.
using Values = std::vector<std::string>;
Values valuesOf(const MemoryImage& image) {
    modIicDat::IicDat() = image;
    // Where a field cannot be read it keeps what it held.
    modChMem::state().ChInfo = {};
    modSysSet::state().OptNow = {};
    modChMem::SoftDisplay();
    Values values;
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        const auto& channel = modChMem::ChInfo()(n);
        for (int k = 1; k <= modChMem::lastField; ++k) {
            values.push_back(std::to_string(channel.field(k)));
        }
        values.insert(values.end(), {channel.decodeTone, channel.encodeTone});
    }
    for (const auto value : modSysSet::OptNow()) {
        values.push_back(std::to_string(value));
    }
    values.push_back(std::to_string(modModel::state().bandLow));
    const auto when = stamp::read(image);
    values.push_back(when ? std::to_string(when->day * 100 + when->minute) : "");
    return values;
}

TEST_F(ImageMap, HoldsEveryBitThatIsReadOrWritten) {
    constexpr int end = 0x400;
    for (const int filler : {0x00, 0x11}) {
        MemoryImage plain(0x2000);
        std::ranges::fill(plain.bytes(), static_cast<std::uint8_t>(filler));
        const auto before = valuesOf(plain);
        for (int address = 0; address < end; ++address) {
            MemoryImage changed = plain;
            changed(address) ^= static_cast<std::uint8_t>(~ownedBits(address));
            EXPECT_EQ(valuesOf(changed), before) << fmt::format("{:04X} is read", address);
        }
        valuesOf(plain);
        for (int n = 1; n <= modChMem::state().ChNum; ++n) {
            channel(n).rxFre() = channel(n).txFre() = 44'600'000;
            channel(n).decodeTone = channel(n).encodeTone = "D023N";
            channel(n).field(5) = channel(n).field(6) = channel(n).field(7) = 1;
            channel(n).field(8) = 2;
        }
        modSysSet::state().OptNow.fill(1);
        modChMem::SetConvIicDat();
        modModel::selectBand(0);
        stamp::write(image(), {2026, 11, 22, 21, 9, 0});
        for (int address = 0; address < 0x2000; ++address) {
            const int written = image()(address) ^ plain(address);
            EXPECT_EQ(written & ~ownedBits(address), 0)
                << fmt::format("{:04X} is written", address);
        }
    }
}

TEST_F(ImageMap, NamesAFieldAsEditsDo) {
    const std::tuple<int, int, std::string> cases[] = {
        {0x013, 0x01, "ch1.rx"},     {0x02C, 0x18, "ch2.D"}, {0x02C, 0x01, "ch2"},
        {0x17F, 0x80, "ch16.C"},     {0x330, 0x01, "stamp"}, {0x379, 0x01, "model"},
        {0x130, 0x01, "option.tot"}, {0x37A, 0x01, "band"}};
    for (const auto& [address, bits, expected] : cases) {
        const auto found = at(all_, address, bits);
        ASSERT_EQ(found.size(), 1U) << expected;
        EXPECT_EQ(name(found.front()), expected);
    }
}

}  // namespace
}  // namespace k520::imageMap
