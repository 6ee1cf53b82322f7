// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/virtualRadio.h"

#include "support/ProgramFolder.h"
#include "support/Raised.h"
#include "support/SimulatedClock.h"

namespace k520 {
namespace {

/// The port "virtual".
class VirtualRadio : public test::ProgramFolder {
  protected:
    static std::span<std::uint8_t> memory() { return virtualRadio::state().radio->memory(); }

    test::SimulatedClock clock;
    std::unique_ptr<SerialPort> port = virtualRadio::makePort();
};

TEST_F(VirtualRadio, StartsFromTheDefaultImageWithChannelsOfItsOwn) {
    folder.write(mdimoduMain::defaultImageFileName, std::string(0x90, '\x11'));
    port->open();
    const std::vector<std::uint8_t> channels{
        0x00, 0x00, 0x35, 0x43, 0x00, 0x00, 0x45, 0x43,  // 433.5, 434.5
        0x13, 0x28, 0x13, 0x28, 0x11, 0x11, 0x11, 0x11,  // D023N both ways
        0x00, 0x25, 0x01, 0x46, 0xFF, 0xFF, 0xFF, 0xFF,  // 460.125, no transmission
        0xFF, 0xFF, 0xFF, 0xFF, 0x11, 0x11, 0x11, 0x11,
    };
    EXPECT_TRUE(std::ranges::equal(memory().subspan(0x70, channels.size()), channels));
    EXPECT_TRUE(memory()[0x59] == 0x02 && memory()[0x58] == 0x9E) << "67.0";
}

TEST_F(VirtualRadio, KeepsItsMemoryBetweenSessionsAndOnlyWhenItChanged) {
    port->open();
    port->close();
    EXPECT_TRUE(folder.names().empty());

    port->open();
    memory()[0x123] = 0x45;
    port.reset();
    virtualRadio::state() = {};
    port = virtualRadio::makePort();
    port->open();
    EXPECT_EQ(memory()[0x123], 0x45);
}

TEST_F(VirtualRadio, SaysWhenItsMemoryCannotBeReadOrKept) {
    std::filesystem::create_directory(folder / virtualRadio::fileName);
    EXPECT_EQ(test::raised([&] { port->open(); }), errNum::pathAccess);
    EXPECT_FALSE(port->isOpen());
    std::filesystem::remove(folder / virtualRadio::fileName);

    port->open();
    memory()[0] = 1;
    std::filesystem::remove(folder.path());
    std::ofstream(folder.path()) << "no folder any more";
    EXPECT_THAT([&] { port->close(); }, testing::ThrowsMessage<RuntimeError>(testing::HasSubstr(
                                            "folder " + folder.path().string())));
    EXPECT_FALSE(port->isOpen());
}

}  // namespace
}  // namespace k520
