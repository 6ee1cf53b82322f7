// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/ModuleState.h"

#include <utility>
#include <vector>

namespace k520 {

namespace {

std::vector<std::function<void()>>& resets() {
    static std::vector<std::function<void()>> all;
    return all;
}

}  // namespace

void moduleStates::add(std::function<void()> reset) {
    resets().push_back(std::move(reset));
}

void resetModules() {
    for (const auto& reset : resets()) {
        reset();
    }
}

}  // namespace k520
