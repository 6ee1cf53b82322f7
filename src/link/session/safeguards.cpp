// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/safeguards.h"

#include <algorithm>
#include <optional>

#include "app/Guard.h"
#include "app/settingsStore.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/protocol/modCommun.h"
#include "link/session/backups.h"
#include "link/session/guardedRun.h"
#include "link/session/unfinishedWrite.h"

namespace k520::safeguards {

namespace {

constexpr std::string_view section = "Setting";

/// Reads twice; only two equal passes reach the image.
bool readTwice(Run& run, AddressRange range) {
    MemoryImage first = freshScratch();
    if (!run.readScratch(Stage::read, range, first)) {
        return false;
    }
    return run.stage(Stage::compare, [&](CommunView& view) {
        return modSession::readIfAccepted(
            view, [&](const MemoryImage& second) { return run.agree(first, second, range); });
    });
}

/// What the radio is to hold in a range after a write of the image to a smaller one.
MemoryImage expectedAfter(const MemoryImage& found, AddressRange written) {
    MemoryImage expected = found;
    for (int address = written.start; address <= written.end; ++address) {
        expected(address) = modIicDat::IicDat()(address);
    }
    return expected;
}

/// The notes of a write while it is on. Its own stands from before the first byte. Those of earlier
/// writes to the same radio are of no use once this one has one of its own or has come to its good
/// end; but where they can be of several radios, all of them stay. A good write that does not reach
/// all that an earlier one may have torn leaves the radio torn: its own note counts as unfinished.
class WriteNotes {
  public:
    /// Looks which earlier writes may have left a radio that holds `found` torn. Their backups
    /// count only where they cover all that is about to change. Where a good write explains what
    /// was found as well, the radio may be a whole one, and none counts.
    void look(const MemoryImage& found, AddressRange range, AddressRange written) {
        auto notes = unfinishedWrite::all();
        std::erase_if(notes, [&](const Note& note) {
            if (isWritten(note)) {
                return false;
            }
            const bool covers = std::ranges::all_of(note.before, [&](const auto& backup) {
                return contains(backups::parseName(backup)->covered, range);
            });
            return !covers || !unfinishedWrite::shows(note, found, range);
        });
        earlier_ = unfinishedWrite::bestFitting(notes, found, range);
        if (std::ranges::any_of(earlier_, isWritten)) {
            earlier_.clear();
        }
        // Without its stamp a radio is not known well enough to forget what it needs.
        stampSeen_ = contains(range, {stamp::address, stamp::address + stamp::length - 1});
        staysTorn_ = std::ranges::any_of(earlier_, [&](const Note& note) {
            return unfinishedWrite::staysTorn(note, found, range, written);
        });
    }
    [[nodiscard]] Paths earlier() const { return beforeOf(earlier_); }

    /// Encodes and stamps the image, as the session is about to.
    void begin(const std::filesystem::path& backup, const MemoryImage& found,
               AddressRange written) {
        modChMem::SetConvIicDat();
        modSession::WriteComDat();
        own_ = Note{.backup = backup,
                    .before = earlier_.empty() ? Paths{backup} : earlier(),
                    .found = found,
                    .sent = expectedAfter(found, written)};
        unfinishedWrite::keep(*own_);
    }
    void end(Ending& ending, bool good) {
        const bool changed = ending.radioChanged();
        if (own_ && !changed) {
            unfinishedWrite::drop(own_->backup);
        }
        if (own_ && changed) {
            keepOwn(ending, good);
        }
        const bool replaced = (own_ && changed) || (good && !staysTorn_);
        if (stampSeen_ && earlier_.size() == 1 && replaced) {
            unfinishedWrite::drop(earlier_.front().backup);
        }
        if (good && !staysTorn_) {
            ending.earlier.clear();
        }
    }

  private:
    void keepOwn(const Ending& ending, bool good) {
        const bool whole = good && !staysTorn_;
        own_->state = whole ? unfinishedWrite::State::written : unfinishedWrite::State::unfinished;
        own_->barelyBegun = ending.arrived() == Arrived::perhapsPart;
        guarded("safeguards->write", [&] { unfinishedWrite::keep(*own_); });
    }

    std::vector<Note> earlier_;
    bool stampSeen_ = false;
    bool staysTorn_ = false;
    std::optional<Note> own_;
};

backups::Backup storeBackup(const MemoryImage& image, AddressRange range, backups::Reason reason) {
    const auto needed = unfinishedWrite::neededBackups();
    return backups::store(image, range, reason, needed);
}

/// The backup of a write. Returns false where it failed, and nothing may be written.
bool backUp(Run& run, AddressRange range, AddressRange written, const std::filesystem::path& to,
            MemoryImage& found, WriteNotes& notes) {
    return run.readScratch(Stage::backUp, range, found) && run.store(What::notStored, [&] {
        notes.look(found, range, written);
        run.ending().earlier = notes.earlier();
        if (!to.empty()) {
            run.ending().displaced = backups::storeAs(to, found).value_or("");
            return to;
        }
        auto path = storeBackup(found, range, backups::Reason::beforeWrite).path;
        notes.begin(path, found, written);
        return path;
    });
}

}  // namespace

Choices chosen() {
    Choices choices;
    guarded("frmCommun->Form_Load", [&] {
        for (const ChoiceRow& row : choiceRows) {
            choices.*row.member = settingsStore::read(section, row.key, "0") == "1";
        }
    });
    return choices;
}

void choose(const ChoiceRow& row, bool on) {
    guarded("frmCommun->" + std::string(row.control) + "_Click",
            [&] { settingsStore::write(section, row.key, on ? "1" : "0"); });
}

std::vector<Stage> stagesOf(Direction direction, const Choices& choices) {
    std::vector<Stage> stages;
    if (direction == Direction::write && choices.backUpFirst) {
        stages.push_back(Stage::backUp);
    }
    stages.push_back(direction == Direction::read ? Stage::read : Stage::write);
    if (choices.readBack) {
        stages.push_back(Stage::compare);
    }
    return stages;
}

std::vector<Stage> stagesOfRestore(const Choices& choices) {
    std::vector<Stage> stages{Stage::restore};
    if (choices.readBack) {
        stages.push_back(Stage::compare);
    }
    return stages;
}

Ending read(CommunView& view, const Choices& choices) {
    const AddressRange range = modIicDat::state().readRange;
    const Choices guards = empty(range) ? Choices{} : choices;
    Run run(guards.readBack ? Task::readTwice : Task::readOnce, view);
    const bool done =
        guards.readBack ? readTwice(run, range) : run.stage(Stage::read, modSession::cmdRead_Click);
    if (!done) {
        return run.ended();
    }
    if (guards.keepCopy) {
        run.store(What::notStored, [&] {
            return storeBackup(modIicDat::IicDat(), range, backups::Reason::read).path;
        });
    }
    return run.ended();
}

Ending write(CommunView& view, const Choices& choices, const std::filesystem::path& backupFile) {
    Run run(Task::write, view);
    const AddressRange written = modIicDat::state().writeRange;
    const AddressRange range = hull(modIicDat::state().readRange, written);
    const Choices guards = empty(written) ? Choices{} : choices;
    MemoryImage found = freshScratch();
    WriteNotes notes;
    if (guards.backUpFirst && !backUp(run, range, written, backupFile, found, notes)) {
        return run.ended();
    }
    const bool done = run.stage(Stage::write, modSession::cmdWrite_Click);
    const bool good =
        done && (!guards.readBack ||
                 (guards.backUpFirst ? run.compareWithRadio(expectedAfter(found, written), range)
                                     : run.compareWithRadio(modIicDat::IicDat(), written)));
    notes.end(run.ending(), good);
    return run.ended();
}

void listDifferences(const Ending& ending) {
    for (const auto& difference : ending.differences) {
        modCommun::addDataLine(imageDifferences::lineText(difference));
    }
}

}  // namespace k520::safeguards
