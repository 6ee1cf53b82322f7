// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/documentOrigin.h"

#include "base/ModuleState.h"

namespace k520::documentOrigin {

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void begin(Origin origin) {
    state().origin = origin;
    ++state().now.document;
    state().onChange.tell();
}

void edited() {
    ++state().now.edit;
    state().onChange.tell();
}

void saved() {
    state().origin = Origin::file;
    state().onChange.tell();
}

}  // namespace k520::documentOrigin
