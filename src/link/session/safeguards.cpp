// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/safeguards.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "app/Guard.h"
#include "app/modShowErr.h"
#include "app/settingsStore.h"
#include "base/RuntimeError.h"
#include "channels/modChMem.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/protocol/modCommun.h"
#include "link/session/unfinishedWrite.h"
#include "link/session/waysBack.h"

namespace k520::safeguards {

namespace {

using modIicDat::AddressRange;
using modSession::Outcome;

constexpr std::string_view section = "Setting";

/// The view of one stage: whatever the stage's own direction, the start button is the run's.
class StageView : public CommunView {
  public:
    StageView(CommunView& view, Direction direction) : view_(view), direction_(direction) {}

    void setStatus(const std::string& text) override { view_.setStatus(text); }
    void setPercentText(const std::string& text) override { view_.setPercentText(text); }
    void setProgress(std::int16_t percent) override { view_.setProgress(percent); }
    void enableStart(Direction /*direction*/, bool enabled) override {
        view_.enableStart(direction_, enabled);
    }
    void setBusy(bool busy) override { view_.setBusy(busy); }
    void resetStopBox() override { view_.resetStopBox(); }
    void enableStopBox() override { view_.enableStopBox(); }
    [[nodiscard]] bool stopTicked() override { return view_.stopTicked(); }
    void setBlinking(bool on) override { view_.setBlinking(on); }
    [[nodiscard]] bool showMemDatTicked() override { return view_.showMemDatTicked(); }
    void gaveUp(const modSession::Result& result) override { view_.gaveUp(result); }
    [[nodiscard]] bool abandoned() override { return view_.abandoned(); }

  private:
    CommunView& view_;
    Direction direction_;
};

/// The smallest range that holds both.
AddressRange hull(AddressRange a, AddressRange b) {
    return {std::min(a.start, b.start), std::max(a.end, b.end)};
}

bool empty(AddressRange range) {
    return range.end < range.start;
}

bool contains(AddressRange outer, AddressRange inner) {
    return outer.start <= inner.start && inner.end <= outer.end;
}

/// What a scratch image holds before it is read: what no radio has told comes from the default
/// image.
MemoryImage freshScratch() {
    return modIicDat::IicDatDef();
}

class Run {
  public:
    Run(Direction direction, CommunView& view) : view_(view), stageView_(view, direction) {
        report_.direction = direction;
        report_.begin = report_.mark = modShowErr::state().entries.size();
    }

    /// Runs the session of a stage; whether it succeeded.
    template <class Session>
    bool stage(Stage stage, Session&& session) {
        view_.beginStage(stage);
        report_.stage = stage;
        report_.mark = modShowErr::state().entries.size();
        report_.result = session(stageView_);
        return report_.result.outcome == Outcome::succeeded;
    }

    bool readScratch(Stage which, AddressRange range, MemoryImage& image) {
        return stage(which,
                     [&](CommunView& view) { return modSession::readInto(view, range, image); });
    }

    /// Stores a backup; whether that succeeded.
    template <class Store>
    bool store(Store&& store) {
        try {
            report_.backup = store();
            return true;
        } catch (const std::exception& error) {
            report_.backupTrouble = error.what();
            return false;
        }
    }

    /// Whether two images agree in a range; where they do not, the report says how they differ.
    bool agree(const MemoryImage& expected, const MemoryImage& found, AddressRange range) {
        report_.differences = imageDifferences::find(expected, found, range);
        if (report_.differences.empty()) {
            return true;
        }
        report_.expected = report_.found = expected;
        for (const auto& difference : report_.differences) {
            report_.found(difference.address) = difference.b;
        }
        return false;
    }

    bool compareWithRadio(const MemoryImage& sent, AddressRange range) {
        MemoryImage found = freshScratch();
        return readScratch(Stage::compare, range, found) && agree(sent, found, range);
    }

    Report& report() { return report_; }
    Report ended(bool good) {
        report_.good = good;
        return std::move(report_);
    }

  private:
    CommunView& view_;
    StageView stageView_;
    Report report_;
};

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

/// The bytes that a plain data file has no place for, as the radio holds them.
bool takeLostBytesFromRadio(Run& run, AddressRange range, MemoryImage& image) {
    constexpr int last = datFile::lostAddress + datFile::lostCount - 1;
    if (range.start > last || range.end < datFile::lostAddress) {
        return true;
    }
    return run.readScratch(Stage::backUp, {datFile::lostAddress, last}, image);
}

/// What the radio is to hold in a range after a write of the image to a smaller one.
MemoryImage expectedAfter(const MemoryImage& found, AddressRange written) {
    MemoryImage expected = found;
    for (int address = written.start; address <= written.end; ++address) {
        expected(address) = modIicDat::IicDat()(address);
    }
    return expected;
}

using Note = unfinishedWrite::Note;
using Paths = std::vector<std::filesystem::path>;

/// The backups of which one holds what the radio held before the first attempt, the newest first.
Paths beforeOf(const std::vector<Note>& notes) {
    Paths before;
    for (const Note& note : notes) {
        before.insert(before.end(), note.before.begin(), note.before.end());
    }
    waysBack::sortNewestFirst(before);
    return before;
}

bool isWritten(const Note& note) {
    return note.state == unfinishedWrite::State::written;
}

/// The notes of a write while it is on. Its own stands from before the first byte. Those of earlier
/// writes to the same radio are of no use once this one has one of its own or has come to its good
/// end; but where they can be of several radios, all of them stay.
class WriteNotes {
  public:
    /// Looks which earlier writes may have left a radio that holds `found` torn. Their backups
    /// count only where they cover all that is about to change. Where a good write explains what
    /// was found as well, the radio may be a whole one, and none counts.
    void look(const MemoryImage& found, AddressRange range) {
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
    void end(const Report& report, bool good) {
        const bool changed = radioChanged(report);
        if (own_ && !changed) {
            unfinishedWrite::drop(own_->backup);
        }
        if (own_ && changed) {
            keepOwn(report, good);
        }
        if (stampSeen_ && earlier_.size() == 1 && (good || (own_ && changed))) {
            unfinishedWrite::drop(earlier_.front().backup);
        }
    }

  private:
    void keepOwn(const Report& report, bool good) {
        using enum modSession::RadioState;
        own_->state = good ? unfinishedWrite::State::written : unfinishedWrite::State::unfinished;
        own_->barelyBegun =
            !report.written && modSession::radioStateAfter(report.result) == unknown;
        guarded("safeguards->write", [&] { unfinishedWrite::keep(*own_); });
    }

    std::vector<Note> earlier_;
    bool stampSeen_ = false;
    std::optional<Note> own_;
};

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
    void end(const Report& report, bool good) const {
        const bool done = good && ofThisRadio_;
        for (Note note : notes_) {
            if (done && report.stage == Stage::compare) {
                unfinishedWrite::drop(note.backup);
            } else if (good || !radioChanged(report)) {
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

backups::Backup storeBackup(const MemoryImage& image, AddressRange range, backups::Reason reason) {
    const auto needed = unfinishedWrite::neededBackups();
    return backups::store(image, range, reason, needed);
}

/// The backup of a write. Returns false where it failed, and nothing may be written.
bool backUp(Run& run, AddressRange range, AddressRange written, const std::filesystem::path& to,
            MemoryImage& found, WriteNotes& notes) {
    return run.readScratch(Stage::backUp, range, found) && run.store([&] {
        notes.look(found, range);
        run.report().earlier = notes.earlier();
        if (!to.empty()) {
            run.report().displaced = backups::storeAs(to, found).value_or("");
            return to;
        }
        auto path = storeBackup(found, range, backups::Reason::beforeWrite).path;
        notes.begin(path, found, written);
        return path;
    });
}

/// Puts a backup back; `notes` tell of the radio.
Report restoreWith(Run& run, const std::filesystem::path& file, const Choices& choices,
                   const RestoreNotes& notes) {
    const auto name = backups::parseName(file);
    const AddressRange range = name ? name->covered : modIicDat::state().writeRange;
    backups::Content content;
    const bool loaded = run.store([&] {
        backups::requireRestorable(file);
        content = backups::load(file, range);
        return file;
    });
    if (!loaded || (!content.whole && !takeLostBytesFromRadio(run, range, content.image))) {
        return run.ended(false);
    }
    notes.begin();
    run.report().written = run.stage(Stage::restore, [&](CommunView& stageView) {
        return modSession::writeFrom(stageView, range, content.image);
    });
    const bool good =
        run.report().written && (!choices.readBack || run.compareWithRadio(content.image, range));
    notes.end(run.report(), good);
    return run.ended(good);
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

Report read(CommunView& view, const Choices& choices) {
    Run run(Direction::read, view);
    const AddressRange range = modIicDat::state().readRange;
    const Choices guards = empty(range) ? Choices{} : choices;
    run.report().imageSafe = guards.readBack;
    const bool done =
        guards.readBack ? readTwice(run, range) : run.stage(Stage::read, modSession::cmdRead_Click);
    if (!done) {
        return run.ended(false);
    }
    return run.ended(!guards.keepCopy || run.store([&] {
        return storeBackup(modIicDat::IicDat(), range, backups::Reason::read).path;
    }));
}

Report write(CommunView& view, const Choices& choices, const std::filesystem::path& backupFile) {
    Run run(Direction::write, view);
    const AddressRange written = modIicDat::state().writeRange;
    const AddressRange range = hull(modIicDat::state().readRange, written);
    const Choices guards = empty(written) ? Choices{} : choices;
    MemoryImage found = freshScratch();
    WriteNotes notes;
    if (guards.backUpFirst && !backUp(run, range, written, backupFile, found, notes)) {
        return run.ended(false);
    }
    run.report().written = run.stage(Stage::write, modSession::cmdWrite_Click);
    const bool good =
        run.report().written &&
        (!guards.readBack ||
         (guards.backUpFirst ? run.compareWithRadio(expectedAfter(found, written), range)
                             : run.compareWithRadio(modIicDat::IicDat(), written)));
    notes.end(run.report(), good);
    return run.ended(good);
}

Report restore(CommunView& view, const std::filesystem::path& file, const Choices& choices) {
    Run run(Direction::write, view);
    run.report().restored = true;
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
            return run.ended(false);
        }
        ofThisRadio = isRadioOf(notes.front(), found, range);
    }
    return restoreWith(run, file, choices, RestoreNotes(std::move(notes), ofThisRadio));
}

Report takeBack(CommunView& view, const Choices& choices) {
    Run run(Direction::write, view);
    run.report().restored = true;
    const auto notes = readableNotes();
    if (notes.empty()) {
        run.report().otherRadio = true;
        return run.ended(false);
    }
    MemoryImage found = freshScratch();
    if (!run.readScratch(Stage::backUp, coveredBy(notes), found)) {
        return run.ended(false);
    }
    const auto fitting = unfinishedWrite::bestFitting(notes, found);
    const auto before = beforeOf(fitting);
    run.report().otherRadio = before.empty();
    if (before.size() != 1 && !allEqual(before)) {
        run.report().possible = before;
        return run.ended(false);
    }
    // Notes that can be of several radios stay, and so does the only one that fits where a radio of
    // equal content would fit as well.
    const bool ofThisRadio =
        fitting.size() == 1 && unfinishedWrite::shows(fitting.front(), found, coveredBy(fitting));
    return restoreWith(run, before.front(), choices, RestoreNotes(fitting, ofThisRadio));
}

bool radioChanged(const Report& report) noexcept {
    const bool wrote = report.stage == Stage::write || report.stage == Stage::restore;
    return report.written || (wrote && modSession::radioStateAfter(report.result) !=
                                           modSession::RadioState::untouched);
}

void listDifferences(const Report& report) {
    for (const auto& difference : report.differences) {
        modCommun::addDataLine(imageDifferences::lineText(difference));
    }
}

}  // namespace k520::safeguards
