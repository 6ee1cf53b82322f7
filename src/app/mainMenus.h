// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <string>
#include <vector>

#include "app/modSoftFace.h"
#include "app/ownTexts.h"

/// The menus of the main window and the other letters that lead anywhere in it with the Alt key.
namespace k520::mainMenus {

struct Menu {
    const char* name;
    SoftText text;              ///< not used where there is an own text
    const Text* own = nullptr;  ///< in place of a text of the numbered table
};
inline constexpr std::array menus{
    Menu{"mnuFile", SoftText::menuFile},         Menu{"mnuEdit", {}, &texts::menuEdit},
    Menu{"mnuProgram", SoftText::menuProgram},   Menu{"mnuOption", SoftText::menuOption},
    Menu{"mnuSettings", SoftText::menuSettings}, Menu{"mnuView", {}, &texts::menuView},
    Menu{"mnuHelp", SoftText::menuHelp}};

/// The caption of a menu or of one of its items, in the language in force.
template <class Row>
[[nodiscard]] std::string captionOf(const Row& row) {
    return row.own != nullptr ? say(*row.own) : modSoftFace::text(row.text);
}

[[nodiscard]] inline std::vector<std::string> captions() {
    std::vector<std::string> all;
    for (const Menu& menu : menus) {
        all.push_back(captionOf(menu));
    }
    return all;
}

/// The letters of the lists above the channels.
inline constexpr char modelLetter = 'M';
inline constexpr char bandLetter = 'U';

}  // namespace k520::mainMenus
