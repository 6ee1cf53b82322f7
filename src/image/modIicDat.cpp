// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/modIicDat.h"

#include <algorithm>

#include "app/Guard.h"
#include "app/programFolder.h"
#include "base/Files.h"
#include "base/ModuleState.h"

namespace k520::modIicDat {

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void sizeArrays(std::int16_t datNum) {
    if (datNum < 0) {
        throwSubscript("memory image", datNum);
    }
    State& s = state();
    const MemoryImage zeros(static_cast<std::size_t>(datNum) + 1);
    s.IicDat = s.IicDatDef = s.IicDatSpare = zeros;
    s.DatNum = datNum;
}

void InitTempArray() {
    guarded("mdifrmMain->InitTempArray", [] {
        State& s = state();
        const auto path = programFolder::findFile(programFolder::defaultImageFileName);
        const auto content = files::read(path, s.IicDat.size());
        std::ranges::copy(content.bytes, s.IicDat.bytes().begin());
        std::ranges::copy(content.bytes, s.IicDatDef.bytes().begin());
    });
}

void SeparateChar(std::string_view text) {
    guarded("mdifrmMain->SeparateChar", [&] {
        for (std::size_t i = 0; i < text.size(); i += 2) {
            const std::int16_t value = hexToInt16(text.substr(i, 2));
            checkedAt(state().separated, static_cast<std::ptrdiff_t>(i / 2), "separated bytes") =
                toByte(value);
        }
    });
}

void SolveModelPara() {}

}  // namespace k520::modIicDat
