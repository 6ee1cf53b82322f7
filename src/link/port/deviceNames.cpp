// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/deviceNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/Checked.h"

namespace k520::deviceNames {

namespace {

namespace fs = std::filesystem;

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

}  // namespace

std::string portName(std::int16_t number) {
    return fmt::format("COM{}", number);
}

void requireNumber(std::int16_t number) {
    if (number < firstPort || number > lastPort) {
        throwSubscript("COM", number);
    }
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

}  // namespace k520::deviceNames
