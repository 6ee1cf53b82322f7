// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "support/TempFolder.h"

namespace k520 {
namespace {

namespace fs = std::filesystem;

/// What a line of a shell says, and how it ends, in a folder of its own.
class Shell {
  public:
    Shell() {
        fs::create_symlink(K520_CLI, folder_ / "k520-cli");
        fs::create_directory(folder_ / "home");
    }

    [[nodiscard]] std::string operator()(const std::string& line) const {
        const auto script = folder_.write(
            ".script", "cd " + folder_.path().string() + "; unset LC_ALL LC_MESSAGES; LANG=C\n" +
                           "export LANG K520_HOME=$PWD/home PATH=$PWD:$PATH\n" + line);
        std::FILE* pipe = ::popen(("sh " + script.string() + " 2>&1").c_str(), "r");
        std::string said;
        std::array<char, 4096> piece{};
        for (std::size_t got = 1; (got = std::fread(piece.data(), 1, piece.size(), pipe)) > 0;) {
            said.append(piece.data(), got);
        }
        const int code = WEXITSTATUS(::pclose(pipe));
        for (auto at = said.find(folder_.path()); at != std::string::npos;
             at = said.find(folder_.path())) {
            said.replace(at, folder_.path().string().size(), "FOLDER");
        }
        return said + (code == 0 ? "" : "=> " + std::to_string(code) + "\n");
    }

  private:
    test::TempFolder folder_;
};

std::string textOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A transcript: lines that begin with "$ ", each before what it has to say.
class Transcripts : public testing::TestWithParam<const char*> {};

// K520_TRANSCRIPTS=write takes what is said now into the sources, for a look at the difference.
TEST_P(Transcripts, SayWhatTheySaid) {
    const fs::path path = fs::path(K520_SOURCE_DIR) / "tests/cli/transcripts" / GetParam();
    const auto expected = textOf(path);
    const Shell shell;
    std::string said;
    std::istringstream lines(expected);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ ")) {
            said += line + "\n" + shell(line.substr(2));
        }
    }
    const char* wish = std::getenv("K520_TRANSCRIPTS");
    if (wish != nullptr && std::string(wish) == "write") {
        std::ofstream(path, std::ios::binary) << said;
    }
    ASSERT_NE(said, "") << path;
    EXPECT_EQ(said, expected);
}

INSTANTIATE_TEST_SUITE_P(Contract, Transcripts,
                         testing::Values("tables.txt", "complaints.txt", "help.txt",
                                         "sessions.txt"),
                         [](const auto& each) {
                             const std::string name = each.param;
                             return name.substr(0, name.find('.'));
                         });

}  // namespace
}  // namespace k520
