// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/posix/portHolder.h"

#include <fmt/format.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "link/port/portTexts.h"

namespace k520::portHolder {

namespace {

namespace fs = std::filesystem;

std::optional<pid_t> processNumber(const std::string& text) {
    pid_t number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ptr == end && number > 0 ? std::optional(number) : std::nullopt;
}

bool isDevice(const fs::path& descriptor, const struct stat& device) {
    struct stat held {};
    return ::stat(descriptor.c_str(), &held) == 0 && S_ISCHR(held.st_mode) &&
           held.st_rdev == device.st_rdev;
}

/// Walks a folder of /proc without raising: processes come and go, and most are not ours.
template <class Match>
bool anyEntry(const fs::path& folder, Match&& match) {
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, ignored); entry != fs::directory_iterator();
         entry.increment(ignored)) {
        if (match(entry->path())) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<pid_t> locker(const struct stat& device) {
    // A line reads "1: FLOCK  ADVISORY  WRITE 4711 00:05:123 0 EOF".
    const std::string wanted =
        fmt::format("{:02x}:{:02x}:{}", major(device.st_dev), minor(device.st_dev), device.st_ino);
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        std::istringstream words(line);
        std::string number, kind, strength, access, process, file;
        words >> number >> kind >> strength >> access >> process >> file;
        if (kind == "FLOCK" && file == wanted) {
            return processNumber(process);
        }
    }
    return std::nullopt;
}

std::optional<pid_t> opener(const struct stat& device) {
    std::optional<pid_t> found;
    anyEntry("/proc", [&](const fs::path& process) {
        const auto number = processNumber(process.filename().string());
        if (number && *number != ::getpid() &&
            anyEntry(process / "fd",
                     [&](const fs::path& descriptor) { return isDevice(descriptor, device); })) {
            found = number;
        }
        return found.has_value();
    });
    return found;
}

std::string description(const struct stat& device) {
    auto holder = locker(device);
    if (!holder) {
        holder = opener(device);
    }
    if (!holder) {
        return say(texts::anotherProgram);
    }
    if (*holder == ::getpid()) {
        return say(texts::thisProgram);
    }
    std::string name = say(texts::someProgram);
    std::ifstream comm(fmt::format("/proc/{}/comm", *holder));
    std::getline(comm, name);
    return say(texts::programWithNumber, name, *holder);
}

}  // namespace k520::portHolder
