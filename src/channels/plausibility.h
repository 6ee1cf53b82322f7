// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "image/MemoryImage.h"

/// Whether bytes from anywhere can be a configuration. Nothing is refused for it: a person is told.
namespace k520::plausibility {

/// False where the band makes no sense, or at least a quarter of all values that have a limited
/// form: the channels' frequencies and tones, and the options with a range. True for an image that
/// is too short to tell.
[[nodiscard]] bool looksLikeConfiguration(const MemoryImage& image);

}  // namespace k520::plausibility
