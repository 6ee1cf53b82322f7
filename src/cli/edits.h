// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

/// The edits of the document, as commands make them: what an edit remarks is a warning, and a
/// refused one ends the command.
namespace k520::cli {

/// Makes the edit that a word "KEY=VALUE" asks for. Raises Failure 2 for a key or a value that has
/// no meaning, Failure 1 for an edit that cannot be done now.
void applyEditWord(const std::string& word);

/// Takes the channels of a CSV text. Raises Failure 1 with the line of what cannot be taken.
void takeChannels(std::string_view csv);

}  // namespace k520::cli
