// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/modShowErr.h"
#include "base/Checked.h"
#include "base/Controls.h"
#include "base/Procedure.h"
#include "image/modIicDat.h"
#include "link/port/SerialPort.h"
#include "link/protocol/communView.h"

/// The radio link: the one serial port, the protocol scripts and their interpreter. There is one
/// link and at most one session at a time, and everything runs on one thread.
namespace k520::modCommun {

/// Flags are 16-bit integers: all bits set for true.
inline constexpr std::int16_t flagTrue = -1;
inline constexpr std::int16_t flagFalse = 0;

/// One line of a script list.
struct ScriptStep {
    std::string script;
    std::int16_t address = 0;  ///< image address of the step's block; 0 where there is none
    std::int16_t size = 0;     ///< 16 for a block, a shorter last one too; else 0
    std::int16_t percent = 0;  ///< progress once the step has succeeded
};

/// The steps of one direction, from 1. A list that could not be built whole has the count 0, so
/// that no session runs half of it.
struct ScriptList {
    BoundedArray<ScriptStep, 1, 520> steps;
    std::int16_t count = 0;
};

struct State {
    // The port.
    std::int16_t portNumber = 1;  ///< what OpenCom opens; comPorts::usePort writes it
    /// Makes the port objects; none means comPorts::defaultPortMaker().
    PortMaker portMaker;
    /// The port object, from OpenCom to CloseCom.
    std::unique_ptr<SerialPort> comCommun;
    std::int16_t portFailureFlag = flagFalse;
    /// The device failure that the open port raised last and that has been told; none before.
    std::optional<modShowErr::Entry> toldFailure;

    // The data list and the number of its next line.
    LineList listRtData;
    std::int16_t dataListLine = 0;

    // The scripts.
    ScriptList readList;
    ScriptList writeList;

    // The interpreter. Tokens after the end of the last script keep older values.
    BoundedArray<std::string, 1, 200> tokenArray;
    std::int16_t tokenIndex = 1;
    /// Set while the token array holds a script only in part.
    std::int16_t scriptCut = flagFalse;
    /// 101 elements while a frame is being collected, then `transmitCount`.
    std::vector<std::uint8_t> transmitBuffer;
    std::int16_t transmitCount = 0;
    /// One text for each reply byte: two hexadecimal digits, or "VA" for any value.
    std::vector<std::string> expectedReply;
    std::int16_t expectedCount = 0;
    std::vector<std::uint8_t> receiveBuffer;
    /// What "VA" takes bytes from or stores them into, and the place of the next.
    BoundedArray<std::uint8_t, 1, 100> dataBuffer;
    std::int16_t dataIndex = 1;
    std::int16_t failureFlag = flagFalse;

    // What a session sets.
    std::int16_t attemptCounter = 0;
    std::int16_t pollInterval = 1;  ///< ms
    /// Set to 150 by every session; nothing reads it.
    std::int16_t secondValue = 0;
    std::int16_t currentStep = 0;
    /// The view of the session that is on, from its first line to its last.
    CommunView* view = nullptr;
};

[[nodiscard]] State& state();

/// The procedures whose failures tell how a session ended.
namespace procedures {
inline constexpr Procedure openCom{"modCommun->OpenCom"};
inline constexpr Procedure closeCom{"modCommun->CloseCom"};
inline constexpr Procedure initProtocol{"modCommun->InitProtocol"};
inline constexpr Procedure protocolCom{"modCommun->ProtocolCom"};
inline constexpr Procedure rxComDat{"modCommun->RxComDat"};
}  // namespace procedures

/// The view in force; one that does nothing while no session is on.
[[nodiscard]] CommunView& theView() noexcept;

/// A port object for a number, from the port maker in force. Raises what the maker raises.
[[nodiscard]] std::unique_ptr<SerialPort> makePort(std::int16_t number);

/// Opens a fresh port object with the port number. A failure sets the port-failure flag and goes to
/// the error list under "modCommun->OpenCom"; success clears the flag.
void OpenCom();

/// Closes the port and drops the object. A failure goes to the error list under
/// "modCommun->CloseCom", and nothing else tells of it.
void CloseCom();

/// Waits at least so many milliseconds and lets the interface work meanwhile; nothing for 0.
void DelayNms(std::int16_t milliseconds);

/// Logs a frame in the data list (see dataLog.h) and selects its last line; a list of more than
/// 3000 lines is emptied before. The result has no meaning. Label "modCommun->ComDataShow".
std::int16_t ComDataShow(std::int16_t direction, std::span<const std::uint8_t> bytes);

/// Adds a line to the data list and selects it.
void addDataLine(std::string line);

/// Builds both script lists from the read and write range of the image. A range beyond 520 steps
/// fails with 9, an address that the radio's form cannot hold with 5; the other list is built all
/// the same. Label "modCommun->InitProtocol".
void InitProtocol();
/// Builds them from ranges that the image does not know of.
void InitProtocol(const modIicDat::AddressRange& read, const modIicDat::AddressRange& write);

/// Cuts a script into the token array. Of more than 200 tokens the rest is dropped and reported
/// with 9 under "modCommun->ConvComCode"; the step then counts as failed.
void ConvComCode(std::string_view script);

/// Runs the token array up to its first token that is none of TX, RF and WF at the start of a
/// phase, or up to a failure. The result is the failure flag: a reply that was late or wrong, or
/// any error (9 for more than 101 frame or reply bytes or 100 data bytes, what the port raises),
/// which also goes to the error list under "modCommun->ProtocolCom". A port that has gone away
/// fails every attempt that follows in the same words; they are told once.
void ProtocolCom();

/// How many times the wait for a reply polls, less one, after so many failed attempts.
[[nodiscard]] constexpr int pollLimit(int failedAttempts) noexcept {
    return failedAttempts >= 10 ? failedAttempts % 5 * 10 + 150 : failedAttempts % 10 * 10 + 10;
}

/// Waits for so many bytes, logs them and compares them with the expected reply; what stands at a
/// "VA" goes to the data buffer. Whatever arrived after them is dropped. A reply that is late or
/// wrong, a ticked stop box and an error (label "modCommun->RxComDat") all add text 175 to the
/// data list and set the failure flag.
void RxComDat(std::int16_t count);

/// A line of the data list as scripts read it: text 175 is in English there whatever the language.
[[nodiscard]] std::string traceLine(const std::string& line);

/// What the reserved tokens RF and WF call: it does nothing and returns 0.
std::int16_t ReadWriteFre(std::string_view kind, std::int16_t first, std::int16_t second,
                          std::int16_t third);

}  // namespace k520::modCommun
