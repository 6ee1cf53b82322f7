// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <algorithm>
#include <exception>
#include <filesystem>
#include <utility>
#include <vector>

#include "app/modShowErr.h"
#include "image/modIicDat.h"
#include "link/session/safeguards.h"
#include "link/session/unfinishedWrite.h"

/// What the guarded runs are made of: their stages, and the notes of earlier writes.
namespace k520::safeguards {

using modIicDat::AddressRange;
using unfinishedWrite::Note;
using Paths = std::vector<std::filesystem::path>;

/// The smallest range that holds both.
inline AddressRange hull(AddressRange a, AddressRange b) {
    return {std::min(a.start, b.start), std::max(a.end, b.end)};
}

inline bool empty(AddressRange range) {
    return range.end < range.start;
}

inline bool contains(AddressRange outer, AddressRange inner) {
    return outer.start <= inner.start && inner.end <= outer.end;
}

/// What a scratch image holds before it is read: what no radio has told comes from the default
/// image.
inline MemoryImage freshScratch() {
    return modIicDat::IicDatDef();
}

/// The backups of which one holds what the radio held before the first attempt, the newest first.
[[nodiscard]] Paths beforeOf(const std::vector<Note>& notes);

[[nodiscard]] bool isWritten(const Note& note);

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

/// A run under way, and the ending that it comes to.
class Run {
  public:
    Run(Task task, CommunView& view) : view_(view), stageView_(view, directionOf(task)) {
        ending_.task = task;
        ending_.begin = ending_.mark = modShowErr::state().entries.size();
    }

    /// Runs the session of a stage; whether it succeeded. What each step of a run comes to is what
    /// the run has come to so far.
    template <class Session>
    bool stage(Stage stage, Session&& session) {
        view_.beginStage(stage);
        ending_.stage = stage;
        ending_.mark = modShowErr::state().entries.size();
        ending_.result = session(stageView_);
        ending_.what = whatBy(ending_.result.outcome);
        return ending_.good();
    }

    bool readScratch(Stage which, AddressRange range, MemoryImage& image) {
        return stage(which,
                     [&](CommunView& view) { return modSession::readInto(view, range, image); });
    }

    /// Stores or finds a backup; whether that succeeded.
    template <class Store>
    bool store(What onFailure, Store&& store) {
        try {
            ending_.backup = store();
            return true;
        } catch (const std::exception& error) {
            ending_.backupTrouble = error.what();
            ending_.what = onFailure;
            return false;
        }
    }

    /// Whether two images agree in a range; where they do not, the ending says how they differ.
    bool agree(const MemoryImage& expected, const MemoryImage& found, AddressRange range) {
        ending_.differences = imageDifferences::find(expected, found, range);
        if (ending_.differences.empty()) {
            return true;
        }
        ending_.what = What::differs;
        ending_.expected = ending_.found = expected;
        for (const auto& difference : ending_.differences) {
            ending_.found(difference.address) = difference.b;
        }
        return false;
    }

    bool compareWithRadio(const MemoryImage& sent, AddressRange range) {
        MemoryImage found = freshScratch();
        return readScratch(Stage::compare, range, found) && agree(sent, found, range);
    }

    Ending& ending() { return ending_; }
    /// The run ends with what happened last.
    Ending ended() { return std::move(ending_); }
    /// The run ends here for a reason of its own.
    Ending endedAs(What what) {
        ending_.what = what;
        return ended();
    }

  private:
    CommunView& view_;
    StageView stageView_;
    Ending ending_;
};

}  // namespace k520::safeguards
