// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/profileText.h"

/// The settings file of the program folder (see programFolder): its values as they stand on the
/// disk.
namespace k520::settingsStore {

struct State {
    /// False for a program that must not change the settings file as a side effect: write() then
    /// does nothing.
    bool writable = true;
};

[[nodiscard]] State& state();

/// One value of the settings file through a buffer, or `defaultText` through the same buffer where
/// the file or the key is missing. A file that cannot be read raises the system's error.
[[nodiscard]] std::string read(std::string_view section, std::string_view key, SettingBuffer buffer,
                               std::string_view defaultText);

/// Reads a whole value, without a buffer.
[[nodiscard]] std::string read(std::string_view section, std::string_view key,
                               std::string_view defaultText);

/// While one lives the settings file is read once: what is read together comes from one state of
/// the file and this program's own writes since, whatever other programs do meanwhile. A file that
/// could not be read is tried anew at each reading.
class Snapshot {
  public:
    Snapshot() noexcept;
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
};

using KeyValue = std::pair<std::string, std::string>;

/// Writes values into a section of the settings file in the program folder, in one replacement;
/// nothing is written where all stand there already. A program folder without settings file gets
/// a copy of the shipped one first. Other programs' writes in between are kept. Raises the system's
/// error when the file cannot be replaced; 5, and nothing is made, for what the format cannot hold.
void write(std::string_view section, std::span<const KeyValue> values);
void write(std::string_view section, std::string_view key, std::string_view value);

}  // namespace k520::settingsStore
