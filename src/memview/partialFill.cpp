// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "memview/partialFill.h"

#include <algorithm>

#include "app/Guard.h"
#include "base/Checked.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"
#include "memview/memDatTexts.h"
#include "memview/modMemDat.h"

namespace k520::partialFill {

namespace {

using modIicDat::AddressRange;

AddressRange& lastRange() {
    return modIicDat::state().partialFillRange;
}

/// The highest address that a range can name: ranges are signed 16-bit.
int lastAddress() {
    constexpr int greatest = 0x7FFF;
    return std::min(static_cast<int>(modIicDat::IicDat().size()) - 1, greatest);
}

std::string addressText(std::int16_t address) {
    return hexText(static_cast<std::uint16_t>(address), 4);
}

std::optional<int> addressIn(std::string_view text) {
    const auto address = modMemDat::parseAddress(text);
    return address && *address <= lastAddress() ? address : std::nullopt;
}

Refusal badAddress(Field field) {
    return {field, say(texts::badFillAddress, lastAddress())};
}

void fillBytes(AddressRange range, std::uint8_t value) {
    guarded("frmMemDat->cmdPartFill_Click", [&] {
        for (int address = range.start; address <= range.end; ++address) {
            modIicDat::IicDat()(address) = value;
        }
        modMemDat::TableFreDat();
        documentOrigin::edited(say(texts::stepFill, range.start, range.end));
    });
}

}  // namespace

Texts initial() {
    return {addressText(lastRange().start), addressText(lastRange().end), ""};
}

std::optional<Refusal> fill(const Texts& texts) {
    const auto from = addressIn(texts.from);
    if (!from) {
        return badAddress(Field::from);
    }
    const auto to = addressIn(texts.to);
    if (!to) {
        return badAddress(Field::to);
    }
    if (*to < *from) {
        return Refusal{Field::to, say(texts::fillEndsBeforeStart)};
    }
    const std::string_view value = trimBlanks(texts.value);
    if (!modMemDat::isByteText(value)) {
        return Refusal{Field::value, say(texts::badByteTip)};
    }
    lastRange() = {toInt16(*from), toInt16(*to)};
    fillBytes(lastRange(), modMemDat::SeparateChar(value));
    return std::nullopt;
}

}  // namespace k520::partialFill
