// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modSoftFace.h"

#include <algorithm>

#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "base/Checked.h"
#include "base/ModuleState.h"

namespace k520::modSoftFace {

namespace {

void storeTexts(std::string_view SoftFaceRow::*column) {
    for (const SoftFaceRow& row : softFaceRows()) {
        checkedAt(state().SoftFace, row.index, "SoftFace") = row.*column;
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void FillSoftFace(std::int16_t& language) {
    using namespace mdimoduMain;
    guarded("mdifrmMain->FillSoftFace", [&] {
        if (language < languageChinese || language > languageEnglish) {
            language = languageEnglish;
        }
        setTextLanguage(language == languageChinese ? TextLanguage::chinese
                                                    : TextLanguage::english);
        state().SoftFace.fill({});
        if (language == languageChinese) {
            storeTexts(&SoftFaceRow::chinese);
        } else if (language == languageEnglish) {
            storeTexts(&SoftFaceRow::english);
        }
    });
}

const std::string& text(SoftText text) {
    return checkedAt(state().SoftFace, static_cast<int>(text), "SoftFace");
}

std::string_view textIn(TextLanguage language, SoftText text) noexcept {
    const auto index = static_cast<std::int16_t>(text);
    const auto rows = softFaceRows();
    const auto found = std::ranges::lower_bound(rows, index, {}, &SoftFaceRow::index);
    if (found == rows.end() || found->index != index) {
        return {};
    }
    return language == TextLanguage::chinese ? found->chinese : found->english;
}

}  // namespace k520::modSoftFace
