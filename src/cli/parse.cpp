// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "cli/Command.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/helpText.h"

namespace k520::cli {

namespace {

using WordList = std::span<const char* const>;

/// Joins a group's row and a command's row of the same parser: "config set" stands below "config".
CLI::App* commandApp(CLI::App& app, const Command& command) {
    const std::string name(command.name);
    const auto blank = name.find(' ');
    if (blank == std::string::npos) {
        return app.add_subcommand(name);
    }
    const std::string group = name.substr(0, blank);
    const auto known =
        app.get_subcommands([&](const CLI::App* each) { return each->get_name() == group; });
    CLI::App* parent = known.empty() ? app.add_subcommand(group) : known.front();
    parent->require_subcommand(0, 1);
    return parent->add_subcommand(name.substr(blank + 1));
}

CLI::Option* addArgument(CLI::App& app, const Argument& argument, Arguments& into) {
    auto& values = into.values[std::string(argument.name)];
    const std::string flags(argument.flags);
    const auto takeOne = [&values](const std::string& word) { values = {word}; };
    switch (argument.kind) {
        case ArgumentKind::positional:
            return app.add_option_function<std::string>(flags, takeOne)->required();
        case ArgumentKind::positionalList:
            return app.add_option(flags, values)->required();
        case ArgumentKind::option:
        case ArgumentKind::required:
            return app.add_option_function<std::string>(flags, takeOne)
                ->required(argument.kind == ArgumentKind::required);
        case ArgumentKind::flag:
            break;
    }
    return app.add_flag_callback(flags, [&values] { values = {"yes"}; });
}

/// The parser's library takes a word "[a,b]" among several for several words.
void refuseBrackets(const Request& request, WordList words) {
    const auto& known = request.command->arguments;
    if (std::ranges::count(known, ArgumentKind::positionalList, &Argument::kind) == 0) {
        return;
    }
    for (const std::string_view word : words) {
        const bool single = std::ranges::any_of(known, [&](const Argument& argument) {
            return argument.kind != ArgumentKind::positionalList &&
                   std::ranges::count(request.arguments.list(argument), word) != 0;
        });
        if (word.starts_with('[') && word.ends_with(']') && !single &&
            request.programFolder != word) {
            refuse(say(texts::bracketsNotEdit, word));
        }
    }
}

/// The parser of a library under the table of commands. What the library would say of itself, help
/// and complaints, is said here instead, in the language in force.
class Parser {
  public:
    Parser() {
        app_.set_version_flag(std::string(versionOption.flags), "k520-cli " K520_VERSION);
        app_.set_help_flag(std::string(helpOption.flags));
        folderGiven_ = app_.add_option(std::string(folderOption.flags), programFolder_);
        app_.require_subcommand(0, 1);
        for (const Command& command : commands()) {
            add(command);
        }
    }

    [[nodiscard]] Request parse(WordList words) {
        app_.parse(static_cast<int>(words.size()), words.data());
        Request result = request();
        refuseValuesOfFlags(words);
        refuseBrackets(result, words.subspan(1));
        return result;
    }

    /// The help of the deepest command that was recognised.
    [[nodiscard]] std::string help() const {
        if (const auto* row = recognisedRow()) {
            return helpText::ofCommand(*row->command);
        }
        const auto name = recognised();
        return name.empty() ? helpText::ofProgram() : helpText::ofGroup(name);
    }

    /// Refuses a wrong command line with what is wrong and where help is.
    [[noreturn]] void refuseWithHelp(const std::string& complaint) const {
        const auto name = recognised();
        refuse(say(texts::seeHelp, complaint, name.empty() ? "k520-cli" : "k520-cli " + name));
    }

    [[nodiscard]] std::string complaintOf(const CLI::ParseError& error, WordList words) const {
        const auto unexpected = app_.remaining(true);
        const auto* row = recognisedRow();
        if (!unexpected.empty()) {
            const auto& word = unexpected.front();
            return say(row == nullptr && !word.starts_with('-') ? texts::noCommand
                                                                : texts::wordNotExpected,
                       word);
        }
        if (auto complaint = row != nullptr ? complaintOfArguments(*row, words) : "";
            !complaint.empty()) {
            return complaint;
        }
        // The only thing that the library misses at the end is an option's value.
        return dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr
                   ? say(texts::valueMissing, words.back())
                   : say(texts::notUnderstood, error.what());
    }

  private:
    struct Row {
        const Command* command;
        CLI::App* app;
        std::unique_ptr<Arguments> arguments;
        std::vector<CLI::Option*> options;  ///< one for each argument of the command
    };

    void add(const Command& command) {
        Row row{&command, commandApp(app_, command), std::make_unique<Arguments>(), {}};
        for (const Argument& argument : command.arguments) {
            row.options.push_back(addArgument(*row.app, argument, *row.arguments));
        }
        rows_.push_back(std::move(row));
    }

    [[nodiscard]] Request request() const {
        Request result;
        if (folderGiven_->count() > 0) {
            // A script's variable that is not set must not lead to the user's own folder.
            if (programFolder_.empty()) {
                refuse(say(texts::folderEmpty));
            }
            result.programFolder = programFolder_;
        }
        const auto* row = recognisedRow();
        if (row == nullptr) {
            refuseWithHelp(say(texts::commandMissing));
        }
        result.command = row->command;
        result.arguments = *row->arguments;
        return result;
    }

    [[nodiscard]] const Row* recognisedRow() const {
        const auto found =
            std::ranges::find_if(rows_, [](const Row& row) { return row.app->parsed(); });
        return found == rows_.end() ? nullptr : &*found;
    }

    /// "config set", "config", or nothing.
    [[nodiscard]] std::string recognised() const {
        std::string name;
        const CLI::App* deepest = &app_;
        while (!deepest->get_subcommands().empty()) {
            deepest = deepest->get_subcommands().front();
            name += (name.empty() ? "" : " ") + deepest->get_name();
        }
        return name;
    }

    /// The first argument that was given wrongly, and how; empty where all are right.
    static std::string complaintOfArguments(const Row& row, WordList words) {
        const bool valueMissing = isOption(*row.command, words.back());
        for (std::size_t i = 0; i < row.options.size(); ++i) {
            const auto& argument = row.command->arguments[i];
            const auto flag = argument.flags.substr(argument.flags.rfind(',') + 1);
            if (argument.kind == ArgumentKind::flag && isGivenValue(flag, words)) {
                return say(texts::takesNoValue, flag);
            }
            if (argument.kind != ArgumentKind::positionalList && row.options[i]->count() > 1) {
                return say(texts::givenTwice, flag);
            }
            if (row.options[i]->get_required() && row.options[i]->count() == 0 && !valueMissing) {
                return say(texts::argumentMissing, helpText::nameOf(argument));
            }
        }
        return {};
    }

    /// The library takes "--verify=no" for a wish: a flag that is on or off by such a word would
    /// leave out a backup or a comparison without a sound.
    void refuseValuesOfFlags(WordList words) const {
        for (const Argument& argument : recognisedRow()->command->arguments) {
            const auto flag = argument.flags.substr(argument.flags.rfind(',') + 1);
            if (argument.kind == ArgumentKind::flag && isGivenValue(flag, words)) {
                refuseWithHelp(say(texts::takesNoValue, flag));
            }
        }
    }

    /// Whether a word is one of the command's options that take a value.
    static bool isOption(const Command& command, std::string_view word) {
        return std::ranges::any_of(command.arguments, [&](const Argument& argument) {
            return argument.flags.starts_with('-') && !argument.value.empty() &&
                   (',' + std::string(argument.flags) + ',').find(',' + std::string(word) + ',') !=
                       std::string::npos;
        });
    }

    static bool isGivenValue(std::string_view flag, WordList words) {
        return std::ranges::any_of(words, [&](std::string_view word) {
            return word.starts_with(flag) && word.substr(flag.size()).starts_with('=');
        });
    }

    CLI::App app_{"", "k520-cli"};
    std::vector<Row> rows_;
    std::string programFolder_;
    CLI::Option* folderGiven_ = nullptr;
};

}  // namespace

const std::vector<std::string>& Arguments::list(ArgumentName name) const {
    const auto found = values.find(name.text());
    if (found == values.end()) {
        throw std::logic_error(std::string(name.text()));
    }
    return found->second;
}

Request parse(int count, const char* const* words) {
    const WordList all(words, static_cast<std::size_t>(count));
    Parser parser;
    try {
        return parser.parse(all);
    } catch (const CLI::CallForHelp&) {
        Request help;
        help.text = parser.help();
        return help;
    } catch (const CLI::CallForVersion& version) {
        Request answer;
        answer.text = std::string(version.what()) + "\n";
        return answer;
    } catch (const CLI::ParseError& error) {
        parser.refuseWithHelp(parser.complaintOf(error, all));
    }
}

}  // namespace k520::cli
