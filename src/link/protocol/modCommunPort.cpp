// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <chrono>
#include <utility>

#include "app/Guard.h"
#include "base/Clock.h"
#include "base/ModuleState.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/dataLog.h"
#include "link/protocol/modCommun.h"

namespace k520::modCommun {

namespace {

constexpr std::int16_t mostDataLines = 3000;

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

CommunView& theView() noexcept {
    static NullView nobody;
    return state().view != nullptr ? *state().view : nobody;
}

std::unique_ptr<SerialPort> makePort(std::int16_t number) {
    const PortMaker& maker = state().portMaker;
    return maker ? maker(number) : comPorts::defaultPortMaker()(number);
}

void OpenCom() {
    State& s = state();
    s.toldFailure.reset();
    const bool opened = guarded(procedures::openCom, [&] {
        s.comCommun = makePort(s.portNumber);
        s.comCommun->open();
    });
    s.portFailureFlag = opened ? flagFalse : flagTrue;
    if (!opened) {
        s.comCommun.reset();
    }
}

void CloseCom() {
    const auto port = std::exchange(state().comCommun, nullptr);
    guarded(procedures::closeCom, [&] {
        if (port) {
            port->close();
        }
    });
}

void DelayNms(std::int16_t milliseconds) {
    if (milliseconds <= 0) {
        return;
    }
    guarded("modCommun->DelayNms", [&] {
        Clock& clock = theClock();
        clock.waitUntil(clock.now() + std::chrono::milliseconds(milliseconds));
    });
}

void addDataLine(std::string line) {
    State& s = state();
    s.listRtData.insertSelected(s.dataListLine, std::move(line));
    ++s.dataListLine;
}

std::int16_t ComDataShow(std::int16_t direction, std::span<const std::uint8_t> bytes) {
    State& s = state();
    guarded("modCommun->ComDataShow", [&] {
        if (s.dataListLine > mostDataLines) {
            s.listRtData.clear();
            s.dataListLine = 0;
        }
        for (std::string& line : dataLog::frameLines(direction, bytes)) {
            addDataLine(std::move(line));
        }
    });
    return 0;
}

}  // namespace k520::modCommun
