// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <nlohmann/json.hpp>

#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/commands.h"
#include "cli/comparisonText.h"
#include "cli/document.h"
#include "cli/edits.h"
#include "cli/output.h"
#include "cli/program.h"

namespace k520::cli {

int runNew(const Arguments& arguments) {
    startConfiguration(DefaultImage::needed);
    saveDocument(arguments.at("FILE"));
    return exitDone;
}

int runSet(const Arguments& arguments) {
    startConfiguration(DefaultImage::helpful);
    const auto& file = arguments.at("FILE");
    openDocument(file, ShortFile::refuse);
    for (const auto& word : arguments.list("EDITS")) {
        applyEditWord(word);
    }
    saveDocument(arguments.get("output").value_or(file));
    return exitDone;
}

int runDiff(const Arguments& arguments) {
    startConfiguration(DefaultImage::helpful, readerOf(arguments));
    const auto& nameA = arguments.at("A");
    const auto& nameB = arguments.at("B");
    openDocument(nameA, ShortFile::warn);
    const auto a = document::currentPicture();
    renewConfiguration();
    openDocument(nameB, ShortFile::warn);
    const auto comparison = document::compare(a, document::currentPicture());
    print(arguments.has("json") ? comparisonJson(comparison).dump(2) + "\n"
                                : comparisonText(comparison, nameA, nameB));
    if (!comparison.equal()) {
        fail(say(texts::differencesBetween, countText(comparison), nameA, nameB));
    }
    return exitDone;
}

}  // namespace k520::cli
