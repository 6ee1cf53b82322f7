// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "image/MemoryImage.h"

/// The data file: the memory image, byte for byte, with one fixed rearrangement and no header.
///
///   file offset   length           contents
///   0x0000        16               image 0x0000..0x000F
///   0x0010        16               filler, every byte 0xFF
///   0x0020        1008             image 0x0010..0x03FF (the channel area)
///   0x0410        the rest         image 0x0410.. to its end
///
/// Image bytes 0x0400..0x040F have no place in the file; loading gives them the bytes of
/// 0x03F0..0x03FF. That is part of the format.
namespace k520::datFile {

/// The image bytes that the format gives up: first address and count.
inline constexpr int lostAddress = 0x400;
inline constexpr int lostCount = 16;

[[nodiscard]] constexpr bool isLost(int address) noexcept {
    return address >= lostAddress && address < lostAddress + lostCount;
}

/// Where the filler begins and ends in the file, and its bytes.
inline constexpr std::size_t fillerBegin = 0x10;
inline constexpr std::size_t fillerEnd = 0x20;
inline constexpr std::uint8_t filler = 0xFF;

/// The size of the data file of the largest image.
inline constexpr std::size_t longest = 0x8000;

/// The least highest index of an image that the format can hold.
inline constexpr std::int16_t leastDatNum = lostAddress + lostCount - 1;

/// From memory layout to file layout in place: moves the channel area up and sets the filler.
/// Raises 9 in the middle of it where the image is too short.
void makeRoom(MemoryImage& image);

/// The way back: moves the channel area down. The filler goes.
void closeRoom(MemoryImage& image);

/// What a data file of the image holds. Raises 9 where the image is too short for the format.
[[nodiscard]] std::vector<std::uint8_t> bytesOf(const MemoryImage& image);

/// Fills the image from a data file, in memory layout, and returns the file's whole size. A longer
/// file is read only as far as the image reaches; a shorter one fills only what it holds. Raises
/// the system's error where the file cannot be read, 9 where the image is too short for the format;
/// the image is then as it was.
std::uint64_t load(const std::filesystem::path& path, MemoryImage& image);

/// Writes the image as a data file; what a longer file holds beyond the image stays. Afterwards the
/// image's bytes 0x0400..0x040F equal 0x03F0..0x03FF, as a loading would leave them. Raises the
/// system's error where the file cannot be written; the file is then as it was.
void save(const std::filesystem::path& path, MemoryImage& image);

}  // namespace k520::datFile
