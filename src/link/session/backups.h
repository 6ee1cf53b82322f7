// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "image/MemoryImage.h"
#include "image/modIicDat.h"

/// Copies of what radios held: data files in the folder "Data/Backups" of the program folder. Their
/// names say when, why, and which addresses came from the radio:
///
///   2026-11-22_13-05-09_read_0000-1FFF.dat
///   2026-11-22_13-05-09-2_before-write_0000-1FFF.dat     the second one of that second
///
/// A data file has no place for sixteen of the image's bytes (see datFile.h): they stand in a file
/// of their own beside the backup, with the extension ".lost". A note of the write that came after
/// it may lie beside it, too (see unfinishedWrite.h). These go with the backup; what a killed
/// program leaves of them without a backup goes with the next one that is stored. Files with other
/// names are left alone.
namespace k520::backups {

/// Beyond so many backups of one reason the oldest of them are removed.
inline constexpr std::size_t mostKept = 200;

inline constexpr std::string_view lostExtension = ".lost";
inline constexpr std::string_view unfinishedExtension = ".unfinished";
inline constexpr std::string_view writtenExtension = ".written";

enum class Reason : std::uint8_t { read, beforeWrite };

struct Backup {
    std::filesystem::path path;
    std::string time;  ///< "2026-11-22_13-05-09"
    int ordinal = 1;   ///< among those of one second
    Reason reason = Reason::read;
    /// The addresses whose bytes came from the radio.
    modIicDat::AddressRange covered;
};

[[nodiscard]] std::filesystem::path folder();

/// Writes a backup of `image`, byte for byte and stamped with the clock's date and time, and
/// removes the oldest ones of that reason but for `spared`, which do not count; a removal that
/// fails goes to the error list under "backups->removeOldest". Makes the folder where it is
/// missing. Raises the system's error, with the folder's name, where the file cannot be written;
/// nothing is left of it then. Raises 9 where the image is too short for a data file.
Backup store(const MemoryImage& image, modIicDat::AddressRange covered, Reason reason,
             std::span<const std::filesystem::path> spared = {});

/// A plain data file of the caller's choice. What was there under that name, and is not the same,
/// may be the only copy of what a radio held: it is kept beside it as "NAME.~1~", ".~2~" and so on,
/// and its new path is returned. Raises like store(), and 75 for a file of more than 1 MiB, which
/// is none of this program's; what was there stays then.
std::optional<std::filesystem::path> storeAs(const std::filesystem::path& path,
                                             const MemoryImage& image);

/// What the name of a backup says; nothing for the name of any other file.
[[nodiscard]] std::optional<Backup> parseName(const std::filesystem::path& path);

/// When a backup was made, by its name.
[[nodiscard]] DateTime dateTimeOf(const Backup& backup);

/// All backups in the folder, the oldest first; none where there is no folder.
[[nodiscard]] std::vector<Backup> list();

/// The last one made before a write.
[[nodiscard]] std::optional<Backup> latestBeforeWrite();

/// Raises 5 for a file that is neither a backup, by its name, nor a data file: every data file has
/// the filler of the format (see datFile.h), and none is longer than the largest image. Anything
/// else in it may come from a radio. Raises the system's error where it cannot be read. What is too
/// short for the addresses wanted is load()'s to tell.
void requireRestorable(const std::filesystem::path& path);

/// Whether the blocks of a range lie within an image.
[[nodiscard]] bool liesWithin(modIicDat::AddressRange range, const MemoryImage& image);

struct Content {
    MemoryImage image;  ///< of the size in force
    /// False for a data file that is not a backup, and for one without its ".lost": nothing says
    /// what the radio held at the bytes that have no place in it.
    bool whole = false;
};

/// The content of a backup, or of any data file. Raises what datFile::load raises, 9 where the
/// blocks of `covered` do not lie within the image, and 62 where the file or its ".lost" is too
/// short.
[[nodiscard]] Content load(const std::filesystem::path& path, modIicDat::AddressRange covered);

}  // namespace k520::backups
