// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/comparisonText.h"

#include <fmt/format.h>

#include <array>
#include <nlohmann/json.hpp>

#include "cli/cliTexts.h"
#include "cli/output.h"

namespace k520::cli {

namespace {

using document::Comparison;
using document::Difference;
using document::stampText;
using Kind = Difference::Kind;

std::size_t indexOf(Kind kind) {
    return static_cast<std::size_t>(kind);
}

/// What scripts know a kind by.
std::string_view kindName(Kind kind) {
    constexpr std::array<std::string_view, 5> names{"model", "band", "channel", "option", "byte"};
    return names.at(indexOf(kind));
}

constexpr std::array<Text, 5> kindTexts{texts::diffModel, texts::diffBand, texts::diffChannel,
                                        texts::diffOption, texts::diffByte};

std::string shownOrDash(const std::string& text) {
    return text.empty() ? "-" : text;
}

nlohmann::ordered_json differenceJson(const Difference& difference) {
    nlohmann::ordered_json json{
        {"kind", kindName(difference.kind)}, {"a", difference.a}, {"b", difference.b}};
    if (difference.kind == Kind::channel) {
        json["channel"] = std::stoi(difference.what);
        json["field"] = difference.part;
    } else if (!difference.what.empty()) {
        json[difference.kind == Kind::option ? "option" : "address"] = difference.what;
    }
    return json;
}

nlohmann::ordered_json stampJson(const std::optional<DateTime>& stamp) {
    return stamp ? nlohmann::ordered_json(stampText(stamp)) : nlohmann::ordered_json(nullptr);
}

}  // namespace

std::string comparisonText(const Comparison& comparison, const std::string& nameA,
                           const std::string& nameB) {
    std::vector<std::vector<std::string>> rows;
    for (const auto& d : comparison.differences) {
        const auto subject = fmt::format("{} {}", say(kindTexts.at(indexOf(d.kind))), d.what);
        rows.push_back(
            {subject, d.part == "channel" ? "rx" : d.part, shownOrDash(d.a), shownOrDash(d.b)});
    }
    if (comparison.stampA != comparison.stampB) {
        rows.push_back({say(texts::diffStamp), say(texts::doesNotCount),
                        shownOrDash(stampText(comparison.stampA)),
                        shownOrDash(stampText(comparison.stampB))});
    }
    return rows.empty() ? std::string()
                        : formatTable({{say(texts::whatTitle)}, {""}, {nameA}, {nameB}}, rows);
}

nlohmann::ordered_json comparisonJson(const Comparison& comparison) {
    auto differences = nlohmann::ordered_json::array();
    for (const auto& difference : comparison.differences) {
        differences.push_back(differenceJson(difference));
    }
    return {{"identical", comparison.equal()},
            {"differences", differences},
            {"stamp", {{"a", stampJson(comparison.stampA)}, {"b", stampJson(comparison.stampB)}}}};
}

std::string countText(const Comparison& comparison) {
    const auto count = comparison.differences.size();
    return count == 1 ? say(texts::oneDifference) : say(texts::someDifferences, count);
}

}  // namespace k520::cli
