// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdimoduMain.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <system_error>

#include "base/Files.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"

namespace k520::mdimoduMain {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestSettingsFile = 16 << 20;

/// A file that was written this short a time ago may be written again under the same stamp.
constexpr std::chrono::milliseconds stampTick{20};

std::string settingsBytes(const fs::path& path) {
    // The size first: every setting asks anew for a file that cannot be read.
    const auto stamp = files::stampOf(path);
    const auto content =
        files::read(path, stamp && stamp->size > largestSettingsFile ? 0 : largestSettingsFile);
    if (content.size > content.bytes.size()) {
        throw RuntimeError(errNum::pathAccess, path.string(), say(texts::settingsTooLarge));
    }
    return {content.bytes.begin(), content.bytes.end()};
}

/// The settings file as it was read last.
struct ReadFile {
    fs::path path;
    std::optional<files::Stamp> stamp;
    bool stampIsSafe = false;  ///< the same stamp means the same bytes
    ProfileText text;
};

ReadFile& lastRead() {
    static ReadFile instance;
    return instance;
}

/// What a SettingsSnapshot holds.
struct Hold {
    int holders = 0;
    bool taken = false;  ///< the file was read since the first of them
};

Hold& hold() {
    static Hold instance;
    return instance;
}

/// The settings file as it stands on the disk; a profile without keys where there is none.
const ProfileText& settings() {
    ReadFile& last = lastRead();
    if (hold().taken) {
        return last.text;
    }
    const fs::path path = findFile(settingsFileName);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto stamp = files::stampOf(path);
    if (last.stampIsSafe && stamp == last.stamp && path.native() == last.path.native()) {
        hold().taken = hold().holders > 0;
        return last.text;
    }
    std::string bytes = stamp ? settingsBytes(path) : std::string();
    if (bytes != last.text.bytes()) {
        last.text = ProfileText(std::move(bytes));
    }
    last.path = path;
    last.stamp = stamp;
    last.stampIsSafe = stamp && now - stamp->modified > stampTick;
    hold().taken = hold().holders > 0;
    return last.text;
}

bool isThere(const fs::path& path) {
    // A file that may not be looked at counts: reading it tells what is wrong.
    std::error_code ignored;
    return fs::status(path, ignored).type() != fs::file_type::not_found;
}

/// Raises the system's error where that cannot be told.
bool isMissing(const fs::path& path) {
    return !files::stampOf(path);
}

std::string bytesIfThere(const fs::path& path) {
    return isMissing(path) ? std::string() : settingsBytes(path);
}

std::string_view withoutBlanksBehind(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Raises 5 for what a profile cannot hold, before anything on the disk has changed.
void requireHoldable(std::string_view section, std::span<const KeyValue> values) {
    ProfileText trial;
    for (const auto& [key, value] : values) {
        trial.setValue(section, key, value);
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

fs::path findFile(std::string_view name) {
    fs::path own = state().programFolder / name;
    if (state().shippedFolder.empty() || isThere(own)) {
        return own;
    }
    fs::path shipped = state().shippedFolder / name;
    return isThere(shipped) ? shipped : own;
}

void correctLanguage() noexcept {
    std::int16_t& language = state().Language;
    if (language < languageChinese || language > languageEnglish) {
        language = languageEnglish;
    }
}

SettingsSnapshot::SettingsSnapshot() noexcept {
    ++hold().holders;
}

SettingsSnapshot::~SettingsSnapshot() {
    if (--hold().holders == 0) {
        hold().taken = false;
    }
}

std::string readSetting(std::string_view section, std::string_view key, SettingBuffer buffer,
                        std::string_view defaultText) {
    return throughBuffer(readSetting(section, key, defaultText), buffer);
}

std::string readSetting(std::string_view section, std::string_view key,
                        std::string_view defaultText) {
    const auto value = settings().value(section, key);
    return value ? *value : std::string(withoutBlanksBehind(defaultText));
}

void writeSettings(std::string_view section, std::span<const KeyValue> values) {
    if (!state().settingsWritable) {
        return;
    }
    requireHoldable(section, values);
    files::makeFolder(state().programFolder);
    const files::FolderLock lock(state().programFolder);
    // Read anew: another program may have written since, and shipped settings seed the first file.
    const fs::path own = state().programFolder / settingsFileName;
    const bool seeds = isMissing(own) && !state().shippedFolder.empty();
    const std::string before = bytesIfThere(seeds ? state().shippedFolder / settingsFileName : own);
    ProfileText text(before);
    for (const auto& [key, value] : values) {
        text.setValue(section, key, value);
    }
    if (text.bytes() != before) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.bytes().data());
        files::replace(own, {bytes, text.bytes().size()});
    }
    if (hold().taken) {
        ReadFile& last = lastRead();
        last.stampIsSafe = false;
        for (const auto& [key, value] : values) {
            last.text.setValue(section, key, value);
        }
    }
}

void writeSetting(std::string_view section, std::string_view key, std::string_view value) {
    const std::array<KeyValue, 1> one{KeyValue{key, value}};
    writeSettings(section, one);
}

}  // namespace k520::mdimoduMain
