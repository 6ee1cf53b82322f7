// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/programFolder.h"

#include <fmt/format.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <system_error>

#include "app/RuntimeError.h"
#include "app/mdimoduMain.h"

namespace k520::programFolder {

namespace fs = std::filesystem;

namespace {

constexpr std::array shippedNames{mdimoduMain::settingsFileName, mdimoduMain::defaultImageFileName};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// Beside the programs in an installed tree and in a build tree alike.
fs::path findShippedFolder() {
    const fs::path beside = executableFolder() / ".." / "share" / "k520";
    std::error_code error;
    const fs::path normal = fs::weakly_canonical(beside, error);
    return fs::exists(beside / mdimoduMain::settingsFileName, error) ? normal : K520_DATA_DIR;
}

fs::path dataHome() {
    if (const auto xdg = environment("XDG_DATA_HOME"); !xdg.empty()) {
        return xdg;
    }
    if (const auto home = environment("HOME"); !home.empty()) {
        return fs::path(home) / ".local" / "share";
    }
    const passwd* user = getpwuid(getuid());
    return user == nullptr ? fs::path() : fs::path(user->pw_dir) / ".local" / "share";
}

/// The per-user folder needs no seeding to work, so a home that cannot be written is no failure.
void seed(const fs::path& folder, const fs::path& shipped) {
    std::error_code error;
    fs::create_directories(folder, error);
    for (const char* name : shippedNames) {
        if (!fs::exists(folder / name, error)) {
            fs::copy_file(shipped / name, folder / name, error);
            fs::permissions(folder / name, fs::perms::owner_write, fs::perm_options::add, error);
        }
    }
}

bool isPortable(const fs::path& folder) {
    std::error_code error;
    return fs::exists(folder / mdimoduMain::settingsFileName, error) &&
           access(folder.c_str(), W_OK) == 0;
}

struct Choice {
    fs::path folder;
    std::optional<std::string> remark = std::nullopt;
};

Choice usableFolder(const std::string& path, std::string_view origin) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_directory(status)) {
        throw RuntimeError(errNum::pathNotFound,
                           fmt::format("{} {} is not a folder", origin, path));
    }
    Choice choice{fs::absolute(path)};
    if (!fs::exists(status)) {
        choice.remark =
            fmt::format("{} {} does not exist; the shipped settings are used", origin, path);
    }
    return choice;
}

Choice find(const std::optional<std::string>& chosen, std::string_view origin,
            const fs::path& shipped) {
    if (chosen) {
        return usableFolder(*chosen, origin);
    }
    if (const auto home = environment("K520_HOME"); !home.empty()) {
        return usableFolder(home, "K520_HOME");
    }
    if (auto own = executableFolder(); isPortable(own)) {
        return {std::move(own)};
    }
    auto folder = dataHome() / "k520";
    seed(folder, shipped);
    return {std::move(folder)};
}

}  // namespace

fs::path executableFolder() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : self.parent_path();
}

std::optional<std::string> choose(const std::optional<std::string>& chosen,
                                  std::string_view origin) {
    auto& s = mdimoduMain::state();
    s.shippedFolder = findShippedFolder();
    auto [folder, remark] = find(chosen, origin, s.shippedFolder);
    s.programFolder = std::move(folder);
    return remark;
}

}  // namespace k520::programFolder
