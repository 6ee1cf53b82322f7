// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <tuple>
#include <vector>

#include "cli/Command.h"
#include "cli/Program.h"

namespace k520 {
namespace {

using nlohmann::json;
using test::Outcome;
using test::Program;
using testing::HasSubstr;

class Contract : public testing::Test {
  protected:
    Contract() { EXPECT_EQ(run("new @fleet.dat").code, 0); }

    json show() {
        const auto outcome = run("show @fleet.dat --json");
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return json::parse(outcome.out);
    }
    json channel(int number) { return show()["channels"].at(static_cast<unsigned>(number) - 1); }
    Outcome set(const std::string& edits) { return run("set @fleet.dat " + edits); }

    Program run;
};

TEST_F(Contract, EveryCommandExplainsItself) {
    EXPECT_EQ(run("--version").code, 0);
    const auto general = run("--help");
    for (const auto& command : cli::commands()) {
        const std::string name(command.name);
        EXPECT_THAT(general.out, HasSubstr(name.substr(0, name.find(' '))));
        const auto help = run(name + " --help");
        EXPECT_EQ(help.code, 0) << command.name;
        for (const auto& argument : command.arguments) {
            EXPECT_THAT(help.out, HasSubstr(say(argument.help).substr(0, 20))) << command.name;
        }
    }
}

TEST_F(Contract, SetFollowsTheGrid) {
    const std::tuple<const char*, const char*, json> cases[] = {
        {"ch1.rx=445.0124", "rx_hz", 445012500},
        {"ch1.rx=100", "rx_hz", 400000000},
        {"ch1.tx=470.005", "in_band", false},
        {"ch1.tx=470", "in_band", true},
        {"ch1.decode=88.54", "decode_tone", "88.5"},
        {"ch1.encode=D754i", "encode_tone", "D754I"},
        {"ch1.encode=", "encode_tone", "None"},
        {"ch1.rx=446,5", "rx_hz", 446500000},
        {"ch1.tx==+7.6", "tx_hz", 454100000},
        {"ch1.decode=无", "decode_tone", "None"},
        {"ch1.decode=none", "decode_tone", "None"},
        {"ch1.tx=", "tx_hz", nullptr},
        {"ch1.rx=", "rx_hz", nullptr}};
    for (const auto& [edit, field, expected] : cases) {
        EXPECT_EQ(set(edit).code, 0) << edit;
        EXPECT_EQ(channel(1)[field], expected) << edit;
    }
    EXPECT_EQ(channel(1), (json{{"channel", 1}, {"rx_hz", nullptr}, {"tx_hz", nullptr}}));
    for (const char* edit :
         {"ch5.tx=446", "ch5.decode=67.0", "ch5.Power=Low", "ch16.encode=67.0"}) {
        EXPECT_EQ(set(edit).code, 1) << edit;
    }
    EXPECT_EQ(set("ch5.rx=446 ch5.decode=67.0 ch5.tx=447 ch5.Power=low ch5.p8=2").code, 0);
    const auto made = channel(5);
    EXPECT_EQ(made["tx_hz"], 447000000);
    EXPECT_EQ(made["encode_tone"], "67.0") << "no tone before: it takes the decode tone";
    EXPECT_EQ(made["parameters"][1]["text"], "Low");
    EXPECT_EQ(made["parameters"][3]["text"], "Tone");
}

TEST_F(Contract, BandsAndOptions) {
    EXPECT_EQ(set("band=4 option.tot=300S option.vox_delay=5 option.beep=off").code, 0);
    auto shown = show();
    EXPECT_EQ(shown["band"]["index"], 4);
    EXPECT_EQ(shown["band"]["low_hz"], 245000000);
    EXPECT_EQ(shown["options"]["tot"], (json{{"number", 0}, {"value", 20}, {"text", "300s"}}));
    EXPECT_EQ(shown["options"]["vox_delay"]["text"], "3.0");
    EXPECT_EQ(shown["options"]["beep"]["value"], 0);
    EXPECT_EQ(shown["options"].size(), 16U);
    EXPECT_EQ(set("option.tot=60秒 ch1.Power=低").err, "");
    EXPECT_EQ(
        set("option.tot=30 option.tot=15 option.tot=3 ch1.p8=1 ch1.rx=600").err,
        "k520-cli: warning: option.tot=3 is not an entry; taken as entry number 3: 45s\n"
        "k520-cli: warning: ch1.BusyLock=1 is not an entry; taken as entry number 1: Carrier\n"
        "k520-cli: warning: ch1.rx=600 is beyond 120 - 550 MHz; limited to 246 MHz\n");

    // What the radio alone decides is left as it is, and the user told.
    const auto before = run.folder.read("fleet.dat");
    for (const std::string name : {"crystal", "voice_chip"}) {
        const auto fixed = set("option." + name + "=1");
        EXPECT_EQ(fixed.code, 0);
        EXPECT_THAT(fixed.err, HasSubstr("option." + name));
        EXPECT_EQ(run.folder.read("fleet.dat"), before);
    }
    EXPECT_EQ(set("option.squelch=3").err, "");

    // A custom band is in force for the edits after it; a file that holds one opens as 120 - 520.
    EXPECT_EQ(set("band=145.12345-150 ch1.rx=600").code, 0);
    EXPECT_EQ(channel(1)["rx_hz"], 150000000);
    shown = show();
    EXPECT_EQ(shown["band"]["index"], 11);
    EXPECT_EQ(shown["band"]["high_hz"], 520000000);
    EXPECT_EQ(run("hex @fleet.dat --from 37a --to 37d").out,
              "0370H                               14 51 15 00\n");
    const auto reversed = set("band=130-125");
    EXPECT_EQ(reversed.code, 0);
    EXPECT_THAT(reversed.err, HasSubstr("120 - 520 MHz"));
    EXPECT_EQ(show()["band"]["index"], 10);
}

TEST_F(Contract, BadFilesAreToldAndKept) {
    run.folder.write("empty.dat", "");
    run.folder.write("short.dat", std::string(0x200, '\xFF'));
    run.folder.write("long.dat", std::string(9000, '\0'));
    for (const std::string bad : {"@missing.dat", "@empty.dat", "@home"}) {
        for (const std::string command : {"show ", "hex ", "export ", "write -p virtual "}) {
            EXPECT_EQ(run(command + bad).code, 1) << command << bad;
        }
        EXPECT_EQ(run("set " + bad + " band=1").code, 1) << bad;
    }
    const auto shorter = run("show @short.dat");
    EXPECT_EQ(shorter.code, 0);
    EXPECT_THAT(shorter.err, HasSubstr("512 of 8192 bytes"));
    EXPECT_EQ(run("set @long.dat ch1.rx=446").code, 0);
    run.folder.write("trace", "old");
    run.folder.write("big.csv", std::string(17U << 20U, '\n'));
    for (const char* line :
         {"set @short.dat band=1", "verify -p virtual @short.dat --trace @trace", "new @home",
          "new @none/a.dat", "read -p virtual -o @none/a.dat",
          "verify -p virtual @fleet.dat --trace @none/t", "export @fleet.dat -o @none/a.csv",
          "import @fleet.dat @none/a.csv", "import @fleet.dat @big.csv"}) {
        EXPECT_EQ(run(line).code, 1) << line;
    }
    EXPECT_EQ(run.folder.read("short.dat").size(), 0x200U);
    EXPECT_EQ(run.folder.read("long.dat").size(), 9000U);
    EXPECT_EQ(run.folder.read("trace"), "old");
}

TEST_F(Contract, AnyWordMayStandInBrackets) {
    EXPECT_EQ(run({"config", "set", "Setting", "Probe", "[a,b]"}).code, 0);
    EXPECT_EQ(run("config get Setting Probe").out, "[a,b]\n");
    run.command = {"/usr/bin/env", "--chdir=" + run.home().string(), K520_CLI, "--program-folder",
                   "[home]"};
    EXPECT_EQ(run("new [a]").code, 0);
    EXPECT_EQ(run("set [a] ch1.rx=447 -o [b]").code, 0);
    EXPECT_EQ(run("diff [a] [b]").code, 1);
}

TEST_F(Contract, ShowKeepsValuesUnderTheirTitles) {
    const char* const rows[][2] = {
        {"3002", "12"},    {"3003", "Channel|R|T|D|E|b|p|s|l|nine|ten|eleven|twelve"},
        {"3750", "Extra"}, {"3752", "0"},
        {"3753", "first"}, {"3754", "*EndOfThisItem*"}};
    for (const auto& [key, value] : rows) {
        EXPECT_EQ(run({"config", "set", "ChInfo", key, value}).code, 0);
    }
    // The eleventh column is kept free.
    const auto shown = run("show @fleet.dat").out;
    EXPECT_THAT(shown, testing::ContainsRegex("nine +ten +twelve"));
    EXPECT_THAT(shown, testing::ContainsRegex("0 +0 +first"));
}

TEST_F(Contract, AValueWithoutATextIsShownAsItIs) {
    EXPECT_EQ(set("ch1.Bandwidth=Narrow").code, 0);
    EXPECT_EQ(run({"config", "set", "ChInfo", "3404", "*EndOfThisItem*"}).code, 0);
    const auto shown = channel(1)["parameters"][0];
    EXPECT_EQ(shown["value"], 1);
    EXPECT_EQ(shown["text"], "");
}

TEST_F(Contract, WhatCannotBePrintedIsAFailure) {
    std::filesystem::remove(run.file("run.out"));
    std::filesystem::create_symlink("/dev/full", run.file("run.out"));
    for (const char* line : {"show @fleet.dat", "hex @fleet.dat", "export @fleet.dat", "ports"}) {
        const auto outcome = run(line);
        EXPECT_EQ(outcome.code, 1) << line;
        EXPECT_THAT(outcome.err, HasSubstr("stdout: No space left on device"));
    }
}

TEST_F(Contract, TheProgramFolderIsFoundInItsOrder) {
    const std::filesystem::path share = K520_SHARE_DIR;
    std::filesystem::create_directory(run.file("own"));
    std::filesystem::copy_file(K520_CLI, run.file("own/k520-cli"));
    std::filesystem::copy_file(share / "Uninstall.exe", run.file("own/Uninstall.exe"));
    const std::string kept = K520_CLI;
    const std::string moved = run.file("own/k520-cli");
    const std::string home = "HOME=" + run.file("h"), data = "XDG_DATA_HOME=" + run.file("x");
    const std::string own = "K520_HOME=" + run.file("k");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        // environment and program, and where a setting is written
        {{home, kept}, "h/.local/share/k520/"},
        {{home, data, kept}, "x/k520/"},
        {{home, data, moved}, "own/"},
        {{home, data, own, moved}, "k/"}};
    for (const auto& [words, place] : cases) {
        run.command = {"/usr/bin/env", "-i"};
        run.command.insert(run.command.end(), words.begin(), words.end());
        EXPECT_EQ(run("config set Setting Probe 1").code, 0) << place;
        EXPECT_THAT(run.folder.read(std::string(place) + "Uninstall.exe"), HasSubstr("Probe=1"));
    }
    for (const char* seeded : {"h/.local/share/k520/", "x/k520/"}) {
        EXPECT_FALSE(run.folder.read(seeded + std::string("PL220_CV.exe")).empty());
    }
    run.command = {"/usr/bin/env", own, K520_CLI, "--program-folder", ""};
    EXPECT_EQ(run("ports").code, 2) << "a variable that is not set is not a choice";
    run.command = {K520_CLI, "--program-folder", run.file("none")};
    EXPECT_THAT(run("ports").err, HasSubstr("does not exist; the shipped settings are used"));
    run.command.back() = run.file("fleet.dat");
    EXPECT_EQ(run("ports").code, 1);
}

TEST_F(Contract, CsvRoundTripAndItsRules) {
    // A text that has to be quoted.
    EXPECT_EQ(run({"config", "set", "ChInfo", "3404", "Nar,\"row\""}).code, 0);
    EXPECT_THAT(run("export @fleet.dat").out, HasSubstr(",\"Nar,\"\"row\"\"\","));
    const auto before = run.folder.read("fleet.dat");
    EXPECT_EQ(run("export @fleet.dat -o @a.csv").code, 0);
    EXPECT_EQ(run("import @fleet.dat @a.csv").code, 0);
    EXPECT_EQ(run.folder.read("fleet.dat"), before);
    run.folder.write("a.csv",
                     "\xEF\xBB\xBF"
                     "channel,RX,tx,\"decode\"\r\n5,433.5,,88.5\r\n1,,,\r\n");
    EXPECT_EQ(run("import @fleet.dat @a.csv").code, 0);
    EXPECT_EQ(channel(5)["tx_hz"], nullptr);
    EXPECT_EQ(channel(5)["decode_tone"], "88.5");
    EXPECT_EQ(channel(1)["rx_hz"], nullptr);
}

TEST_F(Contract, DiffNamesWhatDiffersAndLeavesTheStampOut) {
    EXPECT_EQ(set("ch1.decode=67.0 ch1.Power=High ch1.Scan=Off ch2.rx= ch3.tx= option.squelch=9 "
                  "band=9 -o @b.dat")
                  .code,
              0);
    auto bytes = run.folder.read("b.dat");
    bytes[816 + 16] = '\x26';    // the stamp's year, in the moved area
    bytes[0x379 + 16] = '\x07';  // the model
    bytes[0x1000] = '\x12';
    run.folder.write("b.dat", bytes);
    EXPECT_EQ(run("diff @fleet.dat @fleet.dat").code, 0);
    const auto outcome = run("diff @fleet.dat @b.dat --json");
    EXPECT_EQ(outcome.code, 1);
    const auto found = json::parse(outcome.out);
    EXPECT_EQ(found["identical"], false);
    std::string kinds;
    for (const auto& difference : found["differences"]) {
        kinds += difference["kind"].get<std::string>() + " ";
    }
    EXPECT_EQ(kinds, "model band channel channel channel channel channel option byte ");
    const auto text = run("diff @fleet.dat @b.dat").out;
    for (const char* row : {"decode  None *67.0", "Power *Low *High", "Scan *On *Off", "2 *rx .*-",
                            "3 *tx .*-", "squelch *5 *9", "1000 *.. *12"}) {
        EXPECT_THAT(text, testing::ContainsRegex(row));
    }
}

/// What two files differ in, line by line: "channel 1 rx", "byte 017E".
std::string differencesIn(const json& comparison) {
    std::string lines;
    for (const auto& difference : comparison["differences"]) {
        lines += difference["kind"].get<std::string>();
        if (difference.contains("channel")) {
            lines += " " + std::to_string(difference["channel"].get<int>());
        }
        for (const char* key : {"field", "option", "address"}) {
            lines += difference.contains(key) ? " " + difference[key].get<std::string>() : "";
        }
        lines += "; ";
    }
    return lines;
}

// Each byte is told once: as what it means where that differs, or else as the byte that it is.
TEST_F(Contract, DiffTellsEveryByteOnce) {
    using Patches = std::vector<std::pair<std::size_t, std::vector<int>>>;
    const auto patched = [](std::string bytes, const Patches& patches) {
        for (auto [address, values] : patches) {
            address += address >= 0x10 && address < 0x400 ? 16 : 0;  // moved in a data file
            for (const int value : values) {
                bytes[address++] = static_cast<char>(value);
            }
        }
        return bytes;
    };
    // Channel 1 does not transmit; channel 5 is empty.
    const auto base = patched(run.folder.read("fleet.dat"), {{0x14, {0xFF, 0xFF, 0xFF, 0xFF}}});
    run.folder.write("fleet.dat", base);
    const std::pair<Patches, const char*> cases[] = {
        {{{0x10, {0x00, 0x00, 0x35, 0x43, 0x00}}}, "channel 1 rx; byte 0014; "},
        {{{0x24, {0x00, 0x00, 0x35, 0x43, 0x00}}}, "channel 2 tx; byte 0028; "},
        {{{0x28, {0x9E, 0x02, 0x00}}}, "channel 2 decode; byte 002A; "},
        {{{0x2A, {0x9E, 0x02, 0xE6}}}, "channel 2 encode; byte 002C; "},
        {{{0x0F, {0}}, {0x10, std::vector(16, 0xFF)}}, "channel 1 channel; byte 000F; "},
        {{{0x17E, {0x0E}}}, "channel 1 Scan; "},
        {{{0x17E, {0x1E}}}, "channel 1 Scan; byte 017E; "},
        {{{0x17F, {0x81}}}, "channel 9 Scan; channel 16 Scan; "},
        {{{0x32F, {0x5A, 0x26, 0x11, 0x15, 0x13, 0x05, 0x5A}}}, "byte 032F; byte 0335; "},
        {{{0x378, {0x5A, 0x07}}}, "model; byte 0378; "},
        {{{0x37A, {0x13, 0x60, 0x17, 0x40, 0x5A}}}, "band; byte 037E; "},
        {{{0x12E, {0x5A, 0x00, 0x09}}, {0x132, {0x5A}}},
         "option tot; option voice; byte 012E; byte 0132; "}};
    for (const auto& [patches, expected] : cases) {
        run.folder.write("b.dat", patched(base, patches));
        const auto outcome = run("diff @fleet.dat @b.dat --json");
        EXPECT_EQ(differencesIn(json::parse(outcome.out)), expected);
    }
}

TEST_F(Contract, PortsListsAllSixteen) {
    const auto ports = json::parse(run("ports --json").out);
    ASSERT_EQ(ports.size(), 16U);
    EXPECT_EQ(ports.front()["number"], 1);
    EXPECT_EQ(ports.back()["number"], 16);
}

TEST_F(Contract, SettingsThatCannotWorkAreNamed) {
    const char* const edit = "set @fleet.dat ch1.rx=447";
    const char* const read = "read -p virtual -o @r.dat";
    const std::tuple<const char*, const char*, const char*> cases[] = {
        // A setting, a value that it cannot have, and a command that needs it.
        {"Setting DatNum", "99999", edit},
        {"Setting DatNum", "-1", edit},
        {"Setting DatNum", "abc", edit},
        {"ChInfo 3000", "17", edit},
        {"ChInfo 3000", "300", edit},
        {"ChInfo 3002", "0", edit},
        {"ChInfo 3002", "60", edit},
        {"Setting ReadEndAddr", "2FFF", read},
        {"Setting ReadStartAddr", "7000", read},
        {"Setting WriteStartAddr", "FFF0", read}};
    for (const auto& [setting, value, command] : cases) {
        const std::string key = std::string("config set ") + setting + " ";
        const auto good = run(std::string("config get ") + setting).out;
        EXPECT_EQ(run(key + value).code, 0);
        const auto before = run.folder.read("fleet.dat");
        const auto outcome = run(command);
        EXPECT_EQ(outcome.code, 1) << key << value;
        EXPECT_THAT(outcome.err, HasSubstr("config set"));
        EXPECT_EQ(run.folder.read("fleet.dat"), before);
        EXPECT_FALSE(std::filesystem::exists(run.file("r.dat")));
        EXPECT_EQ(run(key + good.substr(0, good.size() - 1)).code, 0);
    }
    std::string garbage(5000, '\0');
    std::ranges::generate(garbage, [i = 0]() mutable { return static_cast<char>(i += 7); });
    run.folder.write("home/Uninstall.exe", garbage);
    EXPECT_EQ(run("show @fleet.dat").code, 1);
    EXPECT_EQ(run("config get Setting COM --default 9").out, "9\n");
    run.folder.write("home/PL220_CV.exe", "short");
    std::filesystem::remove(run.home() / "Uninstall.exe");
    EXPECT_THAT(run("new @fleet.dat").err, HasSubstr("holds 5 of 8192 bytes"));
    std::filesystem::create_directory(run.home() / "Uninstall.exe");
    EXPECT_THAT(run("show @fleet.dat").err, HasSubstr("the settings cannot be read"));
}

}  // namespace
}  // namespace k520
