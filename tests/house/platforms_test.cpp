// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

/// What only the folders of a platform may say, each with an example.
const struct {
    const char* what;
    std::regex pattern;
    const char* example;
} rules[] = {
    {"a header of one system",
     std::regex(
         R"(#\s*include\s*<(sys|linux|mach|net|arpa|netinet)/.*|)"
         R"(#\s*include\s*<(unistd|fcntl|pwd|grp|poll|pty|termios|signal|spawn|dirent|dlfcn|)"
         R"(pthread|sched|strings|langinfo|windows|winsock2|io|direct|conio|shlobj)\.h>.*|)"
         R"(#\s*include\s*<csignal>.*)"),
     "#include <sys/stat.h>"},
    {"a header of a platform's folder", std::regex(R"(#\s*include\s*"(.*/)?(posix|windows)/.*)"),
     "#include \"base/posix/Descriptor.h\""},
    {"a question for the system",
     std::regex(R"(#\s*(el)?if.*\b(_WIN32|_WIN64|WIN32|__linux__|__unix__|__APPLE__|__MINGW\w*|)"
                R"(_POSIX_\w+|Q_OS_\w+)\b.*)"),
     "#ifdef __linux__"},
    {"a type or procedure of one system",
     std::regex(R"((.*[^\w:])?(::(open|read|write|close|stat|isatty|ioctl|getpid|fork|kill)\(|)"
                R"((pid_t|uid_t|gid_t|mode_t|off_t|ssize_t|struct stat|struct sigaction|HANDLE|)"
                R"(DWORD|isatty|localtime_r|gmtime_r|QSysInfo)\b).*)"),
     "    ssize_t count = 0;"},
};

bool isOfAPlatform(const fs::path& path) {
    const auto folder = path.parent_path().filename();
    return folder == "posix" || folder == "windows";
}

// The code above is the same on every system: what differs stands in folders of its own.
TEST(Platforms, AreKnownInTheirFoldersAlone) {
    for (const auto& rule : rules) {
        EXPECT_TRUE(std::regex_match(rule.example, rule.pattern)) << rule.what;
    }
    static const std::regex comment(R"(\s*//.*)");
    int sources = 0;
    for (const auto& entry : fs::recursive_directory_iterator(K520_SOURCE_DIR "/src")) {
        const auto kind = entry.path().extension();
        if ((kind != ".h" && kind != ".cpp") || isOfAPlatform(entry.path())) {
            continue;
        }
        ++sources;
        std::ifstream in(entry.path());
        int number = 1;
        for (std::string line; std::getline(in, line); ++number) {
            for (const auto& rule : rules) {
                EXPECT_FALSE(std::regex_match(line, rule.pattern) &&
                             !std::regex_match(line, comment))
                    << entry.path() << ':' << number << ": " << rule.what << ": " << line;
            }
        }
    }
    EXPECT_GT(sources, 150);
}

}  // namespace
