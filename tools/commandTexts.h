// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Command.h"

/// Texts about the commands of k520-cli for other readers than its parser, made from its table in
/// the language in force.
namespace k520::cli::commandTexts {

/// What may be given as a word of the command line.
enum class Word : std::uint8_t { any, file, folder, port, edit, section, key };

/// By the placeholder; a positional word with a placeholder of its own is a file.
[[nodiscard]] Word wordOf(const Argument& argument);

[[nodiscard]] bool isPositional(const Argument& argument);
/// What help calls the value; empty for a flag.
[[nodiscard]] std::string_view placeholderOf(const Argument& argument);
/// "-o", "--output"
[[nodiscard]] std::vector<std::string> flagsOf(const Argument& argument);

/// A word that several commands begin with, and their second words.
struct Group {
    std::string name;
    std::vector<std::string> seconds;
};
[[nodiscard]] std::vector<Group> groups();
/// The first words of all commands, each once.
[[nodiscard]] std::vector<std::string> firstWords();
/// The summary of the command or group of this name.
[[nodiscard]] std::string summaryOf(std::string_view name);

/// Branches of a case over the command's name, for the template of each shell.
[[nodiscard]] std::string bashBranches();
[[nodiscard]] std::string zshBranches();
/// "complete" lines of the fish shell.
[[nodiscard]] std::string fishLines();
/// All options that take a value, as fish words.
[[nodiscard]] std::string fishOptionsWithValue();
/// The options in front of a command, and a subsection for each command, in roff's man macros.
[[nodiscard]] std::string manualOptions();
[[nodiscard]] std::string manualCommands();

}  // namespace k520::cli::commandTexts
