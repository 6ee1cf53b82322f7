// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "document/document.h"
#include "image/MemoryImage.h"

namespace k520::document {

/// The image that a configuration is saved as: its channels and options are in it. What cannot be
/// encoded leaves its bytes as they were.
[[nodiscard]] MemoryImage encoded(const Document& document);

/// The same with the programming stamp zeroed: for asking whether a person changed anything.
[[nodiscard]] MemoryImage encodedWithoutStamp(const Document& document);

}  // namespace k520::document
