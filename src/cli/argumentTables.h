// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "cli/Argument.h"
#include "cli/helpTexts.h"

/// What each command takes.
namespace k520::cli::argumentTables {

inline constexpr Argument file{"FILE", "FILE", "", ArgumentKind::positional, texts::helpOfFile};
inline constexpr Argument json{"json", "--json", "", ArgumentKind::flag, texts::helpOfJson};
inline constexpr Argument port{"port", "-p,--port", "PORT", ArgumentKind::required,
                               texts::helpOfPort};
inline constexpr Argument trace{"trace", "--trace", "FILE", ArgumentKind::option,
                                texts::helpOfTrace};
inline constexpr Argument otherOutput{"output", "-o,--output", "OUT", ArgumentKind::option,
                                      texts::helpOfOtherOutput};
inline constexpr Argument readBack{"verify", "--verify", "", ArgumentKind::flag,
                                   texts::helpOfReadBack};
inline constexpr Argument section{"SECTION", "SECTION", "", ArgumentKind::positional,
                                  texts::helpOfSection};
inline constexpr Argument key{"KEY", "KEY", "", ArgumentKind::positional, texts::helpOfKey};

inline constexpr std::array newArguments{
    Argument{"FILE", "FILE", "", ArgumentKind::positional, texts::newFile}};

inline constexpr std::array showArguments{
    file, json, Argument{"words", "--words", "", ArgumentKind::flag, texts::showWords}};

inline constexpr std::array setArguments{
    file, Argument{"EDITS", "EDITS", "KEY=VALUE...", ArgumentKind::positionalList, texts::setEdits},
    otherOutput};

inline constexpr std::array exportArguments{
    file, Argument{"output", "-o,--output", "OUT.csv", ArgumentKind::option, texts::exportOutput}};

inline constexpr std::array importArguments{
    file, Argument{"CSV", "CSV", "IN.csv", ArgumentKind::positional, texts::importCsv},
    otherOutput};

inline constexpr std::array diffArguments{
    Argument{"A", "A", "", ArgumentKind::positional, texts::diffFirst},
    Argument{"B", "B", "", ArgumentKind::positional, texts::diffSecond}, json};

inline constexpr std::array hexArguments{
    file, Argument{"from", "--from", "A", ArgumentKind::option, texts::hexFrom},
    Argument{"to", "--to", "B", ArgumentKind::option, texts::hexTo}};

inline constexpr std::array configGetArguments{
    section, key,
    Argument{"default", "--default", "TEXT", ArgumentKind::option, texts::configDefault}};

inline constexpr std::array configSetArguments{
    section, key, Argument{"VALUE", "VALUE", "", ArgumentKind::positional, texts::configValue}};

inline constexpr std::array portsArguments{json};

inline constexpr std::array readArguments{
    port, Argument{"output", "-o,--output", "FILE", ArgumentKind::required, texts::readOutput},
    Argument{"verify", "--verify", "", ArgumentKind::flag, texts::readTwice},
    Argument{"keep-copy", "--keep-copy", "", ArgumentKind::flag, texts::readKeepCopy}, trace};

inline constexpr std::array writeArguments{
    port,
    file,
    readBack,
    Argument{"backup", "--backup", "OUT", ArgumentKind::option, texts::writeBackup},
    Argument{"keep-copy", "--keep-copy", "", ArgumentKind::flag, texts::writeKeepCopy},
    trace};

inline constexpr std::array restoreArguments{
    Argument{"port", "-p,--port", "PORT", ArgumentKind::option, texts::helpOfPort},
    Argument{"from", "--from", "FILE", ArgumentKind::option, texts::restoreFrom},
    readBack,
    trace,
    Argument{"list", "--list", "", ArgumentKind::flag, texts::restoreList},
    Argument{"forget", "--forget", "FILE", ArgumentKind::option, texts::restoreForget}};

inline constexpr std::array verifyArguments{port, file, trace};

inline constexpr std::array simulateArguments{
    Argument{"image", "--image", "FILE", ArgumentKind::option, texts::simulateImage},
    Argument{"link", "--link", "PATH", ArgumentKind::option, texts::simulateLink},
    Argument{"save", "--save", "FILE", ArgumentKind::option, texts::simulateSave},
    Argument{"baud", "--baud", "RATE", ArgumentKind::option, texts::simulateBaud},
    Argument{"lose", "--lose", "N", ArgumentKind::option, texts::simulateLose},
    Argument{"corrupt", "--corrupt", "N", ArgumentKind::option, texts::simulateCorrupt},
    Argument{"add", "--add", "N", ArgumentKind::option, texts::simulateAdd},
    Argument{"delay", "--delay", "N[:MS]", ArgumentKind::option, texts::simulateDelay},
    Argument{"lose-request", "--lose-request", "N", ArgumentKind::option,
             texts::simulateLoseRequest},
    Argument{"corrupt-request", "--corrupt-request", "N", ArgumentKind::option,
             texts::simulateCorruptRequest},
    Argument{"forget", "--forget", "N", ArgumentKind::option, texts::simulateForget},
    Argument{"babble-from", "--babble-from", "N", ArgumentKind::option, texts::simulateBabble},
    Argument{"silent-from", "--silent-from", "N", ArgumentKind::option, texts::simulateSilent},
    Argument{"fail-first", "--fail-first", "K", ArgumentKind::option, texts::simulateFailFirst},
    Argument{"unplug-after", "--unplug-after", "N", ArgumentKind::option, texts::simulateUnplug}};

inline constexpr std::array<std::span<const Argument>, 15> all{
    newArguments,  showArguments,  setArguments,       exportArguments,    importArguments,
    diffArguments, hexArguments,   configGetArguments, configSetArguments, portsArguments,
    readArguments, writeArguments, restoreArguments,   verifyArguments,    simulateArguments};

/// Whether some command has an argument of that name.
[[nodiscard]] constexpr bool has(std::string_view name) {
    return std::ranges::any_of(all, [&](std::span<const Argument> table) {
        return std::ranges::find(table, name, &Argument::name) != table.end();
    });
}

}  // namespace k520::cli::argumentTables
