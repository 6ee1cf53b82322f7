// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/interfaceLock.h"

#include "base/ModuleState.h"

namespace k520::interfaceLock {

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

}  // namespace k520::interfaceLock
