// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>

namespace k520::test {

/// A folder of its own for a test; it goes with everything in it.
class TempFolder {
  public:
    TempFolder() {
        std::string name = std::filesystem::temp_directory_path() / "k520-test-XXXXXX";
        path_ = ::mkdtemp(name.data()) != nullptr ? name : throw std::runtime_error(name);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const {
        return path_ / name;
    }

    /// Writes a file in place and returns its path.
    std::filesystem::path write(const std::string& name, const std::string& text) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file.exceptions(std::ios::failbit | std::ios::badbit);
        file << text << std::flush;
        return path_ / name;
    }
    /// A file's bytes; an exception where there is none.
    [[nodiscard]] std::string read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        file.exceptions(std::ios::failbit | std::ios::badbit);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// The names of all that is in the folder, hidden files included.
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            all.insert(entry.path().filename().string());
        }
        return all;
    }

  private:
    std::filesystem::path path_;
};

}  // namespace k520::test
