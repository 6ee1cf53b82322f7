// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdimoduMain.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "app/Files.h"
#include "support/ProgramFolder.h"
#include "support/Raised.h"

namespace k520::mdimoduMain {
namespace {

using Names = std::set<std::string>;

class SettingsFile : public test::ProgramFolder {
  protected:
    SettingsFile() { state().shippedFolder = shipped.path(); }

    test::TempFolder shipped;
    const test::TempFolder& own = folder;
};

TEST_F(SettingsFile, IsTakenFromTheProgramFolderFirst) {
    EXPECT_EQ(findFile(settingsFileName), own / settingsFileName);
    EXPECT_EQ(readSetting("S", "K", " 7  "), " 7");
    EXPECT_EQ(readSetting("S", "K", {9, 10}, " 7  "), "7");
    shipped.write(settingsFileName, "[S]\nK=shipped text\n");
    EXPECT_EQ(readSetting("S", "K", {9, 10}, "7"), "shipped ");
    own.write(settingsFileName, "[S]\nL=own\n");
    EXPECT_EQ(readSetting("s", "k", {9, 10}, "123456789"), "12345678");
    EXPECT_EQ(readSetting("s", "l", "7"), "own");
}

// Replaced or written in place, always of the same size and under the same time.
TEST_F(SettingsFile, ShowsEveryChangeAtOnce) {
    const auto now = std::filesystem::file_time_type::clock::now();
    for (const int hours : {-1, 1}) {
        const std::string name = hours < 0 ? "new" : settingsFileName;
        for (const std::string value : {"1", "2", "3", "4"}) {
            const auto path = own.write(name, "[S]\nK=" + value + "\n");
            std::filesystem::last_write_time(path, now + std::chrono::hours(hours));
            std::filesystem::rename(path, own / settingsFileName);
            EXPECT_EQ(readSetting("S", "K", "0"), value) << hours;
        }
    }
    std::filesystem::remove(own / settingsFileName);
    EXPECT_EQ(readSetting("S", "K", "0"), "0");
}

TEST_F(SettingsFile, ThatCannotBeReadIsAnErrorAndStays) {
    std::filesystem::create_directory(own / settingsFileName);
    EXPECT_EQ(test::raised([] { return readSetting("S", "K", "0"); }), 75);
    EXPECT_EQ(test::raised([] { writeSetting("S", "K", "0"); }), 75);
    EXPECT_EQ(own.names(), Names{settingsFileName});
    state().programFolder = own.write("file", "") / "below";
    EXPECT_EQ(test::raised([] { writeSetting("S", "K", "0"); }), 76);
}

TEST_F(SettingsFile, IsSeededFromTheShippedOneAndWrittenOnlyWhenChanged) {
    shipped.write(settingsFileName, "; c\r\n[S]\r\nK=1\r\n");
    writeSetting("s", "k", " 1");
    state().settingsWritable = false;
    writeSetting("S", "K", "2");
    EXPECT_EQ(own.names(), Names{});
    state().settingsWritable = true;
    state().programFolder = own / "deep/down";
    const std::vector<KeyValue> values{{"K", " 2"}, {"L", "3"}};
    writeSettings("S", values);
    const std::string name = std::string("deep/down/") + settingsFileName;
    EXPECT_EQ(own.read(name), "; c\r\n[S]\r\nK= 2\r\nL=3\r\n");
    EXPECT_EQ(readSetting("S", "K", "0"), "2");
    EXPECT_EQ(shipped.read(settingsFileName), "; c\r\n[S]\r\nK=1\r\n");
    const auto before = files::stampOf(own / name);
    writeSettings("S", values);
    EXPECT_EQ(files::stampOf(own / name), before);
}

TEST_F(SettingsFile, KeepsTheWritesOfProgramsAtOnce) {
    std::vector<std::thread> programs;
    for (int first = 0; first < 4; ++first) {
        programs.emplace_back([first] {
            for (int key = first; key < 20; key += 4) {
                writeSetting("S", std::to_string(key), "1");
            }
        });
    }
    std::ranges::for_each(programs, &std::thread::join);
    for (int key = 0; key < 20; ++key) {
        EXPECT_EQ(readSetting("S", std::to_string(key), "0"), "1") << key;
    }
    EXPECT_EQ(own.names(), Names{settingsFileName});
}

}  // namespace
}  // namespace k520::mdimoduMain
