// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/posix/Descriptor.h"
#include "link/port/SerialPort.h"

namespace k520 {

/// A serial device of the system, by its path; symbolic links and pseudo-terminals do as well.
///
/// While it is open it is ours alone: an advisory lock (flock) and the terminal's exclusive mark
/// tell every other program so. Nothing is sent to a path that is not a serial device. A device
/// that has gone away is told apart from one that is silent: every operation then raises 57 at
/// once.
class PosixPort : public SerialPort {
  public:
    /// `writeLimit` bounds how long write() waits for a line that takes no bytes.
    explicit PosixPort(std::string path,
                       std::chrono::milliseconds writeLimit = std::chrono::seconds(2));
    ~PosixPort() override;
    PosixPort(const PosixPort&) = delete;
    PosixPort& operator=(const PosixPort&) = delete;

    /// Raises 53 for a path that leads nowhere, 68 for one that is not a serial device, 70
    /// without permission (the source names the group that has it), 55 for a device in use (the
    /// source names the holder where it can be found).
    void open() override;
    [[nodiscard]] bool isOpen() const override { return line_.valid(); }
    /// Takes the exclusive mark away and closes; the line settings stay as they are.
    void close() override;

    void emptyInput() override;
    void emptyOutput() override;
    /// Raises 57 where the line takes no bytes for the write limit.
    void write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t waiting() override;
    [[nodiscard]] std::vector<std::uint8_t> readAll() override;

  private:
    void requireOpen() const;
    void require(bool done) const;
    void waitForRoom(std::chrono::steady_clock::time_point deadline) const;

    std::string path_;
    std::chrono::milliseconds writeLimit_;
    Descriptor line_;
};

}  // namespace k520
