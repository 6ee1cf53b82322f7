// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/datFile.h"

#include <algorithm>
#include <cstddef>

#include "base/Files.h"

namespace k520::datFile {

namespace {

constexpr int areaBegin = 0x10;
constexpr int areaEnd = lostAddress;
constexpr int shift = lostCount;

/// A file that ends in front of the area's last block says nothing of the bytes that the format
/// gives up.
void restoreLostBytes(std::size_t fileLength, const MemoryImage& before, MemoryImage& image) {
    for (int i = areaEnd; i < areaEnd + shift; ++i) {
        if (static_cast<std::size_t>(i) >= fileLength) {
            image(i) = before(i);
        }
    }
}

}  // namespace

void makeRoom(MemoryImage& image) {
    for (int i = areaEnd - 1; i >= areaBegin; --i) {
        image(i + shift) = image(i);
    }
    for (int i = areaBegin; i < areaBegin + shift; ++i) {
        image(i) = filler;
    }
}

void closeRoom(MemoryImage& image) {
    for (int i = areaBegin + shift; i < areaEnd + shift; ++i) {
        image(i - shift) = image(i);
    }
}

std::vector<std::uint8_t> bytesOf(const MemoryImage& image) {
    MemoryImage moved = image;
    makeRoom(moved);
    return {moved.bytes().begin(), moved.bytes().end()};
}

std::uint64_t load(const std::filesystem::path& path, MemoryImage& image) {
    const auto content = files::read(path, image.size());
    // The old content takes the file's layout first, so that what a short file does not hold comes
    // back to its place.
    MemoryImage moved = image;
    makeRoom(moved);
    std::ranges::copy(content.bytes, moved.bytes().begin());
    closeRoom(moved);
    restoreLostBytes(content.bytes.size(), image, moved);
    image = moved;
    return content.size;
}

void save(const std::filesystem::path& path, MemoryImage& image) {
    const auto bytes = bytesOf(image);
    files::replaceHead(path, bytes);
    std::ranges::copy(bytes, image.bytes().begin());
    closeRoom(image);
}

}  // namespace k520::datFile
