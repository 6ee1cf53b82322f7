// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// A read or a write session with the simulated radio under a plan of faults.

#include <array>
#include <memory>
#include <vector>

#include "app/modShowErr.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/simulator/simRadio.h"
#include "link/simulator/virtualPort.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;
using modSession::Outcome;
using std::chrono::milliseconds;

ByteFault faultFrom(Source& source) {
    return {.kind = static_cast<ByteFaultKind>(source.below(4)),
            .byte = source.word() % 2048U + 1U,
            .value = source.byte(),
            .by = milliseconds(source.byte())};
}

SimFaults faultsFrom(Source& source) {
    SimFaults faults;
    const int kinds = source.byte();
    for (int left = kinds & 7; left > 0; --left) {
        faults.replyBytes.push_back(faultFrom(source));
    }
    if ((kinds & 0x10) != 0) {
        faults.silentFrom = source.byte() + 1U;
    }
    faults.failAttempts = (kinds & 0x20) != 0 ? source.byte() % 24U : 0;
    if ((kinds & 0x40) != 0) {
        faults.goneAfter = source.byte() + 1U;
    }
    return faults;
}

/// A view that has the stop box ticked, or is abandoned, when the input says so.
class InputView : public NullView {
  public:
    explicit InputView(Source& source)
        : ticked_((source.byte() & 7) == 7), abandonAfter_(source.word()) {}
    bool stopTicked() override { return enabled_ && ticked_; }
    bool abandoned() override { return abandonAfter_ != 0 && ++asked_ > abandonAfter_; }
    void resetStopBox() override { enabled_ = false; }
    void enableStopBox() override { enabled_ = true; }
    void setBusy(bool busy) override { busy_ = busy; }
    void setProgress(std::int16_t percent) override {
        succeededAt_ = percent == 100 ? theClock().now() : succeededAt_;
    }
    /// When the last step was done.
    [[nodiscard]] Clock::Microseconds succeededAt() const { return succeededAt_; }
    [[nodiscard]] bool busy() const { return busy_; }
    [[nodiscard]] bool mayStop() const { return ticked_ || abandonAfter_ != 0; }

  private:
    bool ticked_;
    int abandonAfter_;
    int asked_ = 0;
    Clock::Microseconds succeededAt_{0};
    bool enabled_ = false;
    bool busy_ = false;
};

modIicDat::AddressRange rangeFrom(Source& source) {
    const int place = source.word();
    // The whole memory takes long, so it is rare.
    if (place == 0xFFFF) {
        return {0, 0x1FFF};
    }
    const int start = place % 0x200 * 16;
    const int blocks = source.below(12) + 1;
    return {static_cast<std::int16_t>(start),
            static_cast<std::int16_t>(std::min(start + blocks * 16, 0x2000) - 1)};
}

std::vector<std::uint8_t> memoryFrom(Source& source) {
    std::vector<std::uint8_t> memory(SimRadio::memorySize);
    const unsigned factor = source.byte() | 1U;
    const unsigned offset = source.byte();
    for (unsigned i = 0; i < memory.size(); ++i) {
        memory[i] = static_cast<std::uint8_t>(i * factor + (i >> 8U) + offset);
    }
    return memory;
}

/// What the faults have done to the replies so far.
struct Touched {
    int corrupted = 0;
    int others = 0;
};

Touched touchedBy(const SimFaults& faults, std::uint32_t replyBytes) {
    Touched touched;
    for (const auto& fault : faults.replyBytes) {
        if (fault.byte <= replyBytes) {
            ++(fault.kind == ByteFaultKind::corrupt ? touched.corrupted : touched.others);
        }
    }
    return touched;
}

int differences(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b,
                modIicDat::AddressRange range, bool inside) {
    int count = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto address = static_cast<int>(i);
        count += (address >= range.start && address <= range.end) == inside && a[i] != b[i] ? 1 : 0;
    }
    return count;
}

/// Whether each byte of a radio is what it was or what it should be.
bool isOldOrNew(std::span<const std::uint8_t> held, std::span<const std::uint8_t> before,
                std::span<const std::uint8_t> sent) {
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (held[i] != before[i] && held[i] != sent[i]) {
            return false;
        }
    }
    return true;
}

/// After a success the image and the radio hold the same, but for what the faults of the session
/// have changed unseen.
void requireEqual(const SimRadio& radio, const SimFaults& faults,
                  std::span<const std::uint8_t> before, modIicDat::AddressRange range, bool reading,
                  Clock::Microseconds succeededAt) {
    const auto held = radio.memory();
    const auto image = std::as_const(modIicDat::IicDat()).bytes();
    const auto touched = touchedBy(faults, radio.counters().replyBytes);
    const int wrong = differences(held, image, range, true);
    // Late acknowledgements let a write end while its bytes are still on the line; a radio that
    // is unplugged or switched off then never gets them. Only reading back finds that.
    const bool off = faults.silentFrom && radio.counters().exchanges >= *faults.silentFrom;
    const bool cutShort = !reading && (off || radio.goneAt()) &&
                          radio.lineBusyUntil() > succeededAt && isOldOrNew(held, before, image);
    require(cutShort || touched.others > 0 || wrong <= (reading ? touched.corrupted : 0),
            "success without a fault means that both hold the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    auto& core = fuzz::freshCore();
    modCommun::state() = {};
    const bool reading = source.flag();
    auto& image = modIicDat::state();
    const auto range = image.readRange = image.writeRange = rangeFrom(source);
    const auto memory = memoryFrom(source);
    const SimFaults faults = faultsFrom(source);
    const int baud = source.flag() ? SimRadio::usualBaud : 300 + source.word();
    const auto radio = std::make_shared<SimRadio>(memory, faults, baud);
    InputView view(source);
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<VirtualPort>(radio);
    };
    const MemoryImage before = image.IicDat;
    const auto start = core.clock().now();

    const auto result =
        reading ? modSession::cmdRead_Click(view) : modSession::cmdWrite_Click(view);

    require(core.clock().now() - start <= milliseconds(20 * (result.stepCount + 2) * 200 + 1000),
            "a session ends in time");
    require(modSession::state().busyMark == modCommun::flagFalse && !view.busy(), "not busy");
    require(!modCommun::state().comCommun && !modSession::running(), "the port is closed");
    require(radio->takeCable(), "the cable is free");
    require(result.outcome != Outcome::stopped || view.mayStop(), "stopped on request only");
    require((result.outcome == Outcome::succeeded) == (result.stepsDone == result.stepCount),
            "success is all steps");
    // What was read may be no digits, which only decoding finds.
    std::vector<std::string_view> labels{"modChMem->IcRxFreSol", "modChMem->IcTxFreSol"};
    if (faults.goneAfter) {
        labels.insert(labels.end(), {"modCommun->ProtocolCom", "modCommun->RxComDat"});
    }
    if (result.unanswered) {
        labels.push_back(reading ? "frmCommun->cmdRead_Click" : "frmCommun->cmdWrite_Click");
    }
    fuzz::requireLabels(labels);
    require(result.outcome != Outcome::failed || !modShowErr::state().entries.empty(),
            "a failure is in the error list");

    const auto held = std::as_const(*radio).memory();
    require(differences(held, memory, range, false) == 0, "the radio keeps what is not in range");
    require(!reading || differences(held, memory, range, true) == 0, "a read leaves the radio");
    require(!reading || differences(image.IicDat.bytes(), before.bytes(), range, false) == 0,
            "a read changes the image in its range only");
    if (result.outcome == Outcome::succeeded) {
        requireEqual(*radio, faults, memory, range, reading, view.succeededAt());
    }
    return 0;
}
