// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <algorithm>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "link/port/portTexts.h"
#include "link/protocol/dataLog.h"
#include "link/protocol/modCommun.h"
#include "link/protocol/scriptText.h"

namespace k520::modCommun {

namespace {

constexpr std::int16_t phaseDelayMs = 5;
constexpr std::size_t frameLimit = 101;
constexpr std::string_view anyByte = "VA";

/// Whether the port has failed like this before. In which procedure does not count: all of them
/// talk to the one port.
bool isTold(const RuntimeError& error) {
    const auto& told = state().toldFailure;
    return told && told->number == error.number() && told->subject == error.subject() &&
           told->source == error.source();
}

/// Runs a body as guarded() does, but is silent about a failure of the port that has been told.
template <class Body>
bool guardedOnce(const Procedure& procedure, Body&& body) {
    bool done = false;
    guarded(procedure, [&] {
        try {
            body();
            done = true;
        } catch (const RuntimeError& error) {
            if (isTold(error)) {
                return;
            }
            if (error.number() == errNum::deviceIo) {
                state().toldFailure.emplace(procedure, error.number(), error.source(),
                                            error.subject());
            }
            throw;
        }
    });
    return done;
}

SerialPort& thePort() {
    if (!state().comCommun) {
        throw RuntimeError(errNum::deviceUnavailable, say(texts::serialPortNotOpen));
    }
    return *state().comCommun;
}

const std::string& token(int offset = 0) {
    State& s = state();
    return s.tokenArray(s.tokenIndex + offset, "token array");
}

const std::string& nextToken() {
    ++state().tokenIndex;
    return token();
}

bool isReserved(std::string_view text) {
    return text == "RF" || text == "WF";
}

bool endsReply(std::string_view text) {
    return text == "TX" || text == "EN" || isReserved(text);
}

/// The place in the data buffer whose turn it is; the next one's turn comes then.
std::uint8_t& nextData() {
    State& s = state();
    std::uint8_t& place = s.dataBuffer(s.dataIndex, "data buffer");
    ++s.dataIndex;
    return place;
}

/// Collects a frame up to its RX or EN; returns whether a reply is described after it.
bool collectFrame() {
    State& s = state();
    for (;;) {
        const std::string& text = nextToken();
        if (text == "EN" || text == "RX") {
            return text == "RX";
        }
        const auto byte = text == anyByte ? nextData() : scriptText::byteOfToken(text);
        checkedAt(s.transmitBuffer, s.transmitCount, "transmit buffer") = byte;
        ++s.transmitCount;
    }
}

void collectReply() {
    State& s = state();
    while (!endsReply(nextToken())) {
        checkedAt(s.expectedReply, s.expectedCount, "expected reply") = token();
        ++s.expectedCount;
    }
}

void exchange() {
    State& s = state();
    SerialPort& port = thePort();
    s.failureFlag = flagFalse;
    port.emptyInput();
    port.emptyOutput();
    if (s.transmitCount > 0) {
        s.transmitBuffer.resize(static_cast<std::size_t>(s.transmitCount));
        ComDataShow(dataLog::sent, s.transmitBuffer);
        port.write(s.transmitBuffer);
    }
    if (s.expectedCount > 0) {
        RxComDat(s.expectedCount);
    }
}

void transmitPhase() {
    State& s = state();
    s.transmitCount = 0;
    s.expectedCount = 0;
    if (collectFrame()) {
        collectReply();
    }
    exchange();
}

void reservedPhase() {
    const auto operand = [](int place) -> std::int16_t {
        return scriptText::byteOfToken(token(place));
    };
    ReadWriteFre(token(), operand(1), operand(2), operand(3));
    state().tokenIndex = static_cast<std::int16_t>(state().tokenIndex + 4);
}

void runScript() {
    State& s = state();
    s.dataIndex = 1;
    s.tokenIndex = 1;
    do {
        DelayNms(phaseDelayMs);
        s.transmitBuffer.assign(frameLimit, 0);
        s.expectedReply.assign(frameLimit, {});
        if (token() == "TX") {
            transmitPhase();
        } else if (isReserved(token())) {
            reservedPhase();
        } else {
            return;  // "EN", or a token that nobody knows
        }
    } while (s.failureFlag == flagFalse);
}

/// Polls for so many bytes; false when they are late or the user stops the session.
bool awaitBytes(std::size_t count) {
    State& s = state();
    const int limit = pollLimit(s.attemptCounter);
    for (int poll = 0; poll <= limit; ++poll) {
        if (thePort().waiting() >= count) {
            return true;
        }
        DelayNms(s.pollInterval);
        if (theView().stopTicked() || theView().abandoned()) {
            return false;
        }
    }
    return false;
}

void takeReply(std::size_t count) {
    State& s = state();
    s.receiveBuffer = thePort().readAll();
    s.receiveBuffer.resize(std::min(count, s.receiveBuffer.size()));
    ComDataShow(dataLog::received, s.receiveBuffer);
}

bool replyIsRight(std::int16_t count) {
    State& s = state();
    for (std::int16_t i = 0; i < count; ++i) {
        const std::string& expected = checkedAt(s.expectedReply, i, "expected reply");
        const std::uint8_t byte = checkedAt(s.receiveBuffer, i, "receive buffer");
        if (expected == anyByte) {
            nextData() = byte;
        } else if (scriptText::byteOfToken(expected) != byte) {
            return false;
        }
    }
    return true;
}

}  // namespace

void ProtocolCom() {
    State& s = state();
    const bool ran = guardedOnce(procedures::protocolCom, runScript);
    if (!ran || s.scriptCut != flagFalse) {
        s.failureFlag = flagTrue;
    }
}

void RxComDat(std::int16_t count) {
    bool right = false;
    guardedOnce(procedures::rxComDat, [&] {
        const auto length = static_cast<std::size_t>(count);
        state().dataIndex = 1;
        if (awaitBytes(length)) {
            takeReply(length);
            right = replyIsRight(count);
        }
    });
    if (!right) {
        state().failureFlag = flagTrue;
        guarded(procedures::rxComDat, [] { addDataLine(modSoftFace::text(SoftText::noReply)); });
    }
}

std::string traceLine(const std::string& line) {
    if (line != modSoftFace::text(SoftText::noReply)) {
        return line;
    }
    return std::string(modSoftFace::textIn(TextLanguage::english, SoftText::noReply));
}

}  // namespace k520::modCommun
