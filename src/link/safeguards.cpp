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
#include "image/unfinishedWrite.h"
#include "link/modCommun.h"

namespace k520::safeguards {

namespace {

using modIicDat::AddressRange;
using modSession::Outcome;
using modSession::Result;

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
    [[nodiscard]] bool abandoned() override { return view_.abandoned(); }

  private:
    CommunView& view_;
    Direction direction_;
};

/// The smallest range that holds both.
AddressRange hull(AddressRange a, AddressRange b) {
    return {std::min(a.start, b.start), std::max(a.end, b.end)};
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
        report_.mark = modShowErr::state().entries.size();
    }

    /// Runs the session of a stage; whether it succeeded.
    template <class Session>
    bool stage(Stage stage, Session&& session) {
        view_.beginStage(stage);
        report_.stage = stage;
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
        } catch (const RuntimeError& error) {
            report_.backupTrouble = error.source();
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

/// Stores the backup of a write, and the note that the write is about to begin. Where an earlier
/// write has left this very radio torn, the backup from before that one stays the way back.
std::filesystem::path storeBeforeWrite(const MemoryImage& before, AddressRange range) {
    auto origin = backups::store(before, range, backups::Reason::beforeWrite).path;
    if (const auto torn = unfinishedWrite::pending(); torn && leads(*torn, before)) {
        origin = torn->backup;
    }
    modChMem::SetConvIicDat();
    unfinishedWrite::begin({origin, before, modIicDat::IicDat()});
    return origin;
}

/// The end of a run that was to change the radio.
Report writingEnded(Run& run, bool good) {
    if (good) {
        unfinishedWrite::end();
    }
    return run.ended(good);
}

}  // namespace

Choices chosen() {
    Choices choices;
    for (const ChoiceRow& row : choiceRows) {
        choices.*row.member = mdimoduMain::readSetting(section, row.key, "0") == "1";
    }
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
    run.report().imageSafe = choices.readBack;
    const bool done = choices.readBack ? readTwice(run, range)
                                       : run.stage(Stage::read, modSession::cmdRead_Click);
    if (!done) {
        return run.ended(false);
    }
    return run.ended(!choices.keepCopy || run.store([&] {
        return backups::store(modIicDat::IicDat(), range, backups::Reason::read).path;
    }));
}

Report write(CommunView& view, const Choices& choices, const std::filesystem::path& backUpTo) {
    Run run(Direction::write, view);
    const AddressRange written = modIicDat::state().writeRange;
    if (choices.backUpFirst) {
        const AddressRange range = hull(modIicDat::state().readRange, written);
        MemoryImage before = freshScratch();
        const bool kept = run.readScratch(Stage::backUp, range, before) && run.store([&] {
            if (backUpTo.empty()) {
                return storeBeforeWrite(before, range);
            }
            backups::storeAs(backUpTo, before);
            return backUpTo;
        });
        if (!kept) {
            return run.ended(false);
        }
    }
    run.report().written = run.stage(Stage::write, modSession::cmdWrite_Click);
    if (!run.report().written) {
        return run.ended(false);
    }
    return writingEnded(run,
                        !choices.readBack || run.compareWithRadio(modIicDat::IicDat(), written));
}

Report restore(CommunView& view, const std::filesystem::path& file, const Choices& choices) {
    Run run(Direction::write, view);
    run.report().restored = true;
    const auto name = backups::parseName(file);
    const AddressRange range = name ? name->covered : modIicDat::state().writeRange;
    backups::Content content;
    const bool loaded = run.store([&] {
        content = backups::load(file, range);
        return file;
    });
    if (!loaded || (!content.whole && !takeLostBytesFromRadio(run, range, content.image))) {
        return run.ended(false);
    }
    run.report().written = run.stage(Stage::restore, [&](CommunView& stageView) {
        return modSession::writeFrom(stageView, range, content.image);
    });
    if (!run.report().written) {
        return run.ended(false);
    }
    return writingEnded(run, !choices.readBack || run.compareWithRadio(content.image, range));
}

bool radioChanged(const Report& report) noexcept {
    const bool wrote = report.stage == Stage::write || report.stage == Stage::restore;
    return report.written || (wrote && modSession::radioStateAfter(report.result) !=
                                           modSession::RadioState::untouched);
}

std::optional<std::filesystem::path> wayBack() {
    if (const auto torn = unfinishedWrite::pending()) {
        return torn->backup;
    }
    const auto latest = backups::latestBeforeWrite();
    return latest ? std::optional(latest->path) : std::nullopt;
}

void listDifferences(const Report& report) {
    for (const auto& difference : report.differences) {
        modCommun::addDataLine(imageDifferences::lineText(difference));
    }
}

}  // namespace k520::safeguards
