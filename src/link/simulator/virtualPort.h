// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "link/port/SerialPort.h"
#include "link/simulator/simRadio.h"

namespace k520 {

/// The port to a simulated radio inside this program. Its bytes travel by the clock in force, with
/// the radio's byte times, so a session takes as long as on a real line, and no time at all on a
/// simulated clock. One port at a time can be open to one radio.
class VirtualPort : public SerialPort {
  public:
    /// The name by which users choose this port.
    static constexpr std::string_view name = "virtual";

    explicit VirtualPort(std::shared_ptr<SimRadio> radio);
    ~VirtualPort() override;
    VirtualPort(const VirtualPort&) = delete;
    VirtualPort& operator=(const VirtualPort&) = delete;

    /// Raises 55 while this or another port is open to the radio, 53 when the radio has gone.
    void open() override;
    [[nodiscard]] bool isOpen() const override { return open_; }
    void close() override;

    void emptyInput() override;
    /// Drops nothing: what has been written is on the line already.
    void emptyOutput() override;
    void write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t waiting() override;
    [[nodiscard]] std::vector<std::uint8_t> readAll() override;

  protected:
    [[nodiscard]] SimRadio& radio() noexcept { return *radio_; }

  private:
    void takeArrived();

    std::shared_ptr<SimRadio> radio_;
    std::vector<std::uint8_t> received_;
    bool open_ = false;
};

}  // namespace k520
