// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/viewSettings.h"

#include "app/Guard.h"
#include "app/settingsStore.h"

namespace k520::viewSettings {

namespace {

constexpr const char* section = "Setting";
constexpr const char* label = "mdifrmMain->viewSettings";

}  // namespace

std::string stored(std::string_view key) {
    std::string value;
    guarded(label, [&] { value = settingsStore::read(section, key, ""); });
    return value;
}

void store(std::string_view key, std::string_view value) {
    guarded(label, [&] { settingsStore::write(section, key, value); });
}

}  // namespace k520::viewSettings
