// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/document.h"

#include <fmt/format.h>

#include <filesystem>
#include <map>
#include <system_error>

#include "app/Files.h"
#include "app/RuntimeError.h"
#include "app/modFileCmd.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/program.h"
#include "image/datFile.h"
#include "image/modIicDat.h"

namespace k520::cli {

void openDocument(const std::string& path, ShortFile shortFile) {
    try {
        const auto mark = failureMark();
        // The size of what was read: a second look could meet another file.
        const auto size = modFileCmd::openDatFile(path);
        const auto needed = modIicDat::IicDat().size();
        if (size == 0) {
            fail(path + ": the file is empty");
        }
        if (size < needed) {
            const auto message =
                fmt::format("{}: the file holds {} of {} bytes", path, size, needed);
            if (shortFile == ShortFile::refuse) {
                fail(message + "; it is too short to be changed or sent");
            }
            warn(message + "; the rest comes from the default image");
        }
        warnOfFailuresSince(mark, "; what was there before the file stands in its place");
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

void saveDocument(const std::string& path) {
    const auto mark = failureMark();
    // Encoded here first: an image that is only half up to date must not reach the disk.
    modChMem::SetConvIicDat();
    failOnFailureSince(mark, "nothing saved: the channels and options cannot be encoded");
    modFileCmd::setCurrentFile(path);
    modFileCmd::SaveDatFile();
    failOnFailureSince(mark, "saving failed");
}

void requireDifferentFiles(const std::vector<std::optional<std::string>>& paths) {
    std::map<std::filesystem::path, std::string> seen;
    for (const auto& path : paths) {
        if (!path || *path == "-") {
            continue;
        }
        std::error_code error;
        const auto place = std::filesystem::weakly_canonical(*path, error);
        const auto [other, isNew] =
            seen.emplace(error ? std::filesystem::path(*path) : place, *path);
        if (!isNew) {
            refuse(fmt::format("{} and {} are the same file", other->second, *path));
        }
    }
}

void checkSavable(const std::string& path) {
    try {
        files::checkReplaceable(path);
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

}  // namespace k520::cli
