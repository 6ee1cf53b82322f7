// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/commands.h"

#include <array>

#include "cli/Command.h"

namespace k520::cli {

namespace {

using enum ArgumentKind;

constexpr Argument file{"FILE", "FILE", "", positional, "A data file (.dat)"};
constexpr Argument json{"json", "--json", "", flag, "Print JSON"};
constexpr Argument port{"port", "-p,--port", "PORT", required,
                        "A port number 1 to 16, a device path, or \"virtual\" for the simulated "
                        "radio inside the program"};
constexpr Argument trace{"trace", "--trace", "FILE", option,
                         "Keep the list of all frames sent and received (- for stdout); "
                         "without any FILE stays as it is"};

constexpr std::array newArguments{
    Argument{"FILE", "FILE", "", positional, "The data file to make; an existing one is replaced"}};

constexpr std::array showArguments{file, json};

constexpr std::array setArguments{
    file, Argument{"EDITS", "EDITS", "KEY=VALUE...", positionalList, "What to change, in order"},
    Argument{"output", "-o,--output", "OUT", option, "Save here and leave FILE as it is"}};

constexpr std::array exportArguments{
    file, Argument{"output", "-o,--output", "OUT.csv", option, "Write here instead of stdout"}};

constexpr std::array importArguments{
    file, Argument{"CSV", "CSV", "IN.csv", positional, "Channels, as export writes them"},
    Argument{"output", "-o,--output", "OUT", option, "Save here and leave FILE as it is"}};

constexpr std::array diffArguments{Argument{"A", "A", "", positional, "A data file"},
                                   Argument{"B", "B", "", positional, "Another one"}, json};

constexpr std::array hexArguments{
    file, Argument{"from", "--from", "A", option, "First address, hexadecimal (default 0)"},
    Argument{"to", "--to", "B", option, "Last address, hexadecimal (default the image's end)"}};

constexpr std::array configGetArguments{
    Argument{"SECTION", "SECTION", "", positional, "A section, such as Setting"},
    Argument{"KEY", "KEY", "", positional, "A key of it"},
    Argument{"default", "--default", "TEXT", option, "Print this where the key is missing"}};

constexpr std::array configSetArguments{
    Argument{"SECTION", "SECTION", "", positional, "A section, such as Setting"},
    Argument{"KEY", "KEY", "", positional, "A key of it"},
    Argument{"VALUE", "VALUE", "", positional, "The new value"}};

constexpr std::array portsArguments{json};

constexpr std::array readArguments{
    port, Argument{"output", "-o,--output", "FILE", required, "The data file to save"},
    Argument{"verify", "--verify", "", flag, "Read twice and accept only two equal images"},
    Argument{"keep-copy", "--keep-copy", "", flag,
             "Also keep what was read in Data/Backups, named by date and time"},
    trace};

constexpr Argument readBack{"verify", "--verify", "", flag, "Read back afterwards and compare"};

constexpr std::array writeArguments{
    port,
    file,
    readBack,
    Argument{"backup", "--backup", "OUT", option, "First read the radio into this data file"},
    Argument{"keep-copy", "--keep-copy", "", flag,
             "First read the radio into Data/Backups, named by date and time"},
    trace};

constexpr std::array restoreArguments{
    port,
    Argument{
        "from", "--from", "FILE", option,
        "This backup, or any data file (default: that of the latest write with --keep-copy, where "
        "the radio holds what that write found or sent)"},
    readBack, trace};

constexpr std::array verifyArguments{port, file, trace};

constexpr std::array simulateArguments{
    Argument{"image", "--image", "FILE", option,
             "Start from this data file instead of the default image"},
    Argument{"link", "--link", "PATH", option, "Make a symbolic link to the device"},
    Argument{"save", "--save", "FILE", option,
             "Store the memory as a data file after each completed write and at the end"},
    Argument{"baud", "--baud", "RATE", option, "Line speed for the byte times (default 9600)"},
    Argument{"lose", "--lose", "N", option, "Fault: lose reply byte N"},
    Argument{"corrupt", "--corrupt", "N", option, "Fault: flip bits of reply byte N"},
    Argument{"add", "--add", "N", option, "Fault: send reply byte N twice"},
    Argument{"delay", "--delay", "N[:MS]", option,
             "Fault: send reply byte N late, by MS milliseconds (default 100)"},
    Argument{"lose-request", "--lose-request", "N", option, "Fault: lose request byte N"},
    Argument{"corrupt-request", "--corrupt-request", "N", option,
             "Fault: flip bits of request byte N"},
    Argument{"forget", "--forget", "N", option,
             "Fault: acknowledge the Nth written block and do not store it"},
    Argument{"babble-from", "--babble-from", "N", option,
             "Fault: fill the line with noise from exchange N on (1: at once)"},
    Argument{"silent-from", "--silent-from", "N", option,
             "Fault: answer nothing from exchange N on"},
    Argument{"fail-first", "--fail-first", "K", option,
             "Fault: answer nothing in the first K attempts"},
    Argument{"unplug-after", "--unplug-after", "N", option,
             "Fault: go away after exchange N, as if the cable were pulled"}};

constexpr std::string_view editKeys =
    "Keys:\n"
    "  chN.rx, chN.tx          a frequency in MHz; empty clears it (rx: deletes the channel,\n"
    "                          tx: no transmission). A new channel transmits where it receives.\n"
    "  chN.decode, chN.encode  a tone: 88.5, D023N, D023I, 023; empty for off\n"
    "  chN.NAME, chN.pK        an option of the channel (K counts columns from 5): its text or "
    "index\n"
    "  band                    an entry 0 to 10, or LOW-HIGH in MHz; the channels stay\n"
    "  option.NAME             tot, squelch, volume, voice, broadcast_squelch, broadcast_volume,\n"
    "                          battery_save, beep, emergency_alarm, voice_chip, crystal, pre_tot,\n"
    "                          vox_level, vox_delay, vox_inhibit_rx, low_battery_tx: its text or "
    "index\n"
    "Frequencies snap to the 5 and 6.25 kHz rasters. All edits are made, or none.\n"
    "Example: k520-cli set fleet.dat ch1.rx=446.00625 ch1.encode=67.0 option.tot=60s";

const std::array table{
    Command{"new", "Makes a data file from the default image", "Example: k520-cli new fleet.dat",
            newArguments, runNew},
    Command{"show", "Shows model, band, stamp, channels and options of a data file",
            "Example: k520-cli show fleet.dat", showArguments, runShow},
    Command{"set", "Edits a data file by the rules of the program's grid and panel", editKeys,
            setArguments, runSet},
    Command{"export", "Writes the channels of a data file as CSV",
            "Example: k520-cli export fleet.dat -o fleet.csv", exportArguments, runExport},
    Command{"import", "Takes channels from a CSV file, by the same rules as typing them",
            "The first line names the columns as export does; channel is needed, a missing column "
            "or channel stays as it is.\nAll lines are taken, or none.\n"
            "Example: k520-cli import fleet.dat fleet.csv",
            importArguments, runImport},
    Command{"diff", "Says what differs between two data files",
            "Compares channels, options, band and what remains of the bytes. The programming stamp "
            "is\nshown and does not count.\nExit code 0: no difference, 1: a difference.",
            diffArguments, runDiff},
    Command{"hex", "Prints the memory image of a data file as a hexadecimal table",
            "Addresses are the radio's. Example: k520-cli hex fleet.dat --from 0010 --to 004F",
            hexArguments, runHex},
    Command{"config get", "Prints one value of the settings file",
            "Example: k520-cli config get Setting Language", configGetArguments, runConfigGet},
    Command{"config set", "Writes one value of the settings file; every other line stays",
            "Example: k520-cli config set Ports COM1 /dev/ttyUSB1", configSetArguments,
            runConfigSet},
    Command{"ports", "Lists the sixteen ports: device, description, usable or why not",
            "Section Ports of the settings file says which device a number stands for.",
            portsArguments, runPorts},
    Command{"read", "Reads a radio into a data file",
            "The radio is on, the cable is in, and no other program holds the port. Ctrl-C ends "
            "the session.\n"
            "Example: k520-cli read -p 1 -o fleet.dat --verify",
            readArguments, runRead},
    Command{"write", "Writes a data file to a radio",
            "FILE stays as it is; the radio gets the date and time of the write as well.\n"
            "A write that fails says what state the radio is in; restore puts the backup back.\n"
            "What OUT held before is kept beside it, as OUT.~1~ and so on.\n"
            "Example: k520-cli write -p 1 fleet.dat --keep-copy --verify",
            writeArguments, runWrite},
    Command{"restore", "Puts a backup back into a radio, byte for byte",
            "A backup in Data/Backups is written as far as it came from a radio, any other data "
            "file over\nthe write range but for bytes 0400 to 040F, which it does not hold. No "
            "date and time is put into it.\nWithout --from the radio is read first.\n"
            "Example: k520-cli restore -p 1 --verify",
            restoreArguments, runRestore},
    Command{"verify", "Reads a radio and compares it with a data file",
            "The programming stamp is left out. Exit code 0: no difference, 1: a difference.\n"
            "Example: k520-cli verify -p 1 fleet.dat",
            verifyArguments, runVerify},
    Command{"simulate", "Plays a radio on a pseudo-terminal",
            "The first line of stdout is \"port: DEVICE\": give that device to read and write. "
            "Ends on Ctrl-C.\nBytes, blocks and exchanges count from 1.\n"
            "Example: k520-cli simulate --link /tmp/radio --save radio.dat",
            simulateArguments, runSimulate},
};

}  // namespace

std::span<const Command> commands() noexcept {
    return table;
}

}  // namespace k520::cli
