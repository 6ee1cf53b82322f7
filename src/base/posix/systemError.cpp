// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/systemError.h"

#include <cerrno>

namespace k520::systemError {

std::errc kind(const std::error_code& error) {
    // The other systems have no such error: a user's share of the disk is full.
    return error.value() == EDQUOT ? std::errc::no_space_on_device
                                   : static_cast<std::errc>(error.value());
}

std::string words(const std::error_code& error) {
    return std::generic_category().message(error.value());
}

}  // namespace k520::systemError
