// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/Program.h"

namespace k520 {
namespace {

using nlohmann::json;
using test::Outcome;
using test::Program;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class Contract : public testing::Test {
  protected:
    Contract() { EXPECT_EQ(run({"new", dat}).code, 0); }

    json show(const std::string& file) {
        const auto outcome = run({"show", file, "--json"});
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return json::parse(outcome.out);
    }
    json channel(int number) { return show(dat)["channels"].at(static_cast<unsigned>(number) - 1); }
    Outcome set(const std::string& edit) { return run({"set", dat, edit}); }

    Program run;
    std::string dat = run.file("fleet.dat");
};

TEST_F(Contract, EveryCommandExplainsItself) {
    EXPECT_EQ(run({"--version"}).code, 0);
    const auto general = run({"--help"});
    for (const auto& command : cli::commands()) {
        std::istringstream name{std::string(command.name)};
        Words words{std::istream_iterator<std::string>(name), {}};
        EXPECT_THAT(general.out, HasSubstr(words.front()));
        words.push_back("--help");
        const auto help = run(words);
        EXPECT_EQ(help.code, 0) << command.name;
        for (const auto& argument : command.arguments) {
            EXPECT_THAT(help.out, HasSubstr(std::string(argument.help).substr(0, 20)))
                << command.name;
        }
    }
}

TEST_F(Contract, WrongCommandLinesTouchNothing) {
    const auto before = run.folder.read("fleet.dat");
    for (const Words& words : std::vector<Words>{{},
                                                 {"frob"},
                                                 {"show"},
                                                 {"show", dat, "--frob"},
                                                 {"config"},
                                                 {"config", "set", "Setting", "COM"},
                                                 {"config", "set", "Setting", "COM", "1\n[Ports]"},
                                                 {"read", "-p", "1"},
                                                 {"read", "-o", dat},
                                                 {"read", "-p", "17", "-o", dat},
                                                 {"read", "-p", "0", "-o", dat},
                                                 {"hex", dat, "--from", "xyz"},
                                                 {"hex", dat, "--from", "20", "--to", "10"},
                                                 {"hex", dat, "--to", "2000"},
                                                 {"simulate", "--lose", "0"},
                                                 {"simulate", "--delay", "3:x"},
                                                 {"set", dat},
                                                 {"set", dat, "ch1.rx"},
                                                 {"set", dat, "ch0.rx=446"},
                                                 {"set", dat, "ch17.rx=446"},
                                                 {"set", dat, "chx.rx=446"},
                                                 {"set", dat, "ch1.colour=red"},
                                                 {"set", dat, "ch1.p4=1"},
                                                 {"set", dat, "ch1.p9=1"},
                                                 {"set", dat, "ch1.rx=446,5"},
                                                 {"set", dat, "ch1.rx=abc"},
                                                 {"set", dat, "ch1.rx=1e30"},
                                                 {"set", dat, "ch1.tx=nan"},
                                                 {"set", dat, "ch1.decode=D089N"},
                                                 {"set", dat, "ch1.decode=d023"},
                                                 {"set", dat, "ch1.encode=59.9"},
                                                 {"set", dat, "ch1.Power=Medium"},
                                                 {"set", dat, "ch1.Power=2"},
                                                 {"set", dat, "band=11"},
                                                 {"set", dat, "band=-1"},
                                                 {"set", dat, "band=uhf"},
                                                 {"set", dat, "option.tot=21"},
                                                 {"set", dat, "option.tot=61s"},
                                                 {"set", dat, "option.frob=1"},
                                                 {"set", dat, "ch2.rx=447", "frob=1"}}) {
        const auto outcome = run(words);
        EXPECT_EQ(outcome.code, 2) << testing::PrintToString(words) << outcome.out << outcome.err;
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        EXPECT_EQ(run.folder.read("fleet.dat"), before);
    }
    EXPECT_TRUE(std::filesystem::is_empty(run.home())) << "no command made a settings file";
}

TEST_F(Contract, SetFollowsTheGrid) {
    struct Case {
        const char* edit;
        const char* field;
        json expected;
    };
    const std::vector<Case> cases{{"ch1.rx=446.00625", "rx_hz", 446006250},
                                  {"ch1.rx=445.0124", "rx_hz", 445012500},
                                  {"ch1.rx=445.0026", "rx_hz", 445005000},
                                  {"ch1.rx=445.01125", "rx_hz", 445012500},
                                  {"ch1.rx=100", "rx_hz", 400000000},
                                  {"ch1.rx=600", "rx_hz", 470000000},
                                  {"ch1.rx=145", "in_band", false},
                                  {"ch1.rx=470", "in_band", true},
                                  {"ch1.tx=470.005", "in_band", false},
                                  {"ch1.decode=88.54", "decode_tone", "88.5"},
                                  {"ch1.decode=023", "decode_tone", "D023N"},
                                  {"ch1.encode=D754i", "encode_tone", "D754I"},
                                  {"ch1.encode=", "encode_tone", "None"},
                                  {"ch1.decode=none", "decode_tone", "None"},
                                  {"ch1.tx=", "tx_hz", nullptr},
                                  {"ch1.rx=", "rx_hz", nullptr}};
    for (const auto& c : cases) {
        EXPECT_EQ(set(c.edit).code, 0) << c.edit;
        EXPECT_EQ(channel(1)[c.field], c.expected) << c.edit;
    }
    EXPECT_EQ(channel(1), (json{{"channel", 1}, {"rx_hz", nullptr}, {"tx_hz", nullptr}}));
}

TEST_F(Contract, SetRefusesWhatTheGridRefuses) {
    EXPECT_EQ(set("ch5.tx=446").code, 1);
    EXPECT_EQ(set("ch5.decode=67.0").code, 1);
    EXPECT_EQ(set("ch5.Power=Low").code, 1);
    EXPECT_EQ(set("ch16.encode=67.0").code, 1) << "the channel does not transmit";
    EXPECT_EQ(run({"set", dat, "ch5.rx=446", "ch5.decode=67.0", "ch5.tx=447", "ch5.Power=low",
                   "ch5.p8=2"})
                  .code,
              0);
    const auto made = channel(5);
    EXPECT_EQ(made["tx_hz"], 447000000);
    EXPECT_EQ(made["encode_tone"], "67.0") << "no tone before: it takes the decode tone";
    EXPECT_EQ(made["parameters"][1]["text"], "Low");
    EXPECT_EQ(made["parameters"][3]["text"], "Tone");
}

TEST_F(Contract, BandsAndOptions) {
    EXPECT_EQ(
        run({"set", dat, "band=4", "option.tot=300S", "option.vox_delay=5", "option.beep=off"})
            .code,
        0);
    auto shown = show(dat);
    EXPECT_EQ(shown["band"]["index"], 4);
    EXPECT_EQ(shown["band"]["low_hz"], 245000000);
    EXPECT_EQ(shown["options"]["tot"], (json{{"number", 0}, {"value", 20}, {"text", "300s"}}));
    EXPECT_EQ(shown["options"]["vox_delay"]["text"], "3.0");
    EXPECT_EQ(shown["options"]["beep"]["value"], 0);
    EXPECT_EQ(shown["options"].size(), 16U);

    // A custom band is in force for the edits behind it; a file that holds one opens as 120 - 520.
    EXPECT_EQ(run({"set", dat, "band=145.12345-150", "ch1.rx=600"}).code, 0);
    EXPECT_EQ(channel(1)["rx_hz"], 150000000);
    shown = show(dat);
    EXPECT_EQ(shown["band"]["index"], 11);
    EXPECT_EQ(shown["band"]["high_hz"], 520000000);
    EXPECT_EQ(run({"hex", dat, "--from", "37a", "--to", "37d"}).out,
              "0370H                               14 51 15 00\n");
    const auto reversed = set("band=130-125");
    EXPECT_EQ(reversed.code, 0);
    EXPECT_THAT(reversed.err, HasSubstr("120 - 520 MHz"));
    EXPECT_EQ(show(dat)["band"]["index"], 10);
}

TEST_F(Contract, BadFilesAreToldAndKept) {
    run.folder.write("empty.dat", "");
    run.folder.write("short.dat", std::string(0x200, '\xFF'));
    run.folder.write("long.dat", std::string(9000, '\0'));
    const auto path = [&](const char* name) { return run.file(name); };
    for (const char* bad : {"missing.dat", "empty.dat", "home"}) {
        for (const char* command : {"show", "hex", "export"}) {
            EXPECT_EQ(run({command, path(bad)}).code, 1) << command << bad;
        }
        EXPECT_EQ(run({"set", path(bad), "band=1"}).code, 1) << bad;
        EXPECT_EQ(run({"write", "-p", "virtual", path(bad)}).code, 1) << bad;
    }
    const auto shorter = run({"show", path("short.dat")});
    EXPECT_EQ(shorter.code, 0);
    EXPECT_THAT(shorter.err, HasSubstr("512 of 8192 bytes"));
    EXPECT_EQ(run({"set", path("short.dat"), "band=1"}).code, 1);
    EXPECT_EQ(run({"verify", "-p", "virtual", path("short.dat")}).code, 1);
    EXPECT_EQ(run.folder.read("short.dat").size(), 0x200U);
    EXPECT_EQ(run({"set", path("long.dat"), "ch1.rx=446"}).code, 0);
    EXPECT_EQ(run.folder.read("long.dat").size(), 9000U);
    EXPECT_EQ(run({"new", path("home")}).code, 1);
    EXPECT_EQ(run({"new", path("none/a.dat")}).code, 1);
}

TEST_F(Contract, CsvRoundTripAndItsRules) {
    const auto csv = run.file("a.csv");
    const auto before = run.folder.read("fleet.dat");
    EXPECT_EQ(run({"export", dat, "-o", csv}).code, 0);
    EXPECT_EQ(run({"import", dat, csv}).code, 0);
    EXPECT_EQ(run.folder.read("fleet.dat"), before);

    run.folder.write("a.csv",
                     "\xEF\xBB\xBF"
                     "channel,RX,tx,\"decode\"\r\n5,433.5,,88.5\r\n1,,,\r\n");
    EXPECT_EQ(run({"import", dat, csv}).code, 0);
    EXPECT_EQ(channel(5)["tx_hz"], nullptr);
    EXPECT_EQ(channel(5)["decode_tone"], "88.5");
    EXPECT_EQ(channel(1)["rx_hz"], nullptr);

    const auto kept = run.folder.read("fleet.dat");
    for (const char* text :
         {"", "rx\n446\n", "channel,frob\n1,2\n", "channel,rx,rx\n1,2,3\n", "channel,rx\n17,446\n",
          "channel,rx\n2,447\n2,448\n", "channel,rx\n2,447\n3,abc\n", "channel,rx\n2\n",
          "channel,rx\n2,\"447\n", "channel,rx\n2,\"447\"x\n", "channel,decode\n6,67.0\n"}) {
        run.folder.write("a.csv", text);
        const auto outcome = run({"import", dat, csv});
        EXPECT_EQ(outcome.code, 1) << text;
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
        EXPECT_EQ(run.folder.read("fleet.dat"), kept) << text;
    }
}

TEST_F(Contract, DiffNamesWhatDiffersAndLeavesTheStampOut) {
    const auto other = run.file("b.dat");
    EXPECT_EQ(run({"set", dat, "ch1.decode=67.0", "option.squelch=9", "band=9", "-o", other}).code,
              0);
    auto bytes = run.folder.read("b.dat");
    bytes[816 + 16] = '\x26';  // the stamp's year, in the moved area
    bytes[0x1000] = '\x12';
    run.folder.write("b.dat", bytes);
    EXPECT_EQ(run({"diff", dat, dat}).code, 0);
    const auto outcome = run({"diff", dat, other, "--json"});
    EXPECT_EQ(outcome.code, 1);
    const auto found = json::parse(outcome.out);
    EXPECT_EQ(found["identical"], false);
    std::vector<std::string> kinds;
    for (const auto& difference : found["differences"]) {
        kinds.push_back(difference["kind"]);
    }
    EXPECT_EQ(kinds, (Words{"band", "channel", "option", "byte"}));
}

TEST_F(Contract, SettingsThatCannotWorkAreNamed) {
    struct Case {
        const char* section;
        const char* key;
        const char* value;
    };
    for (const auto& c : {Case{"Setting", "DatNum", "99999"}, Case{"Setting", "DatNum", "-1"},
                          Case{"Setting", "DatNum", "abc"}, Case{"ChInfo", "3000", "17"},
                          Case{"ChInfo", "3000", "300"}, Case{"ChInfo", "3002", "0"},
                          Case{"ChInfo", "3002", "60"}}) {
        const auto good = run({"config", "get", c.section, c.key}).out;
        EXPECT_EQ(run({"config", "set", c.section, c.key, c.value}).code, 0);
        const auto before = run.folder.read("fleet.dat");
        const auto outcome = run({"set", dat, "ch1.rx=447"});
        EXPECT_EQ(outcome.code, 1) << c.key << c.value;
        EXPECT_THAT(outcome.err, HasSubstr("config set")) << "the remedy is named";
        EXPECT_EQ(run.folder.read("fleet.dat"), before);
        EXPECT_EQ(run({"config", "set", c.section, c.key, good.substr(0, good.size() - 1)}).code,
                  0);
    }
    for (const auto& c :
         {Case{"Setting", "ReadEndAddr", "2FFF"}, Case{"Setting", "ReadStartAddr", "7000"},
          Case{"Setting", "WriteStartAddr", "FFF0"}}) {
        const auto good = run({"config", "get", c.section, c.key}).out;
        run({"config", "set", c.section, c.key, c.value});
        const auto outcome = run({"read", "-p", "virtual", "-o", run.file("r.dat")});
        EXPECT_EQ(outcome.code, 1) << c.key << c.value;
        EXPECT_FALSE(std::filesystem::exists(run.file("r.dat")));
        run({"config", "set", c.section, c.key, good.substr(0, good.size() - 1)});
    }
    std::string garbage(5000, '\0');
    for (std::size_t i = 0; i < garbage.size(); ++i) {
        garbage[i] = static_cast<char>(i * 7 % 256);
    }
    run.folder.write("home/Uninstall.exe", garbage);
    EXPECT_EQ(run({"show", dat}).code, 1);
    EXPECT_EQ(run({"config", "get", "Setting", "COM", "--default", "9"}).out, "9\n");
}

}  // namespace
}  // namespace k520
