// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/recentFiles.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "app/Guard.h"
#include "app/settingsStore.h"
#include "base/ModuleState.h"

namespace k520::recentFiles {

namespace {

constexpr const char* section = "Recent";
constexpr const char* label = "mdifrmMain->recentFiles";

/// So that one file is in the list once, wherever the program was started.
std::string whole(const std::string& path) {
    std::error_code unknown;
    const auto absolute = std::filesystem::absolute(path, unknown);
    return unknown ? path : absolute.lexically_normal().string();
}

void store(std::vector<std::string> files) {
    const auto before = list();
    files.resize(std::min<std::size_t>(files.size(), most));
    if (files == before) {
        return;
    }
    // A key that is not needed any more is emptied.
    files.resize(std::max(files.size(), before.size()));
    std::vector<settingsStore::KeyValue> values;
    for (const auto& file : files) {
        values.emplace_back(fmt::to_string(values.size() + 1), file);
    }
    settingsStore::write(section, values);
    state().onChange.tell();
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::vector<std::string> list() {
    std::vector<std::string> files;
    guarded(label, [&] {
        for (int number = 1; number <= most; ++number) {
            if (auto file = settingsStore::read(section, fmt::to_string(number), "");
                !file.empty()) {
                files.push_back(std::move(file));
            }
        }
    });
    return files;
}

void add(const std::string& path) {
    guarded(label, [&] {
        auto files = list();
        std::erase(files, whole(path));
        files.insert(files.begin(), whole(path));
        store(std::move(files));
    });
}

void remove(const std::string& path) {
    guarded(label, [&] {
        auto files = list();
        std::erase(files, path);
        store(std::move(files));
    });
}

}  // namespace k520::recentFiles
