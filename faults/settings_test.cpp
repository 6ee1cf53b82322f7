// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
//
// The settings file holds anything: the program starts all the same, and writes nothing into it.
#include <gmock/gmock.h>

#include <random>
#include <sstream>

#include "app/modShowErr.h"
#include "app/profileText.h"
#include "faults/Campaign.h"
#include "faults/DesktopCore.h"
#include "settings/modSysSet.h"

namespace k520::faults {
namespace {

using modStartUp::StartResult;
using Random = std::minstd_rand;

constexpr std::size_t tenMegabytes = 10'000'000;

const Words& hostileValues() {
    static const Words values{"",
                              "0",
                              "-1",
                              "1",
                              "2",
                              "7",
                              "15",
                              "255",
                              "256",
                              "257",
                              "32767",
                              "32768",
                              "-32768",
                              "-32769",
                              "65535",
                              "99999",
                              "1e4",
                              "0x10",
                              "&H10",
                              "1FFF",
                              "FFFF",
                              "7FFF",
                              "8000",
                              "G",
                              "abc",
                              "5x",
                              "+5",
                              "--5",
                              "1.5",
                              "1,5",
                              "|||",
                              "\"5\"",
                              "'",
                              "\"",
                              "宋体",
                              "\xff\xfe",
                              "\t5\t",
                              "%s%n",
                              "=",
                              ";",
                              "[x]",
                              "*EndOfThisItem*",
                              "virtual",
                              "#GGGGGG",
                              "#F2A33A",
                              "ShowLock",
                              "../../x",
                              "/dev/null",
                              std::string(10'000, 'A'),
                              std::string(10'000, '9'),
                              std::string(10'000, '|')};
    return values;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// One to five small accidents.
std::string mutated(std::string text, Random& random) {
    const auto below = [&](std::size_t limit) {
        return random() % std::max<std::size_t>(1, limit);
    };
    for (auto left = below(5) + 1; left > 0; --left) {
        const auto place = below(text.size());
        const auto length = below(300);
        switch (below(6)) {
            case 0:
                text.erase(place, length);
                break;
            case 1:
                text.insert(place, text.substr(below(text.size()), length));
                break;
            case 2:
                text.insert(place, length, '\0');
                break;
            case 3:
                text.insert(place, hostileValues()[below(hostileValues().size())]);
                break;
            case 4:
                text.resize(place);
                break;
            default:
                text.insert(place, 1, static_cast<char>(random()));
        }
    }
    return text;
}

class Settings : public DesktopCore {
  protected:
    /// Starts with these settings.
    void tryStart(const std::string& text, Row& row) {
        auto result = StartResult::quit;
        const auto spent = processorTime([&] { result = start(text); });
        const bool told = !modShowErr::state().entries.empty();
        // Only what looks like a first start may write.
        if (ProfileText(text).value("Setting", "FirRun") == "0") {
            EXPECT_EQ(result, StartResult::running);
            EXPECT_TRUE(settings() == withCurrentOptions(text)) << "written back";
        }
        row.add(result == StartResult::quit ? "first start"
                : told                      ? "started, told"
                                            : "started",
                spent);
    }
    /// What a start stores by rule, and nothing else: the defaults become the current options.
    [[nodiscard]] std::string withCurrentOptions(const std::string& text) const {
        const ProfileText stored(settings());
        ProfileText expected(text);
        for (const int base : {1501, 2501, 3501}) {
            for (int key = base; key < base + modSysSet::state().OptCount; ++key) {
                const auto value = stored.value("Option", fmt::format("{}", key));
                if (value && value != expected.value("Option", fmt::format("{}", key))) {
                    expected.setValue("Option", fmt::format("{}", key),
                                      (value->starts_with("-") ? "" : " ") + *value);
                }
            }
        }
        return expected.bytes();
    }
    static void expectQuick(const Row& row) {
        EXPECT_TRUE(!exhaustive() || row.slowest() < 1000) << row.slowest();
    }
};

TEST_F(Settings, RandomMutationsDoNotHinderTheStart) {
    Row row("settings file", "random mutations, the desktop's core (processor time)");
    for (unsigned seed = 1; seed <= (exhaustive() ? 1000U : 60U); ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        tryStart(mutated(shippedSettings(), random), row);
    }
    expectQuick(row);
}

TEST_F(Settings, HostileValuesOfEveryKeyDoNotHinderTheStart) {
    Row row("settings file",
            "every key with 51 hostile values, the desktop's core (processor time)");
    const auto lines = linesOf(shippedSettings());
    unsigned turn = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto key = lines[i].substr(0, lines[i].find('='));
        if (key.size() == lines[i].size() || key == "FirRun" || key.starts_with(';')) {
            continue;
        }
        for (const auto& value : hostileValues()) {
            if (!exhaustive() && ++turn % 101 != 0) {
                continue;
            }
            SCOPED_TRACE(fmt::format("{}={:.20}", key, value));
            auto text = lines;
            text[i] = key + "=" + value;
            tryStart(fmt::format("{}\n", fmt::join(text, "\n")), row);
        }
    }
    expectQuick(row);
}

TEST_F(Settings, TenMegabytesDoNotHinderTheStart) {
    Row row("settings file", "10 MB in six shapes, the desktop's core (processor time)");
    const auto filled = [](const std::string& piece) {
        std::string text = shippedSettings();
        while (text.size() < (exhaustive() ? tenMegabytes : 100'000)) {
            text += piece;
        }
        return text;
    };
    for (const std::string& piece :
         {std::string("a=1\n"), std::string("[a]\n"), std::string(65'536, 'x'),
          std::string("; a comment\r\n"), std::string(65'536, '\0'), std::string("\n")}) {
        tryStart(filled(piece), row);
    }
    // Too large a file is told, once a key, without being read each time.
    tryStart("[Setting]\nFirRun=0\n" + std::string(17 << 20, 'x'), row);
    EXPECT_THAT(modShowErr::state().entries.at(0).source, testing::HasSubstr("too large"));
    expectQuick(row);
}

TEST_F(Settings, ManyTextsAreWithinBounds) {
    Row row("settings file",
            "counts at their ends with 10^4 texts, the desktop's core (processor time)");
    std::string texts;
    for (int key = 0; key < 10'000; ++key) {
        texts += fmt::format("{}={}\n", key, key % 7);
    }
    for (const int count : {0, 1, 16, 255, 32'767}) {
        for (const auto* counted : {"0", "3000", "3002", "3001"}) {
            const auto text = fmt::format(
                "[Setting]\nFirRun=0\nLanguage=3\nDatNum=8191\n[ChInfo]\n{0}={1}\n{2}[Option]\n{0}="
                "{1}\n{2}",
                counted, count, texts);
            tryStart(text, row);
        }
    }
    expectQuick(row);
}

// The real programs; the desktop where it is built, on a screen that nobody sees.
TEST_F(Settings, TheProgramsStartWithThem) {
    if (!exhaustive()) {
        GTEST_SKIP() << "tried by campaign.sh only";
    }
    const auto desktop = std::filesystem::path(K520_CLI).parent_path() / "k520";
    const test::TempFolder scratch;
    Row cli("settings file", "random mutations, k520-cli show");
    Row windows("settings file", "random mutations, k520");
    const auto data = folder.write("a.dat", std::string(8192, '\xff')).string();
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const auto text = mutated(shippedSettings(), random);
        folder.write("home/Uninstall.exe", text);
        const auto shown = execute({K520_CLI, "--program-folder", home(), "show", data}, scratch);
        EXPECT_EQ(settings(), text);
        EXPECT_TRUE(shown.code == 0 || (shown.code == 1 && !shown.err.empty())) << shown.err;
        cli.add(shown.code == 0 ? shown.err.empty() ? "done" : "done, told" : "refused, told",
                shown.milliseconds);
        if (seed <= 40 && std::filesystem::exists(desktop)) {
            const auto run = execute({"env", "QT_QPA_PLATFORM=offscreen", "timeout", "20", desktop,
                                      "--program-folder", home(), "--until-painted"},
                                     scratch);
            EXPECT_EQ(run.code, 0) << run.err;
            windows.add("started", run.milliseconds);
        }
    }
    expectQuick(cli);
    expectQuick(windows);
}

}  // namespace
}  // namespace k520::faults
