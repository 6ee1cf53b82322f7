// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/documentOrigin.h"

#include <utility>

#include "base/ModuleState.h"

namespace k520::documentOrigin {

namespace {

void tellFollowers() {
    // Copied: one that is told may end itself or another.
    const auto followers = state().followers;
    for (const auto& [number, told] : followers) {
        if (state().followers.contains(number)) {
            told();
        }
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void begin(Origin origin) {
    state().origin = origin;
    ++state().now.document;
    tellFollowers();
}

void edited() {
    ++state().now.edit;
    tellFollowers();
}

void saved() {
    state().origin = Origin::file;
    tellFollowers();
}

Follower::Follower(std::function<void()> told) : number_(state().nextFollower++) {
    state().followers.emplace(number_, std::move(told));
}

Follower::~Follower() {
    state().followers.erase(number_);
}

}  // namespace k520::documentOrigin
