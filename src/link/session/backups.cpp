// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/backups.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <string_view>
#include <system_error>
#include <tuple>

#include "app/Guard.h"
#include "app/programFolder.h"
#include "base/Checked.h"
#include "base/Clock.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "image/datFile.h"
#include "image/imageTexts.h"

namespace k520::backups {

namespace {

namespace fs = std::filesystem;

// By Reason.
constexpr std::array<std::string_view, 2> reasonNames{"read", "before-write"};

/// The most that is kept of a file that a backup replaces: far more than any data file has.
constexpr std::size_t largestKept = 1U << 20U;

/// More than any program makes in a second.
constexpr int largestOrdinal = 999'999;

constexpr std::string_view timeShape = "####-##-##_##-##-##";

auto age(const Backup& backup) {
    return std::tie(backup.time, backup.ordinal);
}

std::string timeText(const DateTime& t) {
    return fmt::format("{:04}-{:02}-{:02}_{:02}-{:02}-{:02}", t.year, t.month, t.day, t.hour,
                       t.minute, t.second);
}

bool hasTimeShape(std::string_view name) {
    return std::ranges::equal(name.substr(0, timeShape.size()), timeShape, [](char c, char shape) {
        return shape == '#' ? c >= '0' && c <= '9' : c == shape;
    });
}

std::string nameOf(const Backup& backup) {
    return fmt::format("{}{}_{}_{:04X}-{:04X}.dat", backup.time,
                       backup.ordinal > 1 ? fmt::format("-{}", backup.ordinal) : std::string(),
                       reasonNames.at(static_cast<std::size_t>(backup.reason)),
                       static_cast<std::uint16_t>(backup.covered.start),
                       static_cast<std::uint16_t>(backup.covered.end));
}

/// The four hexadecimal digits at a place of a name.
std::optional<std::int16_t> address(const std::string& name, std::size_t place) {
    unsigned value = 0;
    const std::string_view digits = std::string_view(name).substr(std::min(place, name.size()), 4);
    const auto [rest, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return error == std::errc{} && rest == digits.data() + 4
               ? std::optional(static_cast<std::int16_t>(value))
               : std::nullopt;
}

/// What may lie beside a backup and is nothing without it.
constexpr std::array companions{lostExtension, unfinishedExtension, writtenExtension};

fs::path lostBeside(const fs::path& path) {
    return fs::path(path).replace_extension(lostExtension);
}

std::span<const std::uint8_t> lostBytes(const MemoryImage& image) {
    return image.bytes().subspan(datFile::lostAddress, datFile::lostCount);
}

/// Raises 9 for an image that the format cannot hold.
void requireHoldable(const MemoryImage& image) {
    static_cast<void>(image(datFile::leastDatNum));
}

[[noreturn]] void throwTooShort(const fs::path& path, std::uint64_t length, std::uint64_t needed) {
    throw RuntimeError(errNum::pastEnd, path.string(), say(texts::fileTooShort, length, needed));
}

void requireWithin(const MemoryImage& image, modIicDat::AddressRange range) {
    if (!liesWithin(range, image)) {
        throw RuntimeError(errNum::subscript,
                           say(texts::rangeOutsideImage, static_cast<std::uint16_t>(range.start),
                               static_cast<std::uint16_t>(range.end), image.size()));
    }
}

/// The next free ordinal of a second.
int freeOrdinal(std::span<const Backup> others, const std::string& time) {
    int last = 0;
    for (const Backup& backup : others) {
        if (backup.time == time) {
            last = std::max(last, backup.ordinal);
        }
    }
    return last + 1;
}

/// The backup comes last: where there is one, it is whole. Of one that fails nothing stays.
void storePair(const fs::path& path, const MemoryImage& image) {
    try {
        files::replace(lostBeside(path), lostBytes(image));
        files::replace(path, datFile::bytesOf(image));
    } catch (...) {
        std::error_code ignored;
        fs::remove(path, ignored);
        fs::remove(lostBeside(path), ignored);
        throw;
    }
}

/// `others` are those of one reason beside the one just made, the oldest first.
void removeOldest(std::span<const Backup> others) {
    for (; others.size() >= mostKept; others = others.subspan(1)) {
        // The backup first: what lies beside it is nothing without it. One that cannot be removed
        // keeps none of the others.
        guarded("backups->removeOldest", [&] {
            files::remove(others.front().path);
            for (const auto extension : companions) {
                files::remove(fs::path(others.front().path).replace_extension(extension));
            }
        });
    }
}

/// Whether a file belongs to a backup that is not there.
bool hasNoBackup(const fs::path& path) {
    const auto backup = fs::path(path).replace_extension(".dat");
    return std::ranges::find(companions, path.extension().string()) != companions.end() &&
           parseName(backup) && !files::stampOf(backup);
}

/// Removes what a killed program has left. Only with the folder's lock: otherwise it may be what
/// another program is just about to need.
void removeRemains() {
    std::vector<fs::path> left;
    std::error_code none;
    for (fs::directory_iterator entry(folder(), none), end; !none && entry != end;
         entry.increment(none)) {
        if (hasNoBackup(entry->path())) {
            left.push_back(entry->path());
        }
    }
    for (const auto& path : left) {
        guarded("backups->removeOldest", [&] { files::remove(path); });
    }
}

}  // namespace

fs::path folder() {
    return programFolder::state().own / "Data" / "Backups";
}

std::optional<fs::path> storeAs(const fs::path& path, const MemoryImage& image) {
    const auto bytes = datFile::bytesOf(image);
    if (!files::stampOf(path)) {
        files::replace(path, bytes);
        return std::nullopt;
    }
    const auto old = files::read(path, largestKept);
    if (old.bytes == bytes) {
        return std::nullopt;
    }
    if (old.size > old.bytes.size()) {
        throw RuntimeError(errNum::pathAccess, path.string(), say(texts::fileTooLarge));
    }
    const auto kept = files::freeNameBeside(path);
    files::replace(kept, old.bytes);
    files::replace(path, bytes);
    return kept;
}

Backup store(const MemoryImage& image, modIicDat::AddressRange covered, Reason reason,
             std::span<const fs::path> spared) {
    requireHoldable(image);
    files::makeFolder(folder());
    const files::FolderLock alone(folder());
    removeRemains();
    auto others = list();
    Backup backup;
    backup.time = timeText(theClock().dateTime());
    backup.ordinal = freeOrdinal(others, backup.time);
    backup.reason = reason;
    backup.covered = covered;
    backup.path = folder() / nameOf(backup);
    storePair(backup.path, image);
    // Not the new one, however old the clock says it is.
    std::erase_if(others, [&](const Backup& other) {
        return other.reason != reason || std::ranges::find(spared, other.path) != spared.end();
    });
    removeOldest(others);
    return backup;
}

std::optional<Backup> parseName(const fs::path& path) {
    // TIME[-ORDINAL] _ REASON _ START-END.dat, read loosely from both ends: only the very name that
    // such a backup would be given counts.
    const std::string name = path.filename().string();
    const auto afterReason = name.rfind('_');
    const auto beforeReason = name.rfind('_', afterReason - 1);
    if (afterReason == std::string::npos || beforeReason == std::string::npos ||
        beforeReason < timeShape.size() || !hasTimeShape(name)) {
        return std::nullopt;
    }
    const auto reason = std::ranges::find(
        reasonNames,
        std::string_view(name).substr(beforeReason + 1, afterReason - beforeReason - 1));
    // After its dash it reads like a negative number.
    const auto ordinal = parseWhole(
        std::string_view(name).substr(timeShape.size(), beforeReason - timeShape.size()));
    const auto start = address(name, afterReason + 1);
    const auto end = address(name, afterReason + 6);
    if (reason == reasonNames.end() || !start || !end || *start < 0 || *end < *start ||
        ordinal.value_or(-1) < -largestOrdinal) {
        return std::nullopt;
    }
    Backup backup{path,
                  name.substr(0, timeShape.size()),
                  ordinal ? -*ordinal : 1,
                  static_cast<Reason>(reason - reasonNames.begin()),
                  {*start, *end}};
    return nameOf(backup) == name ? std::optional(std::move(backup)) : std::nullopt;
}

DateTime dateTimeOf(const Backup& backup) {
    const auto number = [&](std::size_t place, std::size_t length) {
        return parseWhole(std::string_view(backup.time).substr(place, length)).value_or(0);
    };
    return {number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2), number(17, 2)};
}

std::vector<Backup> list() {
    std::vector<Backup> all;
    std::error_code none;
    for (fs::directory_iterator entry(folder(), none), end; !none && entry != end;
         entry.increment(none)) {
        if (auto backup = parseName(entry->path())) {
            all.push_back(std::move(*backup));
        }
    }
    std::ranges::sort(all, {}, age);
    return all;
}

std::optional<Backup> latestBeforeWrite() {
    const auto all = list();
    const auto found = std::find_if(all.rbegin(), all.rend(), [](const Backup& backup) {
        return backup.reason == Reason::beforeWrite;
    });
    return found != all.rend() ? std::optional(*found) : std::nullopt;
}

bool liesWithin(modIicDat::AddressRange range, const MemoryImage& image) {
    // A radio is written in whole blocks.
    constexpr int block = modIicDat::blockLength;
    const int past = range.start + (range.end - range.start + block) / block * block;
    return range.start >= 0 && range.end >= range.start && past <= std::ssize(image.bytes());
}

void requireRestorable(const fs::path& path) {
    if (parseName(path)) {
        return;
    }
    const auto head = files::read(path, datFile::fillerEnd);
    if (head.size > datFile::longest) {
        throw RuntimeError(errNum::invalidCall, path.string(),
                           say(texts::longerThanAnyData, head.size, datFile::longest));
    }
    const bool filled =
        head.bytes.size() == datFile::fillerEnd &&
        std::ranges::all_of(std::span(head.bytes).subspan(datFile::fillerBegin),
                            [](std::uint8_t byte) { return byte == datFile::filler; });
    if (!filled) {
        throw RuntimeError(errNum::invalidCall, path.string(),
                           say(texts::notADataFile, datFile::fillerBegin, datFile::fillerEnd - 1));
    }
}

Content load(const fs::path& path, modIicDat::AddressRange covered) {
    Content content{MemoryImage(modIicDat::IicDat().size()), false};
    requireWithin(content.image, covered);
    const auto length = datFile::load(path, content.image);
    // The file has the channel area a little further on.
    const auto needed = static_cast<std::uint64_t>(
        std::max<int>(covered.end + 1, datFile::lostAddress + datFile::lostCount));
    if (length < needed) {
        throwTooShort(path, length, needed);
    }
    if (parseName(path) && files::stampOf(lostBeside(path))) {
        const auto lost = files::read(lostBeside(path), datFile::lostCount);
        if (lost.size != datFile::lostCount) {
            throwTooShort(lostBeside(path), lost.size, datFile::lostCount);
        }
        std::ranges::copy(lost.bytes, content.image.bytes().subspan(datFile::lostAddress).begin());
        content.whole = true;
    }
    return content;
}

}  // namespace k520::backups
