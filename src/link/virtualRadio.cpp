// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/virtualRadio.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>

#include "app/Files.h"
#include "app/RuntimeError.h"
#include "app/mdimoduMain.h"
#include "link/virtualPort.h"

namespace k520::virtualRadio {

namespace {

namespace fs = std::filesystem;

// A channel record: receive and transmit frequency as eight BCD digits in units of 10 Hz, decode
// and encode tone; everything with its least significant byte first, all FF for "none". Record n
// stands at n * 16.
constexpr std::size_t recordLength = 16;
constexpr std::size_t frequencyLength = 4;
constexpr std::size_t toneLength = 2;

/// A frequency in units of 10 Hz.
constexpr std::uint32_t megahertz(double value) {
    return static_cast<std::uint32_t>(value * 100'000 + 0.5);
}

/// The tone word of a CTCSS tone in Hz, of a DCS code of normal polarity (in octal), and of none.
constexpr std::uint16_t ctcss(double hertz) {
    return static_cast<std::uint16_t>(hertz * 10 + 0.5);
}
constexpr std::uint16_t dcsNormal(unsigned code) {
    return static_cast<std::uint16_t>(0x2800U | code);
}
constexpr std::uint16_t noTone = 0xFFFF;

struct SampleChannel {
    std::size_t number;
    std::uint32_t receive;
    std::optional<std::uint32_t> transmit;
    std::uint16_t decode;
    std::uint16_t encode;
};

constexpr std::array sampleChannels{
    SampleChannel{5, megahertz(446.00625), megahertz(446.00625), ctcss(67.0), ctcss(67.0)},
    SampleChannel{6, megahertz(446.01875), megahertz(446.01875), noTone, ctcss(67.0)},
    SampleChannel{7, megahertz(433.5), megahertz(434.5), dcsNormal(0023), dcsNormal(0023)},
    SampleChannel{8, megahertz(460.125), std::nullopt, noTone, noTone},
};

void putFrequency(std::span<std::uint8_t> field, std::uint32_t frequency) {
    for (std::uint8_t& byte : field) {
        byte = static_cast<std::uint8_t>(frequency / 10 % 10 * 16 + frequency % 10);
        frequency /= 100;
    }
}

void putTone(std::span<std::uint8_t> field, std::uint16_t word) {
    field[0] = static_cast<std::uint8_t>(word & 0xFF);
    field[1] = static_cast<std::uint8_t>(word >> 8);
}

void putChannel(std::span<std::uint8_t> memory, const SampleChannel& channel) {
    const auto record = memory.subspan(channel.number * recordLength, recordLength);
    putFrequency(record.first(frequencyLength), channel.receive);
    const auto transmit = record.subspan(frequencyLength, frequencyLength);
    std::ranges::fill(transmit, std::uint8_t{0xFF});
    if (channel.transmit) {
        putFrequency(transmit, *channel.transmit);
    }
    const auto tones = record.subspan(2 * frequencyLength, 2 * toneLength);
    putTone(tones.first(toneLength), channel.decode);
    putTone(tones.last(toneLength), channel.encode);
}

/// A file's bytes, as many as a radio holds, or nothing where there is no file.
std::optional<std::vector<std::uint8_t>> readIfThere(const fs::path& path) {
    try {
        return files::read(path, SimRadio::memorySize).bytes;
    } catch (const RuntimeError& error) {
        if (error.number() != errNum::fileNotFound) {
            throw;
        }
        return std::nullopt;
    }
}

/// The port that carries the memory between the radio and its file.
class KeepingPort : public VirtualPort {
  public:
    KeepingPort() : VirtualPort(state().radio) {}
    KeepingPort(const KeepingPort&) = delete;
    KeepingPort& operator=(const KeepingPort&) = delete;
    ~KeepingPort() override {
        try {
            KeepingPort::close();
        } catch (const RuntimeError&) {
            // Whoever wants to know closes the port first.
        }
    }

    void open() override {
        VirtualPort::open();
        path_ = mdimoduMain::state().programFolder / fileName;
        try {
            const auto stored = readIfThere(path_);
            radio().setMemory(stored ? *stored : firstMemory());
        } catch (const RuntimeError&) {
            VirtualPort::close();
            throw;
        }
        before_.assign(radio().memory().begin(), radio().memory().end());
    }

    void close() override {
        const bool changed = isOpen() && !std::ranges::equal(radio().memory(), before_);
        VirtualPort::close();
        if (changed) {
            keep();
        }
    }

  private:
    void keep() {
        try {
            files::replace(path_, radio().memory());
        } catch (const RuntimeError& error) {
            throw RuntimeError(error.number(),
                               "the simulated radio cannot keep its memory in the folder " +
                                   path_.parent_path().string() + ": " + error.source());
        }
    }

    fs::path path_;
    std::vector<std::uint8_t> before_;
};

}  // namespace

State& state() {
    static State instance;
    return instance;
}

std::vector<std::uint8_t> firstMemory() {
    const auto image = readIfThere(mdimoduMain::findFile(mdimoduMain::defaultImageFileName));
    std::vector<std::uint8_t> memory = image.value_or(std::vector<std::uint8_t>{});
    memory.resize(SimRadio::memorySize, 0xFF);
    for (const SampleChannel& channel : sampleChannels) {
        putChannel(memory, channel);
    }
    return memory;
}

std::unique_ptr<SerialPort> makePort() {
    return std::make_unique<KeepingPort>();
}

}  // namespace k520::virtualRadio
