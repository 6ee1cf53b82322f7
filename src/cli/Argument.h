// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string_view>

#include "base/Text.h"

namespace k520::cli {

enum class ArgumentKind : std::uint8_t {
    positional,      ///< a word by its place; required
    positionalList,  ///< all remaining words; at least one
    option,          ///< an option with a value
    required,        ///< an option with a value that has to be given
    flag,            ///< an option without a value
};

struct Argument {
    std::string_view name;   ///< how the command asks for it, and the long option: "output"
    std::string_view flags;  ///< "-o,--output"; for positional words what help shows: "FILE"
    std::string_view value;  ///< what help calls the value: "OUT"
    ArgumentKind kind;
    Text help;
};

}  // namespace k520::cli
