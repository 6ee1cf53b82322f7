// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <random>

#include "app/modShowErr.h"
#include "app/programFolder.h"
#include "base/Files.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

using Image = test::ProgramFolder;

TEST_F(Image, DefaultImageFillsBothArraysAsFarAsItReaches) {
    modIicDat::sizeArrays(7);
    modIicDat::InitTempArray();
    EXPECT_EQ(failure(), "mdifrmMain->InitTempArray 53");
    EXPECT_EQ(modIicDat::IicDat(), MemoryImage(8));
    modShowErr::state() = {};
    modIicDat::IicDat()(7) = 0x55;
    folder.write(programFolder::defaultImageFileName, "ABCDEF");
    modIicDat::InitTempArray();
    EXPECT_EQ(modIicDat::IicDat()(5), 'F');
    EXPECT_EQ(modIicDat::IicDatDef()(0), 'A');
    EXPECT_EQ(modIicDat::IicDat()(7), 0x55);
    EXPECT_EQ(failure(), "");
}

TEST_F(Image, SizesAndBounds) {
    EXPECT_EQ(modIicDat::IicDat().size(), 1U);
    EXPECT_THROW(modIicDat::sizeArrays(-1), RuntimeError);
    modIicDat::sizeArrays(8191);
    EXPECT_EQ(modIicDat::IicDatDef().size(), modIicDat::state().IicDatSpare.size());
    EXPECT_THROW((void)modIicDat::IicDat()(8192), RuntimeError);
    EXPECT_THROW((void)modIicDat::IicDat()(-1), RuntimeError);
}

TEST_F(Image, SeparateCharSplitsFromTheLeftAndStopsBehindFourBytes) {
    const std::tuple<const char*, std::array<std::uint8_t, 4>, const char*> cases[] = {
        {"1A2B", {0x1A, 0x2B, 9, 9}, ""},
        {"123", {0x12, 0x03, 9, 9}, ""},
        {"", {9, 9, 9, 9}, ""},
        {"0102030405", {1, 2, 3, 4}, "mdifrmMain->SeparateChar 9"},
        {"01XY03", {1, 9, 9, 9}, "mdifrmMain->SeparateChar 13"}};
    for (const auto& [text, expected, error] : cases) {
        modShowErr::state() = {};
        modIicDat::state().separated = {9, 9, 9, 9};
        modIicDat::SeparateChar(text);
        EXPECT_EQ(modIicDat::state().separated, expected) << text;
        EXPECT_EQ(failure(), error) << text;
    }
}

TEST_F(Image, StampHasItsOddForm) {
    MemoryImage image(0x400);
    const DateTime when{2026, 11, 21, 13, 5, 9};
    stamp::write(image, when);
    const std::array<std::uint8_t, 5> expected{0x26, 0x11, 21, 0x13, 0x05};
    EXPECT_TRUE(std::ranges::equal(image.bytes().subspan(816, 5), expected));
    EXPECT_EQ(stamp::read(image), (DateTime{2026, 11, 21, 13, 5, 0}));

    const std::pair<int, std::uint8_t> wrong[] = {{816, 0xFF}, {817, 0x13}, {817, 0x00},
                                                  {818, 31},   {818, 0},    {819, 0x24},
                                                  {820, 0x60}, {820, 0x0A}};
    for (const auto& [address, value] : wrong) {
        MemoryImage changed = image;
        changed(address) = value;
        EXPECT_FALSE(stamp::read(changed)) << address << " = " << int{value};
    }
    stamp::write(image, {2000, 12, 30, 23, 59, 0});
    EXPECT_EQ(stamp::read(image), (DateTime{2000, 12, 30, 23, 59, 0}));
    MemoryImage small(821);
    stamp::write(small, when);
    EXPECT_TRUE(stamp::read(small));
    EXPECT_FALSE(stamp::read(MemoryImage(820)));
}

MemoryImage randomImage(std::size_t size, unsigned seed) {
    MemoryImage image(size);
    std::ranges::generate(image.bytes(), std::minstd_rand(seed + 1));
    return image;
}

TEST_F(Image, SavedBytesStandWhereTheFormatPutsThemAndALongerFilesTailStays) {
    const auto path = folder.write("a.dat", std::string(9000, 'x'));
    const MemoryImage original = randomImage(8192, 1);
    MemoryImage image = original;
    datFile::save(path, image);
    const auto file = files::read(path, 10000).bytes;
    ASSERT_EQ(file.size(), 9000U);
    for (std::ptrdiff_t i = 0; i < 9000; ++i) {
        const bool moved = i >= 0x20 && i < 0x410;
        const int expected = i >= 8192               ? 'x'
                             : i >= 0x10 && i < 0x20 ? 0xFF
                                                     : original(moved ? i - 0x10 : i);
        ASSERT_EQ(file[static_cast<std::size_t>(i)], expected) << "file offset " << i;
    }
}

TEST_F(Image, SaveThenOpenGivesUpSixteenBytesAndNoOther) {
    for (const std::size_t size : {std::size_t{1040}, std::size_t{2048}, std::size_t{8192}}) {
        MemoryImage expected = randomImage(size, 2);
        MemoryImage saved = expected;
        datFile::save(folder / "a.dat", saved);
        MemoryImage opened(size);
        EXPECT_EQ(datFile::load(folder / "a.dat", opened), size);
        std::ranges::copy(expected.bytes().subspan(0x3F0, datFile::lostCount),
                          &expected(datFile::lostAddress));
        EXPECT_EQ(opened, expected);
        EXPECT_EQ(saved, expected) << "the image in memory and a reopened one are the same";
    }
}

TEST_F(Image, AShortFileLeavesWhatItDoesNotHold) {
    MemoryImage image(8192);
    std::ranges::fill(image.bytes(), std::uint8_t{0x11});
    EXPECT_EQ(datFile::load(folder.write("a.dat", std::string(0x405, 'x')), image), 0x405U);
    for (const auto& [address, byte] : {std::pair(0, 'x'),
                                        {0x10, 'x'},
                                        {0x3F4, 'x'},
                                        {0x3F5, '\x11'},
                                        {0x3FF, '\x11'},
                                        {0x404, 'x'},
                                        {0x405, '\x11'},
                                        {0x40F, '\x11'},
                                        {0x1FFF, '\x11'}}) {
        EXPECT_EQ(image(address), byte) << address;
    }
}

TEST_F(Image, FailuresLeaveImageAndFile) {
    MemoryImage image = randomImage(8192, 4);
    const MemoryImage before = image;
    EXPECT_THROW((void)datFile::load(folder / "missing.dat", image), RuntimeError);
    EXPECT_THROW((void)datFile::load(folder.path(), image), RuntimeError);
    EXPECT_THROW(datFile::save(folder / "none" / "a.dat", image), RuntimeError);
    EXPECT_EQ(image, before);

    MemoryImage tooShort(datFile::leastDatNum);
    EXPECT_THROW(datFile::save(folder / "b.dat", tooShort), RuntimeError);
    EXPECT_FALSE(std::filesystem::exists(folder / "b.dat"));
}

}  // namespace
}  // namespace k520
