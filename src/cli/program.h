// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <initializer_list>
#include <optional>
#include <string>

#include "cli/Command.h"

/// The program around the commands: its folder, its settings, its warnings.
namespace k520::cli {

/// Chooses the program folder (see programFolder.h) and warns of one that does not exist. A path
/// that is not a folder raises Failure 1.
void chooseProgramFolder(const std::optional<std::string>& chosen);

/// Who reads what a command prints: the names and texts in what scripts read are the English ones,
/// whatever the language setting.
enum class Reader { person, script };

/// By "--json".
[[nodiscard]] Reader readerOf(const Arguments& arguments);

/// Reads the settings and builds texts, scripts, grid and tone tables. Nothing is written. Failures
/// of single settings become warnings; Failure 1, with the setting to fix, where image size,
/// channels or columns are such that no data file can be worked on.
void startCore(Reader reader = Reader::person);

/// What a command does where the default image is missing.
enum class DefaultImage {
    needed,   ///< Failure 1
    helpful,  ///< go on, with a warning
};

/// startCore(), and a new configuration from the default image.
void startConfiguration(DefaultImage defaultImage, Reader reader = Reader::person);

/// A new configuration once more, before another file is opened.
void renewConfiguration();

/// A path that means the same from every folder.
[[nodiscard]] std::string absolutePath(const std::string& path);

/// A command line of this program on the same program folder, for messages: each word stands as a
/// shell takes it for what it is.
[[nodiscard]] std::string ownCommand(std::initializer_list<std::string> words);
/// The command that fixes a setting, for messages.
[[nodiscard]] std::string configSetCommand(const std::string& section, const std::string& key,
                                           const std::string& value);

/// One line on stderr: "k520-cli: warning: ...". The same line is not said twice.
void warn(const std::string& message);

/// The number of failures in the error list; what is logged after it belongs to what ran since.
[[nodiscard]] std::size_t failureMark();
/// The source text of the first failure since `mark`, or nothing.
[[nodiscard]] std::optional<std::string> failureSince(std::size_t mark);
/// Makes a warning of every failure since `mark`, with `consequence` after it.
void warnOfFailuresSince(std::size_t mark, const std::string& consequence = {});
/// Raises Failure 1 with the first failure since `mark`, after `doing` and a colon.
void failOnFailureSince(std::size_t mark, const std::string& doing);

}  // namespace k520::cli
