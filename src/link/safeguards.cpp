// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/safeguards.h"

#include <algorithm>
#include <utility>

#include "app/Guard.h"
#include "app/RuntimeError.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "channels/modChMem.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/modCommun.h"

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

/// The note of an unfinished write while a write is on: it stands from before the first byte, and
/// goes with the good end. A write that has not touched the radio leaves the note that was there.
class WriteNote {
  public:
    WriteNote() : before_(unfinishedWrite::pending()) {}

    /// Whether an earlier write may have left a radio that holds `found` torn; its backup counts
    /// only where it covers all that is about to change.
    [[nodiscard]] bool leadsFrom(const MemoryImage& found, AddressRange range) const {
        const auto name = before_ ? backups::parseName(before_->backup) : std::nullopt;
        return name && contains(name->covered, range) &&
               unfinishedWrite::leads(*before_, found, range);
    }
    [[nodiscard]] std::filesystem::path earlier() const {
        return before_ ? before_->backup : std::filesystem::path();
    }

    void begin(const std::filesystem::path& backup, const MemoryImage& found) {
        modChMem::SetConvIicDat();
        unfinishedWrite::begin({backup, found, modIicDat::IicDat()});
        begun_ = true;
    }
    void end(const Report& report, bool good) const {
        if (!begun_) {
            endOfOther(report, good);
        } else if (good) {
            unfinishedWrite::end();
        } else if (!radioChanged(report)) {
            before_ ? putBack() : unfinishedWrite::dropPending();
        }
    }

  private:
    /// A write without a note of its own makes the last write one that no note tells of. One that
    /// fails leaves a torn radio as torn as it was.
    static void endOfOther(const Report& report, bool good) {
        if (good) {
            unfinishedWrite::dropPending();
        }
        if (radioChanged(report)) {
            unfinishedWrite::dropLast();
        }
    }
    void putBack() const {
        guarded("safeguards->write", [&] { unfinishedWrite::begin(*before_); });
    }

    std::optional<unfinishedWrite::Note> before_;
    bool begun_ = false;
};

/// The backup of a write. Returns false where it failed, and nothing may be written.
bool backUp(Run& run, AddressRange range, const std::filesystem::path& to, MemoryImage& found,
            WriteNote& note) {
    return run.readScratch(Stage::backUp, range, found) && run.store([&] {
        if (!to.empty()) {
            run.report().displaced = backups::storeAs(to, found).value_or("");
            return to;
        }
        auto path = backups::store(found, range, backups::Reason::beforeWrite, note.earlier()).path;
        const bool torn = note.leadsFrom(found, range);
        if (torn) {
            run.report().earlier = {note.earlier()};
        }
        note.begin(torn ? note.earlier() : path, found);
        return path;
    });
}

/// Whether the radio on the line is the one of a note.
bool isRadioOf(Run& run, const unfinishedWrite::Note& note, AddressRange range) {
    MemoryImage found = freshScratch();
    if (!run.readScratch(Stage::backUp, range, found)) {
        return false;
    }
    run.report().otherRadio = !unfinishedWrite::leads(note, found, range);
    return !run.report().otherRadio;
}

/// What the radio is to hold in a range behind a write of the image to a smaller one.
MemoryImage expectedBehind(const MemoryImage& found, AddressRange written) {
    MemoryImage expected = found;
    for (int address = written.start; address <= written.end; ++address) {
        expected(address) = modIicDat::IicDat()(address);
    }
    return expected;
}

}  // namespace

Choices chosen() {
    Choices choices;
    guarded("frmCommun->Form_Load", [&] {
        for (const ChoiceRow& row : choiceRows) {
            choices.*row.member = mdimoduMain::readSetting(section, row.key, "0") == "1";
        }
    });
    return choices;
}

void choose(const ChoiceRow& row, bool on) {
    guarded("frmCommun->" + std::string(row.control) + "_Click",
            [&] { mdimoduMain::writeSetting(section, row.key, on ? "1" : "0"); });
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
        return backups::store(modIicDat::IicDat(), range, backups::Reason::read).path;
    }));
}

Report write(CommunView& view, const Choices& choices, const std::filesystem::path& backupFile) {
    Run run(Direction::write, view);
    const AddressRange written = modIicDat::state().writeRange;
    const AddressRange range = hull(modIicDat::state().readRange, written);
    const Choices guards = empty(written) ? Choices{} : choices;
    MemoryImage found = freshScratch();
    WriteNote note;
    if (guards.backUpFirst && !backUp(run, range, backupFile, found, note)) {
        return run.ended(false);
    }
    run.report().written = run.stage(Stage::write, modSession::cmdWrite_Click);
    const bool good =
        run.report().written &&
        (!guards.readBack ||
         (guards.backUpFirst ? run.compareWithRadio(expectedBehind(found, written), range)
                             : run.compareWithRadio(modIicDat::IicDat(), written)));
    note.end(run.report(), good);
    return run.ended(good);
}

Report restore(CommunView& view, const std::filesystem::path& file, const Choices& choices,
               const std::optional<unfinishedWrite::Note>& written) {
    Run run(Direction::write, view);
    run.report().restored = true;
    const auto name = backups::parseName(file);
    const AddressRange range = name ? name->covered : modIicDat::state().writeRange;
    backups::Content content;
    const bool loaded = run.store([&] {
        content = backups::load(file, range);
        return file;
    });
    if (!loaded || (written && !isRadioOf(run, *written, range)) ||
        (!content.whole && !takeLostBytesFromRadio(run, range, content.image))) {
        return run.ended(false);
    }
    run.report().written = run.stage(Stage::restore, [&](CommunView& stageView) {
        return modSession::writeFrom(stageView, range, content.image);
    });
    const bool good =
        run.report().written && (!choices.readBack || run.compareWithRadio(content.image, range));
    WriteNote().end(run.report(), good);
    return run.ended(good);
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
