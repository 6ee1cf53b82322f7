// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

#include "cli/Command.h"

/// What --help prints, made from the table of commands in the language in force, 80 columns wide.
namespace k520::cli::helpText {

[[nodiscard]] std::string ofProgram();
/// Of a word that several commands begin with, such as "config".
[[nodiscard]] std::string ofGroup(std::string_view name);
[[nodiscard]] std::string ofCommand(const Command& command);

/// "k520-cli read -p PORT -o FILE [--verify]"
[[nodiscard]] std::string usageOf(const Command& command);

/// "-o, --output OUT", or "FILE" for a word by its place.
[[nodiscard]] std::string nameOf(const Argument& argument);

}  // namespace k520::cli::helpText
