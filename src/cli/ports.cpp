// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "base/Checked.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/commands.h"
#include "cli/output.h"
#include "link/protocol/comPorts.h"

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

/// The device stands in a column of its own, so the reason need not begin with it.
std::string stateOf(const comPorts::PortInfo& port) {
    const auto subject = std::string(trimBlanks(about(port.device, "")));
    const bool begins = port.reason.starts_with(subject);
    return port.usable ? say(texts::portUsable)
                       : std::string(trimBlanks(
                             std::string_view(port.reason).substr(begins ? subject.size() : 0)));
}

std::vector<std::string> portRow(const comPorts::PortInfo& port) {
    return {fmt::format("{}", port.number), port.name, port.device, port.description,
            stateOf(port)};
}

std::string jsonOf(const std::vector<comPorts::PortInfo>& ports) {
    auto json = nlohmann::ordered_json::array();
    std::ranges::transform(ports, std::back_inserter(json), portJson);
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

std::string tableOf(const std::vector<comPorts::PortInfo>& ports) {
    std::vector<std::vector<std::string>> rows;
    std::ranges::transform(ports, std::back_inserter(rows), portRow);
    return formatTable({{say(texts::numberTitle), true},
                        {say(texts::portTitle)},
                        {say(texts::deviceTitle)},
                        {say(texts::descriptionTitle)},
                        {say(texts::stateTitle)}},
                       rows);
}

}  // namespace

int runPorts(const Arguments& arguments) {
    std::vector<comPorts::PortInfo> ports;
    const auto describeAll = [&] {
        for (auto number = comPorts::firstPort; number <= comPorts::lastPort; ++number) {
            ports.push_back(comPorts::describe(number));
        }
    };
    if (arguments.has("json")) {
        const SpeakingIn scripts(TextLanguage::english);
        describeAll();
        print(jsonOf(ports));
    } else {
        describeAll();
        print(tableOf(ports));
    }
    return exitDone;
}

}  // namespace k520::cli
