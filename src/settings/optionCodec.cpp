// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/optionCodec.h"

#include <cstddef>

#include "settings/optionTable.h"

namespace k520::optionCodec {

namespace {

/// Runs `step` for each option up to the first that fails.
template <class Step>
Faults eachOption(std::string_view procedure, Step step) {
    try {
        for (const auto& option : optionTable::options()) {
            step(option, static_cast<std::size_t>(option.number));
        }
    } catch (const RuntimeError& error) {
        return {{procedure, error}};
    }
    return {};
}

}  // namespace

Decoded decode(const MemoryImage& image, OptionSet before, const OptionSet& defaults) {
    Decoded decoded{before, {}};
    decoded.faults =
        eachOption("modSysSet->SaveToOptSel", [&](const auto& option, std::size_t number) {
            decoded.values[number] = optionTable::decode(option, image).value_or(defaults[number]);
        });
    return decoded;
}

Faults encode(const OptionSet& values, MemoryImage& image) {
    return eachOption("modSysSet->OptSelToSave", [&](const auto& option, std::size_t number) {
        optionTable::encode(option, values[number], image);
    });
}

}  // namespace k520::optionCodec
