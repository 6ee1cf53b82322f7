// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "faults/LinkCase.h"

#include <algorithm>
#include <deque>
#include <random>

#include "app/modShowErr.h"
#include "app/programFolder.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/session/safeguards.h"
#include "link/simulator/virtualPort.h"
#include "settings/modSysSet.h"
#include "support/SimulatedClock.h"
#include "support/TempFolder.h"

namespace k520::test {

namespace {

using modIicDat::IicDat;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// Below are the channels and options: empty ones, so that decoding finds no fault with them.
constexpr std::size_t channelsEnd = 0x400;

Bytes tellingMemory(unsigned seed) {
    Bytes memory(SimRadio::memorySize, 0xFF);
    std::minstd_rand random(seed);
    std::generate(memory.begin() + channelsEnd, memory.end(),
                  [&] { return static_cast<std::uint8_t>(random() >> 8); });
    return memory;
}

Bytes mimicMemory() {
    Bytes memory = tellingMemory(3);
    for (std::size_t a = channelsEnd; a < memory.size(); a += 16) {
        const auto high = static_cast<std::uint8_t>(a / 1024 * 16 + a / 256 % 4);
        const Bytes fake{0x06, 0x06, 0x57, high, static_cast<std::uint8_t>(a), 0x10, 0x06, 0x06};
        std::ranges::copy(fake, memory.begin() + static_cast<std::ptrdiff_t>(a));
    }
    return memory;
}

const Bytes& memoryOf(Memory kind) {
    static const Bytes telling = tellingMemory(1);
    static const Bytes mimic = mimicMemory();
    return kind == Memory::telling ? telling : mimic;
}

/// A port whose bytes leave it one by one, so that those that have not left yet can be dropped.
class LinePort : public VirtualPort {
  public:
    LinePort(std::shared_ptr<SimRadio> radio, const LinkCase& job, std::size_t& mostWaiting)
        : VirtualPort(std::move(radio)),
          drops_(job.dropsOutput),
          byteTime_(nanoseconds(std::chrono::seconds(10)) / job.baud),
          mostWaiting_(mostWaiting) {}

    void emptyInput() override {
        send(theClock().now());
        VirtualPort::emptyInput();
    }
    void emptyOutput() override {
        VirtualPort::emptyOutput();
        if (drops_) {
            queue_.clear();
        }
    }
    void write(std::span<const std::uint8_t> bytes) override {
        if (!drops_) {
            VirtualPort::write(bytes);
            return;
        }
        free_ = std::max<nanoseconds>(free_, theClock().now());
        queue_.insert(queue_.end(), bytes.begin(), bytes.end());
    }
    std::size_t waiting() override {
        send(theClock().now());
        const std::size_t count = VirtualPort::waiting();
        mostWaiting_ = std::max(mostWaiting_, count);
        return count;
    }
    void close() override {
        send(nanoseconds::max());
        VirtualPort::close();
    }

  private:
    /// Lets the bytes go whose turn has come; the first one leaves at once.
    void send(nanoseconds now) {
        while (!queue_.empty() && free_ <= now) {
            const Bytes one{queue_.front()};
            queue_.pop_front();
            radio().receive(one, std::chrono::floor<Clock::Microseconds>(free_));
            free_ += byteTime_;
        }
    }

    bool drops_;
    nanoseconds byteTime_;
    nanoseconds free_{0};
    std::deque<std::uint8_t> queue_;
    std::size_t& mostWaiting_;
};

struct StopView : NullView {
    explicit StopView(bool wants) : stops(wants) {}
    void enableStopBox() override { enabled = true; }
    void resetStopBox() override { enabled = false; }
    bool stopTicked() override { return stops && enabled; }

    bool stops;
    bool enabled = false;
};

struct CountingDialogs : Dialogs {
    CountingDialogs() { setDialogs(this); }
    ~CountingDialogs() override { setDialogs(nullptr); }
    bool ask(const std::string& /*title*/, const std::string& /*text*/, bool usual) override {
        return usual;
    }
    SaveAnswer askToSave(const std::string& /*title*/, const std::string& /*text*/) override {
        return SaveAnswer::dontSave;
    }
    void tell(BoxIcon /*icon*/, const std::string& /*title*/,
              const std::string& /*text*/) override {
        ++boxes;
        lastBox = theClock().now();
    }
    std::string openFile(const FileChoice& /*choice*/) override { return {}; }
    std::string saveFile(const FileChoice& /*choice*/) override { return {}; }
    void customRange() override {}
    void openDocument(const std::string& /*path*/) override {}
    void print(const std::string& /*html*/) override {}

    std::size_t boxes = 0;
    Clock::Microseconds lastBox{0};
    Clock::Microseconds firstError{0};
};

CountingDialogs* theCounter = nullptr;

Content contentOf(std::span<const std::uint8_t> now, const Bytes& before, const Bytes& right) {
    if (std::ranges::equal(now, right)) {
        return Content::right;
    }
    return std::ranges::equal(now, before) ? Content::kept : Content::wrong;
}

/// `base` with the range taken from `source`.
Bytes overlaid(Bytes base, std::span<const std::uint8_t> source, modIicDat::AddressRange range) {
    const auto length = static_cast<std::size_t>(range.end - range.start + 1);
    const auto part = source.subspan(static_cast<std::size_t>(range.start), length);
    std::ranges::copy(part, base.begin() + range.start);
    return base;
}

void runSession(const LinkCase& job, LinkVerdict& verdict) {
    StopView view(job.stops);
    const safeguards::Choices choices{.readBack = job.guarded};
    const auto ending = job.direction == Direction::read ? safeguards::read(view, choices)
                                                         : safeguards::write(view, choices);
    verdict.result = ending.result;
    verdict.good = ending.good();
}

void noteEnd(const SimRadio& radio, LinkVerdict& verdict) {
    if (const auto out = radio.goneAt()) {
        verdict.toldAfter = theCounter->firstError - *out;
        verdict.endedAfter = theCounter->lastBox - *out;
    }
    verdict.entries = modShowErr::state().entries.size();
    verdict.boxes = theCounter->boxes;
    verdict.dataLines = static_cast<std::size_t>(modCommun::state().listRtData.size());
    verdict.counters = radio.counters();
}

}  // namespace

struct LinkBench::Parts {
    TempFolder folder;
    SimulatedClock clock;
    CountingDialogs dialogs;
};

LinkBench::LinkBench() : parts_(std::make_unique<Parts>()) {
    theCounter = &parts_->dialogs;
    programFolder::state().own = parts_->folder.path();
    modIicDat::sizeArrays(SimRadio::memorySize - 1);
    modChMem::SetChGrid();
}

LinkBench::~LinkBench() {
    resetModules();
    theCounter = nullptr;
}

LinkVerdict judge(const LinkCase& job) {
    static const Bytes imageBefore = tellingMemory(2);
    const Bytes& held = memoryOf(job.memory);
    const auto radio = std::make_shared<SimRadio>(held, job.faults, job.baud);
    LinkVerdict verdict;
    modShowErr::state() = {};
    const auto watching = modShowErr::state().listShowErr.onInsert.subscribe([](int line) {
        theCounter->firstError = line == 0 ? theClock().now() : theCounter->firstError;
    });
    modSysSet::state() = {};
    theCounter->boxes = 0;
    modChMem::state().ChInfo = {};
    std::ranges::copy(imageBefore, IicDat().bytes().begin());
    modIicDat::state().readRange = modIicDat::state().writeRange = job.range;
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<LinePort>(radio, job, verdict.mostWaiting);
    };

    const auto start = theClock().now();
    runSession(job, verdict);
    verdict.time = theClock().now() - start;
    noteEnd(*radio, verdict);
    const bool read = job.direction == Direction::read;
    const auto image = IicDat().bytes();
    verdict.image =
        read ? contentOf(image, imageBefore, overlaid(imageBefore, radio->memory(), job.range))
             : Content::right;
    verdict.radio =
        contentOf(radio->memory(), held, read ? held : overlaid(held, image, job.range));
    verdict.deceives = verdict.good && (read ? verdict.image : verdict.radio) != Content::right;
    return verdict;
}

}  // namespace k520::test
