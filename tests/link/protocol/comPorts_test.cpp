// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/comPorts.h"

#include "app/programFolder.h"
#include "link/port/posix/usbDevice.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualPort.h"
#include "support/ProgramFolder.h"

namespace k520::comPorts {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using Ports = test::ProgramFolder;

TEST_F(Ports, DevicesFollowThePlatformUnlessTheSettingsNameOne) {
    const std::pair<std::int16_t, const char*> devices[] = {
        {1, "/dev/ttyS0"},   {4, "/dev/ttyS3"},   {5, "/dev/ttyACM0"},
        {8, "/dev/ttyACM3"}, {9, "/dev/ttyUSB0"}, {16, "/dev/ttyUSB7"}};
    for (const auto& [number, device] : devices) {
        EXPECT_EQ(deviceNames::platformDevice(deviceNames::Platform::gnuLinux, number), device);
    }
    EXPECT_EQ(deviceNames::platformDevice(deviceNames::Platform::windows, 12), "COM12");
    settings("[Ports]\ncom2 = virtual\nCOM3=/gone/x y\n");
    EXPECT_EQ(describe(2).description, "simulated radio");
    EXPECT_TRUE(describe(2).usable);
    EXPECT_EQ(describe(3).device, "/gone/x y");
    EXPECT_FALSE(describe(3).usable);
    EXPECT_THAT(describe(3).reason, HasSubstr("no such device"));
    EXPECT_EQ(test::raised([] { return devicePath(17); }), errNum::subscript);
    EXPECT_FALSE(ProbeCom(17));
}

TEST_F(Ports, HighestUsablePortIsChosenAndStored) {
    std::string usable;
    const auto radio = std::make_shared<SimRadio>();
    modCommun::state().portMaker = [&](std::int16_t number) -> std::unique_ptr<SerialPort> {
        if (usable.find(std::to_string(number)) == std::string::npos) {
            throw RuntimeError(errNum::fileNotFound, "no such device");
        }
        return std::make_unique<VirtualPort>(radio);
    };
    modCommun::state().portNumber = 5;
    AutoSetPort();
    EXPECT_EQ(modCommun::state().portNumber, 5);
    EXPECT_TRUE(folder.names().empty());
    usable = "1 3";
    AutoSetPort();
    EXPECT_EQ(modCommun::state().portNumber, 3);
    EXPECT_THAT(folder.read(programFolder::settingsFileName), HasSubstr("COM= 3\n"));
    EXPECT_EQ(state().probeTable(3), 1);
    EXPECT_EQ(state().probeTable(16), -1);
    EXPECT_EQ(failure(), "");
}

TEST_F(Ports, NamesOfUsbDevicesComeFromTheSystemsTree) {
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
}  // namespace k520::comPorts
