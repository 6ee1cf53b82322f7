// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/optionPanel.h"

#include <fmt/format.h>

#include "app/Guard.h"
#include "app/mainMenus.h"
#include "app/mnemonics.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "image/documentOrigin.h"
#include "settings/modSysSet.h"

namespace k520::optionPanel {

namespace {

using optionTable::ControlKind;
using optionTable::Option;

OptionControl& controlOf(const Option& option) {
    return checkedAt(state().controls, option.number, "option control");
}

std::int16_t& nowOf(const Option& option) {
    return checkedAt(modSysSet::state().OptNow, option.number, "OptNow");
}

void check(const Option& option, bool on) {
    controlOf(option).checked = on;
    nowOf(option) = on ? 1 : 0;
}

/// The entry that a list selects: that of the value, or of the default for a value above the last
/// entry.
int entryOf(const Option& option) {
    const std::int16_t value = nowOf(option);
    return value <= option.max ? value : checkedAt(modSysSet::OptDef(), option.number, "OptDef");
}

bool canSelect(const Option& option, int index) {
    return index >= -1 && index <= option.max;
}

void requireSelectable(const Option& option, int index) {
    if (!canSelect(option, index)) {
        throw RuntimeError(errNum::invalidProperty, fmt::format("{}({})", option.control, index));
    }
}

/// Selecting an entry stores it; selecting none stores nothing.
void storeEntry(const Option& option, int index) {
    if (index >= 0) {
        nowOf(option) = static_cast<std::int16_t>(index);
    }
}

void putListRight(const Option& option) {
    const int index = entryOf(option);
    if (nowOf(option) > option.max) {
        modShowErr::ShowOptErrMsg(
            fmt::format("出错位置: frmChMem->InitOpt->{}错误类型: 不在范围内", option.rangeItem));
    }
    requireSelectable(option, index);
    storeEntry(option, index);
}

void putRight() {
    for (const Option& option : optionTable::options()) {
        if (option.kind == ControlKind::list) {
            putListRight(option);
        }
    }
}

/// Returns whether the list can show its value.
bool showList(const Option& option) {
    OptionControl& control = controlOf(option);
    const int index = entryOf(option);
    const bool possible = canSelect(option, index);
    control.items = optionTable::entryTexts(option);
    control.selected = possible ? index : -1;
    return possible;
}

void showControls() {
    for (const Option& option : optionTable::options()) {
        if (option.kind == ControlKind::list && !showList(option)) {
            return;
        }
    }
    for (const Option& option : optionTable::options()) {
        if (option.kind == ControlKind::checkBox) {
            controlOf(option).checked = nowOf(option) != 0;
        }
    }
}

/// No letter leads to two places in the window.
void markCaptions() {
    std::vector<std::string> captions;
    for (const Option& option : optionTable::options()) {
        captions.push_back(controlOf(option).caption);
    }
    const auto menus = mainMenus::captions();
    auto taken = mnemonics::lettersOf(menus);
    taken += {mainMenus::modelLetter, mainMenus::bandLetter};
    const auto marked = mnemonics::marked(std::move(captions), taken);
    for (const Option& option : optionTable::options()) {
        controlOf(option).markedCaption = checkedAt(marked, option.number, "caption");
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void InitFace() {
    guarded("frmChMem->InitFace:", [] {
        state().frameCaption = modSoftFace::text(SoftText::optionFrame);
        for (const Option& option : optionTable::options()) {
            controlOf(option).caption = optionTable::captionText(option);
        }
        markCaptions();
    });
    state().onChange.tell();
}

void show() {
    showControls();
    state().onChange.tell();
}

void InitOpt() {
    guarded("frmChMem->InitOpt:", putRight);
    show();
}

void optionClicked(int number, int value) {
    guarded("frmChMem->optionClicked", [&] {
        const Option& option = optionTable::optionAt(number);
        if (option.kind == ControlKind::list) {
            requireSelectable(option, value);
            controlOf(option).selected = value;
            storeEntry(option, value);
        } else {
            check(option, value != 0);
        }
    });
    state().onChange.tell();
    documentOrigin::edited(number >= 0 && number < optionTable::optionCount
                               ? optionTable::captionText(optionTable::optionAt(number))
                               : std::string());
}

}  // namespace k520::optionPanel
