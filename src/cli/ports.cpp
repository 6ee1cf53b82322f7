// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "cli/Failure.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "link/comPorts.h"

namespace k520::cli {

namespace {

nlohmann::ordered_json portJson(const comPorts::PortInfo& port) {
    nlohmann::ordered_json json{{"number", port.number}, {"name", port.name},
                                {"device", port.device}, {"description", port.description},
                                {"usable", port.usable}, {"reason", nullptr}};
    if (!port.usable) {
        json["reason"] = port.reason;
    }
    return json;
}

std::vector<std::string> portRow(const comPorts::PortInfo& port) {
    return {fmt::format("{}", port.number), port.name, port.device, port.description,
            port.usable ? "usable" : port.reason};
}

}  // namespace

int runPorts(const Arguments& arguments) {
    auto json = nlohmann::ordered_json::array();
    std::vector<std::vector<std::string>> rows;
    for (auto number = comPorts::firstPort; number <= comPorts::lastPort; ++number) {
        const auto port = comPorts::describe(number);
        json.push_back(portJson(port));
        rows.push_back(portRow(port));
    }
    print(
        arguments.has("json")
            ? json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n"
            : formatTable({{"No.", true}, {"Port"}, {"Device"}, {"Description"}, {"State"}}, rows));
    return exitDone;
}

}  // namespace k520::cli
