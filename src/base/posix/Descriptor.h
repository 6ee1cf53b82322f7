// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <unistd.h>

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
    Descriptor(Descriptor&& other) noexcept : fd_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    [[nodiscard]] int get() const noexcept { return fd_; }
    [[nodiscard]] bool valid() const noexcept { return fd_ >= 0; }
    /// Gives the descriptor away; nobody closes it here.
    [[nodiscard]] int release() noexcept { return std::exchange(fd_, -1); }
    /// Closes it and returns what the system says: -1 for a failure, with errno set. It is gone
    /// either way.
    [[nodiscard]] int close() noexcept { return ::close(release()); }
    void reset() noexcept {
        if (valid()) {
            static_cast<void>(close());
        }
    }

  private:
    int fd_ = -1;
};

}  // namespace k520
