// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/datFile.h"

#include <algorithm>

#include "app/Files.h"

namespace k520::datFile {

namespace {

constexpr int areaBegin = 0x10;
constexpr int areaEnd = 0x400;
constexpr int shift = 0x10;
constexpr std::uint8_t filler = 0xFF;

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

std::uint64_t load(const std::filesystem::path& path, MemoryImage& image) {
    const auto content = files::read(path, image.size());
    std::ranges::copy(content.bytes, image.bytes().begin());
    closeRoom(image);
    return content.size;
}

void save(const std::filesystem::path& path, MemoryImage& image) {
    MemoryImage moved = image;
    makeRoom(moved);
    files::replaceHead(path, moved.bytes());
    closeRoom(moved);
    image = moved;
}

}  // namespace k520::datFile
