// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <random>

#include "app/programFolder.h"
#include "link/simulator/virtualRadio.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

using us = std::chrono::microseconds;
using Bytes = std::vector<std::uint8_t>;

const Bytes greeting{0x50, 0x52, 0x4F, 0x47, 0x52, 0x41, 0x4D};
const Bytes endOfRead{0x45, 0x5A, 0xA5, 0x32, 0x23, 0x45, 0xF2};
const Bytes acknowledge{0x06};
constexpr us longAfter{1'000'000};

/// A memory in which every address has bytes of its own.
const Bytes telling = [] {
    Bytes memory(SimRadio::memorySize);
    std::ranges::generate(memory, std::minstd_rand());
    return memory;
}();

/// A computer that waits long enough for every answer, and longer than the pause limit.
struct Host {
    explicit Host(const Bytes& memory = telling, const SimFaults& faults = {})
        : radio(memory, faults) {}
    Bytes exchange(const Bytes& frame) {
        radio.receive(frame, now);
        now += longAfter;
        return radio.takeDue(now);
    }
    void handshake(int frames = 2) {
        for (int i = 0; i < frames; ++i) {
            EXPECT_EQ(exchange(i == 0 ? greeting : acknowledge), acknowledge);
        }
    }

    SimRadio radio;
    us now{0};
};

/// A block frame, its address formed as the computer forms it.
Bytes block(int command, int address, int length, const Bytes& data = {}) {
    Bytes frame;
    for (const int byte : {command, address / 1024 * 16 + address % 1024 / 256, address, length}) {
        frame.push_back(static_cast<std::uint8_t>(byte & 0xFF));
    }
    frame.insert(frame.end(), data.begin(), data.end());
    return frame;
}

TEST(SimRadio, AddressFormComesBackForTheWholeMemory) {
    Host host;
    host.handshake();
    for (int address = 0; address < static_cast<int>(SimRadio::memorySize); ++address) {
        const Bytes data{telling[static_cast<std::size_t>(address)]};
        ASSERT_EQ(host.exchange(block(0x52, address, 1)), block(0x57, address, 1, data));
    }
}

TEST(SimRadio, WholeSessionsChangeTheMemoryAndAreCounted) {
    Host host;
    int completed = 0;
    const auto counting = host.radio.onWriteCompleted.subscribe([&] { ++completed; });
    host.handshake();
    EXPECT_EQ(host.exchange(block(0x57, 0x1FFE, 2, {0xAB, 0xCD})), acknowledge);
    EXPECT_EQ(host.exchange(acknowledge), acknowledge);
    host.handshake();
    EXPECT_EQ(host.exchange(block(0x52, 0x1FFC, 4)),
              block(0x57, 0x1FFC, 4, {telling[0x1FFC], telling[0x1FFD], 0xAB, 0xCD}));
    EXPECT_EQ(host.exchange(endOfRead), Bytes{});
    // A session that is broken off, and one without a block, are none.
    host.handshake();
    EXPECT_EQ(host.exchange(block(0x57, 0, 1, {1})), acknowledge);
    host.handshake();
    EXPECT_EQ(host.exchange(acknowledge), acknowledge);

    EXPECT_EQ(completed, 1);
    // Exchanges, attempts, reads, writes, reply bytes, complaints and request bytes.
    EXPECT_EQ(host.radio.counters(), (SimRadio::Counters{14, 4, 1, 1, 20, 0, 56}));
}

TEST(SimRadio, EveryByteTakesItsTimeOnTheLine) {
    Host host;
    host.handshake();
    SimRadio& radio = host.radio;
    radio.receive(block(0x52, 0, 16), host.now);
    // 4 bytes there and 1 back, 10 bits of 1/9600 s each: 5208.33 us.
    EXPECT_EQ(radio.nextDue(), host.now + us(5209));
    for (const auto& [at, bytes] : {std::pair(5208, 0U), {5209, 1}, {24'999, 18}, {25'000, 1}}) {
        EXPECT_EQ(radio.takeDue(host.now + us(at)).size(), bytes) << at;
    }
    EXPECT_EQ(radio.nextDue(), std::nullopt);

    // A frame written while another is on the line waits for it, and so does its answer.
    host.now += longAfter;
    radio.receive(block(0x52, 0, 16), host.now);
    radio.receive(block(0x52, 16, 16), host.now + us(1));
    EXPECT_EQ(radio.lineBusyUntil(), host.now + us(8334));
    EXPECT_EQ(radio.takeDue(host.now + us(45'833)).size(), 39U);
}

TEST(SimRadio, RefusesBySilenceAndRecordsWhatItRefuses) {
    // The frames of the handshake that go before, what is sent then, and the complaint.
    const std::tuple<int, Bytes, const char*> rows[] = {
        {0, {0x52}, "unknown while asleep: 52"},
        {0, {0x50, 0x52, 0x00}, "unknown while asleep: 50 52 00"},
        {0, {0x50, 0x50, 0x51}, "unknown while asleep: 50 50; unknown while asleep: 50 51"},
        {1, {0x45, 0x06}, "unknown while greeted: 45; unknown while asleep: 06"},
        {3, {0x06}, "unknown while asleep: 06"},
        {2, {0x99}, "unknown while programming: 99"},
        {2, {0x45, 0x5A, 0xA4}, "unknown while programming: 45 5A A4"},
        {2, {0x52, 0x04, 0x00, 0x10}, "bad address form: 52 04 00 10"},
        {2, block(0x52, 0, 0), "bad length: 52 00 00 00"},
        {2, block(0x57, 0, 17), "bad length: 57 00 00 11"},
        {2, block(0x52, 0x1FF8, 16), "outside the memory: 52 73 F8 10"},
        {2, block(0x57, 0x2000, 1, {7}), "outside the memory: 57 80 00 01 07"},
        {2, {0x57, 0x00, 0x10, 0x10, 0xAA}, "frame cut off by a pause: 57 00 10 10 AA"}};
    for (const auto& [handshake, bytes, complaint] : rows) {
        SCOPED_TRACE(complaint);
        Host host;
        host.handshake(handshake);
        EXPECT_EQ(host.exchange(bytes), Bytes{});
        EXPECT_EQ(fmt::format("{}", fmt::join(host.radio.complaints(), "; ")), complaint);
        EXPECT_EQ(host.radio.counters().complaints, host.radio.complaints().size());
        EXPECT_TRUE(std::ranges::equal(host.radio.memory(), telling));
        host.handshake();
    }
}

TEST(SimRadio, GreetingIsFoundBehindNoiseAndPausesAreJudgedByTheirLength) {
    Host host;
    SimRadio& radio = host.radio;
    radio.receive(Bytes{0x50, 0x06, 0x50}, host.now);
    host.handshake();
    // A pause lasts until the next byte has arrived, 1042 us after its writing.
    for (const us pause : {us(48'950), us(48'960)}) {
        radio.receive(Bytes{0x52, 0x00}, host.now);
        radio.receive(Bytes{0x00, 0x01}, radio.lineBusyUntil() + pause);
        host.now += longAfter;
        EXPECT_EQ(radio.takeDue(host.now).size(), pause == us(48'950) ? 5U : 0U);
    }
    radio.receive(Bytes(2 * SimRadio::complaintLimit, 0x99), host.now);
    EXPECT_EQ(radio.complaints().size(), SimRadio::complaintLimit);
    EXPECT_GE(radio.counters().complaints, 2 * SimRadio::complaintLimit);
}

TEST(SimRadio, ByteFaultsHitTheByteTheyName) {
    using enum ByteFaultKind;
    // The handshake's answers are bytes 1 and 2, the reply 57 00 00 02 0A 0B is 3 to 8.
    const std::tuple<std::vector<ByteFault>, Bytes, us> rows[] = {
        {{{lose, 3, 0, {}}}, {0, 0, 2, 0x0A, 0x0B}, us(10'417)},
        {{{corrupt, 7, 0x81, {}}}, {0x57, 0, 0, 2, 0x8B, 0x0B}, us(10'417)},
        {{{add, 8, 0x33, {}}}, {0x57, 0, 0, 2, 0x0A, 0x0B, 0x33}, us(11'459)},
        {{{repeat, 7, 0, {}}}, {0x57, 0, 0, 2, 0x0A, 0x0A, 0x0B}, us(11'459)},
        {{{delay, 4, 0, us(2000)}}, {0x57, 0, 0, 2, 0x0A, 0x0B}, us(12'417)}};
    for (const auto& [faults, expected, end] : rows) {
        Host host({0x0A, 0x0B}, {.replyBytes = faults});
        host.handshake();
        host.radio.receive(block(0x52, 0, 2), host.now);
        const auto butOne = static_cast<std::ptrdiff_t>(expected.size()) - 1;
        EXPECT_EQ(host.radio.takeDue(host.now + end - us(1)),
                  Bytes(expected.begin(), expected.begin() + butOne));
        EXPECT_EQ(host.radio.takeDue(host.now + end), Bytes{expected.back()});
    }
}

TEST(SimRadio, SilenceAndUnplugging) {
    Host silent({}, {.silentFrom = 3});
    silent.handshake();
    EXPECT_EQ(silent.exchange(block(0x57, 0, 1, {1})), Bytes{});
    EXPECT_EQ(silent.radio.memory()[0], 0xFF);

    SimRadio leaving({}, {.goneAfter = 1});
    leaving.receive(greeting, us(0));
    const us out = us(8334) + SimRadio::unplugDelay;
    EXPECT_EQ(leaving.takeDue(us(8334)), acknowledge);
    EXPECT_EQ(leaving.nextDue(), out);
    EXPECT_TRUE(leaving.gone(out) && !leaving.gone(out - us(1)));
    EXPECT_EQ(leaving.goneAt(), out);
    // What is still on the line then is not heard.
    leaving.receive(greeting, out - us(7291));
    EXPECT_EQ(leaving.counters().exchanges, 1U);
    leaving = SimRadio({}, {.goneAfter = 1});
    EXPECT_EQ(leaving.goneAt(), std::nullopt);

    // Noise stops with the cable, ten milliseconds after the answer.
    Host noisy({}, {.goneAfter = 1, .babble = Babble{.from = 2}});
    EXPECT_EQ(noisy.exchange(greeting),
              (Bytes{0x06, 0xE2, 0x8D, 0x1B, 0x98, 0x5D, 0x5E, 0x4D, 0xDD, 0x59}));

    SimRadio slow({}, {}, 0);
    slow.receive(acknowledge, us(0));
    EXPECT_EQ(slow.lineBusyUntil(), std::chrono::seconds(10)) << "not faster than a bit a second";
}

TEST(SimRadio, RequestBytesBlocksAndTheLineFailOnRequest) {
    using enum ByteFaultKind;
    // The handshake is request bytes 1 to 8, a block of two bytes 9 to 14.
    const std::tuple<SimFaults, Bytes, Bytes> rows[] = {
        {{.requestBytes = {{lose, 13, 0, {}}}}, {}, {0, 0}},
        {{.requestBytes = {{corrupt, 14, 0x80, {}}}}, acknowledge, {0x0A, 0x8B}},
        {{.requestBytes = {{add, 13, 0x33, {}}}}, acknowledge, {0x0A, 0x33}},
        {{.forgottenBlock = 1}, acknowledge, {0, 0}}};
    for (const auto& [faults, answer, stored] : rows) {
        Host host(Bytes(2), faults);
        host.handshake();
        EXPECT_EQ(host.exchange(block(0x57, 0, 2, {0x0A, 0x0B})), answer);
        EXPECT_TRUE(std::ranges::equal(host.radio.memory().first(2), stored));
    }

    // Noise fills the second after the greeting's answer, and ends with the next exchange.
    Host noisy({}, {.babble = Babble{.from = 2, .until = 3, .value = 0x55}});
    const Bytes heard = noisy.exchange(greeting);
    EXPECT_EQ(heard[0], 0x06);
    EXPECT_EQ(std::ranges::count(heard, 0x55), 952);
    EXPECT_EQ(noisy.radio.nextDue(), noisy.now + us(1042));
    EXPECT_EQ(noisy.exchange(acknowledge), (Bytes{0x55, 0x06}));
}

/// The port "virtual".
class VirtualRadio : public test::ProgramFolder {
  protected:
    static std::span<std::uint8_t> memory() { return virtualRadio::state().radio->memory(); }

    test::SimulatedClock clock;
    std::unique_ptr<SerialPort> port = virtualRadio::makePort();
};

TEST_F(VirtualRadio, StartsFromTheDefaultImageWithChannelsOfItsOwn) {
    folder.write(programFolder::defaultImageFileName, std::string(0x90, '\x11'));
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
    programFolder::state().own = folder / "named/so/far";
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
