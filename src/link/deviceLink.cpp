// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/deviceLink.h"

#include <unistd.h>

#include <string>
#include <system_error>
#include <utility>

#include "app/RuntimeError.h"
#include "link/portTexts.h"

namespace k520 {

namespace fs = std::filesystem;

DeviceLink::DeviceLink(fs::path link, fs::path device)
    : link_(std::move(link)), device_(std::move(device)) {
    std::error_code error;
    const auto present = fs::symlink_status(link_, error);
    if (fs::exists(present) && !fs::is_symlink(present)) {
        throw RuntimeError(errNum::pathAccess, link_.string(), say(texts::notALink));
    }
    const fs::path temporary = link_.string() + "." + std::to_string(::getpid());
    fs::create_symlink(device_, temporary, error);
    if (!error) {
        fs::rename(temporary, link_, error);
    }
    if (error) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        throwSystemError(error.value(), link_.string());
    }
}

DeviceLink::~DeviceLink() {
    std::error_code error;
    if (fs::read_symlink(link_, error) == device_ && !error) {
        fs::remove(link_, error);
    }
}

}  // namespace k520
