// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <algorithm>
#include <utility>

#include "app/Guard.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "link/protocol/scriptText.h"

namespace k520::modCommun {

namespace {

/// What tells the two lists apart.
struct ListForm {
    std::string (*blockScript)(int address, int length);
    std::string_view endScript;
};

constexpr ListForm readForm{scriptText::readBlock, scriptText::endOfRead};
constexpr ListForm writeForm{scriptText::writeBlock, scriptText::endOfWrite};

void build(ScriptList& list, const modIicDat::AddressRange& range, const ListForm& form) {
    using namespace scriptText;
    list.count = 0;
    std::int16_t last = 0;
    const auto add = [&](ScriptStep step) { list.steps(++last, "script table") = std::move(step); };

    add({std::string(handshake), 0, 0, handshakePercent});
    const int blocks = percentBlocks(range.start, range.end);
    for (int address = range.start; address <= range.end; address += blockLength) {
        const int length = std::min(range.end - address + 1, blockLength);
        // The size stays that of a whole block even where the last one is shorter.
        add({form.blockScript(address, length), static_cast<std::int16_t>(address), blockLength,
             blockPercent(last + 1, blocks)});
    }
    add({std::string(form.endScript), 0, 0, endPercent});
    list.count = last;
}

}  // namespace

void InitProtocol() {
    InitProtocol(modIicDat::state().readRange, modIicDat::state().writeRange);
}

void InitProtocol(const modIicDat::AddressRange& read, const modIicDat::AddressRange& write) {
    State& s = state();
    guarded(procedures::initProtocol, [&] { build(s.readList, read, readForm); });
    guarded(procedures::initProtocol, [&] { build(s.writeList, write, writeForm); });
}

void ConvComCode(std::string_view script) {
    State& s = state();
    const bool whole = guarded("modCommun->ConvComCode", [&] {
        std::int16_t number = 0;
        for (std::string& token : scriptText::tokens(script)) {
            s.tokenArray(++number, "token array") = std::move(token);
        }
    });
    s.scriptCut = whole ? flagFalse : flagTrue;
}

std::int16_t ReadWriteFre(std::string_view /*kind*/, std::int16_t /*first*/,
                          std::int16_t /*second*/, std::int16_t /*third*/) {
    return 0;
}

}  // namespace k520::modCommun
