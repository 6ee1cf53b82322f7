// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include "base/Checked.h"
#include "base/Interrupt.h"
#include "base/RuntimeError.h"
#include "cli/Failure.h"
#include "cli/commands.h"
#include "cli/document.h"
#include "cli/output.h"
#include "cli/program.h"
#include "cli/sessionTexts.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/port/deviceLink.h"
#include "link/simulator/ptyRadio.h"
#include "link/simulator/simRadio.h"
#include "link/simulator/virtualRadio.h"

namespace k520::cli {

namespace {

using std::chrono::milliseconds;

constexpr std::uint32_t highestBaud = 4'000'000;
constexpr std::uint32_t usualDelay = 100;

std::optional<std::uint32_t> parseCount(std::string_view text) {
    const auto value = parseWhole(text);
    return value && *value > 0 ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

[[noreturn]] void refuseCount(std::string_view name, const std::string& text) {
    refuse(say(texts::notANumberFromOne, name, text));
}

std::optional<std::uint32_t> countOf(const Arguments& arguments, ArgumentName name) {
    const auto text = arguments.get(name);
    if (!text) {
        return std::nullopt;
    }
    const auto count = parseCount(*text);
    if (!count) {
        refuseCount(name.text(), *text);
    }
    return count;
}

void addByteFault(const Arguments& arguments, ArgumentName name, ByteFaultKind kind,
                  std::vector<ByteFault>& faults) {
    if (const auto byte = countOf(arguments, name)) {
        faults.push_back({.kind = kind, .byte = *byte});
    }
}

void addDelay(const Arguments& arguments, SimFaults& faults) {
    const auto text = arguments.get("delay");
    if (!text) {
        return;
    }
    const auto colon = text->find(':');
    const auto byte = parseCount(std::string_view(*text).substr(0, colon));
    const auto time = colon == std::string::npos
                          ? std::optional(usualDelay)
                          : parseCount(std::string_view(*text).substr(colon + 1));
    if (!byte || !time) {
        refuse(say(texts::notADelay, *text));
    }
    faults.replyBytes.push_back(
        {.kind = ByteFaultKind::delay, .byte = *byte, .by = milliseconds(*time)});
}

SimFaults faultsOf(const Arguments& arguments) {
    SimFaults faults;
    addByteFault(arguments, "lose", ByteFaultKind::lose, faults.replyBytes);
    addByteFault(arguments, "corrupt", ByteFaultKind::corrupt, faults.replyBytes);
    addByteFault(arguments, "add", ByteFaultKind::repeat, faults.replyBytes);
    addByteFault(arguments, "lose-request", ByteFaultKind::lose, faults.requestBytes);
    addByteFault(arguments, "corrupt-request", ByteFaultKind::corrupt, faults.requestBytes);
    addDelay(arguments, faults);
    faults.silentFrom = countOf(arguments, "silent-from");
    faults.failAttempts = countOf(arguments, "fail-first").value_or(0);
    faults.goneAfter = countOf(arguments, "unplug-after");
    faults.forgottenBlock = countOf(arguments, "forget");
    if (const auto from = countOf(arguments, "babble-from")) {
        faults.babble = Babble{.from = *from};
    }
    return faults;
}

int baudOf(const Arguments& arguments) {
    const auto baud = countOf(arguments, "baud");
    if (baud && *baud > highestBaud) {
        refuse(say(texts::baudTooHigh, *baud, highestBaud));
    }
    return static_cast<int>(baud.value_or(SimRadio::usualBaud));
}

std::vector<std::uint8_t> memoryOf(const Arguments& arguments) {
    const auto image = arguments.get("image");
    if (!image) {
        return virtualRadio::firstMemory();
    }
    startConfiguration(DefaultImage::helpful);
    openDocument(*image, ShortFile::warn);
    const auto bytes = modIicDat::IicDat().bytes();
    return {bytes.begin(), bytes.end()};
}

/// The radio's memory as a data file: as it is, without a way through the tables.
void store(const SimRadio& radio, const std::string& path) {
    MemoryImage image(radio.memory().size());
    std::copy(radio.memory().begin(), radio.memory().end(), image.bytes().begin());
    datFile::save(path, image);
}

void storeOrWarn(const SimRadio& radio, const std::string& path) {
    try {
        store(radio, path);
    } catch (const RuntimeError& error) {
        warn(say(texts::memoryNotStored, error.source()));
    }
}

/// Until a signal, or until the radio has gone away.
void play(PtyRadio& terminal) {
    while (!interrupt::noted() && terminal.step(milliseconds(1000))) {
    }
}

void report(const SimRadio& radio) {
    for (const auto& complaint : radio.complaints()) {
        printError(say(texts::protocolComplaint, complaint));
    }
    const auto& counters = radio.counters();
    printError(say(texts::simulatorCounts, counters.attempts, counters.reads, counters.writes,
                   counters.complaints));
}

}  // namespace

int runSimulate(const Arguments& arguments) {
    const auto faults = faultsOf(arguments);
    const int baud = baudOf(arguments);
    const auto save = arguments.get("save");
    if (save) {
        checkSavable(*save);
    }
    try {
        const auto radio = std::make_shared<SimRadio>(memoryOf(arguments), faults, baud);
        Subscription saving;
        if (save) {
            saving = radio->onWriteCompleted.subscribe([&] { storeOrWarn(*radio, *save); });
        }
        PtyRadio terminal(radio);
        std::optional<DeviceLink> link;
        if (const auto path = arguments.get("link")) {
            link.emplace(*path, terminal.devicePath());
        }
        print("port: " + terminal.devicePath() + "\n");
        flushOutput();
        play(terminal);
        report(*radio);
        if (save) {
            store(*radio, *save);
        }
        return exitDone;
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

}  // namespace k520::cli
