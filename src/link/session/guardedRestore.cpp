// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "app/Guard.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/session/backups.h"
#include "link/session/guardedRun.h"
#include "link/session/safeguards.h"
#include "link/session/unfinishedWrite.h"

namespace k520::safeguards {

namespace {

/// The bytes that a plain data file has no place for, as the radio holds them.
bool takeLostBytesFromRadio(Run& run, AddressRange range, MemoryImage& image) {
    constexpr int last = datFile::lostAddress + datFile::lostCount - 1;
    if (range.start > last || range.end < datFile::lostAddress) {
        return true;
    }
    return run.readScratch(Stage::backUp, {datFile::lostAddress, last}, image);
}

/// The notes that can be of the radio while a backup is put back. Until that has come to its good
/// end the writes that they tell of count as unfinished. Then the note of this very radio goes; it
/// stays as that of a good write where nobody has compared what the radio holds now.
class RestoreNotes {
  public:
    RestoreNotes(std::vector<Note> notes, bool ofThisRadio)
        : notes_(std::move(notes)), ofThisRadio_(ofThisRadio) {}

    void begin() const {
        for (Note note : notes_) {
            note.state = unfinishedWrite::State::unfinished;
            keep(note);
        }
    }
    void end(const Ending& ending, bool good) const {
        const bool done = good && ofThisRadio_;
        for (Note note : notes_) {
            if (done && ending.stage == Stage::compare) {
                unfinishedWrite::drop(note.backup);
            } else if (good || !ending.radioChanged()) {
                note.state = done ? unfinishedWrite::State::written : note.state;
                keep(note);
            }
        }
    }

  private:
    /// A note that cannot be kept must not keep a radio from its restore.
    static void keep(const Note& note) {
        guarded("safeguards->restore", [&] { unfinishedWrite::keep(note); });
    }

    std::vector<Note> notes_;
    bool ofThisRadio_;
};

/// Puts a backup back; `notes` tell of the radio.
Ending restoreWith(Run& run, const std::filesystem::path& file, const Choices& choices,
                   const RestoreNotes& notes) {
    const auto name = backups::parseName(file);
    const AddressRange range = name ? name->covered : modIicDat::state().writeRange;
    backups::Content content;
    const bool loaded = run.store(What::notReadable, [&] {
        backups::requireRestorable(file);
        content = backups::load(file, range);
        return file;
    });
    if (!loaded || (!content.whole && !takeLostBytesFromRadio(run, range, content.image))) {
        return run.ended();
    }
    notes.begin();
    const bool written = run.stage(Stage::restore, [&](CommunView& stageView) {
        return modSession::writeFrom(stageView, range, content.image);
    });
    const bool good = written && (!choices.readBack || run.compareWithRadio(content.image, range));
    notes.end(run.ending(), good);
    return run.ended();
}

/// Whether there are backups, and all of them hold the same, from the same addresses. False where
/// one cannot be read.
bool allEqual(const Paths& backups) {
    if (backups.empty()) {
        return false;
    }
    const auto contentOf = [](const std::filesystem::path& backup) {
        const auto covered = backups::parseName(backup)->covered;
        return std::pair(covered, backups::load(backup, covered).image);
    };
    bool equal = false;
    guarded("safeguards->restore", [&] {
        equal = std::ranges::all_of(backups, [&](const auto& backup) {
            return contentOf(backup) == contentOf(backups.front());
        });
    });
    return equal;
}

bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
    std::error_code error;
    return a.filename() == b.filename() && std::filesystem::equivalent(a, b, error);
}

/// The addresses that came from the radio before the write of a note.
AddressRange coveredBy(const Note& note) {
    return backups::parseName(note.backup)->covered;
}

AddressRange coveredBy(const std::vector<Note>& notes) {
    AddressRange range = coveredBy(notes.front());
    for (const Note& note : notes) {
        range = hull(range, coveredBy(note));
    }
    return range;
}

/// The notes of which a radio can be read into the image.
std::vector<Note> readableNotes() {
    auto notes = unfinishedWrite::all();
    std::erase_if(notes, [](const Note& note) {
        return !backups::liesWithin(coveredBy(note), modIicDat::IicDat());
    });
    return notes;
}

/// Whether a radio that was read in a range fits a note and shows its write, and no good write of
/// another note explains as well what the radio holds. Between torn radios the user has chosen.
bool isRadioOf(const Note& note, const MemoryImage& found, AddressRange range) {
    const auto fitting = unfinishedWrite::bestFitting(readableNotes(), found, range);
    const auto isIt = [&](const Note& other) { return other.backup == note.backup; };
    return std::ranges::any_of(fitting, isIt) &&
           std::ranges::none_of(
               fitting, [&](const Note& other) { return !isIt(other) && isWritten(other); }) &&
           unfinishedWrite::shows(note, found, coveredBy(note));
}

}  // namespace

Ending restore(CommunView& view, const std::filesystem::path& file, const Choices& choices) {
    Run run(Task::restore, view);
    auto notes = readableNotes();
    std::erase_if(notes, [&](const Note& note) {
        return std::ranges::none_of(note.before, [&](const std::filesystem::path& backup) {
            return isSameFile(backup, file);
        });
    });
    bool ofThisRadio = false;
    // Several notes stay in any case.
    if (notes.size() == 1) {
        const AddressRange range = coveredBy(notes);
        MemoryImage found = freshScratch();
        if (!run.readScratch(Stage::backUp, range, found)) {
            return run.ended();
        }
        ofThisRadio = isRadioOf(notes.front(), found, range);
    }
    return restoreWith(run, file, choices, RestoreNotes(std::move(notes), ofThisRadio));
}

Ending takeBack(CommunView& view, const Choices& choices) {
    Run run(Task::restore, view);
    const auto notes = readableNotes();
    if (notes.empty()) {
        return run.endedAs(What::otherRadio);
    }
    MemoryImage found = freshScratch();
    if (!run.readScratch(Stage::backUp, coveredBy(notes), found)) {
        return run.ended();
    }
    const auto fitting = unfinishedWrite::bestFitting(notes, found);
    const auto before = beforeOf(fitting);
    if (before.empty()) {
        return run.endedAs(What::otherRadio);
    }
    if (before.size() != 1 && !allEqual(before)) {
        run.ending().possible = before;
        return run.endedAs(What::severalPossible);
    }
    // Notes that can be of several radios stay, and so does the only one that fits where a radio of
    // equal content would fit as well.
    const bool ofThisRadio =
        fitting.size() == 1 && unfinishedWrite::shows(fitting.front(), found, coveredBy(fitting));
    return restoreWith(run, before.front(), choices, RestoreNotes(fitting, ofThisRadio));
}

}  // namespace k520::safeguards
