// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/ChannelFixture.h"
#include "channels/channelCodec.h"
#include "image/modIicDat.h"

namespace k520::modChMem {
namespace {

class Codec : public test::ChannelFixture {};

TEST_F(Codec, OneRecordByteForByte) {
    put(0x30, {0x25, 0x06, 0x60, 0x44, 0xFF, 0xFF, 0xFF, 0xFF, 0x9E, 0x02, 0x13, 0xA8, 0x10, 0x20});
    put(0x17E, {0x04, 0x00});
    Channel& c = channel(3);
    c.opened = c.outOfBand = true;
    ChInfoSaveSol(1);
    EXPECT_FALSE(c.opened || c.outOfBand);
    EXPECT_EQ((Bytes{c.rxFre(), c.txFre(), c.field(5), c.field(6), c.field(7), c.field(8)}),
              (Bytes{44600625, -1, 1, 0, 1, 2}));
    EXPECT_EQ(c.decodeTone + c.encodeTone, "67.0D023I");
    c.txFre() = 14501250;
    c.field(5) = 0;
    c.field(6) = c.field(8) = 1;
    c.field(7) = 2;  // no value of a single bit
    channel(16).field(7) = 0;
    ChInfoSaveSol(0);
    EXPECT_EQ(get(image(), 0x34, 10),
              (Bytes{0x50, 0x12, 0x50, 0x14, 0x9E, 0x02, 0x13, 0xA8, 0x08, 0x10}));
    EXPECT_EQ(get(image(), 0x17E, 2), (Bytes{0xFB, 0x7F}));  // the others: default 1
    put(0x3C, {0xFF});                                       // both bits of field 8
    IcChParaSol(3);
    EXPECT_EQ(c.field(8), 0);
    CiChParaSol(3);
    EXPECT_EQ(image()(0x3C), 0xE7);
}

TEST_F(Codec, TheTopByteTellsWhetherAChannelExists) {
    const std::pair<int, int> cases[] = {
        {0x01, 1000000}, {0x00, -1}, {0x99, 99000000}, {0x9A, -1}, {0xFF, -1}};
    put(0x18, {0x9E, 0x02});
    for (const auto& [top, frequency] : cases) {
        put(0x10, {0, 0, 0, top, 0, 0, 0, top});
        ChInfoSaveSol(1);
        EXPECT_EQ(channel(1).rxFre(), frequency) << top;
        EXPECT_EQ(channel(1).txFre(), frequency) << top;
    }
    // A channel that became empty keeps its tones; all else is empty or the default.
    std::ranges::fill(image().bytes(), std::uint8_t{0xFF});
    ChInfoSaveSol(1);
    ChInfoSaveSol(0);
    EXPECT_EQ(get(image(), 0x14, 12),
              (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0x9E, 0x02, 0xFF, 0xFF, 0xF7, 0xEF, 0xFF, 0xFF}));
}

TEST_F(Codec, FailuresKeepWhatWasThereAndEndNothingElse) {
    put(0x10, {0x00, 0x00, 0x1F, 0x44, 0x00, 0x0E, 0x00, 0x10, 0x9E, 0x02, 0xFF, 0xFF});
    put(0x20, {0x25, 0x06, 0x60, 0x44});
    channel(1).rxFre() = 14500000;
    ChInfoSaveSol(1);
    EXPECT_EQ(failures(), (Labels{"modChMem->IcRxFreSol 13", "modChMem->IcTxFreSol 13"}));
    EXPECT_EQ(channel(1).rxFre(), 14500000);
    EXPECT_EQ(channel(1).decodeTone, "67.0");
    EXPECT_EQ(channel(2).rxFre(), 44600625);

    channel(1).rxFre() = 123456789;
    channel(1).txFre() = -2;
    channel(1).decodeTone = "D0";
    channel(1).encodeTone = "D023NN";
    const Bytes before = get(image(), 0x10, 12);
    ChInfoSaveSol(0);
    EXPECT_EQ(failures(), (Labels{"modChMem->SeparateFreChar 9", "modChMem->SeparateFreChar 13",
                                  "modChMem->QtDqtCharToIic 13", "modChMem->QtDqtCharToIic 9"}));
    EXPECT_EQ(get(image(), 0x10, 12), before);
}

// Record 1 is empty but for the part that a procedure is about.
TEST_F(Codec, EachPartHasProceduresOfItsOwn) {
    struct Row {
        void (*decode)(std::int16_t);
        void (*encode)(std::int16_t);
        int address;
        Bytes bytes;
        std::string (*value)();
    };
    const Row rows[] = {
        {IcRxFreSol,
         CiRxFreSol,
         0x10,
         {0x25, 0x06, 0x60, 0x44},
         [] { return std::to_string(channel(1).rxFre()); }},
        {IcTxFreSol,
         CiTxFreSol,
         0x14,
         {0x25, 0x06, 0x60, 0x44},
         [] { return std::to_string(channel(1).txFre()); }},
        {IcCtdcsDecSol, CiCtdcsDecSol, 0x18, {0x9E, 0x02}, [] { return channel(1).decodeTone; }},
        {IcCtdcsEncSol, CiCtdcsEncSol, 0x1A, {0x13, 0x28}, [] { return channel(1).encodeTone; }},
        {IcChParaSol, CiChParaSol, 0x1C, {0x10, 0x10}, [] {
             return fmt::format("{}{}", channel(1).field(6), channel(1).field(8));
         }}};
    const std::string values[] = {"44600625", "44600625", "67.0", "D023N", "12"};
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const auto& [decode, encode, address, bytes, value] = rows[i];
        std::ranges::fill(image().bytes(), std::uint8_t{0});
        put(address, bytes);
        const MemoryImage before = image();
        const ChannelTable others = state().ChInfo;
        decode(1);
        EXPECT_EQ(value(), values[i]);
        std::ranges::fill(image().bytes(), std::uint8_t{0});
        encode(1);
        EXPECT_EQ(image(), before) << i;
        state().ChInfo = others;
    }
    EXPECT_EQ(SeparateFreChar("44600625"), (std::array<std::uint8_t, 4>{0x44, 0x60, 0x06, 0x25}));
    EXPECT_EQ(QtDqtCharToIic("67.0"), (std::array<std::uint8_t, 2>{0x9E, 0x02}));
    EXPECT_EQ(QtDqtCharToIic("D023I"), (std::array<std::uint8_t, 2>{0x13, 0xA8}));
    EXPECT_EQ(QtDqtIicToChar(0x02, 0x9E) + QtDqtIicToChar(0xFF, 0xFF), "67.0None");
    EXPECT_EQ(ChBitMask(0) * 0x10000U + ChBitMask(15), 0x18000U);
    EXPECT_EQ(ChBitClear(0) * 0x10000U + ChBitClear(15), 0xFFFE7FFFU);
    EXPECT_EQ(failures(), Labels{});
    EXPECT_EQ(SeparateFreChar("44600X"), std::nullopt);
    EXPECT_EQ(QtDqtCharToIic("D0"), std::nullopt);
    EXPECT_EQ(failures(), (Labels{"modChMem->SeparateFreChar 13", "modChMem->QtDqtCharToIic 13"}));
}

TEST_F(Codec, ValuesAreDecodedBesideTheStateAndNothingIsLogged) {
    MemoryImage other(0x2000);
    std::ranges::copy(Bytes{0x25, 0x06, 0x60, 0x44, 0x00, 0x0E, 0x00, 0x10, 0x9E, 0x02, 0x13, 0xA8},
                      other.bytes().begin() + 0x10);
    const ChannelTable table = state().ChInfo;
    const MemoryImage live = image();
    Channel before;
    before.txFre() = 14500000;
    before.modified() = 1;
    const auto [decoded, faults] =
        channelCodec::decode(other, 1, before, {state().ChColDef, state().ColNum, "-"});
    EXPECT_EQ(decoded.rxFre(), 44600625);
    EXPECT_EQ(decoded.txFre(), 14500000);  // its bytes are not digits
    EXPECT_EQ(decoded.field(0), 1);
    EXPECT_EQ(decoded.decodeTone + decoded.encodeTone, "67.0D023I");
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].procedure, "modChMem->IcTxFreSol");
    EXPECT_EQ(faults[0].error.number(), errNum::typeMismatch);
    EXPECT_TRUE(channelCodec::encode(decoded, 1, "-", other).empty());
    EXPECT_EQ(get(other, 0x10, 8), (Bytes{0x25, 0x06, 0x60, 0x44, 0x00, 0x00, 0x50, 0x14}));
    EXPECT_TRUE(state().ChInfo == table && image() == live);
    EXPECT_EQ(failures(), Labels{});
}

TEST_F(Codec, ChannelsBeyondTheBounds) {
    state().ChNum = 17;
    put(0x110, {0x25, 0x06, 0x60, 0x44});
    ChInfoSaveSol(1);
    EXPECT_EQ(channel(17).rxFre(), 44600625);
    ChInfoSaveSol(0);
    EXPECT_EQ(failures(), (Labels{"modChMem->IcChParaSol 9", "modChMem->CiChParaSol 9"}));
    state().ChNum = 300;
    ChInfoSaveSol(0);
    EXPECT_EQ(failures().back(), "modChMem->ChInfoToIicDat 9");
    state().ChNum = 16;
    modIicDat::sizeArrays(0x3F);
    ChInfoSaveSol(1);
    EXPECT_EQ(failures(), Labels(13, "modChMem->IicDatToChInfo 9"));
    channel(1).modified() = -1;  // not encoded
    ChInfoSaveSol(0);
    EXPECT_EQ(image()(0x10), 0);
}

}  // namespace
}  // namespace k520::modChMem
