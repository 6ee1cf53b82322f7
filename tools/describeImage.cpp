// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Writes the table of the memory image's fields into a document between two marks:
// describeImage [--check] DOCUMENT. With --check nothing is written, and a table that is not the
// program's is a failure.

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "app/programFolder.h"
#include "base/Files.h"
#include "cli/Failure.h"
#include "cli/program.h"
#include "document/imageMap.h"

namespace {

using namespace k520;
using imageMap::Field;
using imageMap::Owner;

constexpr std::string_view begin = "<!-- the image's fields, by the target image_fields -->\n";
constexpr std::string_view end = "<!-- end of the fields -->\n";
constexpr std::size_t largestDocument = 1 << 20;

std::string addressText(const Field& field) {
    return field.length == 1
               ? fmt::format("{:04X}", field.address)
               : fmt::format("{:04X}-{:04X}", field.address, field.address + field.length - 1);
}

/// How far channel 2's field is from channel 1's: in bytes, or as the next bit.
std::string stepText(const Field& field, const std::vector<Field>& all) {
    for (const auto& next : all) {
        if (next.owner == Owner::channel && next.number == 2 && next.column == field.column &&
            next.address == field.address) {
            return "the next bit";
        }
    }
    return "+10";
}

std::string row(const Field& field, const std::vector<Field>& all) {
    const bool ofChannel = field.owner == Owner::channel;
    return fmt::format("| {} | {} | {:02X} | `{}` | {} |\n", addressText(field),
                       ofChannel ? stepText(field, all) : "", field.mask, imageMap::name(field),
                       field.codec.empty() ? "kept" : fmt::format("`{}`", field.codec));
}

std::string table() {
    auto all = imageMap::fields();
    std::ranges::stable_sort(all, {}, &Field::address);
    std::string text =
        "| address | each channel | bits | field | read by |\n"
        "| --- | --- | --- | --- | --- |\n";
    for (const auto& field : all) {
        if (field.owner != Owner::channel || field.number == 1) {
            text += row(field, all);
        }
    }
    return text;
}

/// The document with the table of today.
std::string filled(const std::string& document) {
    const auto first = document.find(begin);
    const auto last = document.find(end);
    if (first == std::string::npos || last == std::string::npos || last < first) {
        cli::fail("the marks of the table are missing");
    }
    return document.substr(0, first + begin.size()) + table() + document.substr(last);
}

int run(const std::vector<std::string>& words) {
    const bool check = !words.empty() && words.front() == "--check";
    if (words.size() != (check ? 2U : 1U)) {
        cli::refuse("usage: describeImage [--check] DOCUMENT");
    }
    programFolder::state().own = K520_SHARE_DIR;
    cli::startCore(cli::Reader::script);
    const auto& path = words.back();
    const auto content = files::read(path, largestDocument);
    const std::string document(content.bytes.begin(), content.bytes.end());
    const auto wanted = filled(document);
    if (check && document != wanted) {
        cli::fail(path + " shows other fields; build the target image_fields");
    }
    if (!check) {
        files::replace(path, std::vector<std::uint8_t>(wanted.begin(), wanted.end()));
    }
    return 0;
}

}  // namespace

int main(int count, char** words) {
    try {
        return run({words + 1, words + count});
    } catch (const std::exception& error) {
        fmt::print(stderr, "describeImage: {}\n", error.what());
        return 1;
    }
}
