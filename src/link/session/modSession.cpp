// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/modSession.h"

#include <array>
#include <chrono>
#include <string>
#include <utility>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/settingsStore.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "channels/modChMem.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "image/stamp.h"
#include "link/protocol/modCommun.h"
#include "link/session/linkTexts.h"
#include "memview/modMemDat.h"

namespace k520::modSession {

namespace {

using modCommun::ScriptStep;
using std::chrono::milliseconds;

constexpr std::int16_t pollIntervalMs = 1;
constexpr std::int16_t secondValueAtStart = 150;
constexpr std::int16_t servedPauseMs = 50;
constexpr milliseconds plainPause{100};

void nothing() {}
void nothingForStep(const ScriptStep& /*step*/, MemoryImage& /*image*/) {}

void encodeAndStamp() {
    modChMem::SetConvIicDat();
    WriteComDat();
}

void showWhatWasRead() {
    modChMem::SoftDisplay();
    documentOrigin::begin(documentOrigin::Origin::radio);
}

void copyToImage(const ScriptStep& step, MemoryImage& image) {
    for (int k = 0; k < step.size; ++k) {
        image(step.address + k) = modCommun::state().dataBuffer(k + 1);
    }
}

void copyFromImage(const ScriptStep& step, MemoryImage& image) {
    for (int k = 0; k < step.size; ++k) {
        modCommun::state().dataBuffer(k + 1) = image(step.address + k);
    }
}

/// What tells the two sessions apart.
struct Plan {
    Direction direction;
    std::string_view label;
    modCommun::ScriptList modCommun::State::*list;
    void (*prepare)();
    void (*beforeStep)(const ScriptStep&, MemoryImage&);
    void (*afterStep)(const ScriptStep&, MemoryImage&);
    void (*display)();  ///< after success
    bool ownImage;      ///< works on another image than the one that the windows show
    SoftText busyText;
    SoftText successText;
    SoftText failureText;
};

constexpr Plan readPlan{.direction = Direction::read,
                        .label = "frmCommun->cmdRead_Click",
                        .list = &modCommun::State::readList,
                        .prepare = nothing,
                        .beforeStep = nothingForStep,
                        .afterStep = copyToImage,
                        .display = showWhatWasRead,
                        .ownImage = false,
                        .busyText = SoftText::reading,
                        .successText = SoftText::readDone,
                        .failureText = SoftText::readFailed};

// `noStatus`, text 168, is empty: a write shows nothing but percents and, late, the count of
// attempts. Reading has its status texts in a row from 164; of the rows after 168 only 171 and 172
// are such short status words for success and failure (77 and 78 speak of the communication as a
// whole).
constexpr Plan writePlan{.direction = Direction::write,
                         .label = "frmCommun->cmdWrite_Click",
                         .list = &modCommun::State::writeList,
                         .prepare = encodeAndStamp,
                         .beforeStep = copyFromImage,
                         .afterStep = nothingForStep,
                         .display = nothing,
                         .ownImage = false,
                         .busyText = SoftText::noStatus,
                         .successText = SoftText::done,
                         .failureText = SoftText::failed};

// `noStatus` again: nothing is called a success before whoever asked for the bytes has judged them.
constexpr Plan readIntoPlan = [] {
    Plan plan = readPlan;
    plan.display = nothing;
    plan.successText = SoftText::noStatus;
    plan.ownImage = true;
    return plan;
}();

constexpr Plan writeFromPlan = [] {
    Plan plan = writePlan;
    plan.prepare = nothing;
    plan.ownImage = true;
    return plan;
}();

/// What a session works on.
struct Job {
    const Plan& plan;
    MemoryImage& image;
    /// Has the last word on a success; none means yes.
    std::function<bool()> accept = nullptr;
};

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
    Session(const Job& job, CommunView& view) : job_(job), view_(view), inForce_(view) {}

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
        logged_ = modShowErr::state().entries.size();
        guarded(plan_.label, [&] {
            begin();
            Outcome outcome = attempts();
            if (outcome == Outcome::succeeded && job_.accept && !job_.accept()) {
                outcome = Outcome::notAccepted;
            }
            result_.outcome = outcome;
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
        giveUp();
        return Outcome::failed;
    }

    void giveUp() {
        result_.outcome = Outcome::failed;
        result_.failedAttempts = link_.attemptCounter;
        result_.unanswered = modShowErr::state().entries.size() == logged_;
        if (result_.unanswered) {
            guarded(plan_.label, [&] {
                throw RuntimeError(
                    errNum::deviceIo,
                    say(result_.mostSteps == 0 ? texts::noValidAnswer : texts::attemptsBrokeOff,
                        mostAttempts));
            });
        }
        view_.gaveUp(result_);
        theDialogs().tell(BoxIcon::exclamation, modSoftFace::text(SoftText::notice),
                          modSoftFace::text(SoftText::checkPort));
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
        plan_.beforeStep(step, job_.image);
        modCommun::ConvComCode(step.script);
        modCommun::ProtocolCom();
        if (link_.failureFlag != modCommun::flagFalse) {
            return false;
        }
        ShowComPercent(step.percent);
        plan_.afterStep(step, job_.image);
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
        if (!plan_.ownImage) {
            // A session that failed has changed the image, too.
            modMemDat::followImage();
        }
        if (result_.outcome != Outcome::succeeded) {
            view_.setStatus(modSoftFace::text(plan_.failureText));
            return;
        }
        plan_.display();
        view_.setStatus(modSoftFace::text(plan_.successText));
        view_.setProgress(100);
        if (!plan_.ownImage && view_.showMemDatTicked()) {
            modMemDat::TableFreDat();
        }
    }

    void settle() {
        modCommun::DelayNms(servedPauseMs);
        const auto end = theClock().now() + plainPause;
        // Between the stages of a run the interface has no reason to stand still.
        plan_.ownImage ? theClock().waitUntil(end) : theClock().sleepUntil(end);
        view_.setProgress(0);
        view_.setStatus("");
        view_.setPercentText("");
        view_.enableStart(plan_.direction, true);
        view_.resetStopBox();
    }

    const Job& job_;
    const Plan& plan_ = job_.plan;
    CommunView& view_;
    ViewInForce inForce_;
    modCommun::State& link_ = modCommun::state();
    const modCommun::ScriptList& list_ = link_.*plan_.list;
    Result result_;
    /// Failures in the error list when the attempts began.
    std::size_t logged_ = 0;
};

Result runSession(const Job& job, CommunView& view) {
    // Asked of the view, not of the busy mark: that is clear already while the last texts stand.
    if (running()) {
        Result refused;
        refused.outcome = Outcome::busy;
        return refused;
    }
    return Session(job, view).run();
}

/// Sets one of the address ranges for as long as it lives.
class RangeInForce {
  public:
    RangeInForce(modIicDat::AddressRange& range, modIicDat::AddressRange value)
        : range_(range), before_(std::exchange(range, value)) {}
    ~RangeInForce() { range_ = before_; }
    RangeInForce(const RangeInForce&) = delete;
    RangeInForce& operator=(const RangeInForce&) = delete;

  private:
    modIicDat::AddressRange& range_;
    modIicDat::AddressRange before_;
};

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
    static ModuleState<State> instance;
    return *instance;
}

Result cmdRead_Click(CommunView& view) {
    return runSession({readPlan, modIicDat::IicDat()}, view);
}

Result cmdWrite_Click(CommunView& view) {
    return runSession({writePlan, modIicDat::IicDat()}, view);
}

Result readInto(CommunView& view, modIicDat::AddressRange range, MemoryImage& image) {
    const RangeInForce inForce(modIicDat::state().readRange, range);
    return runSession({readIntoPlan, image}, view);
}

Result readIfAccepted(CommunView& view, const std::function<bool(const MemoryImage&)>& accept) {
    MemoryImage waiting = modIicDat::IicDat();
    const auto takeOver = [&] {
        const bool accepted = accept(waiting);
        if (accepted) {
            modIicDat::IicDat() = waiting;
        }
        return accepted;
    };
    return runSession({readPlan, waiting, takeOver}, view);
}

Result writeFrom(CommunView& view, modIicDat::AddressRange range, const MemoryImage& image) {
    const RangeInForce inForce(modIicDat::state().writeRange, range);
    MemoryImage source = image;
    return runSession({writeFromPlan, source}, view);
}

RadioState radioStateAfter(const Result& result) noexcept {
    if (result.furthestAddress) {
        return RadioState::partlyWritten;
    }
    // After the handshake the first block may have been stored without an answer that came back.
    return result.mostSteps == 0 ? RadioState::untouched : RadioState::unknown;
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
        settingsStore::write("Setting", row.key, text);
        row.target() = hexToInt16(text);
        modMemDat::fitGrid();
    });
}

}  // namespace k520::modSession
