// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/Checked.h"
#include "link/port/SerialPort.h"
#include "link/port/deviceNames.h"

/// The sixteen ports COM1 to COM16, the devices that they stand for, and which of them can be
/// opened.
namespace k520::comPorts {

using deviceNames::firstPort;
using deviceNames::lastPort;

struct State {
    /// By port number: 1 when the last probe could open the port, -1 when not, 0 before the first.
    BoundedArray<std::int16_t, firstPort, lastPort> probeTable;
};

[[nodiscard]] State& state();

/// The device of a port number: what section "Ports" of the settings file gives for it
/// ("COM1=/dev/ttyUSB0", "COM2=virtual"), else the platform's. Raises 9 outside 1..16.
[[nodiscard]] std::string devicePath(std::int16_t number);

/// A port object for a device: "virtual" or a path. Nothing is opened. Raises 68 for an empty text.
[[nodiscard]] std::unique_ptr<SerialPort> portForDevice(const std::string& device);

/// Makes the port that devicePath names.
[[nodiscard]] PortMaker defaultPortMaker();

/// What a device says of itself: maker and product of the USB device, "simulated radio",
/// or nothing.
[[nodiscard]] std::string deviceDescription(const std::string& device);

struct PortInfo {
    std::int16_t number = 0;
    std::string name;  ///< "COM3"
    std::string device;
    std::string description;
    bool usable = false;
    std::string reason;  ///< why it is not usable, in the words of the error that opening raised
    std::int16_t errorNumber = 0;  ///< that error's number
};

/// Describes a port and tries to open it. Raises 9 outside 1..16.
[[nodiscard]] PortInfo describe(std::int16_t number);

/// Opens and closes a port and notes the result in the probe table; returns whether both went
/// well. Nothing is reported. A number outside 1..16 is never usable and has no entry.
bool ProbeCom(std::int16_t number);

/// Makes a number the port number: the port that sessions open from here on. There is one link, and
/// OpenCom takes the number from its state; so a session is not given a port of its own. Nobody
/// else writes it.
void usePort(std::int16_t number);

/// Makes sessions open a device ("virtual" or a path) whatever the port number is.
void useDevice(const std::string& device);

/// usePort, and stores the number under "COM".
void storePort(std::int16_t number);

/// Probes all ports. The highest usable one becomes the port number and is stored; without a usable
/// port nothing changes. Label "mdifrmMain->AutoSetPort".
void AutoSetPort();

}  // namespace k520::comPorts
