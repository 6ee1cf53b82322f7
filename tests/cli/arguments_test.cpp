// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <stdexcept>

#include "cli/Command.h"

namespace k520::cli {
namespace {

TEST(Arguments, OnesThatTheCommandDoesNotHaveAreNeverJustNotGiven) {
    const char* const words[] = {"k520-cli", "diff", "a.dat", "b.dat"};
    const auto request = parse(4, words);
    EXPECT_FALSE(request.arguments.has("json"));
    EXPECT_EQ(request.arguments.at("B"), "b.dat");
    EXPECT_THROW((void)request.arguments.has("verify"), std::logic_error);
    EXPECT_FALSE(argumentTables::has("verfiy"));
}

}  // namespace
}  // namespace k520::cli
