// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/sessionAdvice.h"

#include "app/modShowErr.h"
#include "base/Text.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "support/ProgramFolder.h"

namespace k520::sessionAdvice {
namespace {

using modSession::Outcome;
using modSession::Result;
using safeguards::Task;
using safeguards::What;
using testing::HasSubstr;
using Entries = std::vector<modShowErr::Entry>;

class SessionAdvice : public test::ProgramFolder {
  protected:
    /// What is said of a plain session.
    static std::string in(TextLanguage language, Direction direction, const Result& result,
                          const Entries& logged) {
        setTextLanguage(language);
        const bool read = direction == Direction::read;
        safeguards::Ending plain;
        plain.task = read ? Task::readOnce : Task::write;
        plain.stage = read ? Stage::read : Stage::write;
        plain.result = result;
        plain.what = safeguards::whatBy(result.outcome);
        const auto notice = noticeOf(plain, logged);
        return plain.good() ? notice.headline + "|" + notice.advice : notice.advice;
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
            {modCommun::procedures::openCom, number, source, device}};
}

TEST_F(SessionAdvice, TellsCauseStateAndNextStep) {
    constexpr auto read = Direction::read;
    constexpr auto write = Direction::write;
    const Result noPort = with(Outcome::portFailed);
    Result noScript = failed(0);
    noScript.stepCount = 0;
    const Entries gone{{modCommun::procedures::protocolCom, errNum::deviceIo, "/dev/x: gone"}};
    const std::tuple<Direction, Result, Entries, std::string, std::string> cases[] = {
        {read, noPort, opening(53, "/dev/x: none; ask", "/dev/x"),
         "no device at the port (/dev/x).", ""},
        {read, noPort, opening(70, "/dev/x: join dialout"), "do not have permission",
         "join dialout"},
        {write, noPort, opening(55, "/dev/x: in use by p"),
         "Another program is using the port (/dev/x: in use by p)", ""},
        {write, noPort, opening(68, "no device"), "not a serial port (no device)", ""},
        {write, noPort, opening(57, "odd"), "cannot be opened (odd)", ""},
        {read, failed(20), {}, "in 20 attempts. Is it switched on", "data here is unchanged"},
        {write, failed(20), {}, "right kind of radio?", "The radio is unchanged."},
        {read, failed(20, 1), {}, "The radio answered", "data here is unchanged"},
        {write, failed(20, 1), {}, "each of 20 attempts", "may be partly written: write again"},
        {read, failed(20, 3, 0x10), {}, "The radio answered", "(read up to 001F): read again"},
        {write, failed(20, 4, 0x20), {}, "The radio answered", "written (up to 002F): write again"},
        {write, failed(20, 4, 0x20), gone, "lost during communication (/dev/x: gone)", "002F"},
        {read,
         noScript,
         {{modCommun::procedures::initProtocol, 9, "script table(521)"}, gone[0]},
         "range cannot be used (script table(521))",
         "data here is unchanged"},
        {read,
         failed(2, 9, 0x40),
         {{"frmCommun->cmdRead_Click", 9, "memory image(80)"}},
         "range cannot be used (memory image(80))",
         "004F"},
        {read,
         failed(2),
         {{"frmCommun->cmdRead_Click", 7, "much"}},
         "ended with an error: much",
         ""},
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
    EXPECT_EQ(in(language, Direction::read, done, {}), "Radio read: 512 blocks.|");
    EXPECT_EQ(
        in(language, Direction::write, done, {{modCommun::procedures::closeCom, 61, "disk full"}}),
        "Radio written: 512 blocks.|But an error was reported: disk full");
    EXPECT_EQ(in(TextLanguage::chinese, Direction::read, done, {}),
              "对讲机已读取：512 个数据块。|");
    EXPECT_EQ(in(language, Direction::read, with(Outcome::busy), {}), "");
}

TEST_F(SessionAdvice, AnErrorOfTheRunItselfIsNoSuccess) {
    const Entries logged{{"frmCommun->held", 7, "out of memory"}};
    const auto read = noticeOfError(Direction::read, logged);
    EXPECT_EQ(read.headline + " " + read.advice,
              "The radio was not read. The session ended with an error: out of memory.");
    const auto write = noticeOfError(Direction::write, logged);
    EXPECT_EQ(write.headline, "The radio may be partly written!");
    EXPECT_THAT(write.advice, HasSubstr("write again before it is used"));
    EXPECT_TRUE(read.tone == Tone::bad && write.tone == Tone::bad);
}

TEST_F(SessionAdvice, HeadlineSaysWhatHappenedAndHowBadItIs) {
    constexpr auto write = Direction::write;
    const auto run = [](Direction direction, Stage stage, const Result& result) {
        safeguards::Ending report;
        report.task = direction == Direction::read ? Task::readOnce : Task::write;
        report.stage = stage;
        report.result = result;
        return report;
    };
    const auto changed = [](safeguards::Ending report, auto change) {
        change(report);
        return report;
    };
    const Result done = with(Outcome::succeeded);
    const Result torn = failed(20, 4, 0x20);
    const auto good = [](auto& report) { report.what = What::done; };
    const auto refused = [](auto& report) { report.what = What::refused; };
    const auto differs = [](auto& report) {
        report.what = What::differs;
        report.differences = {{0x30, 1, 2}};
    };
    const auto wish = [](auto& report) { report.result.outcome = Outcome::stopped; };
    const std::tuple<safeguards::Ending, Tone, std::string> cases[] = {
        {changed(run(Direction::read, Stage::read, done), good), Tone::good,
         "Radio read: 512 blocks."},
        {run(Direction::read, Stage::read, failed(20)), Tone::bad, "The radio was not read."},
        {changed(run(Direction::read, Stage::read, failed(7)), wish), Tone::warning,
         "The radio was not read."},
        {changed(run(Direction::read, Stage::compare, done), differs), Tone::bad,
         "The two reads differ."},
        {run(write, Stage::backUp, torn), Tone::bad, "Nothing was written."},
        {run(write, Stage::write, failed(20)), Tone::bad, "Nothing was written."},
        {run(write, Stage::write, failed(20, 1)), Tone::bad, "The radio may be partly written!"},
        {run(write, Stage::write, torn), Tone::bad, "The radio is only partly written!"},
        {changed(run(write, Stage::write, torn), wish), Tone::bad,
         "The radio is only partly written!"},
        {run(write, Stage::compare, failed(20)), Tone::bad,
         "The radio is written, but not compared."},
        {changed(run(write, Stage::compare, done), differs), Tone::bad,
         "The radio does not hold what was sent!"},
    };
    setTextLanguage(TextLanguage::english);
    for (const auto& [report, tone, headline] : cases) {
        SCOPED_TRACE(headline);
        const auto ending = noticeOf(report, {});
        EXPECT_EQ(ending.headline, headline);
        EXPECT_EQ(ending.tone, tone);
        if (report.result.failedAttempts == 20) {
            // What stands there while the box is open does not say anything else.
            const auto early =
                noticeWhileGivingUp(report.direction(), report.stage, report.result, {});
            EXPECT_EQ(early.headline, headline);
            EXPECT_THAT(ending.advice, testing::StartsWith(early.advice));
        }
    }
    EXPECT_EQ(
        noticeOf(changed(run(write, Stage::write, with(Outcome::busy)), refused), {}).headline, "");
    const auto earlier = [](auto& report) {
        report.backup = "c.dat";
        report.earlier = {"b.dat", "a.dat"};
    };
    EXPECT_THAT(noticeOf(changed(run(write, Stage::write, torn), earlier), {}).advice,
                HasSubstr("2 earlier writes broke off"));
}

}  // namespace
}  // namespace k520::sessionAdvice
