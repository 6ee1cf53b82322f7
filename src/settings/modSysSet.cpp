// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/modSysSet.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "app/settingsStore.h"
#include "base/Checked.h"
#include "base/ModuleState.h"
#include "image/modIicDat.h"
#include "settings/optionCodec.h"

namespace k520::modSysSet {

namespace {

constexpr std::string_view section = "Option";
constexpr SettingBuffer buffer{20, 20};

/// Key of entry 0 of a set.
struct SetBases {
    int def;
    int now;
};

SetBases basesOf(std::int16_t language) {
    return {language * 1000 + 1, language * 1000 + 501};
}

std::int16_t readNumber(int key) {
    return naming(fmt::format("[{}] {}", section, key), [&] {
        return textToInt16(settingsStore::read(section, fmt::to_string(key), buffer, "0"));
    });
}

void loadSet(OptionSet& set, int base) {
    for (int i = 0; i < state().OptCount; ++i) {
        checkedAt(set, i, "option set") = readNumber(base + i);
    }
}

void copySet(const OptionSet& from, OptionSet& to) {
    for (int i = 0; i < state().OptCount; ++i) {
        checkedAt(to, i, "option set") = checkedAt(from, i, "option set");
    }
}

/// One replacement of the file for all entries. A count beyond the set still saves the entries
/// that there are, and only then fails.
void saveSet(const OptionSet& set, int base) {
    const int room = static_cast<int>(set.size());
    const int count = state().OptCount;
    std::vector<settingsStore::KeyValue> values;
    for (int i = 0; i < std::min(count, room); ++i) {
        values.emplace_back(fmt::to_string(base + i), numberText(checkedAt(set, i, "option set")));
    }
    if (!values.empty()) {
        settingsStore::write(section, values);
    }
    if (count > room) {
        throwSubscript("option set", room);
    }
}

void loadBoth(SetBases bases) {
    loadSet(state().OptDef, bases.def);
    loadSet(state().OptNow, bases.now);
}

void saveNow(SetBases bases) {
    saveSet(state().OptNow, bases.now);
}

void defaultToNow(SetBases bases) {
    copySet(state().OptDef, state().OptNow);
    saveSet(state().OptNow, bases.now);
}

void nowToDefault(SetBases bases) {
    copySet(state().OptNow, state().OptDef);
    saveSet(state().OptNow, bases.def);
}

/// The operations by mode.
constexpr std::array operations{loadBoth, saveNow, defaultToNow, nowToDefault};

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void OptSelSaveSol(std::int16_t mode) {
    guarded("modSysSet->OptSelSaveSol", [&] {
        if (mode == 0) {
            OptSelToSave();
        } else if (mode == 1) {
            SaveToOptSel();
        }
    });
}

void OptSelToSave() {
    logFaults(optionCodec::encode(OptNow(), modIicDat::IicDat()));
}

void SaveToOptSel() {
    const auto [values, faults] = optionCodec::decode(modIicDat::IicDat(), OptNow(), OptDef());
    state().OptNow = values;
    logFaults(faults);
}

void OptNowDefSol(std::int16_t mode) {
    guarded(procedures::optNowDefSol, [&] {
        mdimoduMain::correctLanguage();
        state().OptCount = readNumber(0);
        if (mode >= 0 && mode < std::ssize(operations)) {
            checkedAt(operations, mode, "mode")(basesOf(mdimoduMain::state().Language));
        }
    });
}

}  // namespace k520::modSysSet
