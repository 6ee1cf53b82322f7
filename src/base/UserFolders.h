// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>

/// Where the system keeps a program and what it stores for a user.
namespace k520::userFolders {

/// The folder of the running executable. Raises the system's error where that cannot be found out.
[[nodiscard]] std::filesystem::path executable();

/// Where programs keep their data of this user, a folder each: $XDG_DATA_HOME or ~/.local/share.
/// Empty where there is no user's home.
[[nodiscard]] std::filesystem::path data();

}  // namespace k520::userFolders
