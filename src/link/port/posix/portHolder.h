// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <optional>
#include <string>

/// Who holds a serial device, as far as the system tells this user.
namespace k520::portHolder {

/// The process that holds the advisory lock (flock) on the device. The system tells that of every
/// user's processes.
[[nodiscard]] std::optional<pid_t> locker(const struct stat& device);

/// A process other than this one that has the device open. One that this user may not look into is
/// passed over.
[[nodiscard]] std::optional<pid_t> opener(const struct stat& device);

/// The holder in words: "this program", "minicom (process 4711)", or "another program" where it
/// cannot be found. The locker comes first: a terminal's other end may have the device open too.
[[nodiscard]] std::string description(const struct stat& device);

}  // namespace k520::portHolder
