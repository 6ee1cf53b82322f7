// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/programFolder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <system_error>

#include "base/Files.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "base/UserFolders.h"
#include "base/causeTexts.h"
#include "base/environment.h"

namespace k520::programFolder {

namespace fs = std::filesystem;

namespace {

constexpr std::array shippedNames{settingsFileName, defaultImageFileName};

/// Beside the programs in an installed tree and in a build tree alike.
fs::path findShippedFolder() {
    const fs::path beside = userFolders::executable() / ".." / "share" / "k520";
    std::error_code error;
    const auto found = fs::status(beside / settingsFileName, error).type();
    if (found == fs::file_type::not_found) {
        return K520_DATA_DIR;
    }
    const fs::path normal = fs::weakly_canonical(beside, error);
    return error ? beside : normal;
}

bool isComplete(const fs::path& folder) {
    return std::ranges::all_of(shippedNames,
                               [&](const char* name) { return fs::exists(folder / name); });
}

/// Whole or not at all: what a full disk or a kill left of it would be taken for the user's own.
void seedFile(const fs::path& from, const fs::path& to) {
    constexpr std::size_t largest = 1 << 20;
    if (!fs::exists(to)) {
        files::replace(to, files::read(from, largest).bytes);
    }
}

/// The per-user folder needs no seeding to work, so a home that cannot be written is not a failure.
void seed(const fs::path& folder, const fs::path& shipped) {
    try {
        files::makeFolder(folder);
        if (isComplete(folder)) {
            return;
        }
        const files::FolderLock lock(folder);
        for (const char* name : shippedNames) {
            seedFile(shipped / name, folder / name);
        }
    } catch (const std::exception&) {
        return;
    }
}

bool isPortable(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / settingsFileName, error) && files::mayWrite(folder);
}

struct Choice {
    fs::path folder;
    std::optional<std::string> remark = std::nullopt;
    bool isSeeded = false;  ///< made, with the shipped files, on first use
};

Choice usableFolder(const std::string& path, std::string_view origin) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_directory(status)) {
        throw RuntimeError(errNum::pathNotFound, say(texts::notAFolder, origin, path));
    }
    Choice choice{fs::absolute(path)};
    if (!fs::exists(status)) {
        choice.remark = say(texts::folderMissing, origin, path);
    }
    return choice;
}

Choice find(const std::optional<std::string>& chosen) {
    if (chosen) {
        return usableFolder(*chosen, say(texts::programFolder));
    }
    if (const auto home = environment("K520_HOME"); !home.empty()) {
        return usableFolder(home, "K520_HOME");
    }
    if (auto own = userFolders::executable(); isPortable(own)) {
        return {std::move(own)};
    }
    return {.folder = userFolders::data() / "k520", .isSeeded = true};
}

Choice lookFor(const std::optional<std::string>& chosen) {
    state().shipped = findShippedFolder();
    auto choice = find(chosen);
    state().own = choice.folder;
    return choice;
}

bool isThere(const fs::path& path) {
    // A file that may not be looked at counts: reading it tells what is wrong.
    std::error_code ignored;
    return fs::status(path, ignored).type() != fs::file_type::not_found;
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

fs::path findFile(std::string_view name) {
    fs::path own = state().own / name;
    if (state().shipped.empty() || isThere(own)) {
        return own;
    }
    fs::path shipped = state().shipped / name;
    return isThere(shipped) ? shipped : own;
}

std::optional<std::string> namedIn(std::span<const char* const> words) {
    constexpr std::string_view option = "--program-folder";
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (word.starts_with(option) && word.substr(option.size()).starts_with('=')) {
            return std::string(word.substr(option.size() + 1));
        }
        if (word == option && i + 1 < words.size()) {
            return words[i + 1];
        }
    }
    return std::nullopt;
}

std::optional<std::string> choose(const std::optional<std::string>& chosen) {
    auto choice = lookFor(chosen);
    if (choice.isSeeded) {
        seed(choice.folder, state().shipped);
    }
    return std::move(choice.remark);
}

void look(const std::optional<std::string>& chosen) {
    static_cast<void>(lookFor(chosen));
}

}  // namespace k520::programFolder
