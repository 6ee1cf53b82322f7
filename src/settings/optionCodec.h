// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include "base/Fault.h"
#include "image/MemoryImage.h"
#include "settings/modSysSet.h"

/// The codec of the optional features over values: all options of an image and back. Nothing
/// process-wide is read or written, and nothing is logged: what went wrong comes back beside the
/// value, under the labels of modSysSet.
namespace k520::optionCodec {

using modSysSet::OptionSet;

struct Decoded {
    OptionSet values{};
    Faults faults;
};

/// Decodes option by option; what is out of range is replaced from `defaults`. Stops where the
/// image ends (9); the options from there on, and the room after the last one, are as in `before`.
[[nodiscard]] Decoded decode(const MemoryImage& image, OptionSet before, const OptionSet& defaults);

/// Encodes option by option; stops at the first that fails (6 for a value that is not a byte, 9 for
/// an image that is too short). What was encoded before it stays.
[[nodiscard]] Faults encode(const OptionSet& values, MemoryImage& image);

}  // namespace k520::optionCodec
