// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/unfinishedWrite.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <system_error>
#include <vector>

#include "app/Checked.h"
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
constexpr std::size_t longestFirstLine = 5000;

fs::path pendingPath() {
    return backups::folder() / "unfinished-write";
}

fs::path lastPath() {
    return backups::folder() / "last-write";
}

bool inStamp(int address) {
    return address >= stamp::address && address < stamp::address + stamp::length;
}

/// The name of a backup, the whole path of any other file.
std::string nameOf(const fs::path& backup) {
    return backup.parent_path() == backups::folder() ? backup.filename().string()
                                                     : fs::absolute(backup).string();
}

void removeNote(const fs::path& path) {
    guarded("unfinishedWrite->end", [&] {
        std::error_code error;
        fs::remove(path, error);
        if (error) {
            throwSystemError(error.value(), path.string());
        }
    });
}

/// The first line of a note and what it says; nothing for any other text.
std::optional<Note> parseLine(const std::string& line) {
    constexpr std::size_t rangeLength = 9;
    if (line.size() <= rangeLength + 1 || line[4] != '-' || line[rangeLength] != ' ') {
        return std::nullopt;
    }
    Note note;
    note.covered = {hexToInt16(line.substr(0, 4)), hexToInt16(line.substr(5, 4))};
    note.backup = backups::folder() / line.substr(rangeLength + 1);
    return note;
}

std::optional<Note> readNote(const fs::path& path) {
    const std::size_t images = 2 * modIicDat::IicDat().size();
    try {
        const auto bytes = files::read(path, longestFirstLine + 1 + images).bytes;
        if (bytes.size() <= images || bytes[bytes.size() - images - 1] != '\n') {
            return std::nullopt;
        }
        const auto found = bytes.end() - static_cast<std::ptrdiff_t>(images);
        const auto sent = bytes.end() - static_cast<std::ptrdiff_t>(images / 2);
        auto note = parseLine({bytes.begin(), found - 1});
        if (note && files::stampOf(note->backup)) {
            note->found = note->sent = MemoryImage(images / 2);
            std::copy(found, sent, note->found.bytes().begin());
            std::copy(sent, bytes.end(), note->sent.bytes().begin());
            return note;
        }
    } catch (const RuntimeError&) {
        // There is none.
    }
    return std::nullopt;
}

}  // namespace

void begin(const Note& note) {
    const auto line = fmt::format("{:04X}-{:04X} {}\n", note.covered.start, note.covered.end,
                                  nameOf(note.backup));
    std::vector<std::uint8_t> bytes(line.begin(), line.end());
    for (const MemoryImage* image : {&note.found, &note.sent}) {
        bytes.insert(bytes.end(), image->bytes().begin(), image->bytes().end());
    }
    backups::makeFolder();
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

void drop() {
    removeNote(pendingPath());
}

void forget() {
    removeNote(pendingPath());
    removeNote(lastPath());
}

std::optional<Note> pending() {
    return readNote(pendingPath());
}

std::optional<Note> last() {
    return readNote(lastPath());
}

bool leads(const Note& note, const MemoryImage& now) {
    int unexplained = 0;
    for (int address = 0; address < std::ssize(now.bytes()); ++address) {
        const bool explained = now(address) == note.found(address) ||
                               now(address) == note.sent(address) || inStamp(address);
        unexplained += explained ? 0 : 1;
    }
    return unexplained <= mostFalsified;
}

}  // namespace k520::unfinishedWrite
