// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "app/modShowErr.h"
#include "link/protocol/communView.h"
#include "link/session/modSession.h"
#include "link/session/safeguards.h"

/// How a session ended, in a user's words and in the language in force.
namespace k520::sessionAdvice {

/// What a window says of a run: how it is to be taken, what happened in one line, and the advice.
enum class Tone : std::uint8_t { plain, good, warning, bad };
struct Notice {
    Tone tone = Tone::plain;
    std::string headline;
    std::string advice;
};

/// How a run ended: one line for a success; for anything else the likely cause with the next step,
/// the state in which image (read) or radio (write) are, and where the backup lies. `logged` is
/// what the run has put into the error list. Empty for a run that was refused.
[[nodiscard]] Notice noticeOf(const safeguards::Ending& ending,
                              std::span<const modShowErr::Entry> logged);

/// What can be said of a run when the session of one of its stages has given up: `logged` is what
/// that stage has put into the error list.
[[nodiscard]] Notice noticeWhileGivingUp(Direction direction, Stage stage,
                                         const modSession::Result& result,
                                         std::span<const modShowErr::Entry> logged);

/// What a window says of a run that an error ended before it could report: `logged` is what it has
/// put into the error list.
[[nodiscard]] Notice noticeOfError(Direction direction, std::span<const modShowErr::Entry> logged);

/// What a window says before a run: how to begin, or that an earlier write did not finish.
/// `startButton` is the caption of the button that begins.
[[nodiscard]] Notice beforeRun(Direction direction, const std::string& startButton);

/// What a stage is called where a run has several.
[[nodiscard]] std::string stageName(Direction direction, Stage stage);

/// Why a port cannot be opened, in a word or two, by the number of the error that says so (see
/// SerialPort).
[[nodiscard]] std::string portTroubleInShort(std::int16_t number);

}  // namespace k520::sessionAdvice
