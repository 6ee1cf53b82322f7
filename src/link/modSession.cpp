// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/modSession.h"

#include <array>
#include <chrono>
#include <string>

#include "app/Checked.h"
#include "app/Dialogs.h"
#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "app/modSoftFace.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/modCommun.h"
#include "memview/modMemDat.h"

namespace k520::modSession {

namespace {

using modCommun::ScriptStep;
using std::chrono::milliseconds;

constexpr int noticeText = 70;
constexpr int checkPortText = 79;
constexpr std::int16_t pollIntervalMs = 1;
constexpr std::int16_t secondValueAtStart = 150;
constexpr std::int16_t servedPauseMs = 50;
constexpr milliseconds plainPause{100};

void nothing() {}
void nothingForStep(const ScriptStep& /*step*/) {}

void encodeAndStamp() {
    modChMem::SetConvIicDat();
    WriteComDat();
}

void copyToImage(const ScriptStep& step) {
    for (int k = 0; k < step.size; ++k) {
        modIicDat::IicDat()(step.address + k) = modCommun::state().dataBuffer(k + 1);
    }
}

void copyFromImage(const ScriptStep& step) {
    for (int k = 0; k < step.size; ++k) {
        modCommun::state().dataBuffer(k + 1) = modIicDat::IicDat()(step.address + k);
    }
}

/// What tells the two sessions apart.
struct Plan {
    Direction direction;
    std::string_view label;
    modCommun::ScriptList modCommun::State::*list;
    void (*prepare)();
    void (*beforeStep)(const ScriptStep&);
    void (*afterStep)(const ScriptStep&);
    void (*display)();  ///< after success
    int busyText;
    int successText;
    int failureText;
};

constexpr Plan readPlan{.direction = Direction::read,
                        .label = "frmCommun->cmdRead_Click",
                        .list = &modCommun::State::readList,
                        .prepare = nothing,
                        .beforeStep = nothingForStep,
                        .afterStep = copyToImage,
                        .display = modChMem::SoftDisplay,
                        .busyText = 164,
                        .successText = 165,
                        .failureText = 166};

// Text 168 is empty: a write shows nothing but percents and, late, the count of attempts. Reading
// has its status texts in a row from 164; of the rows behind 168 only 171 and 172 are such short
// status words for success and failure (77 and 78 speak of the communication as a whole).
constexpr Plan writePlan{.direction = Direction::write,
                         .label = "frmCommun->cmdWrite_Click",
                         .list = &modCommun::State::writeList,
                         .prepare = encodeAndStamp,
                         .beforeStep = copyFromImage,
                         .afterStep = nothingForStep,
                         .display = nothing,
                         .busyText = 168,
                         .successText = 171,
                         .failureText = 172};

/// Puts a view in force for the length of a session.
class ViewInForce {
  public:
    explicit ViewInForce(CommunView& view) { modCommun::state().view = &view; }
    ~ViewInForce() { modCommun::state().view = nullptr; }
    ViewInForce(const ViewInForce&) = delete;
    ViewInForce& operator=(const ViewInForce&) = delete;
};

class Session {
  public:
    Session(const Plan& plan, CommunView& view) : plan_(plan), view_(view), inForce_(view) {}

    Result run() {
        guarded(plan_.label, [&] { prepare(); });
        const auto start = theClock().now();
        modCommun::OpenCom();
        if (link_.portFailureFlag != modCommun::flagFalse) {
            // The dialog stays as it is.
            result_.outcome = Outcome::portFailed;
            return result_;
        }
        // An error that escapes from here, such as a block beyond the image, would meet every
        // attempt: it ends the session as failed.
        guarded(plan_.label, [&] {
            begin();
            result_.outcome = attempts();
        });
        modCommun::CloseCom();
        result_.failedAttempts = link_.attemptCounter;
        result_.duration = theClock().now() - start;
        state().busyMark = modCommun::flagFalse;
        guarded(plan_.label, [&] { end(); });
        guarded(plan_.label, [&] { settle(); });
        return result_;
    }

  private:
    void prepare() {
        plan_.prepare();
        modCommun::InitProtocol();
        link_.attemptCounter = 0;
        link_.pollInterval = pollIntervalMs;
        link_.secondValue = secondValueAtStart;
        link_.dataListLine = 0;
        view_.resetStopBox();
        link_.listRtData.clear();
        view_.setBlinking(true);
    }

    void begin() {
        view_.enableStart(plan_.direction, false);
        state().busyMark = modCommun::flagTrue;
        view_.setBusy(true);
        view_.setStatus(modSoftFace::text(plan_.busyText));
    }

    Outcome attempts() {
        result_.stepCount = list_.count;
        if (list_.count == 0) {
            return Outcome::failed;  // the list could not be built
        }
        while (link_.attemptCounter < mostAttempts) {
            if (attempt()) {
                return Outcome::succeeded;
            }
            if (view_.abandoned() || stoppedAfterFailure()) {
                return Outcome::stopped;
            }
        }
        theDialogs().tell(BoxIcon::exclamation, modSoftFace::text(noticeText),
                          modSoftFace::text(checkPortText));
        return Outcome::failed;
    }

    bool attempt() {
        const auto start = theClock().now();
        result_.stepsDone = 0;
        result_.lastAddress.reset();
        while (result_.stepsDone < list_.count && !view_.abandoned() &&
               runStep(static_cast<std::int16_t>(result_.stepsDone + 1))) {
            noteStep();
        }
        result_.lastAttempt = theClock().now() - start;
        return result_.stepsDone == list_.count;
    }

    void noteStep() {
        ++result_.stepsDone;
        if (result_.stepsDone > result_.mostSteps) {
            result_.mostSteps = result_.stepsDone;
            result_.furthestAddress = result_.lastAddress;
        }
    }

    bool runStep(std::int16_t number) {
        const ScriptStep& step = list_.steps(number, "script table");
        link_.currentStep = number;
        plan_.beforeStep(step);
        modCommun::ConvComCode(step.script);
        modCommun::ProtocolCom();
        if (link_.failureFlag != modCommun::flagFalse) {
            return false;
        }
        ShowComPercent(step.percent);
        plan_.afterStep(step);
        if (step.size > 0) {
            result_.lastAddress = step.address;
        }
        return true;
    }

    /// Counts a failed attempt; returns whether the user has stopped the session.
    bool stoppedAfterFailure() {
        const int count = ++link_.attemptCounter;
        if (count > stopBoxAfter) {
            view_.enableStopBox();
            if (view_.stopTicked()) {
                return true;
            }
        }
        if (count > countShownAfter) {
            view_.setStatus(numberText(count) + " " + modSoftFace::text(plan_.busyText));
        }
        return false;
    }

    void end() {
        view_.setBusy(false);
        view_.resetStopBox();
        view_.setBlinking(false);
        if (result_.outcome != Outcome::succeeded) {
            view_.setStatus(modSoftFace::text(plan_.failureText));
            return;
        }
        plan_.display();
        view_.setStatus(modSoftFace::text(plan_.successText));
        view_.setProgress(100);
        if (view_.showMemDatTicked()) {
            modMemDat::TableFreDat();
        }
    }

    void settle() {
        modCommun::DelayNms(servedPauseMs);
        theClock().sleepUntil(theClock().now() + plainPause);
        view_.setProgress(0);
        view_.setStatus("");
        view_.setPercentText("");
        view_.enableStart(plan_.direction, true);
        view_.resetStopBox();
    }

    const Plan& plan_;
    CommunView& view_;
    ViewInForce inForce_;
    modCommun::State& link_ = modCommun::state();
    const modCommun::ScriptList& list_ = link_.*plan_.list;
    Result result_;
};

Result runSession(const Plan& plan, CommunView& view) {
    // Asked of the view, not of the busy mark: that is clear already while the last texts stand.
    if (running()) {
        Result refused;
        refused.outcome = Outcome::busy;
        return refused;
    }
    return Session(plan, view).run();
}

struct FieldRow {
    std::string_view control;
    std::string_view key;
    std::int16_t& (*target)();
};

// By AddressField.
constexpr std::array<FieldRow, 5> fieldRows{{
    {"txtMaxAddr", "TableMaxAddr",
     []() -> std::int16_t& { return modIicDat::state().TableMaxAddr; }},
    {"txtReadStartAddr", "ReadStartAddr",
     []() -> std::int16_t& { return modIicDat::state().readRange.start; }},
    {"txtReadEndAddr", "ReadEndAddr",
     []() -> std::int16_t& { return modIicDat::state().readRange.end; }},
    {"txtWriteStartAddr", "WriteStartAddr",
     []() -> std::int16_t& { return modIicDat::state().writeRange.start; }},
    {"txtWriteEndAddr", "WriteEndAddr",
     []() -> std::int16_t& { return modIicDat::state().writeRange.end; }},
}};

}  // namespace

State& state() {
    static State instance;
    return instance;
}

Result cmdRead_Click(CommunView& view) {
    return runSession(readPlan, view);
}

Result cmdWrite_Click(CommunView& view) {
    return runSession(writePlan, view);
}

void ShowComPercent(std::int16_t percent) {
    guarded("frmCommun->ShowComPercent", [&] {
        modCommun::theView().setProgress(percent);
        modCommun::theView().setStatus(numberText(percent) + " %");
    });
}

void WriteComDat() {
    guarded("frmCommun->WriteComDat",
            [] { stamp::write(modIicDat::IicDat(), theClock().dateTime()); });
}

bool running() noexcept {
    return modCommun::state().view != nullptr;
}

bool addressFieldChanged(AddressField field, std::string_view text) {
    const FieldRow& row = fieldRows[static_cast<std::size_t>(field)];
    return guarded("frmCommun->" + std::string(row.control) + "_Change", [&] {
        mdimoduMain::writeSetting("Setting", row.key, text);
        row.target() = hexToInt16(text);
        modMemDat::fitGrid();
    });
}

}  // namespace k520::modSession
