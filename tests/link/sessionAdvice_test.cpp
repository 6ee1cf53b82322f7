// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/sessionAdvice.h"

#include "app/Text.h"
#include "support/ProgramFolder.h"

namespace k520::sessionAdvice {
namespace {

using modSession::Outcome;
using modSession::Result;
using testing::HasSubstr;
using Entries = std::vector<modShowErr::Entry>;

class SessionAdvice : public test::ProgramFolder {
  protected:
    static std::string in(TextLanguage language, Direction direction, const Result& result,
                          const Entries& logged) {
        setTextLanguage(language);
        return adviceAfter(direction, result, logged);
    }
};

Result with(Outcome outcome, std::int16_t attempts = 0, std::int16_t steps = 0,
            std::optional<std::int16_t> furthest = std::nullopt) {
    Result result;
    result.outcome = outcome;
    result.failedAttempts = attempts;
    result.stepCount = 514;
    result.mostSteps = steps;
    result.furthestAddress = furthest;
    return result;
}

Result failed(std::int16_t attempts, std::int16_t steps = 0,
              std::optional<std::int16_t> furthest = std::nullopt) {
    return with(Outcome::failed, attempts, steps, furthest);
}

Entries opening(std::int16_t number, const std::string& source, const std::string& device = {}) {
    return {{"frmOther->Thing", errNum::fileNotFound, "noise"},
            {"modCommun->OpenCom", number, source, device}};
}

TEST_F(SessionAdvice, TellsCauseStateAndNextStep) {
    constexpr auto read = Direction::read;
    constexpr auto write = Direction::write;
    const Result noPort = with(Outcome::portFailed);
    Result noScript = failed(0);
    noScript.stepCount = 0;
    const Entries gone{{"modCommun->ProtocolCom", errNum::deviceIo, "/dev/x: gone"}};
    const std::tuple<Direction, Result, Entries, std::string, std::string> cases[] = {
        {read, noPort, opening(53, "/dev/x: none; ask", "/dev/x"),
         "no device at the port (/dev/x).", ""},
        {read, noPort, opening(70, "/dev/x: join dialout"), "may not use", "join dialout"},
        {write, noPort, opening(55, "/dev/x: in use by p"), "taken (/dev/x: in use by p)", ""},
        {write, noPort, opening(68, "no device"), "no serial port (no device)", ""},
        {write, noPort, opening(57, "odd"), "cannot be opened (odd)", ""},
        {read, failed(20), {}, "in 20 attempts. Is it switched on", "data here is unchanged"},
        {write, failed(20), {}, "right kind of radio?", "The radio is unchanged."},
        {read, failed(20, 1), {}, "The radio answered", "data here is unchanged"},
        {write, failed(20, 1), {}, "each of 20 attempts", "may be partly written: write again"},
        {read, failed(20, 3, 0x10), {}, "The radio answered", "(read up to 001F): read again"},
        {write, failed(20, 4, 0x20), {}, "The radio answered", "written (up to 002F): write again"},
        {write, failed(20, 4, 0x20), gone, "broke off in the middle (/dev/x: gone)", "002F"},
        {read,
         noScript,
         {{"modCommun->InitProtocol", 9, "script table(521)"}, gone[0]},
         "range cannot be used (script table(521))",
         "data here is unchanged"},
        {read,
         failed(2, 9, 0x40),
         {{"frmCommun->cmdRead_Click", 9, "memory image(80)"}},
         "range cannot be used (memory image(80))",
         "004F"},
        {read, failed(2), {{"frmCommun->cmdRead_Click", 7, "much"}}, "An error ended it: much", ""},
        {write, with(Outcome::stopped, 6, 2, std::int16_t{0}), gone, "Stopped on request.",
         "up to 000F"},
    };
    for (const auto& [direction, result, logged, cause, left] : cases) {
        SCOPED_TRACE(cause);
        const auto english = in(TextLanguage::english, direction, result, logged);
        EXPECT_THAT(english, HasSubstr(cause));
        EXPECT_THAT(english, HasSubstr(left));
        EXPECT_THAT(in(TextLanguage::chinese, direction, result, logged), HasSubstr("。"));
    }
}

TEST_F(SessionAdvice, SuccessIsOneLine) {
    const Result done = with(Outcome::succeeded);
    const auto language = TextLanguage::english;
    EXPECT_EQ(in(language, Direction::read, done, {}), "Radio read: 512 blocks.");
    EXPECT_EQ(in(language, Direction::write, done, {{"modCommun->CloseCom", 61, "disk full"}}),
              "Radio written: 512 blocks. But an error was reported: disk full");
    EXPECT_EQ(in(TextLanguage::chinese, Direction::read, done, {}), "对讲机已读取：512 个数据块。");
    EXPECT_EQ(in(language, Direction::read, with(Outcome::busy), {}), "");
}

}  // namespace
}  // namespace k520::sessionAdvice
