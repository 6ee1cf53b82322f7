// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/datFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "app/Files.h"
#include "support/TempFolder.h"

namespace k520 {
namespace {

MemoryImage randomImage(std::size_t size, unsigned seed) {
    MemoryImage image(size);
    std::ranges::generate(image.bytes(), std::minstd_rand(seed + 1));
    return image;
}

TEST(DatFile, SavedBytesStandWhereTheFormatPutsThem) {
    const test::TempFolder folder;
    const auto path = folder / "a.dat";
    const MemoryImage original = randomImage(8192, 1);
    MemoryImage image = original;
    datFile::save(path, image);
    const auto file = files::read(path, 10000).bytes;
    ASSERT_EQ(file.size(), 8192U);
    for (std::ptrdiff_t i = 0; i < 8192; ++i) {
        const bool moved = i >= 0x20 && i < 0x410;
        const int expected = i >= 0x10 && i < 0x20 ? 0xFF : original(moved ? i - 0x10 : i);
        ASSERT_EQ(file[static_cast<std::size_t>(i)], expected) << "file offset " << i;
    }
}

TEST(DatFile, SaveThenOpenGivesUpSixteenBytesAndNoOther) {
    const test::TempFolder folder;
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

TEST(DatFile, LongerFilesKeepTheirTailAndShorterFillWhatTheyHold) {
    const test::TempFolder folder;
    const auto path = folder / "a.dat";
    folder.write("a.dat", std::string(9000, 'x'));
    MemoryImage image = randomImage(8192, 3);
    datFile::save(path, image);
    const auto file = files::read(path, 10000);
    EXPECT_EQ(file.size, 9000U);
    EXPECT_EQ(file.bytes.back(), 'x');

    folder.write("short.dat", std::string(0x20, 'a') + std::string(0x10, 'b'));
    MemoryImage opened = randomImage(8192, 5);
    MemoryImage expected = opened;
    std::ranges::fill(expected.bytes().first(0x10), std::uint8_t{'a'});
    std::ranges::fill(expected.bytes().subspan(0x10, 0x10), std::uint8_t{'b'});
    EXPECT_EQ(datFile::load(folder / "short.dat", opened), 0x30U);
    EXPECT_EQ(opened, expected);
}

TEST(DatFile, FailuresLeaveImageAndFile) {
    const test::TempFolder folder;
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
