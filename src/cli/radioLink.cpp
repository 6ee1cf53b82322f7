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
#include "cli/Failure.h"
#include "cli/compare.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/program.h"
#include "image/backups.h"
#include "link/comPorts.h"
#include "link/modCommun.h"
#include "link/scriptText.h"
#include "link/virtualPort.h"

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

std::string_view remedy(const safeguards::Report& report) {
    return report.restored ? "restore again before it is used" : "write again before it is used";
}

/// What became of things when a session did not succeed, by the stage that it was.
std::string consequence(const safeguards::Report& report) {
    using enum modSession::RadioState;
    switch (report.stage) {
        case Stage::read:
            return "read failed, nothing saved";
        case Stage::backUp:
            return "read failed, the radio is untouched";
        case Stage::compare:
            return report.restored ? "read failed, the backup is written back but not compared"
                   : report.written
                       ? "read failed, the radio is written but not compared; run verify"
                       : "second read failed, nothing saved";
        case Stage::write:
        case Stage::restore:
            break;
    }
    switch (modSession::radioStateAfter(report.result)) {
        case untouched:
            break;
        case unknown:
            return fmt::format("write failed, the radio may be partly written; {}", remedy(report));
        case partlyWritten:
            return fmt::format(
                "write failed, the radio is partly written, up to address {:04X}; {}",
                *report.result.furthestAddress + scriptText::blockLength - 1, remedy(report));
    }
    return "write failed, the radio is untouched";
}

/// What to do about a port that cannot be opened, where its failure does not say so itself.
std::string_view remedyFor(std::int16_t number) {
    switch (number) {
        case errNum::alreadyOpen:
            return "; end that program first, or take another port (k520-cli ports)";
        case errNum::deviceUnavailable:
            return "; take another port (k520-cli ports)";
        default:
            return "";
    }
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
    : port_(std::move(port)), trace_(std::move(trace)), view_(trace_ == "-") {
    choosePort();
    requireUsable(modIicDat::state().readRange, "Read");
    requireUsable(modIicDat::state().writeRange, "Write");
    collectTrace();
}

RadioLink::~RadioLink() {
    modCommun::state().listRtData.onInsert = nullptr;
    // What was there stays where nothing came to be told.
    if (!trace_ || *trace_ == "-" || traceText_.empty()) {
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

void RadioLink::read(const safeguards::Choices& choices) {
    const MemoryImage before = modIicDat::IicDat();
    const auto report = safeguards::read(view_, choices);
    conclude(report);
    keepOutside(modIicDat::state().readRange, before);
}

void RadioLink::write(const safeguards::Choices& choices, const std::string& backUpTo) {
    conclude(safeguards::write(view_, choices, backUpTo));
}

void RadioLink::restore(const std::string& file, const safeguards::Choices& choices,
                        const std::optional<unfinishedWrite::Note>& written) {
    conclude(safeguards::restore(view_, file, choices, written));
}

void RadioLink::conclude(const safeguards::Report& report) {
    view_.clear();
    if (!report.displaced.empty()) {
        warn(fmt::format("{} was there already; what it held is kept in {}", report.backup.string(),
                         report.displaced.string()));
    }
    if (report.good) {
        lookBehind(report.begin);
        return;
    }
    warnBetween(report.begin, report.mark);
    if (report.otherRadio) {
        failForOtherRadio();
    }
    if (!report.backupTrouble.empty()) {
        fail(fmt::format("{}: {}",
                         report.stage == Stage::backUp ? "no backup, so nothing was written"
                         : report.direction == Direction::read
                             ? "nothing saved: no copy could be kept"
                             : "nothing was written",
                         report.backupTrouble));
    }
    if (!report.differences.empty()) {
        failForDifferences(report);
    }
    fail(consequence(report) + ": " + causeOf(report) + wayBack(report));
}

/// Prints what differs. The stamp, which comparisons leave out, counts here.
void RadioLink::failForDifferences(const safeguards::Report& report) const {
    const bool written = report.written;
    const auto expected = pictureOf(report.expected);
    const auto comparison = compare(expected, pictureOf(report.found));
    print(comparisonText(comparison, written ? "sent" : "first", written ? "radio" : "second"));
    const auto count =
        comparison.equal() ? std::string("the programming stamp") : countText(comparison);
    const auto verdict =
        written ? fmt::format("the radio does not hold what was sent; {}", remedy(report))
                : std::string(
                      "two reads of the radio differ, so one of them is wrong; nothing saved; "
                      "check the cable and read again");
    fail(fmt::format("{}: {}{}", verdict, count, wayBack(report)));
}

/// How to put back what the radio held, once a write has begun to change it.
std::string RadioLink::wayBack(const safeguards::Report& report) const {
    if (report.backup.empty() || report.restored) {
        return {};
    }
    const bool named = port_ == VirtualPort::name || portNumber(port_);
    const auto port = named ? port_ : absolutePath(port_);
    const auto command = [&](const std::filesystem::path& backup) {
        return ownCommand({"restore", "-p", port, "--from", absolutePath(backup.string())});
    };
    auto text = safeguards::radioChanged(report)
                    ? "; what it held before is put back by: " + command(report.backup)
                    : "; its backup is " + report.backup.string();
    for (const auto& earlier : report.earlier) {
        text +=
            fmt::format("; what it held before an earlier write that failed: {}", command(earlier));
    }
    return text;
}

void RadioLink::failForOtherRadio() {
    std::string message =
        "this radio does not hold what the latest write behind a backup found or sent, so it is "
        "left as it is; give the backup that it needs with --from";
    constexpr int mostNamed = 3;
    int named = 0;
    const auto all = backups::list();
    for (auto backup = all.rbegin(); backup != all.rend() && named < mostNamed; ++backup) {
        if (backup->reason == backups::Reason::beforeWrite) {
            message += "\n  " + backup->path.string();
            ++named;
        }
    }
    fail(message);
}

void RadioLink::warnBetween(std::size_t begin, std::size_t end) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = begin; i < std::min(end, entries.size()); ++i) {
        warn(entries[i].source);
    }
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

std::string RadioLink::causeOf(const safeguards::Report& report) const {
    if (report.result.outcome == modSession::Outcome::stopped) {
        return "stopped on request";
    }
    const auto& entries = modShowErr::state().entries;
    if (!report.result.unanswered && report.mark < entries.size()) {
        return fmt::format("{}{}", entries[report.mark].source,
                           remedyFor(entries[report.mark].number));
    }
    return fmt::format(
        "no valid answer from a radio at {} in {} attempts; is the radio on, is the cable plugged "
        "in at both ends, is it the right port (k520-cli ports)? --trace shows what came over",
        port_, report.result.failedAttempts);
}

}  // namespace k520::cli
