// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <span>

#include "cli/Command.h"
#include "cli/Failure.h"

namespace k520::cli {

namespace {

/// Joins a group's row and a command's row of the same parser: "config set" stands below "config".
CLI::App* commandApp(CLI::App& app, const Command& command) {
    const std::string name(command.name);
    const auto blank = name.find(' ');
    if (blank == std::string::npos) {
        return app.add_subcommand(name, std::string(command.summary));
    }
    const std::string group = name.substr(0, blank);
    const auto known =
        app.get_subcommands([&](const CLI::App* each) { return each->get_name() == group; });
    CLI::App* parent =
        known.empty() ? app.add_subcommand(group, std::string(groupSummary)) : known.front();
    parent->group("Commands");
    parent->require_subcommand(0, 1);
    parent->footer(fmt::format("k520-cli {0} get --help and {0} set --help explain them.", group));
    return parent->add_subcommand(name.substr(blank + 1), std::string(command.summary));
}

void addArgument(CLI::App& app, const Argument& argument, Arguments& into) {
    auto& values = into.values[std::string(argument.name)];
    const std::string help(argument.help);
    const std::string flags(argument.flags);
    const auto takeOne = [&values](const std::string& word) { values = {word}; };
    CLI::Option* option = nullptr;
    switch (argument.kind) {
        case ArgumentKind::positional:
            option = app.add_option_function<std::string>(flags, takeOne, help)->required();
            break;
        case ArgumentKind::positionalList:
            option = app.add_option(flags, values, help)->required();
            break;
        case ArgumentKind::option:
        case ArgumentKind::required:
            option = app.add_option_function<std::string>(flags, takeOne, help)
                         ->required(argument.kind == ArgumentKind::required);
            break;
        case ArgumentKind::flag:
            option = app.add_flag_callback(
                flags, [&values] { values = {"yes"}; }, help);
            break;
    }
    if (!argument.value.empty()) {
        option->option_text(std::string(argument.value));
    }
}

/// A command line of the command as its help shows it.
std::string usageOf(const Command& command) {
    std::string usage = "Usage: k520-cli " + std::string(command.name);
    for (const Argument& argument : command.arguments) {
        const auto flag = argument.flags.substr(0, argument.flags.find(','));
        const auto value =
            argument.value.empty() ? std::string(argument.name) : std::string(argument.value);
        switch (argument.kind) {
            case ArgumentKind::positional:
            case ArgumentKind::positionalList:
                usage += ' ' + value;
                break;
            case ArgumentKind::required:
                usage += fmt::format(" {} {}", flag, value);
                break;
            case ArgumentKind::option:
                usage += fmt::format(" [{} {}]", flag, value);
                break;
            case ArgumentKind::flag:
                usage += fmt::format(" [{}]", flag);
                break;
        }
    }
    return usage + '\n';
}

/// The help texts' usage lines come from the table of commands.
class HelpFormatter : public CLI::Formatter {
  public:
    std::map<const CLI::App*, std::string> usages;

    std::string make_usage(const CLI::App* app, std::string name) const override {
        const auto found = usages.find(app);
        return found == usages.end() ? CLI::Formatter::make_usage(app, name) : found->second;
    }
};

/// The parser's library takes a word "[a,b]" among several for several words.
void refuseBrackets(const Request& request, std::span<const char* const> words) {
    const auto& known = request.command->arguments;
    if (std::ranges::count(known, ArgumentKind::positionalList, &Argument::kind) == 0) {
        return;
    }
    for (const std::string_view word : words) {
        const bool single = std::ranges::any_of(known, [&](const Argument& argument) {
            return argument.kind != ArgumentKind::positionalList &&
                   std::ranges::count(request.arguments.list(argument.name), word) != 0;
        });
        if (word.starts_with('[') && word.ends_with(']') && !single &&
            request.programFolder != word) {
            refuse(
                fmt::format("\"{}\" is not KEY=VALUE; give each edit as a word of its own", word));
        }
    }
}

struct Parser {
    std::shared_ptr<HelpFormatter> formatter = std::make_shared<HelpFormatter>();
    CLI::App app{"K520 radio programming: reads, edits and writes radios and data files",
                 "k520-cli"};
    std::vector<std::unique_ptr<Arguments>> arguments;
    std::vector<CLI::App*> apps;
    std::string programFolder;
    CLI::Option* folderGiven = nullptr;

    Parser() {
        app.set_version_flag(std::string(versionOption.flags), "k520-cli " K520_VERSION,
                             std::string(versionOption.help));
        app.set_help_flag(std::string(helpOption.flags), std::string(helpOption.help));
        folderGiven = app.add_option(std::string(folderOption.flags), programFolder,
                                     std::string(folderOption.help))
                          ->option_text(std::string(folderOption.value));
        formatter->usages[&app] = "Usage: k520-cli [--program-folder DIR] COMMAND ...\n";
        app.formatter(formatter);
        app.require_subcommand(0, 1);
        app.footer(
            "k520-cli COMMAND --help explains a command.\n"
            "Exit codes: 0 done or no difference, 1 failed or a difference found, 2 wrong command "
            "line.");
        for (const Command& command : commands()) {
            add(command);
        }
    }

    void add(const Command& command) {
        CLI::App* sub = commandApp(app, command);
        sub->footer(std::string(command.details));
        sub->group("Commands");
        formatter->usages[sub] = usageOf(command);
        arguments.push_back(std::make_unique<Arguments>());
        for (const Argument& argument : command.arguments) {
            addArgument(*sub, argument, *arguments.back());
        }
        apps.push_back(sub);
    }

    [[nodiscard]] Request request() const {
        Request result;
        if (folderGiven->count() > 0) {
            // A script's variable that is not set must not lead to the user's own folder.
            if (programFolder.empty()) {
                refuse("--program-folder is empty; give a folder");
            }
            result.programFolder = programFolder;
        }
        for (std::size_t i = 0; i < apps.size(); ++i) {
            if (apps[i]->parsed()) {
                result.command = &commands()[i];
                result.arguments = *arguments[i];
            }
        }
        if (result.command == nullptr) {
            refuse("a command is missing; see " + recognised() + " --help");
        }
        return result;
    }

    /// The full name of the deepest command that was recognised before an error.
    [[nodiscard]] std::string recognised() const {
        std::string name = "k520-cli";
        const CLI::App* deepest = &app;
        while (!deepest->get_subcommands().empty()) {
            deepest = deepest->get_subcommands().front();
            name += ' ' + deepest->get_name();
        }
        return name;
    }
};

std::string oneLine(std::string text) {
    for (char& c : text) {
        c = c == '\n' ? ' ' : c;
    }
    return text;
}

}  // namespace

const std::vector<std::string>& Arguments::list(std::string_view name) const {
    static const std::vector<std::string> none;
    const auto found = values.find(name);
    return found == values.end() ? none : found->second;
}

Request parse(int count, const char* const* words) {
    Parser parser;
    try {
        parser.app.parse(count, words);
        Request request = parser.request();
        refuseBrackets(request, std::span(words, static_cast<std::size_t>(count)).subspan(1));
        return request;
    } catch (const CLI::CallForHelp&) {
        Request help;
        help.text = parser.app.help();
        return help;
    } catch (const CLI::CallForVersion& version) {
        Request answer;
        answer.text = std::string(version.what()) + "\n";
        return answer;
    } catch (const CLI::ParseError& error) {
        refuse(oneLine(error.what()) + "; see " + parser.recognised() + " --help");
    }
}

}  // namespace k520::cli
