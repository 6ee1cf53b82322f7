// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/columnTips.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "channels/columnTipTexts.h"
#include "channels/modChMem.h"

namespace k520::columnTips {

namespace {

namespace columnKey = modChMem::columnKey;

struct ColumnTip {
    std::string_view key;
    Text tip;
};

/// The keys of the list columns are those of the settings as shipped.
constexpr std::array tips{ColumnTip{columnKey::rx, texts::rxTip},
                          ColumnTip{columnKey::tx, texts::txTip},
                          ColumnTip{columnKey::decode, texts::decodeTip},
                          ColumnTip{columnKey::encode, texts::encodeTip},
                          ColumnTip{"Bandwidth", texts::bandwidthTip},
                          ColumnTip{"Power", texts::powerTip},
                          ColumnTip{"Scan", texts::scanTip},
                          ColumnTip{"BusyLock", texts::busyLockTip}};

}  // namespace

std::string of(int column) {
    if (column < 1 || column > modChMem::state().ColNum) {
        return {};
    }
    const std::string_view key = modChMem::columnOf(column).key();
    const auto* found = std::ranges::find(tips, key, &ColumnTip::key);
    return found == tips.end() ? std::string() : say(found->tip);
}

}  // namespace k520::columnTips
