// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/document.h"

#include <filesystem>
#include <map>
#include <system_error>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/program.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "program/modFileCmd.h"

namespace k520::cli {

void openDocument(const std::string& path, ShortFile shortFile) {
    try {
        const auto mark = failureMark();
        // The size of what was read: a second look could meet another file.
        const auto size = modFileCmd::openDatFile(path);
        const auto needed = modIicDat::IicDat().size();
        if (size == 0) {
            fail(say(texts::dataFileEmpty, path));
        }
        if (size < needed) {
            if (shortFile == ShortFile::refuse) {
                fail(say(texts::shortFileRefused, path, size, needed));
            }
            warn(say(texts::shortFileWarned, path, size, needed));
        }
        warnOfFailuresSince(mark, say(texts::previousStays));
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

void saveDocument(const std::string& path) {
    const auto mark = failureMark();
    // Encoded here first: an image that is only half up to date must not reach the disk.
    modChMem::SetConvIicDat();
    failOnFailureSince(mark, say(texts::cannotEncode));
    modFileCmd::setCurrentFile(path);
    modFileCmd::SaveDatFile();
    failOnFailureSince(mark, say(texts::savingFailed));
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
            refuse(say(texts::sameFile, other->second, *path));
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
