// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/protocol/modCommun.h"

#include <numeric>

#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "image/modIicDat.h"
#include "support/ProgramFolder.h"

namespace k520::modCommun {
namespace {

using std::chrono::milliseconds;
using Bytes = std::vector<std::uint8_t>;

/// Answers one write after another by a script, and records what is done to it.
class FakePort : public SerialPort {
  public:
    void open() override {}
    bool isOpen() const override { return true; }
    void close() override { call("close"); }
    void emptyInput() override { call("emptyInput"); }
    void emptyOutput() override { call("emptyOutput"); }
    void write(std::span<const std::uint8_t> bytes) override {
        call("write");
        written.emplace_back(bytes.begin(), bytes.end());
        arriving = written.size() > replies.size() ? Bytes{} : replies[written.size() - 1];
        arrival = theClock().now() + replyTime;
    }
    std::size_t waiting() override { return theClock().now() >= arrival ? arriving.size() : 0; }
    Bytes readAll() override { return call("readAll"), arriving; }

    std::vector<Bytes> replies, written;
    milliseconds replyTime{0};
    std::string failsAt;
    std::int16_t number = errNum::deviceIo;

  private:
    void call(const std::string& operation) {
        if (failsAt == operation) {
            throw RuntimeError(number, operation);
        }
    }
    Bytes arriving;
    Clock::Microseconds arrival{0};
};

class Commun : public test::ProgramFolder {
  protected:
    /// A fresh link with an open port.
    FakePort& start() {
        state() = {};
        modShowErr::state() = {};
        state().portMaker = [](std::int16_t) { return std::make_unique<FakePort>(); };
        OpenCom();
        std::iota(&state().dataBuffer(1), &state().dataBuffer(100) + 1, std::uint8_t{1});
        return static_cast<FakePort&>(*state().comCommun);
    }
    /// Runs a script; what it has come to: "failed", and labels and numbers of the error list.
    static std::string run(const std::string& script) {
        ConvComCode(script);
        ProtocolCom();
        return errors(state().failureFlag == flagTrue ? "failed " : "");
    }
    static std::string errors(std::string text = "") {
        for (const auto& entry : modShowErr::state().entries) {
            text += entry.label.substr(11) + std::to_string(entry.number) + ' ';
        }
        return text;
    }
    static std::string times(int count, const std::string& text) {
        return count == 0 ? "" : text + times(count - 1, text);
    }

    test::SimulatedClock clock;
};

TEST_F(Commun, RunsScripts) {
    using Frames = std::vector<Bytes>;
    // A script, the replies, what is written, and what it comes to.
    const std::tuple<std::string, Frames, Frames, std::string> cases[] = {
        {"TX5052RX06TX06RX06EN", {{6}, {6}}, {{0x50, 0x52}, {6}}, ""},
        {"TX06RX06TX07RX06TX08EN", {{6}, {7}}, {{6}, {7}}, "failed "},
        {"TX06RX06TX07EN", {}, {{6}}, "failed "},
        {"TX06RX0607EN", {{6}}, {{6}}, "failed "},
        {"TX06RX06TX07RX08EN", {{6, 6}, {8}}, {{6}, {7}}, ""},
        {"TXaAFfRXaFEN", {{0xAF}}, {{0xAA, 0xFF}}, ""},
        {"TX06RXEN", {}, {{6}}, ""},
        {"TX0GTXRFEN", {}, {{0, 0, 0}}, ""},
        {"TX06RXRXVa00EN", {{0, 0, 0}}, {{6}}, ""},
        {"TXVAVARX06TXVAEN", {{6}}, {{1, 2}, {1}}, ""},
        {"RF0102FFWFXX0304TX05RX06RF000102TX07EN", {{6}}, {{5}, {7}}, ""},
        {"RF000000ZZTX02EN", {}, {}, ""},
        {"TX" + times(101, "05") + "EN", {}, {Bytes(101, 5)}, ""},
        {"TX" + times(102, "05") + "EN", {}, {}, "failed ProtocolCom9 "},
        {"TX" + times(101, "VA") + "EN", {}, {}, "failed ProtocolCom9 "},
        {"TX06RX" + times(101, "VA") + "EN", {Bytes(101)}, {{6}}, "failed RxComDat9 "},
        {"TX06RX" + times(102, "00") + "EN", {}, {}, "failed ProtocolCom9 "},
        {times(50, "RF000000"), {}, {}, "failed ProtocolCom9 "},
        {"TX06EN" + times(198, "EN"), {}, {{6}}, "failed ConvComCode9 "}};
    for (const auto& [script, replies, written, result] : cases) {
        FakePort& port = start();
        port.replies = replies;
        EXPECT_EQ(run(script), result) << script;
        EXPECT_EQ(port.written, written) << script;
    }
}

TEST_F(Commun, ReplyDataGoToTheBufferUntilTheFirstDifference) {
    FakePort& port = start();
    port.replies = {{0x57, 0xAA, 0xBB, 0x06, 0xCC, 0xDD}};
    EXPECT_EQ(run("TX52RX57VAVA07VAEN"), "failed ");
    EXPECT_EQ(Bytes(&state().dataBuffer(1), &state().dataBuffer(4)), (Bytes{0xAA, 0xBB, 3}));
    EXPECT_EQ(state().listRtData.lines(),
              (std::vector<std::string>{"Tx: 52 ", "Rx: 57 AA BB 06 ", "    CC ",
                                        "Rx：Communication failed! No receive Data!"}));
}

// Scripts read the trace: it says the same in every language.
TEST_F(Commun, TheTraceKeepsItsWords) {
    for (std::int16_t language = 1; language <= 3; ++language) {
        modSoftFace::FillSoftFace(language);
        EXPECT_EQ(traceLine(modSoftFace::text(SoftText::noReply)),
                  "Rx：Communication failed! No receive Data!");
        EXPECT_EQ(traceLine("Tx: 06"), "Tx: 06");
    }
}

TEST_F(Commun, RepliesMayBeAsLateAsTheAttemptAllows) {
    const std::pair<std::int16_t, int> pollsByAttempt[] = {{0, 11},   {1, 21},   {9, 101},
                                                           {10, 151}, {14, 191}, {15, 151}};
    for (const auto& [attempt, polls] : pollsByAttempt) {
        for (const bool late : {false, true}) {
            SCOPED_TRACE(attempt);
            FakePort& port = start();
            state().attemptCounter = attempt;
            port.replies = {{6}};
            port.replyTime = milliseconds(late ? polls : polls - 1);
            const auto before = clock.now();
            EXPECT_EQ(run("TX06RX06EN"), late ? "failed " : "");
            // 5 ms stand before the phase, and before the look at "EN".
            EXPECT_EQ(clock.now() - before, milliseconds(late ? 5 + polls : 5 + polls - 1 + 5));
        }
    }
}

TEST_F(Commun, TickedStopBoxEndsTheWait) {
    struct : NullView {
        bool stopTicked() override { return true; }
    } view;
    start();
    state().view = &view;
    EXPECT_EQ(run("TX06RX06EN"), "failed ");
    EXPECT_EQ(clock.now(), milliseconds(5 + 1));
}

TEST_F(Commun, TellsTheSameFailureOfThePortOnce) {
    FakePort& port = start();
    port.failsAt = "write";
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(run("TX06EN"), "failed ProtocolCom57 ");
    }
    port.number = errNum::permissionDenied;
    EXPECT_EQ(run("TX06EN"), "failed ProtocolCom57 ProtocolCom70 ") << "in the same words";
    OpenCom();
    static_cast<FakePort&>(*state().comCommun).failsAt = "write";
    EXPECT_EQ(run("TX06EN"), "failed ProtocolCom57 ProtocolCom70 ProtocolCom57 ") << "opened anew";
}

TEST_F(Commun, FailuresOfThePortFailTheStep) {
    for (const char* operation : {"emptyInput", "emptyOutput", "write", "readAll"}) {
        FakePort& port = start();
        port.failsAt = operation;
        port.replies = {{6}};
        const bool receives = port.failsAt == "readAll";
        EXPECT_EQ(run("TX06RX06TX07EN"), receives ? "failed RxComDat57 " : "failed ProtocolCom57 ");
    }
    start().failsAt = "close";
    CloseCom();
    CloseCom();
    EXPECT_EQ(run("TX06EN"), "failed CloseCom57 ProtocolCom68 ");
    EXPECT_EQ(state().portFailureFlag, flagFalse);
    state().portMaker = [](std::int16_t) -> std::unique_ptr<SerialPort> { throw std::bad_alloc(); };
    OpenCom();
    EXPECT_EQ(state().portFailureFlag, flagTrue);
}

TEST_F(Commun, FullDataListStartsOver) {
    start();
    for (int i = 0; i < 3000; ++i) {
        addDataLine("line");
    }
    ComDataShow(0, Bytes{6});
    EXPECT_EQ(state().listRtData.selected(), 3000);
    ComDataShow(0, Bytes{6});
    EXPECT_EQ(state().listRtData.lines(), std::vector<std::string>{"Tx: 06 "});
}

TEST_F(Commun, ListsCoverTheirRangesWholeOrNotAtAll) {
    start();
    modIicDat::state().writeRange = {0x0400, 0x0413};
    InitProtocol();
    const auto& read = state().readList;
    EXPECT_EQ(read.steps(513).script, "TX5273F010RX5773F010VAVAVAVAVAVAVAVAVAVAVAVAVAVAVAVAEN");
    EXPECT_EQ(read.steps(514).script, "TX455AA5322345F2EN");
    const auto& write = state().writeList;
    EXPECT_EQ(write.steps(1).script, "TX50524F4752414DRX06TX06RX06EN");
    EXPECT_EQ(write.steps(3).script, "TX57101004VAVAVAVARX06EN");
    EXPECT_EQ(write.steps(3).size, 16);
    EXPECT_EQ(write.steps(4).script, "TX06RX06EN");

    const std::pair<modIicDat::AddressRange, int> counts[] = {
        {{0, 0x1FFF}, 514}, {{0, 0x205F}, 520}, {{0x3FF0, 0x3FFF}, 3}, {{0x10, 0}, 2},
        {{0, 0x2060}, 0},   {{-1, 5}, 0},       {{0x3FF0, 0x4000}, 0}};
    for (const auto& [range, count] : counts) {
        modIicDat::state().readRange = range;
        InitProtocol();
        EXPECT_EQ(read.count, count) << range.end;
        EXPECT_EQ(write.count, 4);
    }
    EXPECT_EQ(errors(), "InitProtocol9 InitProtocol5 InitProtocol5 ");
}

}  // namespace
}  // namespace k520::modCommun
