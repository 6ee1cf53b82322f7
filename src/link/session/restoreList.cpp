// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/restoreList.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>

#include "image/modIicDat.h"
#include "link/session/linkTexts.h"
#include "link/session/unfinishedWrite.h"

namespace k520::restoreList {

namespace {

using waysBack::WayBack;

std::string timeText(const DateTime& t) {
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", t.year, t.month, t.day, t.hour,
                       t.minute, t.second);
}

std::string occasionOf(const WayBack& way) {
    if (way.reason == backups::Reason::read) {
        return say(texts::madeByRead);
    }
    return say(way.unfinished ? texts::madeBeforeUnfinished : texts::madeBeforeWrite);
}

/// `held` is known within `known`: the default image stands outside.
std::string changesText(const WayBack& way, const MemoryImage& held,
                        modIicDat::AddressRange known) {
    const auto range = waysBack::comparable(way, known);
    if (range.end < range.start) {
        return say(texts::otherAddresses);
    }
    try {
        return imageDifferences::summaryText(waysBack::changesBy(way, held, range));
    } catch (const std::exception& error) {
        return say(texts::backupUnreadable, error.what());
    }
}

}  // namespace

Rows rows() {
    const auto notes = unfinishedWrite::all();
    const MemoryImage& held = notes.empty() ? modIicDat::IicDat() : notes.front().sent;
    Rows all;
    all.comparedWith = say(notes.empty() ? texts::comparedWithImage : texts::comparedWithSent);
    for (auto& way : waysBack::list()) {
        const auto known =
            notes.empty() ? way.covered : backups::parseName(notes.front().backup)->covered;
        auto changes = changesText(way, held, known);
        all.rows.push_back({way, timeText(way.time), occasionOf(way), std::move(changes)});
    }
    return all;
}

std::optional<std::size_t> likeliest(const std::vector<Row>& rows,
                                     const std::filesystem::path& due) {
    const std::function<bool(const WayBack&)> wishes[] = {
        [&](const WayBack& way) { return way.path == due; },
        [](const WayBack& way) { return way.unfinished; },
        [](const WayBack& way) { return way.reason == backups::Reason::beforeWrite; },
        [](const WayBack& /*way*/) { return true; },
    };
    for (const auto& wish : wishes) {
        const auto found = std::ranges::find_if(rows, wish, &Row::way);
        if (found != rows.end()) {
            return static_cast<std::size_t>(found - rows.begin());
        }
    }
    return std::nullopt;
}

Offer offerFor(Direction direction) {
    const auto ways = waysBack::list();
    const bool torn = std::ranges::any_of(ways, &WayBack::unfinished);
    return {.shown = direction == Direction::write || torn,
            .enabled = !ways.empty(),
            .tip = say(ways.empty() ? texts::restoreNone : texts::restoreTip)};
}

std::optional<std::filesystem::path> dueAfter(const safeguards::Ending& ending) {
    const bool due =
        !ending.good() && ending.radioChanged() && !ending.backup.empty() && ending.earlier.empty();
    return due ? std::optional(ending.backup) : std::nullopt;
}

bool asksBefore(const std::filesystem::path& backup,
                const std::optional<std::filesystem::path>& due) {
    return backup != due;
}

}  // namespace k520::restoreList
