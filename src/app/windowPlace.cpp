// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/windowPlace.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "app/Guard.h"
#include "app/settingsStore.h"

namespace k520::windowPlace {

namespace {

constexpr const char* section = "Setting";
constexpr const char* key = "WindowPlace";
constexpr const char* label = "mdifrmMain->windowPlace";
/// Beyond any screen; sums of such numbers stay within an int.
constexpr int farthest = 1'000'000;

/// How much two spans of a line have in common.
int common(int startA, int lengthA, int startB, int lengthB) {
    return std::max(0, std::min(startA + lengthA, startB + lengthB) - std::max(startA, startB));
}

std::int64_t commonArea(const Box& a, const Box& b) {
    return static_cast<std::int64_t>(common(a.left, a.width, b.left, b.width)) *
           common(a.top, a.height, b.top, b.height);
}

}  // namespace

std::optional<Box> parse(std::string_view text) {
    std::array<int, 4> numbers{};
    const char* at = text.data();
    const char* const end = text.data() + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (at == end || *at++ != ',')) {
            return std::nullopt;
        }
        const auto [rest, error] = std::from_chars(at, end, numbers.at(i));
        if (error != std::errc{} || numbers.at(i) < -farthest || numbers.at(i) > farthest) {
            return std::nullopt;
        }
        at = rest;
    }
    const auto [left, top, width, height] = numbers;
    return at == end && width > 0 && height > 0 ? std::optional(Box{left, top, width, height})
                                                : std::nullopt;
}

std::string textOf(const Box& box) {
    return fmt::format("{},{},{},{}", box.left, box.top, box.width, box.height);
}

Box fitted(const Box& wanted, std::span<const Box> screens) {
    const auto screen = std::ranges::max_element(
        screens, {}, [&](const Box& candidate) { return commonArea(wanted, candidate); });
    if (screen == screens.end()) {
        return wanted;
    }
    const int width = std::min(wanted.width, screen->width);
    const int height = std::min(wanted.height, screen->height);
    return {std::clamp(wanted.left, screen->left, screen->left + screen->width - width),
            std::clamp(wanted.top, screen->top, screen->top + screen->height - height), width,
            height};
}

std::optional<Box> stored() {
    std::optional<Box> box;
    guarded(label, [&] { box = parse(settingsStore::read(section, key, "")); });
    return box;
}

void store(const Box& box) {
    guarded(label, [&] { settingsStore::write(section, key, textOf(box)); });
}

}  // namespace k520::windowPlace
