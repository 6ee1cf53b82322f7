// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/userLocale.h"

#include "base/environment.h"

namespace k520::userLocale {

std::string name() {
    // In the order of the C library.
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (auto value = environment(variable); !value.empty()) {
            return value;
        }
    }
    return {};
}

}  // namespace k520::userLocale
