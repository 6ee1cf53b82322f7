// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include "app/settingsStore.h"
#include "base/RuntimeError.h"
#include "cli/Failure.h"
#include "cli/commands.h"
#include "cli/output.h"

namespace k520::cli {

int runConfigGet(const Arguments& arguments) {
    try {
        const auto value = settingsStore::read(arguments.at("SECTION"), arguments.at("KEY"),
                                               arguments.get("default").value_or(std::string()));
        print(value + "\n");
        return exitDone;
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

int runConfigSet(const Arguments& arguments) {
    try {
        settingsStore::write(arguments.at("SECTION"), arguments.at("KEY"), arguments.at("VALUE"));
        return exitDone;
    } catch (const RuntimeError& error) {
        // Names and values that the format cannot hold are the command line's fault.
        if (error.number() == errNum::invalidCall) {
            refuse(error.source());
        }
        fail(error.source());
    }
}

}  // namespace k520::cli
