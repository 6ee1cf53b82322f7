// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/posix/usbDevice.h"

#include <fstream>
#include <system_error>

#include "base/Checked.h"

namespace k520::usbDevice {

namespace {

namespace fs = std::filesystem;

/// The first line of a small file; empty where there is none.
std::string firstLine(const fs::path& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return std::string(trimBlanks(line));
}

}  // namespace

std::string description(const std::string& device, const fs::path& terminals) {
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

}  // namespace k520::usbDevice
