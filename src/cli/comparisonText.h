// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "document/comparison.h"

/// What comparing two images found, as commands print it.
namespace k520::cli {

/// A table of the differences under the names of both sides.
[[nodiscard]] std::string comparisonText(const document::Comparison& comparison,
                                         const std::string& nameA, const std::string& nameB);

[[nodiscard]] nlohmann::ordered_json comparisonJson(const document::Comparison& comparison);

/// "1 difference", "3 differences", in the language in force.
[[nodiscard]] std::string countText(const document::Comparison& comparison);

}  // namespace k520::cli
