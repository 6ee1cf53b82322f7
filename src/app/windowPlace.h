// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Where the main window stands. Places are kept in the setting "WindowPlace" as "LEFT,TOP,WIDTH,
/// HEIGHT" in the units of the toolkit, apart from the keys that nothing reads back.
namespace k520::windowPlace {

/// A rectangle of a screen.
struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const Box&, const Box&) = default;
};

/// Nothing for a text that is not a place, and for one without an area.
[[nodiscard]] std::optional<Box> parse(std::string_view text);
[[nodiscard]] std::string textOf(const Box& box);

/// `wanted`, made smaller and moved as far as it must be to lie within the screen that it shares
/// most with; within the first one where it shares nothing with any. `wanted` itself without a
/// screen.
[[nodiscard]] Box fitted(const Box& wanted, std::span<const Box> screens);

/// The place stored last. A setting that cannot be read goes to the error list under
/// "mdifrmMain->windowPlace", like one that cannot be written.
[[nodiscard]] std::optional<Box> stored();
void store(const Box& box);

}  // namespace k520::windowPlace
