// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/Signal.h"
#include "settings/optionTable.h"

/// The optional-features panel: twelve drop-down lists and four check boxes over OptNow. It never
/// touches the memory image.
namespace k520::optionPanel {

/// One control as data.
struct OptionControl {
    std::string caption;
    /// The caption with the letter that leads to the control with the Alt key (see mnemonics.h).
    std::string markedCaption;
    /// A list's entries; none for a check box.
    std::vector<std::string> items;
    /// The index of a list's selected entry; -1 = none.
    int selected = -1;
    /// A check box's state.
    bool checked = false;
};

struct State {
    std::string frameCaption;
    /// The controls by option number.
    std::array<OptionControl, optionTable::optionCount> controls;
    /// Captions, entries or selections were set, by the program or a user.
    Signal<> onChange;
};

[[nodiscard]] State& state();

/// Sets the captions from the interface texts.
void InitFace();

/// Puts OptNow right and shows it: whoever has decoded OptNow afresh calls it. A list value above
/// its last entry adds a line to the error list, and OptNow then holds the default. A check box
/// leaves OptNow alone. A value that no list can take (below -1, or a default above the last entry)
/// is failure 380; the options after it then stay as they were.
void InitOpt();

/// Fills every list and sets every control from OptNow, which stays as it is. A list whose value is
/// above its last entry selects the default's. A check box is checked by any value but 0. -1
/// selects nothing; so does a value that no list can take, and the controls after it then stay as
/// they were. All lists come before all check boxes.
void show();

/// The user has selected an entry (`value` = its index) or has switched a check box (1 or 0): it
/// goes into OptNow and no further. An option that does not exist fails with 9, an
/// entry that does not exist with 380.
void optionClicked(int number, int value);

}  // namespace k520::optionPanel
