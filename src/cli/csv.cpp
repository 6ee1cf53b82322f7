// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Files.h"
#include "base/RuntimeError.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/commands.h"
#include "cli/document.h"
#include "cli/edits.h"
#include "cli/output.h"
#include "cli/program.h"
#include "document/channelCsv.h"

namespace k520::cli {

namespace {

constexpr std::size_t largestCsv = 16U << 20U;

std::string readCsv(const std::string& path) {
    try {
        const auto content = files::read(path, largestCsv);
        if (content.size > largestCsv) {
            fail(say(texts::csvTooLarge, path));
        }
        return {content.bytes.begin(), content.bytes.end()};
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

}  // namespace

int runExport(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("FILE"), arguments.get("output")});
    startConfiguration(DefaultImage::helpful);
    openDocument(arguments.at("FILE"), ShortFile::warn);
    const auto text = document::channelCsv();
    const auto output = arguments.get("output");
    if (!output) {
        print(text);
        return exitDone;
    }
    try {
        const std::vector<std::uint8_t> bytes(text.begin(), text.end());
        files::replace(*output, bytes);
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
    return exitDone;
}

int runImport(const Arguments& arguments) {
    requireDifferentFiles({arguments.at("CSV"), arguments.at("FILE")});
    requireDifferentFiles({arguments.at("CSV"), arguments.get("output")});
    startConfiguration(DefaultImage::helpful);
    const auto& file = arguments.at("FILE");
    const auto& csv = arguments.at("CSV");
    openDocument(file, ShortFile::refuse);
    try {
        takeChannels(readCsv(csv));
    } catch (const Failure& failure) {
        fail(std::string(failure.what()).starts_with(csv)
                 ? failure.what()
                 : say(texts::fileWithReason, csv, failure.what()));
    }
    saveDocument(arguments.get("output").value_or(file));
    return exitDone;
}

}  // namespace k520::cli
