// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "faults/KilledWrite.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "cli/Program.h"
#include "image/datFile.h"
#include "link/ptyRadio.h"
#include "link/simRadio.h"

namespace k520::test {

namespace {

using std::chrono::milliseconds;
using Bytes = std::vector<std::uint8_t>;

constexpr int fastLine = 230'400;

/// A radio without channels, and bytes of its own wherever neither channels nor options are.
Bytes memoryBefore() {
    Bytes memory(SimRadio::memorySize, 0xFF);
    std::minstd_rand random(5);
    std::generate(memory.begin() + 0x420, memory.end(),
                  [&] { return static_cast<std::uint8_t>(random() >> 8); });
    return memory;
}

class Stage {
  public:
    explicit Stage(int lastAddress) {
        const auto last = fmt::format("{:04X}", lastAddress);
        for (const std::string& line :
             {"config set Setting ReadEndAddr " + last, "config set Setting WriteEndAddr " + last,
              std::string("new @a.dat"), std::string("set @a.dat ch7.rx=433.5")}) {
            run_(line);
        }
    }

    /// Runs a command at the radio's port. It is killed once the radio has heard `killAt` exchanges
    /// behind a whole read; never for 0.
    Outcome with(const std::string& line, std::uint32_t killAt) {
        const auto& heard = radio_->counters();
        const pid_t child =
            run_.start(run_.wordsOf(line + " -p " + terminal_.devicePath()), "session");
        std::uint32_t readEnd = 0;
        const auto outcome = run_.finish(child, "session", [&] {
            terminal_.step(milliseconds(2));
            readEnd = readEnd == 0 && heard.reads > 0 ? heard.exchanges : readEnd;
            if (killAt > 0 && readEnd > 0 && heard.exchanges >= readEnd + killAt) {
                ::kill(child, SIGKILL);
            }
        });
        // Until the device is free of the mark that a killed client leaves.
        for (int i = 0; i < 10; ++i) {
            terminal_.step(milliseconds(20));
        }
        return outcome;
    }

    [[nodiscard]] SimRadio& radio() { return *radio_; }
    [[nodiscard]] std::string file(const std::string& name) const { return run_.file(name); }

  private:
    Program run_;
    std::shared_ptr<SimRadio> radio_ =
        std::make_shared<SimRadio>(memoryBefore(), SimFaults{}, fastLine);
    PtyRadio terminal_{radio_};
};

/// The first address at which two memories differ, what a data file cannot hold left out; or -1.
int firstDifference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b, int last) {
    constexpr int stamp = 0x330;
    constexpr int stampEnd = 0x335;
    for (int address = 0; address <= last; ++address) {
        const auto place = static_cast<std::size_t>(address);
        const bool lost =
            address >= datFile::lostAddress && address < datFile::lostAddress + datFile::lostCount;
        const bool stamped = address >= stamp && address < stampEnd;
        if (!lost && !stamped && a[place] != b[place]) {
            return address;
        }
    }
    return -1;
}

/// Looks at the backup and restores the radio; returns what is wrong, or nothing.
std::string afterKilling(Stage& stage, const Bytes& before, int last) {
    MemoryImage backup(SimRadio::memorySize);
    datFile::load(stage.file("before.dat"), backup);
    if (const int at = firstDifference(backup.bytes(), before, last); at >= 0) {
        return fmt::format("the backup differs at {:04X}", at);
    }
    Outcome restored;
    for (int round = 0; round < 5 && restored.code != 0; ++round) {
        restored = stage.with("restore --verify --from @before.dat", 0);
    }
    if (restored.code != 0) {
        return "not restored: " + restored.err;
    }
    const int at = firstDifference(stage.radio().memory(), before, last);
    return at >= 0 ? fmt::format("the restored radio differs at {:04X}", at) : std::string();
}

}  // namespace

std::string killedWrite(const KilledWriteCase& job) {
    // A machine that is too busy for the line spoils a session; then once more.
    constexpr int rounds = 5;
    const Bytes before = memoryBefore();
    std::string trouble = "not killed";
    for (int round = 0; round < rounds && trouble.starts_with("not killed"); ++round) {
        Stage stage(job.lastAddress);
        const auto killed = stage.with("write @a.dat --backup @before.dat", job.exchange);
        trouble = killed.code == -SIGKILL ? afterKilling(stage, before, job.lastAddress)
                                          : "not killed: " + killed.err;
    }
    return trouble;
}

}  // namespace k520::test
