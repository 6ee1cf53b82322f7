// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <fmt/format.h>

#include <thread>

#include "app/settingsStore.h"
#include "base/Files.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

using namespace programFolder;
using settingsStore::KeyValue;
using settingsStore::Snapshot;
using namespace std::string_literals;

using Value = std::optional<std::string>;

TEST(ProfileText, ReadsAsUsersOfTheFormatExpect) {
    // A text, and the value of key K in its section S.
    const std::pair<std::string, Value> rows[] = {{"[s]\r\nk = a b \t\r\nx=1\r\n", "a b"},
                                                  {"\xEF\xBB\xBF[S]\nK=V\n", "V"},
                                                  {" \t[ S\t]text\n \tK\t=\tV\n", "V"},
                                                  {"[S\nK=V\n", "V"},
                                                  {"[S]K=0\rL=1\rK=2\r\r\n", "2"},
                                                  {"K=0\n[S]\nK=1\nk=2\n[T]\nK=3\n[s]\nK=4\n", "1"},
                                                  {"K=0\n[S]\nK\n[T]\nK=1\n[s]\nK=5\n", {}},
                                                  {"[S]\n;K=1\n ; K=2\n#K=3\nK=4 ; 5\n", "4 ; 5"},
                                                  {"[S]\nK\n=1\n = 2\nK=a=b\n", "a=b"},
                                                  {"[S]\nK=''\n", ""},
                                                  {"[S]\nK= \" a \" \n", " a "},
                                                  {"[S]\nK=\"\"a\"\"\n", "\"a\""},
                                                  {"[S]\nK=\"abc'\n", "\"abc'"},
                                                  {"[S]\nK=\"\n", "\""},
                                                  {"[S]\n\0K=1\nK=a\0b\n"s, "a\0b"s}};
    for (const auto& [text, value] : rows) {
        EXPECT_EQ(ProfileText(text).value(" S ", "K\t"), value) << text;
        EXPECT_EQ(ProfileText(text).bytes(), text);
    }
    EXPECT_EQ(ProfileText("[S]\n;K=1\n").value("S", ";K"), std::nullopt);
    // Letters only: neighbours of the alphabet and bytes of UTF-8 keep their difference.
    const ProfileText text("[s]\n@aZ[`{\xC3\x84=1\n`AZ{\xC3\xA4=2\n");
    EXPECT_EQ(text.value("S", "@Az[`{\xC3\x84"), "1");
    EXPECT_EQ(text.value("S", "`aZ{\xC3\x84"), std::nullopt);
    EXPECT_EQ(text.value("S", "@AZ{`{\xC3\x84"), std::nullopt);
}

// The same names in several sections, and each a second time after all of them.
TEST(ProfileText, FindsEachOfManyNames) {
    constexpr int sections = 3;
    for (const int keys : {169, 170, 171, 700, 5'000}) {
        const auto lines = [&](int section, std::string_view mark) {
            std::string text = fmt::format("[Sec{}]\n", section);
            for (int key = 0; key < keys; ++key) {
                text += fmt::format("Key{}={}{}.{}\n", key, mark, section, key);
            }
            return text;
        };
        std::string bytes;
        for (const std::string_view mark : {"first ", "second "}) {
            for (int section = 0; section < sections; ++section) {
                bytes += lines(section, mark);
            }
        }
        const ProfileText text(bytes);
        ProfileText changed = text;
        changed.setValue("sec1", "key7", "x");
        for (int section = 0; section < sections; ++section) {
            for (int key = 0; key < keys; ++key) {
                const auto value = fmt::format("first {}.{}", section, key);
                const auto s = fmt::format("SEC{}", section);
                const auto k = fmt::format("kEY{}", key);
                ASSERT_EQ(text.value(s, k), value);
                ASSERT_EQ(changed.value(s, k), section == 1 && key == 7 ? "x" : value);
            }
            ASSERT_EQ(text.value(fmt::format("Sec{}", section), fmt::format("Key{}", keys)),
                      std::nullopt);
        }
    }
}

TEST(ProfileText, ChangesOneLineAndNothingElse) {
    // What is there, the value set, and what is there then.
    const std::string rows[][3] = {
        {"", "1", "[S]\nK=1\n"},
        {"\xEF\xBB\xBF", "1", "\xEF\xBB\xBF[S]\nK=1\n"},
        {"; c", "1", "; c\n[S]\nK=1\n"},
        {"x\r\n[T]\nK=0", "1", "x\r\n[T]\nK=0\r\n[S]\r\nK=1\r\n"},
        {"[S]\r\nL=2\r\n ; c\r\n\r\n \t\r\n[T]\r\n", " 3",
         "[S]\r\nL=2\r\n ; c\r\nK= 3\r\n\r\n \t\r\n[T]\r\n"},
        {"[S]\n k =1\t\r\nK=2\n", "3", "[S]\n k =3\r\nK=2\n"},
        {"[S]\nK= '3' \n", " 3", "[S]\nK= '3' \n"},
        {"[S]\nK=1", "", "[S]\nK="},
        {"[T]\n[S]\n[s]\nK=2\n", "3", "[T]\n[S]\nK=3\n[s]\nK=2\n"},
        {"[S]\nL=1\n[T]\nK=0\n[s]\nK=2\n", "3", "[S]\nL=1\nK=3\n[T]\nK=0\n[s]\nK=2\n"},
        {"\r[S]\r", "1", "\r[S]\rK=1\n"},
        {"\xFF\0[\n=\x1A"s, "1", "\xFF\0[\n=\x1A\n[S]\nK=1\n"s}};
    for (const auto& row : rows) {
        ProfileText text(row[0]);
        text.setValue(" S", "K\t", row[1]);
        EXPECT_EQ(text.bytes(), row[2]) << row[0];
    }
}

TEST(ProfileText, RefusesWhatTheFormatCannotHold) {
    const std::string rows[][3] = {
        {"", "K", "1"},    {" ", "K", "1"},  {"S]", "K", "1"}, {"S\n", "K", "1"}, {"S", "", "1"},
        {"S", "\t", "1"},  {"S", "K=", "1"}, {"S", ";K", "1"}, {"S", "[K", "1"},  {"S", "K\r", "1"},
        {"S", "K", "1\n"}, {"S", "K", "\r"}, {"S", "K", "\0"s}};
    for (const auto& row : rows) {
        ProfileText text;
        EXPECT_EQ(test::raised([&] { text.setValue(row[0], row[1], row[2]); }), 5)
            << testing::PrintToString(row);
    }
}

TEST(ThroughBuffer, CutsAndTrimsLikeTheProfileCall) {
    const std::tuple<SettingBuffer, std::string, std::string> rows[] = {
        // buffer, value, what is seen of it
        {{9, 10}, "123456789", "12345678"},   {{3, 3}, "123", "12"},      {{3, 3}, "", ""},
        {{9, 10}, "1234567 9", "1234567 "},   {{3, 3}, "1 3", "1 "},      {{3, 3}, " 1", "1"},
        {{9, 10}, "12345678 ", "1234567"},    {{9, 4}, "12345", "123"},   {{9, 0}, "1", ""},
        {{3, 9}, "宋\xE5\xAE", "宋\xE5"},     {{9, 4}, "\t1", "\t1"},     {{-1, 9}, "1", ""},
        {{3, 9}, "\xFF\x80\xC3", "\xFF\x80"}, {{3, 3}, "宋体字", "宋体"}, {{9, 4}, "    ", ""},
        {{9, 10}, "a\0b"s, "a\0b"s},          {{3, 9}, "宋体字", "宋体"}};
    for (const auto& [buffer, value, seen] : rows) {
        EXPECT_EQ(throughBuffer(value, buffer), seen) << value << buffer.length;
    }
}

using Names = std::set<std::string>;

class SettingsFile : public test::ProgramFolder {
  protected:
    SettingsFile() { state().shipped = shipped.path(); }

    test::TempFolder shipped;
    const test::TempFolder& own = folder;
};

TEST_F(SettingsFile, IsTakenFromTheProgramFolderFirst) {
    EXPECT_EQ(findFile(settingsFileName), own / settingsFileName);
    EXPECT_EQ(settingsStore::read("S", "K", " 7  "), " 7");
    EXPECT_EQ(settingsStore::read("S", "K", {9, 10}, " 7  "), "7");
    shipped.write(settingsFileName, "[S]\nK=shipped text\n");
    EXPECT_EQ(settingsStore::read("S", "K", {9, 10}, "7"), "shipped ");
    own.write(settingsFileName, "[S]\nL=own\n");
    EXPECT_EQ(settingsStore::read("s", "k", {9, 10}, "123456789"), "12345678");
    EXPECT_EQ(settingsStore::read("s", "l", "7"), "own");
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
            EXPECT_EQ(settingsStore::read("S", "K", "0"), value) << hours;
        }
    }
    std::filesystem::remove(own / settingsFileName);
    EXPECT_EQ(settingsStore::read("S", "K", "0"), "0");
}

// Another program's change is seen after the last snapshot, one's own at once.
TEST_F(SettingsFile, StaysInItsSnapshot) {
    const auto otherWrites = [&](const std::string& value) {
        own.write(settingsFileName, "[S]\nK=" + value + "\n");
    };
    const auto shown = [] { return settingsStore::read("S", "K", "0"); };
    {
        const Snapshot outer;
        std::filesystem::create_directory(own / settingsFileName);
        EXPECT_EQ(test::raised([&] { static_cast<void>(shown()); }), 75);
        std::filesystem::remove(own / settingsFileName);
        otherWrites("first");
        EXPECT_EQ(shown(), "first");
        otherWrites("second");
        {
            const Snapshot inner;
            EXPECT_EQ(shown(), "first");
        }
        EXPECT_EQ(shown(), "first");
        settingsStore::write("S", "L", "1");
        EXPECT_EQ(shown(), "first");
        EXPECT_EQ(settingsStore::read("S", "L", "0"), "1");
    }
    EXPECT_EQ(shown(), "second");
    EXPECT_EQ(settingsStore::read("S", "L", "0"), "1");
}

TEST_F(SettingsFile, ThatCannotBeReadIsAnErrorAndStays) {
    std::filesystem::create_directory(own / settingsFileName);
    EXPECT_EQ(test::raised([] { return settingsStore::read("S", "K", "0"); }), 75);
    EXPECT_EQ(test::raised([] { settingsStore::write("S", "K", "0"); }), 75);
    EXPECT_EQ(own.names(), Names{settingsFileName});
    state().own = own.write("file", "") / "below";
    EXPECT_EQ(test::raised([] { settingsStore::write("S", "K", "0"); }), 76);
    state().own = own / "new";
    EXPECT_EQ(test::raised([] { settingsStore::write("S", "K=", "0"); }), 5);
    EXPECT_FALSE(own.names().contains("new")) << "made for nothing";
}

TEST_F(SettingsFile, IsSeededFromTheShippedOneAndWrittenOnlyWhenChanged) {
    shipped.write(settingsFileName, "; c\r\n[S]\r\nK=1\r\n");
    settingsStore::write("s", "k", " 1");
    settingsStore::state().writable = false;
    settingsStore::write("S", "K", "2");
    EXPECT_EQ(own.names(), Names{});
    settingsStore::state().writable = true;
    state().own = own / "deep/down";
    const std::vector<KeyValue> values{{"K", " 2"}, {"L", "3"}};
    settingsStore::write("S", values);
    const std::string name = std::string("deep/down/") + settingsFileName;
    EXPECT_EQ(own.read(name), "; c\r\n[S]\r\nK= 2\r\nL=3\r\n");
    EXPECT_EQ(settingsStore::read("S", "K", "0"), "2");
    EXPECT_EQ(shipped.read(settingsFileName), "; c\r\n[S]\r\nK=1\r\n");
    const auto before = files::stampOf(own / name);
    settingsStore::write("S", values);
    EXPECT_EQ(files::stampOf(own / name), before);
}

TEST_F(SettingsFile, KeepsTheWritesOfProgramsAtOnce) {
    std::vector<std::thread> programs;
    for (int first = 0; first < 4; ++first) {
        programs.emplace_back([first] {
            for (int key = first; key < 20; key += 4) {
                settingsStore::write("S", std::to_string(key), "1");
            }
        });
    }
    std::ranges::for_each(programs, &std::thread::join);
    for (int key = 0; key < 20; ++key) {
        EXPECT_EQ(settingsStore::read("S", std::to_string(key), "0"), "1") << key;
    }
    EXPECT_EQ(own.names(), Names{settingsFileName});
}

}  // namespace
}  // namespace k520
