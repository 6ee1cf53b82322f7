// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Runs every file of a corpus through a fuzz target: replay_TARGET FOLDER

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

/// The fuzz target that is linked with this.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<char> bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    return {std::istreambuf_iterator<char>(file), {}};
}

int replay(const fs::path& corpus) {
    const std::set<fs::path> files(fs::directory_iterator(corpus), fs::directory_iterator{});
    for (const auto& path : files) {
        // Named before it runs: a finding ends the program.
        std::fprintf(stderr, "%s\n", path.filename().c_str());
        const auto bytes = bytesOf(path);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return files.empty() ? 1 : 0;
}

}  // namespace

int main(int count, char** words) {
    try {
        // A target may go into a folder of its own.
        return count == 2 ? replay(fs::absolute(words[1])) : 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
