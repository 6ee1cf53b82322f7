// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/unfinishedWrite.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>
#include <vector>

#include "app/Files.h"
#include "app/Guard.h"
#include "app/RuntimeError.h"
#include "image/backups.h"
#include "image/stamp.h"

namespace k520::unfinishedWrite {

namespace {

namespace fs = std::filesystem;

/// More than a bad line falsifies in one session, less than one channel has.
constexpr int mostFalsified = 8;
constexpr std::size_t longestName = 255;

fs::path pendingPath() {
    return backups::folder() / "unfinished-write";
}

fs::path lastPath() {
    return backups::folder() / "last-write";
}

bool inStamp(int address) {
    return address >= stamp::address && address < stamp::address + stamp::length;
}

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

void removeNote(const fs::path& path) {
    guarded("unfinishedWrite->end", [&] { files::remove(path); });
}

std::optional<Note> readNote(const fs::path& path) {
    const std::size_t size = modIicDat::IicDat().size();
    try {
        const auto bytes = files::read(path, longestName + 1 + 2 * size).bytes;
        const auto lineEnd = std::ranges::find(bytes, '\n');
        if (static_cast<std::size_t>(bytes.end() - lineEnd) != 1 + 2 * size) {
            return std::nullopt;
        }
        Note note{backups::folder() / std::string(bytes.begin(), lineEnd), MemoryImage(size),
                  MemoryImage(size)};
        const auto images = lineEnd + 1;
        const auto half = images + static_cast<std::ptrdiff_t>(size);
        std::copy(images, half, note.found.bytes().begin());
        std::copy(half, bytes.end(), note.sent.bytes().begin());
        const bool usable = backups::parseName(note.backup) && files::stampOf(note.backup);
        return usable ? std::optional(std::move(note)) : std::nullopt;
    } catch (const RuntimeError&) {
        return std::nullopt;  // there is none
    }
}

/// What a restore that was cut off has put back; what was found where the backup cannot be read.
MemoryImage backupOf(const Note& note, modIicDat::AddressRange range) {
    try {
        return backups::load(note.backup, range).image;
    } catch (const RuntimeError&) {
        return note.found;
    }
}

}  // namespace

void begin(const Note& note) {
    const std::string name = note.backup.filename().string() + '\n';
    std::vector<std::uint8_t> bytes(name.begin(), name.end());
    for (const MemoryImage* image : {&note.found, &note.sent}) {
        bytes.insert(bytes.end(), image->bytes().begin(), image->bytes().end());
    }
    files::replace(pendingPath(), bytes);
}

void end() {
    guarded("unfinishedWrite->end", [] {
        std::error_code error;
        fs::rename(pendingPath(), lastPath(), error);
        if (error) {
            throwSystemError(error.value(), pendingPath().string());
        }
    });
}

void dropPending() {
    removeNote(pendingPath());
}

void dropLast() {
    removeNote(lastPath());
}

std::optional<Note> pending() {
    return readNote(pendingPath());
}

std::optional<Note> latest() {
    // One that was begun counts even where it is of no use: the last one is older.
    return readNote(isThere(pendingPath()) ? pendingPath() : lastPath());
}

bool leads(const Note& note, const MemoryImage& now, modIicDat::AddressRange range) {
    const MemoryImage backup = backupOf(note, range);
    int unexplained = 0;
    for (int address = range.start; address <= range.end; ++address) {
        const bool explained = now(address) == note.found(address) ||
                               now(address) == note.sent(address) ||
                               now(address) == backup(address) || inStamp(address);
        unexplained += explained ? 0 : 1;
    }
    return unexplained <= mostFalsified;
}

}  // namespace k520::unfinishedWrite
