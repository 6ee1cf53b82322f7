// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/simulator/simFaults.h"

namespace k520 {

namespace {

void apply(const ByteFault& fault, LineByte& byte) noexcept {
    switch (fault.kind) {
        case ByteFaultKind::lose:
            byte.lost = true;
            break;
        case ByteFaultKind::corrupt:
            byte.value = static_cast<std::uint8_t>(byte.value ^ fault.value);
            break;
        case ByteFaultKind::add:
            byte.extra = fault.value;
            break;
        case ByteFaultKind::repeat:
            byte.extra = byte.value;
            break;
        case ByteFaultKind::delay:
            byte.late += fault.by;
            break;
    }
}

}  // namespace

LineByte throughFaults(std::span<const ByteFault> faults, std::uint32_t number,
                       std::uint8_t value) noexcept {
    LineByte byte{value, false, std::nullopt, {}};
    for (const ByteFault& fault : faults) {
        if (fault.byte == number) {
            apply(fault, byte);
        }
    }
    return byte;
}

}  // namespace k520
