// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <string>

#include "base/posix/Descriptor.h"

namespace k520::test {

/// A pseudo-terminal with nobody at its other end.
struct Terminal {
    Terminal() {
        EXPECT_TRUE(::grantpt(master.get()) == 0 && ::unlockpt(master.get()) == 0);
        path = ::ptsname(master.get());
    }

    Descriptor master{::posix_openpt(O_RDWR | O_NOCTTY)};
    std::string path;
};

}  // namespace k520::test
