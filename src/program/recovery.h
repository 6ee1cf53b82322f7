// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Files.h"

/// Unsaved work outlives a crash and a power cut: a copy of it lies beside the settings, in a
/// folder of its own for each running program ("Recovery/1", "Recovery/2" ...), which that program
/// keeps locked. The next start offers what nobody has locked.
///
/// A copy is the image as saving would encode it, all bytes of it, then the path of the file that
/// it belongs to, in UTF-8. It is written by a thread of its own: a slow disk holds up nobody.
namespace k520::recovery {

/// The longest that unsaved work is without a copy, but for the time of writing one.
inline constexpr int longestGapMs = 15'000;

struct State {
    std::filesystem::path folder;  ///< this program's; empty before the first copy
    std::shared_ptr<systemFiles::OpenFolder> alone;  ///< keeps it locked
    std::vector<std::uint8_t> kept;                  ///< what the last copy holds
    std::shared_future<void> writing;
    bool told = false;  ///< a copy failed, and that is in the error list
};

[[nodiscard]] State& state();

/// What a program left that did not end cleanly.
struct Found {
    std::filesystem::path copy;
    std::string file;  ///< where the work belongs; it need not be there any more
    std::vector<std::uint8_t> image;
};
/// The newest first.
[[nodiscard]] std::vector<Found> found();

/// Offers what was found, one after another, until one is taken. What is taken is shown as an
/// unsaved change of its file; what is declined is kept as a data file "NAME recovered.dat" in the
/// folder of the untitled file.
void offer();

/// Brings the copy up to date: writes it where there are unsaved changes, removes it where there
/// are none. Returns at once. A copy that cannot be made is told in the error list once.
void keep();
/// Waits for a copy that is being written.
void wait();

/// A clean end: the copy and the folder go.
void end();

}  // namespace k520::recovery
