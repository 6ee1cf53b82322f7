// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <system_error>

#include "base/RuntimeError.h"
#include "base/causeTexts.h"
#include "base/environment.h"

namespace k520::userFolders {

namespace fs = std::filesystem;

fs::path executable() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error && error != std::errc::no_such_file_or_directory) {
        throwSystemError(error, say(texts::executablesFolder));
    }
    return error ? fs::current_path() : self.parent_path();
}

fs::path data() {
    if (const auto xdg = environment("XDG_DATA_HOME"); !xdg.empty()) {
        return xdg;
    }
    if (const auto home = environment("HOME"); !home.empty()) {
        return fs::path(home) / ".local" / "share";
    }
    const passwd* user = ::getpwuid(::getuid());
    return user == nullptr ? fs::path() : fs::path(user->pw_dir) / ".local" / "share";
}

}  // namespace k520::userFolders
