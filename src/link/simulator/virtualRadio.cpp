// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/simulator/virtualRadio.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>

#include "app/programFolder.h"
#include "base/Files.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "channels/channelRecord.h"
#include "channels/frequency.h"
#include "channels/toneCode.h"
#include "link/port/portTexts.h"
#include "link/simulator/virtualPort.h"

namespace k520::virtualRadio {

namespace {

namespace fs = std::filesystem;

/// A channel of the simulated radio: frequencies in MHz (nothing = none), tones as texts.
struct SampleChannel {
    int number;
    double receive;
    std::optional<double> transmit;
    std::string_view decode;
    std::string_view encode;
};

constexpr std::array sampleChannels{
    SampleChannel{5, 446.00625, 446.00625, "67.0", "67.0"},
    SampleChannel{6, 446.01875, 446.01875, "", "67.0"},
    SampleChannel{7, 433.5, 434.5, "D023N", "D023N"},
    SampleChannel{8, 460.125, std::nullopt, "", ""},
};

void putFrequency(std::span<std::uint8_t> field, std::optional<double> mhz) {
    if (!mhz) {
        std::ranges::fill(field, std::uint8_t{0xFF});
        return;
    }
    frequency::toBcd(frequency::fromMhz(*mhz), field.first<channelRecord::frequencyLength>());
}

void putTone(std::span<std::uint8_t> field, std::string_view text) {
    const std::uint16_t word = toneCode::toneWord(text, "");
    field[0] = static_cast<std::uint8_t>(word & 0xFF);
    field[1] = static_cast<std::uint8_t>(word >> 8);
}

void putChannel(std::span<std::uint8_t> memory, const SampleChannel& channel) {
    const auto field = [&](int offset, int length) {
        return memory.subspan(static_cast<std::size_t>(channelRecord::address(channel.number)) +
                                  static_cast<std::size_t>(offset),
                              static_cast<std::size_t>(length));
    };
    putFrequency(field(channelRecord::offset::rx, channelRecord::frequencyLength), channel.receive);
    putFrequency(field(channelRecord::offset::tx, channelRecord::frequencyLength),
                 channel.transmit);
    putTone(field(channelRecord::offset::decode, channelRecord::toneLength), channel.decode);
    putTone(field(channelRecord::offset::encode, channelRecord::toneLength), channel.encode);
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
        } catch (const std::exception&) {
            // Whoever wants to know closes the port first.
        }
    }

    void open() override {
        VirtualPort::open();
        path_ = programFolder::state().own / fileName;
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
        // A program folder that was only named so far is made with the first thing to keep in it.
        std::error_code ignored;
        fs::create_directories(path_.parent_path(), ignored);
        try {
            files::replace(path_, radio().memory());
        } catch (const RuntimeError& error) {
            throw RuntimeError(error.number(), say(texts::memoryNotKept,
                                                   path_.parent_path().string(), error.source()));
        }
    }

    fs::path path_;
    std::vector<std::uint8_t> before_;
};

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::vector<std::uint8_t> firstMemory() {
    const auto image = readIfThere(programFolder::findFile(programFolder::defaultImageFileName));
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
