// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

// Two constants of one name in one program are one to the linker: the wrong text would be said.
TEST(TextNames, AreUniqueThroughoutTheProgram) {
    static const std::regex definition(R"(inline constexpr Text (\w+).*)");
    std::map<std::string, std::string> headers;
    for (const auto& entry : fs::recursive_directory_iterator(K520_SOURCE_DIR "/src")) {
        const std::string file = entry.path().filename().string();
        if (!file.ends_with("Texts.h")) {
            continue;
        }
        std::ifstream in(entry.path());
        std::smatch match;
        for (std::string line; std::getline(in, line);) {
            if (std::regex_match(line, match, definition)) {
                const auto [first, isNew] = headers.emplace(match[1], file);
                EXPECT_TRUE(isNew) << match[1] << " in " << first->second << " and " << file;
            }
        }
    }
    EXPECT_GT(headers.size(), 100U);
}

}  // namespace
