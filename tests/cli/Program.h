// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>
#include <sstream>
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

    /// Starts the program; its output goes to files named after `name`, or to what a symbolic link
    /// of that name leads to.
    pid_t start(const std::vector<std::string>& words, const std::string& name) const {
        std::vector<std::string> all = command;
        all.insert(all.end(), words.begin(), words.end());
        std::vector<char*> pointers;
        for (auto& word : all) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
        std::fflush(nullptr);
        const pid_t child = ::fork();
        if (child == 0) {
            const bool ready = std::freopen("/dev/null", "r", stdin) != nullptr &&
                               std::freopen(file(name + ".out").c_str(), "w", stdout) != nullptr &&
                               std::freopen(file(name + ".err").c_str(), "w", stderr) != nullptr;
            ::_exit(ready ? ::execv(pointers.front(), pointers.data()) : 127);
        }
        return child;
    }

    /// Waits for the end of a started program; `meanwhile` is called until then.
    Outcome finish(pid_t child, const std::string& name,
                   const std::function<void()>& meanwhile = {}) const {
        int status = 0;
        while (::waitpid(child, &status, meanwhile ? WNOHANG : 0) == 0) {
            meanwhile();
        }
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
                std::filesystem::is_symlink(file(name + ".out")) ? "" : folder.read(name + ".out"),
                folder.read(name + ".err")};
    }

    Outcome operator()(const std::vector<std::string>& words) const {
        return finish(start(words, "run"), "run");
    }
    /// A command line of words between blanks; "@name" is a file of the folder.
    Outcome operator()(const std::string& line) const { return (*this)(wordsOf(line)); }

    [[nodiscard]] std::vector<std::string> wordsOf(const std::string& line) const {
        std::vector<std::string> words;
        std::istringstream blankSeparated(line);
        for (std::string word; std::getline(blankSeparated, word, ' ');) {
            words.push_back(word.starts_with('@') ? file(word.substr(1)) : word);
        }
        return words;
    }

    TempFolder folder;
    /// The program, and the words in front of every command.
    std::vector<std::string> command{K520_CLI, "--program-folder", home().string()};
};

}  // namespace k520::test
