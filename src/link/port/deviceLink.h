// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>
#include <memory>

namespace k520 {

/// A symbolic link with a lasting name to a device whose name changes. It is removed at the end,
/// unless somebody has turned it elsewhere meanwhile.
class DeviceLink {
  public:
    /// Makes the link, or turns a stale one, in one step: at no instant is there none. A link is
    /// stale when nothing stands at its end, or a terminal that has no link of a running program.
    /// Raises 70 for a link that is not stale, 75 where the path is anything but a symbolic link,
    /// and what the system says otherwise.
    DeviceLink(std::filesystem::path link, std::filesystem::path device);
    ~DeviceLink();
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;

  private:
    class Mark;

    std::filesystem::path link_;
    std::filesystem::path device_;
    /// On the device: it has the link of a running program.
    std::unique_ptr<Mark> mark_;
};

}  // namespace k520
