// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Turns the readable description of the default image into raw memory:
//   makeDefaultImage [--check] DESCRIPTION IMAGE
// With --check the image is compared instead of written.

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include "app/programFolder.h"
#include "base/Checked.h"
#include "base/Files.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/program.h"
#include "document/edit.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "program/modFileCmd.h"
#include "settings/modSysSet.h"

namespace {

using namespace k520;

constexpr std::uint8_t erased = 0xFF;

std::string trimmed(std::string_view text) {
    return std::string(trimBlanks(text));
}

void applyLine(const std::string& line) {
    const auto equals = line.find('=');
    if (equals == std::string::npos) {
        cli::fail("no \"=\" in: " + line);
    }
    const auto key = trimmed(std::string_view(line).substr(0, equals));
    const auto value = trimmed(std::string_view(line).substr(equals + 1));
    if (key.starts_with("byte ")) {
        modIicDat::IicDat()(hexToInt16(key.substr(5))) = toByte(hexToInt16(value));
        modChMem::SoftDisplay();
        return;
    }
    document::applyEdit(key, value, cli::warn);
    // Each line works on the image as the lines before have left it.
    modChMem::SetConvIicDat();
}

void describe(const std::string& path) {
    std::ifstream description(path);
    std::string line;
    int number = 0;
    while (std::getline(description, line)) {
        ++number;
        if (trimmed(line).empty() || line.front() == '#') {
            continue;
        }
        try {
            applyLine(line);
        } catch (const std::exception& error) {
            cli::fail(fmt::format("{}:{}: {}", path, number, error.what()));
        }
    }
    if (number == 0) {
        cli::fail(path + " cannot be read or is empty");
    }
}

int run(const std::vector<std::string>& words) {
    const bool check = !words.empty() && words.front() == "--check";
    if (words.size() != (check ? 3U : 2U)) {
        cli::refuse("usage: makeDefaultImage [--check] DESCRIPTION IMAGE");
    }
    programFolder::state().own = K520_SHARE_DIR;
    cli::startCore();
    auto& image = modIicDat::IicDat();
    std::ranges::fill(image.bytes(), erased);
    modSysSet::OptNowDefSol(0);
    modChMem::SoftDisplay();
    describe(words[words.size() - 2]);
    // What a data file cannot hold is as a data file brings it back, so that a radio with this
    // image and a file read from it are equal.
    datFile::makeRoom(image);
    datFile::closeRoom(image);
    const auto& path = words.back();
    if (!check) {
        files::replace(path, image.bytes());
        return 0;
    }
    const auto kept = files::read(path, image.size() + 1);
    if (!std::ranges::equal(kept.bytes, image.bytes())) {
        cli::fail(path + " is not what its description gives; build the target default_image");
    }
    fmt::print("{} matches its description\n", path);
    return 0;
}

}  // namespace

int main(int count, char** words) {
    try {
        return run({words + 1, words + count});
    } catch (const std::exception& error) {
        fmt::print(stderr, "makeDefaultImage: {}\n", error.what());
        return 1;
    }
}
