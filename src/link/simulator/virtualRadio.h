// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "link/port/SerialPort.h"
#include "link/simulator/simRadio.h"

/// The simulated radio that the program offers as port "virtual". It keeps its memory in the
/// program folder between runs, as a radio does.
namespace k520::virtualRadio {

/// The memory's file in the program folder: raw memory, address 0 first.
inline constexpr const char* fileName = "virtual-radio.bin";

struct State {
    /// The one radio of this process; its memory is the file's while a port to it is open.
    std::shared_ptr<SimRadio> radio = std::make_shared<SimRadio>();
};

[[nodiscard]] State& state();

/// What a radio holds that was never written: the default image, FF where it ends, and a few
/// channels of its own, so that a first read visibly changes something.
[[nodiscard]] std::vector<std::uint8_t> firstMemory();

/// A port to the radio. open() also loads the memory from the file (firstMemory() without one) and
/// raises when there is one that cannot be read; close() also stores the memory where it changed
/// since, and raises when that fails, naming the folder.
[[nodiscard]] std::unique_ptr<SerialPort> makePort();

}  // namespace k520::virtualRadio
