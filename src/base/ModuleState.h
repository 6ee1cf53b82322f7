// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <functional>

/// The state of the process: every module has one struct with value semantics and one instance of
/// it, and this is the list of them all.
namespace k520 {

/// Puts every module back to the state of a new process. Tests, fuzzers and campaigns begin with
/// it.
void resetModules();

namespace moduleStates {

/// Lets resetModules() call `reset` from now on.
void add(std::function<void()> reset);

}  // namespace moduleStates

/// The one instance of a module's state. It joins the list when the module is first used: before
/// that there is nothing to put back.
template <class State>
class ModuleState {
  public:
    ModuleState() {
        moduleStates::add([this] { state_ = State{}; });
    }
    ModuleState(const ModuleState&) = delete;
    ModuleState& operator=(const ModuleState&) = delete;

    State& operator*() noexcept { return state_; }

  private:
    State state_;
};

}  // namespace k520
