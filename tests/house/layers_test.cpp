// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <algorithm>
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

constexpr std::pair<std::string_view, Floor> floors[] = {
    // by folder
    {"app/", Floor::app},           {"image/", Floor::image},     {"settings/", Floor::settings},
    {"channels/", Floor::channels}, {"memview/", Floor::memview}, {"link/", Floor::link},
    {"cli/", Floor::cli},           {"desktop/", Floor::windows}};

/// The floor of a file below src; nothing where its folder is not in the plan of the house.
std::optional<Floor> floorOf(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    if (name.starts_with("frm") || name.starts_with("mdifrmMain")) {
        return Floor::windows;
    }
    if (name.starts_with("modStartUp.") || name.starts_with("modFileCmd.") ||
        name.starts_with("modPrint.")) {
        return Floor::startUp;
    }
    const auto* found =
        std::ranges::find_if(floors, [&](const auto& row) { return path.starts_with(row.first); });
    return found == std::end(floors) ? std::nullopt : std::optional(found->second);
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
    std::string path;                  ///< below its tree
    std::vector<std::string> headers;  ///< what it includes, without quotes or brackets
};

std::vector<Source> sourcesOf(const fs::path& tree) {
    static const std::regex include(R"re(\s*#\s*include\s*[<"]([^>"]+).*)re");
    std::vector<Source> sources;
    for (const auto& entry : fs::recursive_directory_iterator(tree)) {
        const fs::path& file = entry.path();
        if (file.extension() != ".h" && file.extension() != ".cpp") {
            continue;
        }
        Source& source = sources.emplace_back();
        source.path = fs::relative(file, tree).generic_string();
        std::ifstream in(file);
        std::smatch match;
        for (std::string line; std::getline(in, line);) {
            if (std::regex_match(line, match, include)) {
                source.headers.push_back(match[1]);
            }
        }
    }
    return sources;
}

TEST(Layers, IncludesGoDownAndOnlyWindowsKnowTheToolkit) {
    const fs::path tree = fs::path(K520_SOURCE_DIR) / "src";
    int checked = 0;
    EXPECT_FALSE(mayInclude("app/Guard.h", "app/modFileCmd.h") || isToolkitHeader("queue"));
    EXPECT_FALSE(mayInclude("app/mdifrmMain.cpp", "cli/program.h"));
    EXPECT_TRUE(isToolkitHeader("QString") && isToolkitHeader("QtCore/QString"));
    for (const Source& source : sourcesOf(tree)) {
        EXPECT_TRUE(floorOf(source.path)) << source.path << " is on no floor of the house";
        for (const std::string& header : source.headers) {
            SCOPED_TRACE(source.path + ": " + header);
            EXPECT_TRUE(floorOf(source.path) == Floor::windows || !isToolkitHeader(header));
            if (fs::exists(tree / header)) {
                EXPECT_TRUE(mayInclude(source.path, header));
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0);
}

}  // namespace
