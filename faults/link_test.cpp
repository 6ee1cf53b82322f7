// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// What a session makes of a line and a radio that fail. Short ranges are gone through whole; the
// full range by samples, the rest of it by the campaign (see linkCampaign.cpp).
#include <gmock/gmock.h>

#include <algorithm>

#include "faults/LinkCase.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"

namespace k520::test {
namespace {

using modSession::Outcome;
using std::chrono::milliseconds;
using enum ByteFaultKind;

constexpr modIicDat::AddressRange wholeMemory{0, 0x1FFF};
/// Fast enough for the first attempt's time-out, so that nothing fails but by a fault.
constexpr int fastLine = 230'400;
constexpr milliseconds settling{150};
constexpr Direction bothDirections[] = {Direction::read, Direction::write};
constexpr Memory bothMemories[] = {Memory::telling, Memory::mimic};

std::vector<ByteFault> faultsOfByte(std::uint32_t byte, int bits) {
    std::vector<ByteFault> faults{{.kind = lose, .byte = byte}, {.kind = repeat, .byte = byte}};
    for (int bit = 0; bit < bits; ++bit) {
        const auto value = static_cast<std::uint8_t>(1U << bit);
        faults.push_back({.kind = corrupt, .byte = byte, .value = value});
    }
    return faults;
}

/// The faults of each byte of a line in turn, or fewer ones of one byte in `stride`. One fault
/// costs two attempts at most: the one that it hits, and one that the radio takes for the rest of a
/// frame.
template <class Check>
void forEachByteFault(const LinkCase& job, std::vector<ByteFault> SimFaults::*line,
                      std::uint32_t stride, Check&& check) {
    const auto clean = judge(job);
    ASSERT_TRUE(clean.good && !clean.deceives);
    const auto last =
        line == &SimFaults::replyBytes ? clean.counters.replyBytes : clean.counters.requestBytes;
    for (std::uint32_t byte = 1; byte <= last; byte += stride) {
        for (const ByteFault& fault : faultsOfByte(byte, stride == 1 ? 8 : 1)) {
            LinkCase faulty = job;
            (faulty.faults.*line).push_back(fault);
            const auto verdict = judge(faulty);
            SCOPED_TRACE(testing::Message()
                         << "byte " << byte << " kind " << static_cast<int>(fault.kind) << " value "
                         << static_cast<int>(fault.value));
            EXPECT_TRUE(verdict.good || job.guarded);
            EXPECT_LE(verdict.result.failedAttempts, clean.result.failedAttempts + 2);
            EXPECT_EQ(verdict.entries, 0U);
            EXPECT_FALSE(job.guarded && verdict.deceives);
            check(fault, verdict);
        }
    }
}

class LinkFaults : public testing::Test {
  protected:
    LinkBench bench;
};

TEST_F(LinkFaults, AReplyByteLostFlippedOrDoubled) {
    for (const auto& [memory, guarded] :
         {std::pair(Memory::telling, false), {Memory::mimic, false}, {Memory::mimic, true}}) {
        // Bytes 1 and 2 answer the handshake; of the twenty of a block four are the header. A
        // doubled byte shifts what follows, and only a header that then differs gives it away.
        const LinkCase read{.memory = memory, .guarded = guarded, .baud = fastLine};
        forEachByteFault(
            read, &SimFaults::replyBytes, 1, [](const auto& fault, const auto& verdict) {
                const bool inData = fault.byte > 2 && (fault.byte - 3) % 20 >= 4;
                EXPECT_EQ(verdict.radio, Content::right);
                EXPECT_TRUE(!verdict.deceives || (fault.kind == repeat && fault.byte > 2) ||
                            (fault.kind == corrupt && inData));
            });
        // The answers of a write are acknowledgements.
        LinkCase write = read;
        write.direction = Direction::write;
        forEachByteFault(write, &SimFaults::replyBytes, 1,
                         [](const auto&, const auto& verdict) { EXPECT_FALSE(verdict.deceives); });
    }
}

TEST_F(LinkFaults, ARequestByteLostFlippedOrDoubled) {
    for (const bool guarded : {false, true}) {
        const LinkCase read{.guarded = guarded, .baud = fastLine};
        forEachByteFault(read, &SimFaults::requestBytes, 1,
                         [](const auto&, const auto& verdict) { EXPECT_FALSE(verdict.deceives); });
        LinkCase write = read;
        write.direction = Direction::write;
        // The handshake is bytes 1 to 8; after it nothing but a block's first byte is safe.
        forEachByteFault(write, &SimFaults::requestBytes, 1,
                         [](const auto& fault, const auto& verdict) {
                             EXPECT_TRUE(!verdict.deceives || (fault.byte - 9) % 20 > 0);
                         });
    }
}

TEST_F(LinkFaults, BytesOfTheWholeMemory) {
    for (const Direction direction : bothDirections) {
        for (const auto line : {&SimFaults::replyBytes, &SimFaults::requestBytes}) {
            const LinkCase job{
                .direction = direction, .range = wholeMemory, .guarded = true, .baud = fastLine};
            forEachByteFault(job, line, 2999, [](const auto&, const auto&) {});
        }
    }
}

TEST_F(LinkFaults, ALateReply) {
    for (const Direction direction : bothDirections) {
        for (const Memory memory : bothMemories) {
            for (const std::uint32_t byte : {1U, 2U, 3U, 6U, 7U, 22U, 23U}) {
                for (int late = 1; late <= 2000; late += 1 + late / 8) {
                    LinkCase job{.direction = direction, .memory = memory, .baud = fastLine};
                    job.faults.replyBytes = {
                        {.kind = delay, .byte = byte, .by = milliseconds(late)}};
                    const auto verdict = judge(job);
                    SCOPED_TRACE(testing::Message() << "byte " << byte << " late " << late);
                    EXPECT_TRUE(verdict.good && !verdict.deceives);
                    // The first attempt looks for the last time after 10 ms; a block takes 1 ms.
                    const bool hit = byte <= verdict.counters.replyBytes;
                    EXPECT_TRUE(late > 8 || verdict.result.failedAttempts == 0);
                    EXPECT_TRUE(late < 11 || !hit || verdict.result.failedAttempts > 0);
                    EXPECT_LT(verdict.time, settling + milliseconds(late + 500));
                }
            }
        }
    }
}

/// An answer so late that those to all the greetings after it come in one burst. The session takes
/// them for the answers to its blocks, and a port that really drops what it has not sent then cuts
/// every block short.
TEST_F(LinkFaults, ABurstOfLateAcknowledgementsDeceivesNobodyWhoReadsBack) {
    for (const auto& [byte, late] : {std::pair(1U, 1650), {2U, 1662}, {3U, 1809}}) {
        LinkCase job{.direction = Direction::write, .dropsOutput = true};
        job.faults.replyBytes = {{.kind = delay, .byte = byte, .by = milliseconds(late)}};
        EXPECT_TRUE(judge(job).deceives) << late;
        job.guarded = true;
        EXPECT_FALSE(judge(job).deceives) << late;
    }
}

TEST_F(LinkFaults, SilenceFromAnyExchangeOn) {
    // The polls of the twenty attempts, one more than their limits: 11, 21 ... 101, and twice 151
    // to 191.
    constexpr milliseconds polls{560 + 2 * 855};
    for (const Direction direction : bothDirections) {
        const auto exchanges = judge({.direction = direction}).counters.exchanges;
        for (std::uint32_t from = 1; from <= exchanges; ++from) {
            SCOPED_TRACE(from);
            const LinkCase job{.direction = direction, .faults = {.silentFrom = from}};
            const auto ended = judge(job);
            // Nobody waits for an answer to the end of a read.
            const bool noticed = direction == Direction::write || from < exchanges;
            EXPECT_EQ(ended.good, !noticed);
            EXPECT_EQ(ended.boxes, noticed ? 1U : 0U);
            if (noticed) {
                EXPECT_EQ(ended.result.failedAttempts, 20);
                EXPECT_LT(ended.time, polls + 20 * milliseconds(5 * 8) + settling);
            }
            LinkCase stopping = job;
            stopping.stops = true;
            const auto stopped = judge(stopping);
            EXPECT_EQ(stopped.result.outcome, noticed ? Outcome::stopped : Outcome::succeeded);
            EXPECT_LE(stopped.result.failedAttempts, 6);
        }
        const auto silent = judge({.direction = direction, .faults = {.silentFrom = 1}});
        EXPECT_EQ(silent.result.duration, polls + 20 * milliseconds(5));
    }
}

TEST_F(LinkFaults, TheCableComesOutAndIsPluggedInAgain) {
    for (const Direction direction : bothDirections) {
        const auto exchanges = judge({.direction = direction}).counters.exchanges;
        for (std::uint32_t after = 1; after < exchanges; ++after) {
            SCOPED_TRACE(after);
            const auto verdict = judge({.direction = direction, .faults = {.goneAfter = after}});
            EXPECT_EQ(verdict.result.outcome, Outcome::failed);
            EXPECT_EQ(verdict.entries, 1U) << "told once";
            EXPECT_EQ(verdict.boxes, 1U);
            EXPECT_LE(verdict.toldAfter, milliseconds(10));
            // What is left of the twenty attempts takes 5 ms each.
            EXPECT_LE(verdict.endedAfter, milliseconds(110));
            EXPECT_TRUE(judge({.direction = direction}).good);
        }
    }
}

TEST_F(LinkFaults, NoiseIsOutlastedAndBabbleIsBounded) {
    using Value = std::optional<std::uint8_t>;
    constexpr std::uint32_t endless = Babble().until;
    constexpr std::uint8_t acknowledge = 0x06;
    for (const bool guarded : {false, true}) {
        for (const Direction direction : bothDirections) {
            for (const std::uint32_t from : {1U, 2U, 3U, 5U}) {
                for (const std::uint32_t until : {from + 1, from + 4, endless}) {
                    for (const Value value : {Value(), Value(0x57), Value(acknowledge)}) {
                        LinkCase job{.direction = direction, .guarded = guarded};
                        job.faults.babble = Babble{from, until, value};
                        const auto verdict = judge(job);
                        SCOPED_TRACE(testing::Message() << from << "-" << until << " "
                                                        << static_cast<int>(value.value_or(0)));
                        EXPECT_TRUE(verdict.good || guarded || until == endless);
                        // A line that says nothing but 06 acknowledges everything.
                        EXPECT_TRUE(
                            !verdict.deceives ||
                            (!guarded && direction == Direction::write && value == acknowledge));
                        EXPECT_LT(verdict.time, milliseconds(guarded ? 8000 : 4000));
                        EXPECT_LT(verdict.mostWaiting, 300U);
                        EXPECT_LT(verdict.dataLines, 3100U);
                    }
                }
            }
        }
    }
}

TEST_F(LinkFaults, ARadioThatAcknowledgesAndDoesNotStore) {
    for (std::uint32_t block = 1; block <= 4; ++block) {
        LinkCase job{.direction = Direction::write, .baud = fastLine};
        job.faults.forgottenBlock = block;
        EXPECT_TRUE(judge(job).deceives);
        job.guarded = true;
        EXPECT_FALSE(judge(job).good);
    }
}

}  // namespace
}  // namespace k520::test
