// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/profileText.h"

/// Process-wide values of the program: its folder, the settings file, the language and the like.
namespace k520::mdimoduMain {

/// Interface languages, as the settings file numbers them.
inline constexpr std::int16_t languageChinese = 1;
inline constexpr std::int16_t languageTraditional = 2;
inline constexpr std::int16_t languageEnglish = 3;

/// Names of files in the program folder. The settings file is a plain profile text in spite of its
/// name, the default image is raw memory.
inline constexpr const char* settingsFileName = "Uninstall.exe";
inline constexpr const char* defaultImageFileName = "PL220_CV.exe";

/// States of the channel window's lock, as the settings file names them.
inline constexpr const char* locked = "ShowLock";
inline constexpr const char* unlocked = "ShowNo";

struct State {
    /// Where the settings file, the default image and the folder "Data" are.
    std::filesystem::path programFolder;
    /// The files as shipped; what the program folder lacks is taken from here. May be empty.
    std::filesystem::path shippedFolder;
    /// False for a program that must not change the settings file as a side effect: writeSettings
    /// then does nothing.
    bool settingsWritable = true;

    std::int16_t Language = languageEnglish;
    std::string EngFont;
    std::string ChsFont;
    std::string fontInUse;
    /// Colour texts as they stand in the settings file (see parseColour).
    std::string OverColor;
    std::string DefColor;
    /// Anything but `locked` means unlocked.
    std::string lockState = unlocked;
    /// Marks the end of a list of settings texts.
    std::string endOfItem = "*EndOfThisItem*";
    /// True = no question at closing.
    bool quitting = false;
    /// Set to 1 once the user has confirmed the exit.
    std::int16_t exiting = 0;
    /// The answer to the closing question (6 = yes, 7 = no).
    std::int16_t exitAnswer = 0;
};

[[nodiscard]] State& state();

/// `name` in the program folder where it exists there, else in the shipped folder where it exists
/// there, else in the program folder.
[[nodiscard]] std::filesystem::path findFile(std::string_view name);

/// Replaces a language outside 1..3 by 3, for the rest of the run.
void correctLanguage() noexcept;

/// One value of the settings file through a buffer, or `defaultText` through the same buffer where
/// the file or the key is missing. A file that cannot be read raises the system's error.
[[nodiscard]] std::string readSetting(std::string_view section, std::string_view key,
                                      SettingBuffer buffer, std::string_view defaultText);

/// Reads a whole value, without a buffer.
[[nodiscard]] std::string readSetting(std::string_view section, std::string_view key,
                                      std::string_view defaultText);

/// While one lives the settings file is read once: what is read together comes from one state of
/// the file and this program's own writes since, whatever other programs do meanwhile. A file that
/// could not be read is tried anew at each reading.
class SettingsSnapshot {
  public:
    SettingsSnapshot() noexcept;
    ~SettingsSnapshot();
    SettingsSnapshot(const SettingsSnapshot&) = delete;
    SettingsSnapshot& operator=(const SettingsSnapshot&) = delete;
};

using KeyValue = std::pair<std::string, std::string>;

/// Writes values into a section of the settings file in the program folder, in one replacement;
/// nothing is written where all stand there already. A program folder without settings file gets
/// a copy of the shipped one first. Other programs' writes in between are kept. Raises the system's
/// error when the file cannot be replaced; 5, and nothing is made, for what the format cannot hold.
void writeSettings(std::string_view section, std::span<const KeyValue> values);
void writeSetting(std::string_view section, std::string_view key, std::string_view value);

}  // namespace k520::mdimoduMain
