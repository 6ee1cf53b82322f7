// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/program.h"

#include <fmt/format.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "app/Files.h"
#include "app/mdimoduMain.h"
#include "app/modFileCmd.h"
#include "app/modShowErr.h"
#include "app/modStartUp.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "image/datFile.h"
#include "image/modIicDat.h"

namespace k520::cli {

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

fs::path usableFolder(const std::string& path, const char* origin) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_directory(status)) {
        fail(fmt::format("{} {} is not a folder", origin, path));
    }
    if (!fs::exists(status)) {
        warn(fmt::format("{} {} does not exist; the shipped settings are used", origin, path));
    }
    return fs::absolute(path);
}

fs::path programFolder(const std::optional<std::string>& chosen, const fs::path& shipped) {
    if (chosen) {
        return usableFolder(*chosen, "program folder");
    }
    if (const auto home = environment("K520_HOME"); !home.empty()) {
        return usableFolder(home, "K520_HOME");
    }
    if (auto own = executableFolder(); isPortable(own)) {
        return own;
    }
    auto folder = dataHome() / "k520";
    seed(folder, shipped);
    return folder;
}

/// What has to hold before an image can be decoded, shown and saved.
struct Requirement {
    const char* what;
    int value;
    int least;
    int most;
    const char* section;
    std::string key;
    const char* shipped;
};

void require(const Requirement& needed) {
    if (needed.value >= needed.least && needed.value <= needed.most) {
        return;
    }
    const auto path = mdimoduMain::findFile(mdimoduMain::settingsFileName);
    std::error_code error;
    if (!fs::exists(path, error)) {
        fail(fmt::format("there is no settings file {}, and none is installed", path.string()));
    }
    fail(
        fmt::format("the settings file {} gives {} as {}, which has to be {} to {}; mend it with: "
                    "k520-cli config set {} {} {}",
                    path.string(), needed.value, needed.what, needed.least, needed.most,
                    needed.section, needed.key, needed.shipped));
}

void requireUsableImage() {
    require({"the image's highest address", modIicDat::state().DatNum, datFile::leastDatNum, 0x7FFF,
             "Setting", "DatNum", "8191"});
}

void requireUsableGrid() {
    const auto& channels = modChMem::state();
    const int base = modChMem::keyBase();
    require({"the number of channels", channels.ChNum, 1, modChMem::codecChannels, "ChInfo",
             fmt::format("{}", base), "16"});
    require({"the number of columns", channels.ColNum, modChMem::column::encode,
             modChMem::lastField, "ChInfo", fmt::format("{}", base + 2), "8"});
}

/// The default image is needed only in part by most commands, so what is wrong with it is a
/// warning.
void warnOfDefaultImage() {
    const auto path = mdimoduMain::findFile(mdimoduMain::defaultImageFileName);
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (!error && size < modIicDat::IicDat().size()) {
        warn(fmt::format("the default image {} holds {} of {} bytes; the rest is 0", path.string(),
                         size, modIicDat::IicDat().size()));
    }
}

}  // namespace

fs::path executableFolder() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : self.parent_path();
}

void chooseProgramFolder(const std::optional<std::string>& chosen) {
    auto& s = mdimoduMain::state();
    s.shippedFolder = findShippedFolder();
    s.programFolder = programFolder(chosen, s.shippedFolder);
}

void startCore() {
    mdimoduMain::state().settingsWritable = false;
    auto mark = failureMark();
    modStartUp::readSettings();
    warnOfFailuresSince(mark);
    requireUsableImage();
    mark = failureMark();
    modStartUp::prepareCore();
    warnOfFailuresSince(mark);
    requireUsableGrid();
}

void startConfiguration(DefaultImage defaultImage) {
    startCore();
    warnOfDefaultImage();
    const auto mark = failureMark();
    modFileCmd::NewFileSol();
    if (defaultImage == DefaultImage::needed) {
        failOnFailureSince(mark, "the default image cannot be used");
    }
    warnOfFailuresSince(mark);
}

void renewConfiguration() {
    // Decoding leaves the tones of channels that became empty, and a short default image the rest
    // of the image: neither may come from the document before.
    modChMem::state().ChInfo = {};
    modIicDat::sizeArrays(modIicDat::state().DatNum);
    modFileCmd::NewFileSol();
}

void warn(const std::string& message) {
    fmt::print(stderr, "k520-cli: warning: {}\n", message);
}

std::size_t failureMark() {
    return modShowErr::state().entries.size();
}

std::optional<std::string> failureSince(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    return mark < entries.size() ? std::optional(entries[mark].source) : std::nullopt;
}

void warnOfFailuresSince(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = mark; i < entries.size(); ++i) {
        warn(entries[i].source);
    }
}

void failOnFailureSince(std::size_t mark, const std::string& doing) {
    if (const auto failure = failureSince(mark)) {
        fail(doing + ": " + *failure);
    }
}

}  // namespace k520::cli
