// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdimoduMain.h"

#include "base/ModuleState.h"

namespace k520::mdimoduMain {

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void correctLanguage() noexcept {
    std::int16_t& language = state().Language;
    if (language < languageChinese || language > languageEnglish) {
        language = languageEnglish;
    }
}

}  // namespace k520::mdimoduMain
