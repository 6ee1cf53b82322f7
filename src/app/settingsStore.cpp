// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/settingsStore.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <system_error>

#include "app/programFolder.h"
#include "base/Files.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"

namespace k520::settingsStore {

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

/// What a Snapshot holds.
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
    const fs::path path = programFolder::findFile(programFolder::settingsFileName);
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

Snapshot::Snapshot() noexcept {
    ++hold().holders;
}

Snapshot::~Snapshot() {
    if (--hold().holders == 0) {
        hold().taken = false;
    }
}

std::string read(std::string_view section, std::string_view key, SettingBuffer buffer,
                 std::string_view defaultText) {
    return throughBuffer(read(section, key, defaultText), buffer);
}

std::string read(std::string_view section, std::string_view key, std::string_view defaultText) {
    const auto value = settings().value(section, key);
    return value ? *value : std::string(withoutBlanksBehind(defaultText));
}

void write(std::string_view section, std::span<const KeyValue> values) {
    if (!state().writable) {
        return;
    }
    requireHoldable(section, values);
    const auto& folders = programFolder::state();
    files::makeFolder(folders.own);
    const files::FolderLock lock(folders.own);
    // Read anew: another program may have written since, and shipped settings seed the first file.
    const fs::path own = folders.own / programFolder::settingsFileName;
    const bool seeds = isMissing(own) && !folders.shipped.empty();
    const std::string before =
        bytesIfThere(seeds ? folders.shipped / programFolder::settingsFileName : own);
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

void write(std::string_view section, std::string_view key, std::string_view value) {
    const std::array<KeyValue, 1> one{KeyValue{key, value}};
    write(section, one);
}

}  // namespace k520::settingsStore
