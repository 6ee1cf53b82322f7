// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support/TempFolder.h"

/// What the tests of faults share: real programs, and the table of what was tried. An ordinary test
/// tries a part; campaign.sh tries everything and gets the table's rows.
namespace k520::faults {

using Words = std::vector<std::string>;

/// The file that gets the rows of the table; none in an ordinary test.
inline const char* rowsFile() {
    return std::getenv("K520_FAULT_ROWS");
}
inline bool exhaustive() {
    return rowsFile() != nullptr;
}

struct Outcome {
    int code = 0;  ///< of the exit; below 0 the signal that ended it
    std::string out;
    std::string err;
    double milliseconds = 0;
};

/// Runs a program to its end; stdout and stderr go through files in the folder.
inline Outcome execute(Words words, const test::TempFolder& scratch) {
    std::vector<char*> pointers;
    for (auto& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t files{};
    posix_spawn_file_actions_init(&files);
    const auto out = scratch / "out";
    const auto err = scratch / "err";
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, out.c_str(), flags, 0666);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, err.c_str(), flags, 0666);
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 127 << 8;
    if (::posix_spawnp(&child, pointers[0], &files, nullptr, pointers.data(), environ) == 0) {
        ::waitpid(child, &status, 0);
    }
    const std::chrono::duration<double, std::milli> spent =
        std::chrono::steady_clock::now() - begin;
    posix_spawn_file_actions_destroy(&files);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), scratch.read("out"),
            scratch.read("err"), spent.count()};
}

/// The processor's milliseconds for some work in this process: others do not count.
inline double processorTime(const std::function<void()>& work) {
    const auto begin = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// A row of the table: counts outcomes, from any thread, and is written at its end.
class Row {
  public:
    Row(std::string fault, std::string how) : fault_(std::move(fault)), how_(std::move(how)) {}
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;
    ~Row() {
        if (!exhaustive()) {
            return;
        }
        std::string outcomes;
        int all = 0;
        for (const auto& [outcome, count] : outcomes_) {
            outcomes += fmt::format("{}{} {}", outcomes.empty() ? "" : ", ", count, outcome);
            all += count;
        }
        std::ofstream(rowsFile(), std::ios::app)
            << fmt::format("| {} | {} | {} | {}{} |\n", fault_, how_, all, outcomes,
                           slowest_ > 0 ? fmt::format("; slowest {:.0f} ms", slowest_) : "");
    }

    void add(const std::string& outcome, double milliseconds = 0) {
        const std::lock_guard lock(mutex_);
        ++outcomes_[outcome];
        slowest_ = std::max(slowest_, milliseconds);
    }
    [[nodiscard]] double slowest() const { return slowest_; }

  private:
    std::string fault_;
    std::string how_;
    std::map<std::string, int> outcomes_;
    double slowest_ = 0;
    std::mutex mutex_;
};

/// Calls `work` for every number below `count`, on a few threads: what runs is other programs, and
/// these wait most of the time.
inline void forEach(std::size_t count, const std::function<void(std::size_t)>& work) {
    constexpr std::size_t workers = 4;
    std::vector<std::jthread> threads;
    for (std::size_t first = 0; first < workers; ++first) {
        threads.emplace_back([=] {
            for (std::size_t i = first; i < count; i += workers) {
                work(i);
            }
        });
    }
}

/// The words with "@" replaced by a folder.
inline Words placed(Words words, const test::TempFolder& folder) {
    for (auto& word : words) {
        if (const auto at = word.find('@'); at != std::string::npos) {
            word.replace(at, 1, folder.path().string() + "/");
        }
    }
    return words;
}

/// Puts a program that changes the conditions in front of another.
inline Words after(Words wrapper, const Words& words) {
    wrapper.insert(wrapper.end(), words.begin(), words.end());
    return wrapper;
}

/// The wrapper that runs a program as an ordinary user; none for whom is one.
inline Words asOrdinaryUser() {
    return ::geteuid() != 0 ? Words{}
                            : Words{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
}

}  // namespace k520::faults
