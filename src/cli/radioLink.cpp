// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/radioLink.h"

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "app/Checked.h"
#include "app/Files.h"
#include "app/RuntimeError.h"
#include "app/modShowErr.h"
#include "channels/modChMem.h"
#include "cli/ConsoleView.h"
#include "cli/Failure.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/program.h"
#include "link/comPorts.h"
#include "link/modCommun.h"
#include "link/scriptText.h"

namespace k520::cli {

namespace {

/// The number of a port that is given as one; nothing for a device.
std::optional<std::int16_t> portNumber(const std::string& port) {
    std::string digits = lowerAscii(port);
    if (digits.starts_with("com")) {
        digits.erase(0, 3);
    }
    int number = 0;
    const char* end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    if (digits.empty() || rest != end) {
        return std::nullopt;
    }
    if (error != std::errc{} || number < comPorts::firstPort || number > comPorts::lastPort) {
        refuse(fmt::format("there is no port {}; there are 1 to {}", port, comPorts::lastPort));
    }
    return static_cast<std::int16_t>(number);
}

void requireUsable(modIicDat::AddressRange range, const std::string& name) {
    const int last = modIicDat::state().DatNum;
    const int blocks = (range.end - range.start) / scriptText::blockLength + 1;
    if (range.start >= 0 && range.end >= range.start &&
        range.start + blocks * scriptText::blockLength - 1 <= last) {
        return;
    }
    const int wholeBlocks = (last + 1) / scriptText::blockLength * scriptText::blockLength;
    fail(fmt::format(
        "the settings file gives {0}StartAddr {1:04X} and {0}EndAddr {2:04X}, but blocks of {3} "
        "bytes from the first to the last have to lie within 0000 to {4:04X}; mend it with: {5} "
        "and {6}",
        name, static_cast<std::uint16_t>(range.start), static_cast<std::uint16_t>(range.end),
        scriptText::blockLength, last, configSetCommand("Setting", name + "StartAddr", "0000"),
        configSetCommand("Setting", name + "EndAddr",
                         fmt::format("{:04X}", std::min(wholeBlocks - 1, 0x1FFF)))));
}

/// Puts back what lies outside a range: a short last block brings bytes that nobody has read.
void keepOutside(modIicDat::AddressRange range, const MemoryImage& before) {
    MemoryImage kept = before;
    for (int address = range.start; address <= range.end; ++address) {
        kept(address) = modIicDat::IicDat()(address);
    }
    if (kept != modIicDat::IicDat()) {
        modIicDat::IicDat() = kept;
        modChMem::SoftDisplay();
    }
}

/// Sets the range of read sessions for as long as it lives.
class ReadRange {
  public:
    explicit ReadRange(modIicDat::AddressRange range)
        : before_(std::exchange(modIicDat::state().readRange, range)) {}
    ~ReadRange() { modIicDat::state().readRange = before_; }
    ReadRange(const ReadRange&) = delete;
    ReadRange& operator=(const ReadRange&) = delete;

  private:
    modIicDat::AddressRange before_;
};

std::string stateOfRadio(std::int16_t furthest, const modSession::Result& result) {
    if (furthest == 0) {
        return "the radio is untouched";
    }
    const auto reached = result.lastAddress
                             ? fmt::format(", in the last attempt up to address {:04X}",
                                           *result.lastAddress + scriptText::blockLength - 1)
                             : std::string();
    return fmt::format("the radio may be partly written{}; write again before it is used", reached);
}

/// Past the buffer of stdout, so that a reader who has gone does no harm to the session.
bool writeToStdout(std::string_view text) {
    while (!text.empty()) {
        const auto written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

}  // namespace

RadioLink::RadioLink(std::string port, std::optional<std::string> trace)
    : port_(std::move(port)), trace_(std::move(trace)) {
    choosePort();
    requireUsable(modIicDat::state().readRange, "Read");
    requireUsable(modIicDat::state().writeRange, "Write");
    collectTrace();
}

RadioLink::~RadioLink() {
    modCommun::state().listRtData.onInsert = nullptr;
    if (!trace_ || *trace_ == "-") {
        return;
    }
    try {
        files::replace(*trace_, std::span(reinterpret_cast<const std::uint8_t*>(traceText_.data()),
                                          traceText_.size()));
    } catch (const std::exception& error) {
        warn(std::string("the data list is not kept: ") + error.what());
    }
}

void RadioLink::choosePort() const {
    auto& link = modCommun::state();
    if (const auto number = portNumber(port_)) {
        link.portNumber = *number;
        link.portMaker = comPorts::defaultPortMaker();
        return;
    }
    link.portMaker = [device = port_](std::int16_t) { return comPorts::portForDevice(device); };
}

void RadioLink::collectTrace() {
    if (!trace_) {
        return;
    }
    const bool toStdout = *trace_ == "-";
    if (!toStdout) {
        try {
            files::checkReplaceable(*trace_);
        } catch (const RuntimeError& error) {
            fail(error.source());
        }
    }
    // A reader of stdout who goes must not take a session in the middle with it.
    std::signal(SIGPIPE, SIG_IGN);
    auto& list = modCommun::state().listRtData;
    list.onInsert = [this, &list, toStdout](int index) {
        const auto line = list.lines()[static_cast<std::size_t>(index)] + '\n';
        if (toStdout) {
            printTrace(line);
        } else {
            traceText_ += line;
        }
    };
}

void RadioLink::printTrace(const std::string& line) {
    if (!traceBroken_ && !writeToStdout(line)) {
        traceBroken_ = true;
        warn("the data list cannot be printed any more; the session goes on");
    }
}

void RadioLink::read(const std::string& stage, modIicDat::AddressRange range,
                     const std::string& afterFailure) {
    const MemoryImage before = modIicDat::IicDat();
    const ReadRange inForce(range);
    const auto [result, furthest, mark] = run(Direction::read, stage);
    if (result.outcome != modSession::Outcome::succeeded) {
        fail(fmt::format("read failed, {}: {}", afterFailure, causeOf(result, mark)));
    }
    lookBehind(mark);
    keepOutside(range, before);
}

void RadioLink::write() {
    const auto [result, furthest, mark] = run(Direction::write, "Writing");
    if (result.outcome != modSession::Outcome::succeeded) {
        fail(fmt::format("write failed, {}: {}", stateOfRadio(furthest, result),
                         causeOf(result, mark)));
    }
    lookBehind(mark);
}

RadioLink::Run RadioLink::run(Direction direction, const std::string& stage) {
    const auto mark = failureMark();
    ConsoleView view(stage, trace_ == "-");
    const auto result = direction == Direction::read ? modSession::cmdRead_Click(view)
                                                     : modSession::cmdWrite_Click(view);
    return {result, view.furthest(), mark};
}

void RadioLink::lookBehind(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = mark; i < entries.size(); ++i) {
        // The simulated radio can tell only here that it could not keep its memory.
        if (entries[i].label == "modCommun->CloseCom") {
            fail(entries[i].source);
        }
        warn(entries[i].source);
    }
}

std::string RadioLink::causeOf(const modSession::Result& result, std::size_t mark) const {
    if (result.outcome == modSession::Outcome::stopped) {
        return "stopped on request";
    }
    if (const auto failure = failureSince(mark)) {
        return *failure;
    }
    return fmt::format(
        "no valid answer from a radio at {} in {} attempts; is the radio on, is the cable plugged "
        "in at both ends, is it the right port (k520-cli ports)? --trace shows what came over",
        port_, result.failedAttempts);
}

}  // namespace k520::cli
