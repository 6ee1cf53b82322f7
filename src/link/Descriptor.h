// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <utility>

namespace k520 {

/// Owns a file descriptor; closes it at the end.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int fd) noexcept : fd_(fd) {}
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    [[nodiscard]] int get() const noexcept { return fd_; }
    [[nodiscard]] bool valid() const noexcept { return fd_ >= 0; }
    void reset() noexcept;

  private:
    int fd_ = -1;
};

/// Puts a terminal into the radio's line settings: 9600 baud, 8 data bits, no parity, 1 stop bit,
/// no flow control, modem lines not consulted; bytes pass unchanged and without echo, and a read
/// never waits. False, with errno set, where the terminal refuses.
[[nodiscard]] bool setRadioLine(int fd) noexcept;

}  // namespace k520
