// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modCtdcs.h"

#include <algorithm>

#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "base/Checked.h"
#include "base/ModuleState.h"

namespace k520::modCtdcs {

namespace {

void addTexts(const auto& texts, std::size_t& index) {
    State& s = state();
    for (const std::string& text : texts) {
        s.CtdcsText[index++] = text;
        s.cboGridChCtdcs.push_back(text);
        s.CtdcsList += "|" + text;
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void GenCtdcsList() {
    guarded("modCtdcs->GenCtdcsList", [] {
        State& s = state();
        mdimoduMain::correctLanguage();
        s.CtdcsOffText = toneCode::offTextOf(mdimoduMain::state().Language);
        s.CtdcsList = s.CtdcsText[0] = s.CtdcsOffText;
        GetCtdcsArray();
        s.cboGridChCtdcs = {s.CtdcsOffText};
        std::size_t index = 1;
        addTexts(s.CtcssTextArray, index);
        addTexts(s.DcsNTextArray, index);
        addTexts(s.DcsITextArray, index);
        GetCtdcsIIcDat();
    });
}

void GetCtdcsArray() {
    guarded("modCtdcs->GetCtdcsArray", [] {
        State& s = state();
        std::ranges::transform(toneCode::ctcssTones(), s.CtcssTextArray.begin(),
                               [](const auto& tone) { return std::string(tone.text); });
        const auto dcsText = [](char polarity) {
            return [=](std::string_view code) { return "D" + std::string(code) + polarity; };
        };
        std::ranges::transform(toneCode::dcsCodes(), s.DcsNTextArray.begin(), dcsText('N'));
        std::ranges::transform(toneCode::dcsCodes(), s.DcsITextArray.begin(), dcsText('I'));
    });
}

void GetCtdcsIIcDat() {
    guarded("modCtdcs->GetCtdcsIIcDat", [] {
        auto& words = state().CtdcsIicDat;
        words[0] = "FFFF";
        std::size_t index = 1;
        for (const auto& tone : toneCode::ctcssTones()) {
            words[index++] = tone.word;
        }
        for (const std::string_view code : toneCode::dcsCodes()) {
            const auto value = static_cast<std::uint32_t>(std::stoi(std::string(code), nullptr, 8));
            const std::string digits = hexText(0x800 + value, 1);
            words[index + toneCode::dcsCount] = "A" + digits;
            words[index++] = "2" + digits;
        }
    });
}

std::optional<int> toneIndexOf(std::string_view text) {
    const auto& texts = state().CtdcsText;
    const auto found = std::ranges::find(texts, text);
    return found == texts.end() ? std::nullopt
                                : std::optional(static_cast<int>(found - texts.begin()));
}

}  // namespace k520::modCtdcs
