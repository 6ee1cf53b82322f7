// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "app/modShowErr.h"
#include "link/communView.h"
#include "link/modSession.h"
#include "link/safeguards.h"

/// How a session ended, in a user's words and in the language in force.
namespace k520::sessionAdvice {

/// One line for a success; for anything else the likely cause with the next step, and the state in
/// which the session has left the image (read) or the radio (write). `logged` is what the session
/// has put into the error list. Empty for a session that was refused.
[[nodiscard]] std::string adviceAfter(Direction direction, const modSession::Result& result,
                                      std::span<const modShowErr::Entry> logged);

/// The same for a run with safeguards: what became of its last stage, in which state image and
/// radio are, and where the backup lies. A run of a single stage without backup reads like a
/// session.
[[nodiscard]] std::string adviceAfter(const safeguards::Report& report,
                                      std::span<const modShowErr::Entry> logged);

/// What a stage is called where a run has several.
[[nodiscard]] std::string stageName(Direction direction, Stage stage);

/// Why a port cannot be opened, in a word or two, by the number of the error that says so (see
/// SerialPort).
[[nodiscard]] std::string portTroubleInShort(std::int16_t number);

}  // namespace k520::sessionAdvice
