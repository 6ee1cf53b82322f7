// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "image/MemoryImage.h"

/// Data files as commands open and save them.
namespace k520::cli {

/// What a command does about a file shorter than the image.
enum class ShortFile {
    warn,    ///< go on with what it holds
    refuse,  ///< Failure 1
};

/// Opens a data file as the Open command does, over a new configuration: image, channels, options
/// and band follow it. An empty or unreadable file raises Failure 1.
void openDocument(const std::string& path, ShortFile shortFile);

/// Saves as the Save command does: the tables are encoded into the image first. Raises Failure 1
/// when that or the writing fails; the file is then as it was.
void saveDocument(const std::string& path);

/// Raises Failure 2 where two of these paths name the same file: one would overwrite the other.
/// Missing ones and "-" do not count.
void requireDifferentFiles(const std::vector<std::optional<std::string>>& paths);

/// Raises Failure 1 where saveDocument(path) could not write, before a long session is begun.
void checkSavable(const std::string& path);

}  // namespace k520::cli
