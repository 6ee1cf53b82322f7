// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/deviceNames.h"

#include <gmock/gmock.h>

#include "link/port/posix/usbDevice.h"
#include "support/Raised.h"
#include "support/TempFolder.h"

namespace k520 {
namespace {

namespace fs = std::filesystem;

TEST(DeviceNames, FollowThePlatform) {
    using deviceNames::Platform;
    using deviceNames::platformDevice;
    const std::pair<std::int16_t, const char*> devices[] = {
        {1, "/dev/ttyS0"},   {4, "/dev/ttyS3"},   {5, "/dev/ttyACM0"},
        {8, "/dev/ttyACM3"}, {9, "/dev/ttyUSB0"}, {16, "/dev/ttyUSB7"}};
    for (const auto& [number, device] : devices) {
        EXPECT_EQ(platformDevice(Platform::gnuLinux, number), device);
    }
    EXPECT_EQ(platformDevice(Platform::windows, 12), "COM12");
    EXPECT_EQ(test::raised([] { return platformDevice(Platform::gnuLinux, 17); }),
              errNum::subscript);
}

TEST(UsbDevice, ItsNameComesFromTheSystemsTree) {
    const test::TempFolder folder;
    const fs::path cable = folder.write("ttyUSB7", "");
    fs::create_directories(folder / "hub/cable/tty");
    fs::create_directories(folder / "class/ttyUSB7");
    fs::create_symlink(folder / "hub/cable/tty", folder / "class/ttyUSB7/device");
    for (const char* file : {"hub/product", "hub/idVendor", "hub/cable/idVendor"}) {
        folder.write(file, "Hub\n");
    }
    EXPECT_EQ(usbDevice::description(cable, folder / "class"), "");
    folder.write("hub/cable/product", "Serial Cable\n");
    folder.write("hub/cable/manufacturer", "Maker\n");
    fs::create_symlink(cable, folder / "link");
    EXPECT_EQ(usbDevice::description(folder / "link", folder / "class"), "Maker Serial Cable");
}

}  // namespace
}  // namespace k520
