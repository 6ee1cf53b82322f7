// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/edits.h"

#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/program.h"
#include "document/Refused.h"
#include "document/channelCsv.h"
#include "document/edit.h"

namespace k520::cli {

namespace {

[[noreturn]] void failFor(const document::Refused& refused) {
    switch (refused.reason()) {
        case document::Reason::unknownName:
            refuse(refused.what() + say(texts::seeSetHelp));
        case document::Reason::notUnderstood:
            refuse(refused.what());
        case document::Reason::notPossible:
            break;
    }
    fail(refused.what());
}

template <class Edit>
void run(Edit edit) {
    try {
        edit();
    } catch (const document::Refused& refused) {
        failFor(refused);
    }
}

}  // namespace

void applyEditWord(const std::string& word) {
    run([&] { document::applyEditWord(word, warn); });
}

void takeChannels(std::string_view csv) {
    run([&] { document::takeChannelCsv(csv, warn); });
}

}  // namespace k520::cli
