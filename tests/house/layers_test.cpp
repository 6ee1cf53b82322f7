// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if __has_include(<QtGlobal>) || __has_include(<QtCore/QtGlobal>)
#error "the core hands on an include path of the window toolkit"
#endif

namespace {

namespace fs = std::filesystem;

/// The floors from the ground up: an include stays on its floor or goes down.
enum class Floor { app, image, settings, channels, memview, link, startUp, cli, windows };

constexpr std::array<std::pair<std::string_view, Floor>, 9> floors = {{
    {"app/modStartUp.", Floor::startUp},
    {"app/modFileCmd.", Floor::startUp},
    {"app/", Floor::app},
    {"image/", Floor::image},
    {"settings/", Floor::settings},
    {"channels/", Floor::channels},
    {"memview/", Floor::memview},
    {"link/", Floor::link},
    {"cli/", Floor::cli},
}};

/// The floor of a file below src; nothing where its folder is not in the plan of the house.
std::optional<Floor> floorOf(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    if (name.starts_with("frm") || name.starts_with("mdifrmMain.")) {
        return Floor::windows;
    }
    const auto* found =
        std::ranges::find_if(floors, [&](const auto& row) { return path.starts_with(row.first); });
    return found == floors.end() ? std::nullopt : std::optional(found->second);
}

/// The command line and the windows do not know each other.
bool mayInclude(const std::string& path, const std::string& header) {
    const auto from = floorOf(path);
    const auto to = floorOf(header);
    return from && to && (to == from || (to < from && to != Floor::cli));
}

bool isToolkitHeader(const std::string& header) {
    static const std::regex toolkit(R"((Qt\w*/.*|Q[A-Zt]\w*|q[a-z]+\.h))");
    return std::regex_match(header, toolkit);
}

struct Source {
    std::string path;  ///< below its tree
    std::vector<std::string> lines;
    std::vector<std::string> headers;  ///< what it includes, without quotes or brackets
};

Source readSource(const fs::path& tree, const fs::path& file) {
    static const std::regex include(R"re(\s*#\s*include\s*[<"]([^>"]+).*)re");
    Source source{fs::relative(file, tree).generic_string(), {}, {}};
    std::ifstream in(file);
    std::smatch match;
    for (std::string line; std::getline(in, line);) {
        if (std::regex_match(line, match, include)) {
            source.headers.push_back(match[1]);
        }
        source.lines.push_back(line);
    }
    return source;
}

std::vector<Source> sourcesOf(const char* treeName) {
    const fs::path tree = fs::path(K520_SOURCE_DIR) / treeName;
    std::vector<Source> sources;
    for (const auto& entry : fs::recursive_directory_iterator(tree)) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
            sources.push_back(readSource(tree, entry.path()));
        }
    }
    return sources;
}

TEST(Layers, RulesTellGoodFromBad) {
    EXPECT_TRUE(mayInclude("channels/modChMem.cpp", "channels/grid.h"));
    EXPECT_TRUE(mayInclude("channels/modChMem.cpp", "image/stamp.h"));
    EXPECT_TRUE(mayInclude("app/modStartUp.cpp", "app/modFileCmd.h"));
    EXPECT_TRUE(mayInclude("app/mdifrmMain.cpp", "channels/frmChMem.h"));
    EXPECT_FALSE(mayInclude("image/stamp.cpp", "channels/grid.h"));
    EXPECT_FALSE(mayInclude("app/Guard.h", "app/modFileCmd.h"));
    EXPECT_FALSE(mayInclude("link/session.cpp", "cli/program.h"));
    EXPECT_FALSE(mayInclude("channels/modChMem.cpp", "channels/frmChMem.h"));
    EXPECT_FALSE(mayInclude("cli/program.cpp", "app/mdifrmMain.h"));
    EXPECT_FALSE(mayInclude("app/mdifrmMain.cpp", "cli/program.h"));
    EXPECT_FALSE(mayInclude("attic/old.cpp", "app/Guard.h"));
    for (const char* header : {"QString", "QtWidgets", "QtCore/QString", "qglobal.h"}) {
        EXPECT_TRUE(isToolkitHeader(header)) << header;
    }
    EXPECT_FALSE(isToolkitHeader("queue"));
}

TEST(Layers, IncludesGoDown) {
    const fs::path tree = fs::path(K520_SOURCE_DIR) / "src";
    int checked = 0;
    for (const Source& source : sourcesOf("src")) {
        EXPECT_TRUE(floorOf(source.path)) << source.path << " is on no floor of the house";
        for (const std::string& header : source.headers) {
            if (fs::exists(tree / header)) {
                EXPECT_TRUE(mayInclude(source.path, header)) << source.path << ": " << header;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0);
}

TEST(Layers, OnlyWindowsKnowTheToolkit) {
    for (const Source& source : sourcesOf("src")) {
        if (floorOf(source.path) != Floor::windows) {
            const auto found = std::ranges::find_if(source.headers, isToolkitHeader);
            EXPECT_TRUE(found == source.headers.end()) << source.path << ": " << *found;
        }
    }
}

TEST(Layers, EverySourceStartsWithItsTwoLicenceLines) {
    for (const char* tree : {"src", "tests", "bench", "tools"}) {
        for (const Source& source : sourcesOf(tree)) {
            SCOPED_TRACE(std::string(tree) + "/" + source.path);
            ASSERT_GE(source.lines.size(), 2U);
            EXPECT_EQ(source.lines[0], "// SPDX-License-Identifier: MIT");
            EXPECT_EQ(source.lines[1], "// SPDX-FileCopyrightText: 2026 The K520 authors");
            EXPECT_EQ(std::ranges::count_if(
                          source.lines,
                          [](const std::string& line) { return line.starts_with("// SPDX-"); }),
                      2);
        }
    }
}

}  // namespace
