// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/modSession.h"

#include <array>
#include <chrono>
#include <string>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
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
    documentOrigin::begin(documentOrigin::Origin::radio, say(texts::stepRead));
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

/// What tells the two directions apart.
struct Way {
    Direction direction;
    std::string_view label;
    modCommun::ScriptList modCommun::State::*list;
    void (*beforeStep)(const ScriptStep&, MemoryImage&);
    void (*afterStep)(const ScriptStep&, MemoryImage&);
    SoftText busyText;
    SoftText failureText;
};

constexpr Way reading{.direction = Direction::read,
                      .label = "frmCommun->cmdRead_Click",
                      .list = &modCommun::State::readList,
                      .beforeStep = nothingForStep,
                      .afterStep = copyToImage,
                      .busyText = SoftText::reading,
                      .failureText = SoftText::readFailed};

// `noStatus`, text 168, is empty: a write shows nothing but percents and, late, the count of
// attempts. Reading has its status texts in a row from 164; of the rows after 168 only 171 and 172
// are such short status words for success and failure (77 and 78 speak of the communication as a
// whole).
constexpr Way writing{.direction = Direction::write,
                      .label = "frmCommun->cmdWrite_Click",
                      .list = &modCommun::State::writeList,
                      .beforeStep = copyFromImage,
                      .afterStep = nothingForStep,
                      .busyText = SoftText::noStatus,
                      .failureText = SoftText::failed};

// Nothing is called a success before whoever asked for the bytes has judged them.
constexpr SoftText noSuccessText = SoftText::noStatus;

/// What a session works on, and what it does besides.
struct Job {
    const Way& way;
    modIicDat::AddressRange range;
    MemoryImage& image;
    SoftText successText;
    void (*prepare)() = nothing;
    void (*display)() = nothing;  ///< after success
    /// The memory window shows this image, and follows it.
    bool inMemoryWindow = false;
    /// How the last texts stand: between the stages of a run the interface has no reason to stand
    /// still.
    void (Clock::*pause)(Clock::Microseconds) = &Clock::sleepUntil;
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
        guarded(way_.label, [&] { prepare(); });
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
        guarded(way_.label, [&] {
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
        guarded(way_.label, [&] { end(); });
        guarded(way_.label, [&] { settle(); });
        return result_;
    }

  private:
    void prepare() {
        job_.prepare();
        buildScripts();
        link_.attemptCounter = 0;
        link_.pollInterval = pollIntervalMs;
        link_.secondValue = secondValueAtStart;
        link_.dataListLine = 0;
        view_.resetStopBox();
        link_.listRtData.clear();
        view_.setBlinking(true);
    }

    void buildScripts() const {
        auto readRange = modIicDat::state().readRange;
        auto writeRange = modIicDat::state().writeRange;
        (way_.direction == Direction::read ? readRange : writeRange) = job_.range;
        modCommun::InitProtocol(readRange, writeRange);
    }

    void begin() {
        view_.enableStart(way_.direction, false);
        state().busyMark = modCommun::flagTrue;
        view_.setBusy(true);
        view_.setStatus(modSoftFace::text(way_.busyText));
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
            guarded(way_.label, [&] {
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
        way_.beforeStep(step, job_.image);
        modCommun::ConvComCode(step.script);
        modCommun::ProtocolCom();
        if (link_.failureFlag != modCommun::flagFalse) {
            return false;
        }
        ShowComPercent(step.percent);
        way_.afterStep(step, job_.image);
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
            view_.setStatus(numberText(count) + " " + modSoftFace::text(way_.busyText));
        }
        return false;
    }

    void end() {
        view_.setBusy(false);
        view_.resetStopBox();
        view_.setBlinking(false);
        if (job_.inMemoryWindow) {
            // A session that failed has changed the image, too.
            modMemDat::followImage();
        }
        if (result_.outcome != Outcome::succeeded) {
            view_.setStatus(modSoftFace::text(way_.failureText));
            return;
        }
        job_.display();
        view_.setStatus(modSoftFace::text(job_.successText));
        view_.setProgress(100);
        if (job_.inMemoryWindow && view_.showMemDatTicked()) {
            modMemDat::TableFreDat();
        }
    }

    void settle() {
        modCommun::DelayNms(servedPauseMs);
        Clock& clock = theClock();
        (clock.*job_.pause)(clock.now() + plainPause);
        view_.setProgress(0);
        view_.setStatus("");
        view_.setPercentText("");
        view_.enableStart(way_.direction, true);
        view_.resetStopBox();
    }

    const Job& job_;
    const Way& way_ = job_.way;
    CommunView& view_;
    ViewInForce inForce_;
    modCommun::State& link_ = modCommun::state();
    const modCommun::ScriptList& list_ = link_.*way_.list;
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

/// The read that fills the windows.
Job readOfAll(MemoryImage& image) {
    return {.way = reading,
            .range = modIicDat::state().readRange,
            .image = image,
            .successText = SoftText::readDone,
            .display = showWhatWasRead,
            .inMemoryWindow = true};
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
    static ModuleState<State> instance;
    return *instance;
}

Result cmdRead_Click(CommunView& view) {
    return runSession(readOfAll(modIicDat::IicDat()), view);
}

Result cmdWrite_Click(CommunView& view) {
    return runSession({.way = writing,
                       .range = modIicDat::state().writeRange,
                       .image = modIicDat::IicDat(),
                       .successText = SoftText::done,
                       .prepare = encodeAndStamp,
                       .inMemoryWindow = true},
                      view);
}

Result readInto(CommunView& view, modIicDat::AddressRange range, MemoryImage& image) {
    return runSession({.way = reading,
                       .range = range,
                       .image = image,
                       .successText = noSuccessText,
                       .pause = &Clock::waitUntil},
                      view);
}

Result readIfAccepted(CommunView& view, const std::function<bool(const MemoryImage&)>& accept) {
    MemoryImage waiting = modIicDat::IicDat();
    Job job = readOfAll(waiting);
    job.accept = [&] {
        const bool accepted = accept(waiting);
        if (accepted) {
            modIicDat::IicDat() = waiting;
        }
        return accepted;
    };
    return runSession(job, view);
}

Result writeFrom(CommunView& view, modIicDat::AddressRange range, const MemoryImage& image) {
    MemoryImage source = image;
    return runSession({.way = writing,
                       .range = range,
                       .image = source,
                       .successText = SoftText::done,
                       .pause = &Clock::waitUntil},
                      view);
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
