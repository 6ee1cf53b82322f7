// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/commands.h"

#include <array>
#include <optional>

#include "cli/Command.h"
#include "cli/helpTexts.h"

namespace k520::cli {

namespace {

using enum ArgumentKind;

constexpr Argument file{"FILE", "FILE", "", positional, texts::helpOfFile};
constexpr Argument json{"json", "--json", "", flag, texts::helpOfJson};
constexpr Argument port{"port", "-p,--port", "PORT", required, texts::helpOfPort};
constexpr Argument trace{"trace", "--trace", "FILE", option, texts::helpOfTrace};
constexpr Argument otherOutput{"output", "-o,--output", "OUT", option, texts::helpOfOtherOutput};
constexpr Argument readBack{"verify", "--verify", "", flag, texts::helpOfReadBack};
constexpr Argument section{"SECTION", "SECTION", "", positional, texts::helpOfSection};
constexpr Argument key{"KEY", "KEY", "", positional, texts::helpOfKey};

constexpr std::array newArguments{Argument{"FILE", "FILE", "", positional, texts::newFile}};

constexpr std::array showArguments{file, json};

constexpr std::array setArguments{
    file, Argument{"EDITS", "EDITS", "KEY=VALUE...", positionalList, texts::setEdits}, otherOutput};

constexpr std::array exportArguments{
    file, Argument{"output", "-o,--output", "OUT.csv", option, texts::exportOutput}};

constexpr std::array importArguments{
    file, Argument{"CSV", "CSV", "IN.csv", positional, texts::importCsv}, otherOutput};

constexpr std::array diffArguments{Argument{"A", "A", "", positional, texts::diffFirst},
                                   Argument{"B", "B", "", positional, texts::diffSecond}, json};

constexpr std::array hexArguments{file, Argument{"from", "--from", "A", option, texts::hexFrom},
                                  Argument{"to", "--to", "B", option, texts::hexTo}};

constexpr std::array configGetArguments{
    section, key, Argument{"default", "--default", "TEXT", option, texts::configDefault}};

constexpr std::array configSetArguments{
    section, key, Argument{"VALUE", "VALUE", "", positional, texts::configValue}};

constexpr std::array portsArguments{json};

constexpr std::array readArguments{
    port, Argument{"output", "-o,--output", "FILE", required, texts::readOutput},
    Argument{"verify", "--verify", "", flag, texts::readTwice},
    Argument{"keep-copy", "--keep-copy", "", flag, texts::readKeepCopy}, trace};

constexpr std::array writeArguments{
    port,
    file,
    readBack,
    Argument{"backup", "--backup", "OUT", option, texts::writeBackup},
    Argument{"keep-copy", "--keep-copy", "", flag, texts::writeKeepCopy},
    trace};

constexpr std::array restoreArguments{
    Argument{"port", "-p,--port", "PORT", option, texts::helpOfPort},
    Argument{"from", "--from", "FILE", option, texts::restoreFrom},
    readBack,
    trace,
    Argument{"list", "--list", "", flag, texts::restoreList},
    Argument{"forget", "--forget", "FILE", option, texts::restoreForget}};

constexpr std::array verifyArguments{port, file, trace};

constexpr std::array simulateArguments{
    Argument{"image", "--image", "FILE", option, texts::simulateImage},
    Argument{"link", "--link", "PATH", option, texts::simulateLink},
    Argument{"save", "--save", "FILE", option, texts::simulateSave},
    Argument{"baud", "--baud", "RATE", option, texts::simulateBaud},
    Argument{"lose", "--lose", "N", option, texts::simulateLose},
    Argument{"corrupt", "--corrupt", "N", option, texts::simulateCorrupt},
    Argument{"add", "--add", "N", option, texts::simulateAdd},
    Argument{"delay", "--delay", "N[:MS]", option, texts::simulateDelay},
    Argument{"lose-request", "--lose-request", "N", option, texts::simulateLoseRequest},
    Argument{"corrupt-request", "--corrupt-request", "N", option, texts::simulateCorruptRequest},
    Argument{"forget", "--forget", "N", option, texts::simulateForget},
    Argument{"babble-from", "--babble-from", "N", option, texts::simulateBabble},
    Argument{"silent-from", "--silent-from", "N", option, texts::simulateSilent},
    Argument{"fail-first", "--fail-first", "K", option, texts::simulateFailFirst},
    Argument{"unplug-after", "--unplug-after", "N", option, texts::simulateUnplug}};

constexpr std::array table{
    Command{"new", texts::newSummary, std::nullopt, "new fleet.dat", newArguments, runNew},
    Command{"show", texts::showSummary, std::nullopt, "show fleet.dat", showArguments, runShow},
    Command{"set", texts::setSummary, texts::setDetails,
            "set fleet.dat ch1.rx=446.00625 ch1.encode=67.0 option.tot=60s", setArguments, runSet},
    Command{"export", texts::exportSummary, std::nullopt, "export fleet.dat -o fleet.csv",
            exportArguments, runExport},
    Command{"import", texts::importSummary, texts::importDetails, "import fleet.dat fleet.csv",
            importArguments, runImport},
    Command{"diff", texts::diffSummary, texts::diffDetails, "diff fleet.dat other.dat",
            diffArguments, runDiff},
    Command{"hex", texts::hexSummary, texts::hexDetails, "hex fleet.dat --from 0010 --to 004F",
            hexArguments, runHex},
    Command{"config get", texts::configGetSummary, std::nullopt, "config get Setting Language",
            configGetArguments, runConfigGet},
    Command{"config set", texts::configSetSummary, std::nullopt,
            "config set Ports COM1 /dev/ttyUSB1", configSetArguments, runConfigSet},
    Command{"ports", texts::portsSummary, texts::portsDetails, "ports", portsArguments, runPorts},
    Command{"read", texts::readSummary, texts::readDetails, "read -p 9 -o fleet.dat --verify",
            readArguments, runRead},
    Command{"write", texts::writeSummary, texts::writeDetails,
            "write -p 9 fleet.dat --keep-copy --verify", writeArguments, runWrite},
    Command{"restore", texts::restoreSummary, texts::restoreDetails, "restore -p 9 --verify",
            restoreArguments, runRestore},
    Command{"verify", texts::verifySummary, texts::verifyDetails, "verify -p 9 fleet.dat",
            verifyArguments, runVerify},
    Command{"simulate", texts::simulateSummary, texts::simulateDetails,
            "simulate --link /tmp/radio --save radio.dat", simulateArguments, runSimulate},
};

}  // namespace

std::span<const Command> commands() noexcept {
    return table;
}

}  // namespace k520::cli
