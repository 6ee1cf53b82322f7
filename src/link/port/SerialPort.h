// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace k520 {

/// One serial port: 9600 baud, 8 data bits, no parity, 1 stop bit, no flow control, binary. These
/// are all the operations that the radio link needs. Every operation but close() raises a
/// RuntimeError when the platform's call fails: 53 no such device, 55 in use, 57 input/output
/// error (the device has gone away included), 68 no serial device, 70 no permission. The source
/// text says what is wrong and, where one exists, the remedy.
class SerialPort {
  public:
    virtual ~SerialPort() = default;

    virtual void open() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;
    /// Closes the port; a closed port may be closed again. Raises where something that only the
    /// closing can tell went wrong (the simulated radio's memory could not be kept).
    virtual void close() = 0;

    /// Drops what has been received and not read.
    virtual void emptyInput() = 0;
    /// Drops what has been written and not yet been sent, where the platform can.
    virtual void emptyOutput() = 0;
    /// Hands all bytes to the port in one call; does not wait until they are on the line.
    virtual void write(std::span<const std::uint8_t> bytes) = 0;
    /// The number of bytes received and not read. Raises 57 once the device has gone away.
    [[nodiscard]] virtual std::size_t waiting() = 0;
    /// Takes all bytes received so far.
    [[nodiscard]] virtual std::vector<std::uint8_t> readAll() = 0;
};

/// Makes the port object for a port number 1..16; it is not open yet.
using PortMaker = std::function<std::unique_ptr<SerialPort>(std::int16_t number)>;

}  // namespace k520
