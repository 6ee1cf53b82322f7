// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/documentOrigin.h"

#include <utility>

#include "base/ModuleState.h"

namespace k520::documentOrigin {

namespace {

void tell() {
    if (state().openSteps > 0) {
        state().changedInStep = true;
    } else {
        state().onChange.tell();
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void begin(Origin origin, std::string what) {
    state().origin = origin;
    state().what = std::move(what);
    ++state().now.document;
    tell();
}

void edited(std::string what) {
    state().what = std::move(what);
    ++state().now.edit;
    tell();
}

void saved() {
    state().origin = Origin::file;
    tell();
}

Step::Step(std::string what) : what_(std::move(what)) {
    ++state().openSteps;
}

Step::~Step() {
    State& s = state();
    if (!what_.empty()) {
        s.what = std::move(what_);
    }
    if (--s.openSteps == 0 && std::exchange(s.changedInStep, false)) {
        s.onChange.tell();
    }
}

}  // namespace k520::documentOrigin
