// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/waysBack.h"

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>

#include "app/Guard.h"
#include "image/datFile.h"
#include "link/session/unfinishedWrite.h"

namespace k520::waysBack {

namespace {

namespace fs = std::filesystem;

/// The backups that hold what torn radios held before.
std::vector<fs::path> beforeUnfinished() {
    std::vector<fs::path> before;
    for (const auto& note : unfinishedWrite::unfinished()) {
        before.insert(before.end(), note.before.begin(), note.before.end());
    }
    return before;
}

}  // namespace

std::vector<WayBack> list() {
    const auto torn = beforeUnfinished();
    std::vector<WayBack> ways;
    for (const auto& backup : backups::list()) {
        ways.push_back({backup.path, backups::dateTimeOf(backup), backup.reason, backup.covered,
                        std::ranges::find(torn, backup.path) != torn.end()});
    }
    std::ranges::reverse(ways);
    return ways;
}

void sortNewestFirst(std::vector<fs::path>& backups) {
    const auto age = [](const fs::path& path) {
        const auto backup = backups::parseName(path);
        return backup ? std::tuple(backup->time, backup->ordinal, path)
                      : std::tuple(std::string(), 0, path);
    };
    std::ranges::sort(backups, std::ranges::greater(), age);
    backups.erase(std::unique(backups.begin(), backups.end()), backups.end());
}

modIicDat::AddressRange comparable(const WayBack& way, modIicDat::AddressRange known) noexcept {
    return {std::max(way.covered.start, known.start), std::min(way.covered.end, known.end)};
}

imageDifferences::Summary changesBy(const WayBack& way, const MemoryImage& held,
                                    modIicDat::AddressRange range) {
    const auto content = backups::load(way.path, way.covered);
    auto differences = imageDifferences::find(held, content.image, range);
    if (!content.whole) {
        std::erase_if(differences, [](const imageDifferences::ByteDifference& difference) {
            return datFile::isLost(difference.address);
        });
    }
    return imageDifferences::summaryOf(differences);
}

void forget(const WayBack& way) {
    for (auto& note : unfinishedWrite::unfinished()) {
        if (std::erase(note.before, way.path) == 0) {
            continue;
        }
        if (note.before.empty()) {
            unfinishedWrite::drop(note.backup);
        } else {
            guarded("waysBack->forget", [&] { unfinishedWrite::keep(note); });
        }
    }
}

}  // namespace k520::waysBack
