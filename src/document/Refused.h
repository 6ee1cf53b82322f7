// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace k520::document {

/// Why something asked of the configuration is not done.
enum class Reason : std::uint8_t {
    unknownName,    ///< there is no key or option of that name
    notUnderstood,  ///< the value, or how it is asked, has no meaning there
    notPossible,    ///< it has a meaning, and cannot be done now
};

/// Raised by an edit or an import, with the reason in the language in force.
class Refused : public std::runtime_error {
  public:
    Refused(Reason reason, const std::string& message)
        : std::runtime_error(message), reason_(reason) {}

    [[nodiscard]] Reason reason() const noexcept { return reason_; }

  private:
    Reason reason_;
};

[[noreturn]] inline void refuse(Reason reason, const std::string& message) {
    throw Refused(reason, message);
}

/// Gets what an edit made of its value, where that is not plain: one line each.
using Listener = std::function<void(const std::string&)>;

}  // namespace k520::document
