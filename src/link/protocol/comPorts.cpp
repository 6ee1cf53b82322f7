// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/comPorts.h"

#include <exception>
#include <optional>

#include "app/Guard.h"
#include "app/settingsStore.h"
#include "base/ModuleState.h"
#include "link/port/platformPort.h"
#include "link/port/portTexts.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualPort.h"
#include "link/simulator/virtualRadio.h"

namespace k520::comPorts {

namespace {

using deviceNames::portName;
using deviceNames::requireNumber;

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

std::string devicePath(std::int16_t number) {
    requireNumber(number);
    const std::string device = settingsStore::read("Ports", portName(number), "");
    return device.empty() ? platformPort::deviceOf(number) : device;
}

std::unique_ptr<SerialPort> portForDevice(const std::string& device) {
    if (device.empty()) {
        throw RuntimeError(errNum::deviceUnavailable, say(texts::noDeviceForPort));
    }
    if (device == VirtualPort::name) {
        return virtualRadio::makePort();
    }
    return platformPort::make(device);
}

PortMaker defaultPortMaker() {
    return [](std::int16_t number) { return portForDevice(devicePath(number)); };
}

std::string deviceDescription(const std::string& device) {
    return device == VirtualPort::name ? say(texts::simulatedRadio)
                                       : platformPort::description(device);
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

void usePort(std::int16_t number) {
    modCommun::state().portNumber = number;
}

void useDevice(const std::string& device) {
    modCommun::state().portMaker = [device](std::int16_t) { return portForDevice(device); };
}

void storePort(std::int16_t number) {
    usePort(number);
    settingsStore::write("Setting", "COM", numberText(number));
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
