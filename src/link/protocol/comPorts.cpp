// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/comPorts.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <exception>
#include <fstream>
#include <optional>
#include <system_error>
#include <vector>

#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "base/ModuleState.h"
#include "link/port/portTexts.h"
#include "link/port/posixPort.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualPort.h"
#include "link/simulator/virtualRadio.h"

namespace k520::comPorts {

namespace {

namespace fs = std::filesystem;

#if defined(_WIN32)
constexpr Platform thisPlatform = Platform::windows;
#elif defined(__APPLE__)
constexpr Platform thisPlatform = Platform::macOs;
#else
constexpr Platform thisPlatform = Platform::gnuLinux;
#endif

std::string portName(std::int16_t number) {
    return fmt::format("COM{}", number);
}

void requireNumber(std::int16_t number) {
    if (number < firstPort || number > lastPort) {
        throwSubscript("COM", number);
    }
}

struct DeviceRun {
    std::int16_t firstNumber;
    std::string_view prefix;
};

/// The ports of cables stand highest, because the highest usable port is chosen.
constexpr std::array<DeviceRun, 3> linuxRuns{{
    {9, "/dev/ttyUSB"},
    {5, "/dev/ttyACM"},
    {1, "/dev/ttyS"},
}};

std::string linuxDevice(std::int16_t number) {
    const auto* run = std::ranges::find_if(
        linuxRuns, [&](const DeviceRun& row) { return number >= row.firstNumber; });
    return fmt::format("{}{}", run->prefix, number - run->firstNumber);
}

std::string macDevice(std::int16_t number) {
    std::vector<std::string> devices;
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator("/dev", unreadable)) {
        if (entry.path().filename().string().starts_with("cu.")) {
            devices.push_back(entry.path().string());
        }
    }
    std::ranges::sort(devices);
    const auto index = static_cast<std::size_t>(number - firstPort);
    return index < devices.size() ? devices[index] : std::string();
}

/// The first line of a small file; empty where there is none.
std::string firstLine(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return std::string(trimBlanks(line));
}

/// Opens a port and closes it; what went wrong, or nothing.
std::optional<RuntimeError> troubleWith(std::int16_t number) {
    try {
        const auto port = modCommun::makePort(number);
        port->open();
        port->close();
        return std::nullopt;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::exception& error) {
        return RuntimeError(errNum::internal, error.what());
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::string platformDevice(Platform platform, std::int16_t number) {
    requireNumber(number);
    switch (platform) {
        case Platform::gnuLinux:
            return linuxDevice(number);
        case Platform::macOs:
            return macDevice(number);
        case Platform::windows:
            break;
    }
    return portName(number);
}

std::string devicePath(std::int16_t number) {
    requireNumber(number);
    const std::string device = mdimoduMain::readSetting("Ports", portName(number), "");
    return device.empty() ? platformDevice(thisPlatform, number) : device;
}

std::unique_ptr<SerialPort> portForDevice(const std::string& device) {
    if (device.empty()) {
        throw RuntimeError(errNum::deviceUnavailable, say(texts::noDeviceForPort));
    }
    if (device == VirtualPort::name) {
        return virtualRadio::makePort();
    }
    return std::make_unique<PosixPort>(device);
}

PortMaker defaultPortMaker() {
    return [](std::int16_t number) { return portForDevice(devicePath(number)); };
}

std::string deviceDescription(const std::string& device, const fs::path& terminals) {
    if (device == VirtualPort::name) {
        return say(texts::simulatedRadio);
    }
    std::error_code missing;
    const fs::path name = fs::canonical(device, missing).filename();
    fs::path folder = fs::canonical(terminals / name / "device", missing);
    if (missing) {
        return {};
    }
    // The USB device is the nearest ancestor that has a vendor; its hub, further up, has one too.
    while (folder.has_relative_path() && !fs::exists(folder / "idVendor", missing)) {
        folder = folder.parent_path();
    }
    const std::string text =
        firstLine(folder / "manufacturer") + " " + firstLine(folder / "product");
    return std::string(trimBlanks(text));
}

PortInfo describe(std::int16_t number) {
    PortInfo info;
    info.number = number;
    info.name = portName(number);
    info.device = devicePath(number);
    info.description = deviceDescription(info.device);
    const auto trouble = troubleWith(number);
    info.usable = !trouble;
    if (trouble) {
        info.reason = trouble->source();
        info.errorNumber = trouble->number();
    }
    return info;
}

bool ProbeCom(std::int16_t number) {
    if (number < firstPort || number > lastPort) {
        return false;
    }
    const bool usable = !troubleWith(number);
    state().probeTable(number) = usable ? 1 : -1;
    return usable;
}

void storePort(std::int16_t number) {
    modCommun::state().portNumber = number;
    mdimoduMain::writeSetting("Setting", "COM", numberText(number));
}

void AutoSetPort() {
    guarded("mdifrmMain->AutoSetPort", [] {
        std::optional<std::int16_t> highest;
        for (std::int16_t number = firstPort; number <= lastPort; ++number) {
            if (ProbeCom(number)) {
                highest = number;
            }
        }
        if (highest) {
            storePort(*highest);
        }
    });
}

}  // namespace k520::comPorts
