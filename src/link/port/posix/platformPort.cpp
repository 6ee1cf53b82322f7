// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/platformPort.h"

#include "link/port/deviceNames.h"
#include "link/port/posix/posixPort.h"
#include "link/port/posix/usbDevice.h"

namespace k520::platformPort {

namespace {

using deviceNames::Platform;

#ifdef __APPLE__
constexpr Platform thisPlatform = Platform::macOs;
#else
constexpr Platform thisPlatform = Platform::gnuLinux;
#endif

}  // namespace

std::string deviceOf(std::int16_t number) {
    return deviceNames::platformDevice(thisPlatform, number);
}

std::unique_ptr<SerialPort> make(const std::string& device) {
    return std::make_unique<PosixPort>(device);
}

std::string description(const std::string& device) {
    return usbDevice::description(device);
}

}  // namespace k520::platformPort
