// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/argumentTables.h"
#include "cli/helpTexts.h"

namespace k520::cli {

/// The name of an argument. One that no command has does not compile.
class ArgumentName {
  public:
    consteval ArgumentName(const char* name) : name_(name) {  // NOLINT(*-explicit-*)
        if (!argumentTables::has(name_)) {
            noCommandHasIt();
        }
    }
    constexpr ArgumentName(const Argument& argument)
        : name_(argument.name) {}  // NOLINT(*-explicit-*)

    [[nodiscard]] constexpr std::string_view text() const { return name_; }

  private:
    /// Not constant, so that a call of it ends the compilation.
    static void noCommandHasIt() {}

    std::string_view name_;
};

/// The words of one command line, by the names of the table's arguments.
class Arguments {
  public:
    /// One entry for each argument of the command, given or not.
    std::map<std::string, std::vector<std::string>, std::less<>> values;

    [[nodiscard]] bool has(ArgumentName name) const { return !list(name).empty(); }
    /// The one value of an argument that was given or is required.
    [[nodiscard]] const std::string& at(ArgumentName name) const { return list(name).at(0); }
    [[nodiscard]] std::optional<std::string> get(ArgumentName name) const {
        return has(name) ? std::optional(at(name)) : std::nullopt;
    }
    /// All values, in the order given. Raises std::logic_error, as the others do, for an argument
    /// that this command does not have.
    [[nodiscard]] const std::vector<std::string>& list(ArgumentName name) const;
};

/// One command. The table of these drives parsing, the help texts and whatever else is made from
/// the commands, in both languages.
struct Command {
    std::string_view name;
    Text summary;                 ///< one line
    std::optional<Text> details;  ///< what a person has to know, laid out for 80 columns
    std::string_view example;     ///< a command line, without the program's name
    std::span<const Argument> arguments;
    int (*run)(const Arguments&);
};

/// All commands, in the order in which help lists them. "config get" and "config set" are two rows.
[[nodiscard]] std::span<const Command> commands() noexcept;

/// The options before a command; help stands after one, too.
inline constexpr Argument helpOption{"help", "-h,--help", "", ArgumentKind::flag,
                                     texts::helpOfHelp};
inline constexpr Argument versionOption{"version", "--version", "", ArgumentKind::flag,
                                        texts::helpOfVersion};
inline constexpr Argument folderOption{"program-folder", "--program-folder", "DIR",
                                       ArgumentKind::option, texts::helpOfFolder};

/// The summary of a word that several commands begin with: "config".
inline constexpr Text groupSummary = texts::configSummary;

/// What the command line asks for.
struct Request {
    const Command* command = nullptr;  ///< nothing: print `text` and end well
    Arguments arguments;
    std::optional<std::string> programFolder;
    std::string text;  ///< the help or version text
};

/// Takes the command line apart by the table. A wrong one raises Failure 2.
[[nodiscard]] Request parse(int count, const char* const* words);

}  // namespace k520::cli
