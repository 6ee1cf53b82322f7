// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Every case of the faults on the line, one a session, on the simulated clock. Prints a table; the
// exit code is 1 where a case broke a promise.
//
// usage: k520_link_campaign [TEXT]    only the rows whose "FAULT: SESSION" contains the text
#include <fmt/format.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>

#include "faults/LinkCase.h"
#include "image/modIicDat.h"

namespace {

using namespace k520;
using namespace k520::test;
using std::chrono::milliseconds;
using enum ByteFaultKind;

constexpr modIicDat::AddressRange wholeMemory{0, 0x1FFF};
/// Nothing fails but by the fault, so that every byte is hit in the attempt that counts.
constexpr int fastLine = 230'400;

struct Tally {
    std::uint64_t cases = 0;
    std::uint64_t good = 0;
    std::uint64_t deceived = 0;
    std::uint64_t damaged = 0;  ///< radios whose memory a read has changed
    std::uint64_t broken = 0;   ///< promises
    std::int64_t mostFailed = 0;
    std::int64_t longestMs = 0;

    void add(const Tally& other) {
        cases += other.cases;
        good += other.good;
        deceived += other.deceived;
        damaged += other.damaged;
        broken += other.broken;
        mostFailed = std::max(mostFailed, other.mostFailed);
        longestMs = std::max(longestMs, other.longestMs);
    }
};

/// A row of the table: its cases by number.
struct Row {
    std::string fault;
    std::string how;
    std::uint32_t count = 0;
    std::function<LinkCase(std::uint32_t)> job;
};

bool keepsPromises(const LinkCase& job, const LinkVerdict& verdict) {
    const bool ended = verdict.good || verdict.boxes > 0 || job.stops || job.guarded;
    return ended && verdict.result.failedAttempts <= 20 && verdict.entries <= 1 &&
           !(job.guarded && verdict.deceives);
}

Tally tallyOf(const Row& row, std::uint32_t first, std::uint32_t step) {
    const LinkBench bench;
    Tally tally;
    for (std::uint32_t i = first; i < row.count; i += step) {
        const LinkCase job = row.job(i);
        const LinkVerdict verdict = judge(job);
        const bool kept = keepsPromises(job, verdict);
        if (!kept && tally.broken < 5) {
            fmt::print(stderr, "{} ({}): case {} breaks a promise\n", row.fault, row.how, i);
        }
        const bool changed = job.direction == Direction::read && verdict.radio != Content::right;
        tally.add({1, verdict.good ? 1U : 0U, verdict.deceives ? 1U : 0U, changed ? 1U : 0U,
                   kept ? 0U : 1U, verdict.result.failedAttempts,
                   std::chrono::duration_cast<milliseconds>(verdict.time).count()});
    }
    return tally;
}

/// Shares the cases among as many processes as there are processors.
Tally inParallel(const Row& row) {
    const std::uint32_t workers = std::max(1U, std::thread::hardware_concurrency());
    std::array<int, 2> line{};
    if (::pipe(line.data()) != 0) {
        return tallyOf(row, 0, 1);
    }
    std::fflush(nullptr);
    for (std::uint32_t worker = 0; worker < workers; ++worker) {
        if (::fork() == 0) {
            const Tally part = tallyOf(row, worker, workers);
            ::_exit(::write(line[1], &part, sizeof part) == sizeof part ? 0 : 1);
        }
    }
    ::close(line[1]);
    Tally whole;
    for (Tally part; ::read(line[0], &part, sizeof part) == sizeof part;) {
        whole.add(part);
    }
    ::close(line[0]);
    while (::wait(nullptr) > 0) {
    }
    // A worker that crashed has not told of its cases.
    whole.broken += row.count - whole.cases;
    return whole;
}

bool print(const Row& row) {
    const Tally tally = inParallel(row);
    fmt::print("| {} | {} | {} | {} | {} | {} | {} | {} | {:.1f} s |\n", row.fault, row.how,
               row.count, tally.good, tally.deceived, tally.damaged, tally.broken, tally.mostFailed,
               static_cast<double>(tally.longestMs) / 1000);
    std::fflush(stdout);
    return tally.broken == 0;
}

std::string howOf(const LinkCase& job) {
    return fmt::format("{}{}{}, {:04X}-{:04X}", job.direction == Direction::read ? "read" : "write",
                       job.guarded ? " with second pass" : "",
                       job.dropsOutput ? ", port drops unsent bytes" : "", job.range.start,
                       job.range.end);
}

/// Each byte of a line lost, flipped (another value for each byte) and doubled.
Row bytesRow(LinkCase job, std::vector<ByteFault> SimFaults::*line, std::string fault) {
    const LinkBench bench;
    const auto clean = judge(job).counters;
    const bool replies = line == &SimFaults::replyBytes;
    const std::uint32_t bytes = replies ? clean.replyBytes : clean.requestBytes;
    const auto nth = [job, line](std::uint32_t i) {
        constexpr std::array kinds{lose, corrupt, repeat};
        LinkCase faulty = job;
        const std::uint32_t byte = i / 3 + 1;
        const auto value = static_cast<std::uint8_t>(byte * 37 % 255 + 1);
        (faulty.faults.*line).push_back({.kind = kinds[i % 3], .byte = byte, .value = value});
        return faulty;
    };
    return {std::move(fault), howOf(job), bytes * 3, nth};
}

/// Every byte of a session over the whole memory.
void addByteRows(std::vector<Row>& rows, LinkCase job) {
    job.range = wholeMemory;
    job.baud = fastLine;
    if (job.dropsOutput && job.direction == Direction::read) {
        return;
    }
    rows.push_back(bytesRow(job, &SimFaults::replyBytes, "reply byte lost, flipped, doubled"));
    rows.push_back(bytesRow(job, &SimFaults::requestBytes, "request byte lost, flipped, doubled"));
}

/// Late replies: every byte of the first blocks, and every millisecond up to 2 s.
void addLateRows(std::vector<Row>& rows, LinkCase job) {
    constexpr std::uint32_t bytes = 24;
    constexpr std::uint32_t longest = 2000;
    const auto nth = [](const LinkCase& of) {
        return [of](std::uint32_t i) {
            LinkCase late = of;
            late.faults.replyBytes = {
                {.kind = delay, .byte = i % bytes + 1, .by = milliseconds(i / bytes + 1)}};
            return late;
        };
    };
    job.memory = Memory::telling;
    rows.push_back({"reply late", howOf(job), bytes * longest, nth(job)});
    job.memory = Memory::mimic;
    rows.push_back({"reply late, memory mimics frames", howOf(job), bytes * longest, nth(job)});
}

std::vector<Row> allRows() {
    std::vector<Row> rows;
    for (const auto& add : {addByteRows, addLateRows}) {
        for (const bool guarded : {false, true}) {
            for (const bool drops : {false, true}) {
                for (const Direction direction : {Direction::read, Direction::write}) {
                    add(rows, {.direction = direction, .guarded = guarded, .dropsOutput = drops});
                }
            }
        }
    }
    return rows;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string only = argc > 1 ? argv[1] : "";
    fmt::print(
        "| fault | session | cases | called good | of them wrong | radio changed by a read | "
        "promises broken | most "
        "failed attempts | longest |\n| --- | --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: "
        "|\n");
    bool kept = true;
    for (const Row& row : allRows()) {
        if ((row.fault + ": " + row.how).find(only) != std::string::npos) {
            kept = print(row) && kept;
        }
    }
    return kept ? 0 : 1;
}
