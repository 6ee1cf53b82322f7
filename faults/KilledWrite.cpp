// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "faults/KilledWrite.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <vector>

#include "cli/Program.h"
#include "image/datFile.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/simRadio.h"

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

/// A radio on a pseudo-terminal.
struct Station {
    explicit Station(const Bytes& memory)
        : radio(std::make_shared<SimRadio>(memory, SimFaults{}, fastLine)), terminal(radio) {}
    std::shared_ptr<SimRadio> radio;
    PtyRadio terminal;
};

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

    /// Runs a command at a radio's port. It is killed once the radio has heard `killAt` exchanges
    /// after a whole read; never for 0.
    Outcome with(Station& station, const std::string& line, std::uint32_t killAt) {
        const auto& heard = station.radio->counters();
        const auto readsBefore = heard.reads;
        const pid_t child =
            run_.start(run_.wordsOf(line + " -p " + station.terminal.devicePath()), "session");
        std::uint32_t readEnd = 0;
        const auto outcome = run_.finish(child, "session", [&] {
            station.terminal.step(milliseconds(2));
            readEnd = readEnd == 0 && heard.reads > readsBefore ? heard.exchanges : readEnd;
            if (killAt > 0 && readEnd > 0 && heard.exchanges >= readEnd + killAt) {
                ::kill(child, SIGKILL);
            }
        });
        // Until the device is free of the mark that a killed client leaves.
        for (int i = 0; i < 10; ++i) {
            station.terminal.step(milliseconds(20));
        }
        return outcome;
    }

    [[nodiscard]] std::string file(const std::string& name) const { return run_.file(name); }

  private:
    Program run_;
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

/// Restores a radio; returns what is wrong, or nothing.
std::string restoring(Stage& stage, Station& station, const std::string& line, const Bytes& before,
                      int last) {
    Outcome restored;
    for (int round = 0; round < 5 && restored.code != 0; ++round) {
        restored = stage.with(station, line, 0);
    }
    if (restored.code != 0) {
        return "not restored: " + restored.err;
    }
    const int at = firstDifference(station.radio->memory(), before, last);
    return at >= 0 ? fmt::format("the restored radio differs at {:04X}", at) : std::string();
}

/// Looks at the backup and restores the radio; returns what is wrong, or nothing.
std::string afterKilling(Stage& stage, Station& station, const Bytes& before, int last) {
    MemoryImage backup(SimRadio::memorySize);
    datFile::load(stage.file("before.dat"), backup);
    if (const int at = firstDifference(backup.bytes(), before, last); at >= 0) {
        return fmt::format("the backup differs at {:04X}", at);
    }
    return restoring(stage, station, "restore --verify --from @before.dat", before, last);
}

/// One of two radios that are alike but for their last block.
Bytes memoryOfOne(std::uint8_t which, int last) {
    Bytes memory = memoryBefore();
    std::fill_n(memory.begin() + last - 9, 10, which);
    return memory;
}

std::string killBothAndRestore(const KilledWriteCase& job) {
    Stage stage(job.lastAddress);
    const std::array before{memoryOfOne(1, job.lastAddress), memoryOfOne(2, job.lastAddress)};
    std::array<Station, 2> stations{Station(before[0]), Station(before[1])};
    for (Station& station : stations) {
        const auto killed = stage.with(station, "write @a.dat --keep-copy", job.exchange);
        if (killed.code != -SIGKILL) {
            return "not killed: " + killed.err;
        }
    }
    std::string trouble;
    for (std::size_t i = 0; i < stations.size() && trouble.empty(); ++i) {
        trouble =
            restoring(stage, stations.at(i), "restore --verify", before.at(i), job.lastAddress);
    }
    return trouble;
}

}  // namespace

std::string killedWrite(const KilledWriteCase& job) {
    // A machine that is too busy for the line spoils a session; then once more.
    constexpr int rounds = 5;
    const Bytes before = memoryBefore();
    std::string trouble = "not killed";
    for (int round = 0; round < rounds && trouble.starts_with("not killed"); ++round) {
        Stage stage(job.lastAddress);
        Station station(before);
        const auto killed = stage.with(station, "write @a.dat --backup @before.dat", job.exchange);
        trouble = killed.code == -SIGKILL ? afterKilling(stage, station, before, job.lastAddress)
                                          : "not killed: " + killed.err;
    }
    return trouble;
}

std::string twoKilledWrites(const KilledWriteCase& job) {
    constexpr int rounds = 5;
    std::string trouble = "not killed";
    for (int round = 0; round < rounds && trouble.starts_with("not killed"); ++round) {
        trouble = killBothAndRestore(job);
    }
    return trouble;
}

}  // namespace k520::test
