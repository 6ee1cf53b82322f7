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
    std::mt19937 random(seed);
    for (auto& byte : image.bytes()) {
        byte = static_cast<std::uint8_t>(random());
    }
    return image;
}

TEST(DatFile, SavedBytesStandWhereTheFormatPutsThem) {
    const test::TempFolder folder;
    const auto path = folder.path() / "a.dat";
    const MemoryImage original = randomImage(8192, 1);
    MemoryImage image = original;
    datFile::save(path, image);
    const auto file = files::read(path, 10000).bytes;
    ASSERT_EQ(file.size(), 8192U);
    for (std::size_t i = 0; i < file.size(); ++i) {
        const auto at = static_cast<std::ptrdiff_t>(i);
        const int expected = i < 0x10    ? original(at)
                             : i < 0x20  ? 0xFF
                             : i < 0x410 ? original(at - 0x10)
                                         : original(at);
        ASSERT_EQ(file[i], expected) << "file offset " << i;
    }
}

TEST(DatFile, SaveThenOpenGivesUpSixteenBytesAndNoOther) {
    const test::TempFolder folder;
    for (const std::size_t size : {std::size_t{1040}, std::size_t{2048}, std::size_t{8192}}) {
        for (unsigned seed = 0; seed < 20; ++seed) {
            const MemoryImage original = randomImage(size, seed);
            MemoryImage saved = original;
            datFile::save(folder.path() / "a.dat", saved);
            MemoryImage opened(size);
            EXPECT_EQ(datFile::load(folder.path() / "a.dat", opened), size);
            MemoryImage expected = original;
            for (int i = 0; i < datFile::lostCount; ++i) {
                expected(datFile::lostAddress + i) = original(0x3F0 + i);
            }
            EXPECT_EQ(opened, expected);
            EXPECT_EQ(saved, expected) << "the image in memory and a reopened one are the same";
        }
    }
}

TEST(DatFile, LongerFilesKeepTheirTailAndShorterFillWhatTheyHold) {
    const test::TempFolder folder;
    const auto path = folder.path() / "a.dat";
    folder.write("a.dat", std::string(9000, 'x'));
    MemoryImage image = randomImage(8192, 3);
    datFile::save(path, image);
    const auto file = files::read(path, 10000);
    EXPECT_EQ(file.size, 9000U);
    EXPECT_EQ(file.bytes.back(), 'x');

    folder.write("short.dat", std::string(0x20, 'a') + std::string(0x10, 'b'));
    const MemoryImage before = randomImage(8192, 5);
    MemoryImage expected = before;
    std::ranges::fill(expected.bytes().first(0x10), std::uint8_t{'a'});
    std::ranges::fill(expected.bytes().subspan(0x10, 0x10), std::uint8_t{'b'});
    MemoryImage opened = before;
    EXPECT_EQ(datFile::load(folder.path() / "short.dat", opened), 0x30U);
    EXPECT_EQ(opened, expected) << "file offset 0x20 is the first channel; nothing else moves";
}

TEST(DatFile, FailuresLeaveImageAndFile) {
    const test::TempFolder folder;
    MemoryImage image = randomImage(8192, 4);
    const MemoryImage before = image;
    EXPECT_THROW((void)datFile::load(folder.path() / "missing.dat", image), RuntimeError);
    EXPECT_THROW((void)datFile::load(folder.path(), image), RuntimeError);
    EXPECT_THROW(datFile::save(folder.path() / "none" / "a.dat", image), RuntimeError);
    EXPECT_EQ(image, before);

    MemoryImage tooShort(datFile::leastDatNum);
    EXPECT_THROW(datFile::save(folder.path() / "b.dat", tooShort), RuntimeError);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "b.dat"));
}

}  // namespace
}  // namespace k520
