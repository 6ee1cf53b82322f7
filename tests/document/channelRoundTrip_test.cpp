// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <random>

#include "channels/ChannelFixture.h"
#include "document/imageMap.h"

namespace k520 {
namespace {

class ChannelCodec : public test::ChannelFixture {
  protected:
    std::mt19937 random{520};

    int pick(int least, int most) { return std::uniform_int_distribution(least, most)(random); }
    int bcd(int least = 0) { return pick(least, 9) * 16 + pick(0, 9); }

    /// The bits of an address that the channel codec may write.
    int ownedBits(int address) const {
        int bits = 0;
        for (const auto& field : all_) {
            const bool coded = field.owner == imageMap::Owner::channel && !field.codec.empty();
            bits |= coded && field.touches(address, 0xFF) ? field.mask : 0;
        }
        return bits;
    }
    /// Makes a record one that an encoder leaves.
    void makeValid(int base) {
        put(base, {bcd(), bcd(), bcd(), bcd(1), bcd(), bcd(), bcd(), bcd(1)});
        if (pick(0, 3) == 0) {
            put(base + 4, {0xFF, 0xFF, 0xFF, 0xFF});
        }
        for (const int tone : {base + 8, base + 10}) {
            const int dcs = 0x2800 + pick(0, 511);
            const int word =
                std::array{0xFFFF, pick(600, 2650), dcs, dcs | 0x8000}.at(random() % 4);
            put(tone, {word & 0xFF, word >> 8});
        }
        put(base + 12, {image()(base + 12) & ~(pick(0, 1) == 0 ? 0x08 : 0x10)});
    }
    const std::vector<imageMap::Field> all_ = imageMap::fields();
};

TEST_F(ChannelCodec, RoundTripsOverRandomImages) {
    // Valid records come back whatever the image held when they are encoded; of any other image
    // nothing changes but what the codec owns.
    Bytes owned;
    for (int address = 0; address < 0x2000; ++address) {
        owned.push_back(ownedBits(address));
    }
    for (int round = 0; round < 100; ++round) {
        const bool valid = round % 2 == 0;
        std::ranges::generate(image().bytes(), [&] { return static_cast<std::uint8_t>(random()); });
        for (int base = 0x10; valid && base <= 0x100; base += 0x10) {
            makeValid(base);
        }
        const MemoryImage before = image();
        modChMem::ChInfoSaveSol(1);
        for (int address = 0; valid && address < 0x2000; ++address) {
            put(address, {image()(address) ^ owned.at(static_cast<std::size_t>(address))});
        }
        modChMem::ChInfoSaveSol(0);
        for (int address = 0; address < 0x2000; ++address) {
            const int checked = valid ? 0xFF : ~owned[static_cast<std::size_t>(address)];
            ASSERT_EQ((image()(address) ^ before(address)) & checked, 0) << address;
        }
        EXPECT_EQ(failures().empty(), valid);
    }
}

}  // namespace
}  // namespace k520
