// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Where the program keeps its settings, default image and data files.
namespace k520::programFolder {

/// Names of files in the program folder. The settings file is a plain profile text in spite of its
/// name, the default image is raw memory.
inline constexpr const char* settingsFileName = "Uninstall.exe";
inline constexpr const char* defaultImageFileName = "PL220_CV.exe";

struct State {
    /// Where the settings file, the default image and the folder "Data" are.
    std::filesystem::path own;
    /// The files as shipped; what the program folder lacks is taken from here. May be empty.
    std::filesystem::path shipped;
};

[[nodiscard]] State& state();

/// `name` in the program folder where it exists there, else in the shipped folder where it exists
/// there, else in the program folder.
[[nodiscard]] std::filesystem::path findFile(std::string_view name);

/// Finds the program folder and the shipped files. In this order: `chosen`,
/// $K520_HOME, the executable's folder when it holds a settings file and can be written,
/// $XDG_DATA_HOME/k520 (by default ~/.local/share/k520), which is made and seeded from the shipped
/// files on first use. Returns a remark about a chosen folder that does not exist; raises 76 for a
/// chosen path that is not a folder.
[[nodiscard]] std::optional<std::string> choose(const std::optional<std::string>& chosen);

/// Does what choose() does but for making and seeding the folder.
void look(const std::optional<std::string>& chosen);

/// What the option "--program-folder" of a command line names, be that right or wrong: complaints
/// about it are said in the language of that folder's settings.
[[nodiscard]] std::optional<std::string> namedIn(std::span<const char* const> words);

}  // namespace k520::programFolder
