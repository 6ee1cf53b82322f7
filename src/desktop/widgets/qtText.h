// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/softFaceTexts.h"
#include "base/Text.h"

/// Texts between the core (UTF-8) and the toolkit.
namespace k520 {

[[nodiscard]] QString qText(std::string_view utf8);
[[nodiscard]] std::string stdText(const QString& text);

/// A path keeps its bytes, whatever they are.
[[nodiscard]] QString qPath(const std::filesystem::path& path);
[[nodiscard]] std::string stdPath(const QString& path);

/// An interface text, with its mnemonic mark.
[[nodiscard]] QString softText(SoftText text);
[[nodiscard]] QString qSay(const Text& text);

/// A caption without mnemonic mark and, in Chinese, without the letter in brackets: for tips and
/// accessible names.
[[nodiscard]] QString plainCaption(QString caption);

/// A caption with the mnemonic `letter`: at the first such letter, whatever its case, or else in
/// brackets after the caption. No caption stays none.
[[nodiscard]] QString withMnemonic(QString caption, char letter);

}  // namespace k520
