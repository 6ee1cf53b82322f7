// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/comPorts.h"

#include "app/programFolder.h"
#include "link/port/platformPort.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/virtualPort.h"
#include "support/ProgramFolder.h"

namespace k520::comPorts {
namespace {

using testing::HasSubstr;

using Ports = test::ProgramFolder;

TEST_F(Ports, TheSettingsNameOtherDevicesThanThePlatform) {
    EXPECT_EQ(devicePath(12), platformPort::deviceOf(12));
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

}  // namespace
}  // namespace k520::comPorts
