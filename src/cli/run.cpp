// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/run.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <exception>

#include "app/programFolder.h"
#include "base/Interrupt.h"
#include "cli/Command.h"
#include "cli/Failure.h"
#include "cli/output.h"
#include "cli/program.h"
#include "program/modStartUp.h"

namespace k520::cli {

namespace {

int runRequest(const Request& request) {
    if (request.command == nullptr) {
        print(request.text);
        return exitDone;
    }
    chooseProgramFolder(request.programFolder);
    return request.command->run(request.arguments);
}

int complain(int code, std::string message) {
    std::ranges::replace(message, '\n', ' ');
    printError("k520-cli: " + message + "\n");
    return code;
}

}  // namespace

int run(int count, const char* const* words) {
    try {
        modStartUp::chooseTextLanguage(
            programFolder::namedIn({words, static_cast<std::size_t>(count)}));
        interrupt::note();
        const int code = runRequest(parse(count, words));
        flushOutput();
        return code;
    } catch (const Failure& failure) {
        // What was printed before the failure stays in order with it.
        std::fflush(stdout);
        return complain(failure.code(), failure.what());
    } catch (const std::exception& error) {
        return complain(exitFailed, error.what());
    }
}

}  // namespace k520::cli
