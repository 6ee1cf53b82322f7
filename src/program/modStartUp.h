// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

/// The start-up sequence, the closing question and what else belongs to the main window's life.
namespace k520::modStartUp {

/// What Form_Load decided.
enum class StartResult {
    running,  ///< go on and show the windows
    quit,     ///< the first start without a settings file: end at once, without a word
};

struct State {
    /// True = no question at closing.
    bool quitting = false;
    /// Set to 1 once the user has confirmed the exit.
    std::int16_t exiting = 0;
    /// The answer to the closing question (6 = yes, 7 = no).
    std::int16_t exitAnswer = 0;
};

[[nodiscard]] State& state();

/// The system's default locale as an identifier: 2052 for Simplified Chinese, 1028 for Traditional
/// Chinese, 1033 for everything else. Taken from LC_ALL, LC_MESSAGES or LANG, as the C library
/// does.
[[nodiscard]] std::int32_t GetSystemDefaultLCID();
/// The identifier of a locale name such as "zh_CN.UTF-8".
[[nodiscard]] std::int32_t localeIdentifier(const std::string& localeName);

/// Sets the language of all named texts (Text.h) before the settings are read: help, and complaints
/// about a wrong command line, need it. It is that of the settings in the program folder (see
/// programFolder::look), or of the system's locale where these cannot be read.
void chooseTextLanguage(const std::optional<std::string>& programFolder);

/// Looks at "FirRun" and, unless it is 0, sets it to 0, stores the language of the system's locale
/// and chooses a serial port.
void GetSysLang();

/// Reads every key of section "Setting" that start-up needs, sizes the image arrays, and chooses
/// the font in use. A value that cannot be converted is reported under "mdifrmMain->Form_Load" and
/// replaced by its default.
void readSettings();

/// The texts of the language in force, the scripts and the channel form: what every program needs
/// before it can show an image. readSettings() comes first.
void prepareCore();

/// The windows' steps of the start-up, each in its place; a program without windows has none.
struct WindowSteps {
    std::function<void()> checkLanguageItem = {};  ///< the language in force is known
    std::function<void()> setSoftFace = {};        ///< texts, font and settings are there
    std::function<void()> initChannelForm = {};    ///< grid and lists are there, still empty
    std::function<void()> showChannelForm = {};    ///< everything is filled
    std::function<void()> showLockState = {};      ///< the lock state is known
};

/// The whole start-up in its order.
[[nodiscard]] StartResult Form_Load(const WindowSteps& windows = {});

/// The closing question (none while quitting). Returns whether the program may close.
[[nodiscard]] bool MDIForm_QueryUnload();

/// A window's place and size in twips.
struct Shape {
    std::int32_t height = 0;
    std::int32_t width = 0;
    std::int32_t left = 0;
    std::int32_t top = 0;
};

/// Writes the main window's geometry; nothing reads it back.
void SaveMdiFormShape(const Shape& shape);

/// Locks or unlocks the channel window, and stores that. Label "mdifrmMain->mnuLockCh_Click".
void lockChannels(bool lock);

/// The Help command: opens the help file of the language in force ("ChsHelp", "ChtHelp" or
/// "EngHelp"), ".CHM" where it lies in the program folder, else the shipped ".html". Label
/// "mdifrmMain->Help"; the user is told when nothing can open it. A language outside 1..3 is first
/// set to 3.
void Help();
/// What Help opens.
[[nodiscard]] std::filesystem::path helpFile();

/// Stores a new language, tells that it takes effect at the next start, and returns true when the
/// caller has to close the main window: false when the language is in force already.
[[nodiscard]] bool SwiLangFace(std::int16_t language);

}  // namespace k520::modStartUp
