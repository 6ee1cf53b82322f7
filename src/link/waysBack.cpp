// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/waysBack.h"

#include <algorithm>

#include "app/Guard.h"
#include "image/datFile.h"
#include "image/unfinishedWrite.h"

namespace k520::waysBack {

std::vector<WayBack> list() {
    const auto torn = unfinishedWrite::pending();
    std::vector<WayBack> ways;
    for (const auto& backup : backups::list()) {
        ways.push_back({backup.path, backups::dateTimeOf(backup), backup.reason, backup.covered,
                        torn && torn->backup == backup.path});
    }
    std::ranges::reverse(ways);
    return ways;
}

imageDifferences::Summary changesBy(const WayBack& way, const MemoryImage& held) {
    const auto content = backups::load(way.path, way.covered);
    auto differences = imageDifferences::find(held, content.image, way.covered);
    if (!content.whole) {
        std::erase_if(differences, [](const imageDifferences::ByteDifference& difference) {
            return datFile::isLost(difference.address);
        });
    }
    return imageDifferences::summaryOf(differences);
}

void forget(const WayBack& way) {
    guarded("waysBack->forget", [&] {
        const auto torn = unfinishedWrite::pending();
        if (torn && torn->backup == way.path) {
            unfinishedWrite::dropPending();
        }
    });
}

}  // namespace k520::waysBack
