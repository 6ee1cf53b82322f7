// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <filesystem>

namespace k520 {

/// A symbolic link with a lasting name to a device whose name changes. It is removed at the end,
/// unless somebody has turned it elsewhere meanwhile.
class DeviceLink {
  public:
    /// Makes the link, or turns an existing one, in one step: at no instant is there none. Raises
    /// 75 where the path is anything but a symbolic link, and what the system says otherwise.
    DeviceLink(std::filesystem::path link, std::filesystem::path device);
    ~DeviceLink();
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;

  private:
    std::filesystem::path link_;
    std::filesystem::path device_;
};

}  // namespace k520
