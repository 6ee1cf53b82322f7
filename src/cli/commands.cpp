// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/commands.h"

#include <array>
#include <optional>

#include "cli/Command.h"
#include "cli/argumentTables.h"
#include "cli/helpTexts.h"

namespace k520::cli {

namespace {

using namespace argumentTables;

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
