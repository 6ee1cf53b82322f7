// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "base/Clock.h"
#include "image/MemoryImage.h"
#include "image/modIicDat.h"
#include "link/protocol/communView.h"

/// The read and the write session, and the address fields of the communication dialog.
namespace k520::modSession {

/// Failed attempts after which the stop box can be ticked, the count is shown, the session ends.
inline constexpr std::int16_t stopBoxAfter = 5;
inline constexpr std::int16_t countShownAfter = 8;
inline constexpr std::int16_t mostAttempts = 20;

struct State {
    /// True (all bits set) from the opened port to the closed one.
    std::int16_t busyMark = 0;
};

[[nodiscard]] State& state();

enum class Outcome : std::uint8_t {
    succeeded,
    portFailed,  ///< the port could not be opened; the error list tells why
    failed,      ///< no attempt succeeded, or an error that no attempt can get over is in the error
                 ///< list
    stopped,     ///< by the stop box, or abandoned
    busy,        ///< another session is on: nothing was done
    notAccepted,  ///< every step succeeded, but what came was not accepted
};

/// How a session went.
struct Result {
    Outcome outcome = Outcome::failed;
    std::int16_t failedAttempts = 0;
    /// Steps that succeeded in the last attempt, of all steps that it has.
    std::int16_t stepsDone = 0;
    std::int16_t stepCount = 0;
    /// The image address of the last block that succeeded in the last attempt.
    std::optional<std::int16_t> lastAddress;
    /// The most steps that succeeded in any attempt, and the address of the last block among them.
    std::int16_t mostSteps = 0;
    std::optional<std::int16_t> furthestAddress;
    /// No attempt succeeded, and no error tells why: replies were late, wrong or missing. The error
    /// list says so, with 57 under the session's label.
    bool unanswered = false;
    /// From the opening of the port to its closing, and the last attempt alone.
    Clock::Microseconds duration{0};
    Clock::Microseconds lastAttempt{0};
};

/// Reads the read range from the radio into the image, and decodes and shows it. A failure leaves
/// the image mixed of old and new blocks and shows nothing. Both return after the labels have been
/// emptied again, 150 ms after the end. Label "frmCommun->cmdRead_Click".
Result cmdRead_Click(CommunView& view);

/// Encodes the tables into the image, stamps it, and writes the write range to the radio. The image
/// keeps the stamp even when the session fails. Label "frmCommun->cmdWrite_Click".
Result cmdWrite_Click(CommunView& view);

/// A read into `image` alone: the memory image, the tables and the displays stay as they are. The
/// view is driven as in a plain read. Blocks beyond the end of `image` fail the session with 9.
Result readInto(CommunView& view, modIicDat::AddressRange range, MemoryImage& image);

/// A read whose bytes wait in a copy of the image until `accept` has looked at it. True: they go
/// into the image and are decoded and shown, as in a plain read. False: outcome `notAccepted`.
/// Whatever but success leaves the image as it was.
Result readIfAccepted(CommunView& view, const std::function<bool(const MemoryImage&)>& accept);

/// A write of `image` as it is: no tables and no stamp go into it.
Result writeFrom(CommunView& view, modIicDat::AddressRange range, const MemoryImage& image);

/// Shows a progress as bar and as status text (" 45 %"). Label "frmCommun->ShowComPercent".
void ShowComPercent(std::int16_t percent);

/// Stamps the current date and time into the image. Label "frmCommun->WriteComDat".
void WriteComDat();

/// Whether a session is on, from its first line to its last: longer than the busy mark.
[[nodiscard]] bool running() noexcept;

/// The text fields of the address ranges.
enum class AddressField : std::uint8_t { maxAddr, readStart, readEnd, writeStart, writeEnd };

/// After every keystroke in a field: writes the text to the settings file as it is typed, then
/// takes it as a hexadecimal address. A text that is none (13, or 6 above FFFF) leaves the address
/// as it was. Returns whether the address was taken. Label "frmCommun->txtReadStartAddr_Change" and
/// the like.
bool addressFieldChanged(AddressField field, std::string_view text);

}  // namespace k520::modSession
