// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <vector>

#include "base/Clock.h"
#include "document/imageDifferences.h"
#include "image/MemoryImage.h"
#include "image/modIicDat.h"
#include "link/session/backups.h"

/// What a restore can put back into a radio.
namespace k520::waysBack {

struct WayBack {
    std::filesystem::path path;  ///< of the backup
    DateTime time;               ///< when it was made
    backups::Reason reason = backups::Reason::read;
    /// The addresses that came from the radio; a restore writes these.
    modIicDat::AddressRange covered;
    /// A write or a restore that came after it has not come to its good end: a radio may hold
    /// something half done, and this is what it held before.
    bool unfinished = false;
};

/// All backups, the newest first. Reads names only, so it is quick.
[[nodiscard]] std::vector<WayBack> list();

/// Sorts backups by what their names tell of their time, the newest first; each stays once.
void sortNewestFirst(std::vector<std::filesystem::path>& backups);

/// The addresses that a backup covers and of which it is known what a radio holds; none, that is an
/// end before the start, where they have nothing in common.
[[nodiscard]] modIicDat::AddressRange comparable(const WayBack& way,
                                                 modIicDat::AddressRange known) noexcept;

/// What a restore would change in a radio that holds `held`, within a range: give it the image, or
/// what the last write sent. Raises like backups::load.
[[nodiscard]] imageDifferences::Summary changesBy(const WayBack& way, const MemoryImage& held,
                                                  modIicDat::AddressRange range);

/// The user says that no radio needs this backup any more: it is not `unfinished` from here on. The
/// backup stays. A failure goes to the error list under "unfinishedWrite->drop" or
/// "waysBack->forget".
void forget(const WayBack& way);

}  // namespace k520::waysBack
