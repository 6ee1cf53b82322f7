// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/TempFolder.h"

namespace k520::test {

/// What a run of the program gave.
struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

/// The real program in a program folder of its own, with files beside it.
class Program {
  public:
    Program() { std::filesystem::create_directory(home()); }

    [[nodiscard]] std::filesystem::path home() const { return folder / "home"; }
    [[nodiscard]] std::string file(const std::string& name) const {
        return (folder / name).string();
    }

    /// Starts the program; its output goes to files named after `name`.
    pid_t start(const std::vector<std::string>& words, const std::string& name) const {
        std::vector<std::string> all{K520_CLI, "--program-folder", home().string()};
        all.insert(all.end(), words.begin(), words.end());
        std::vector<char*> pointers;
        for (auto& word : all) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        const auto out = file(name + ".out");
        const auto err = file(name + ".err");
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_CREAT | O_TRUNC | O_WRONLY,
                                         0600);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_CREAT | O_TRUNC | O_WRONLY,
                                         0600);
        pid_t child = 0;
        const int error =
            posix_spawn(&child, K520_CLI, &actions, nullptr, pointers.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) {
            throw std::runtime_error("the program cannot be started");
        }
        return child;
    }

    Outcome finish(pid_t child, const std::string& name) const {
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
                folder.read(name + ".out"), folder.read(name + ".err")};
    }

    Outcome operator()(const std::vector<std::string>& words) const {
        return finish(start(words, "run"), "run");
    }

    TempFolder folder;
};

}  // namespace k520::test
