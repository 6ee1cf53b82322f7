// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/deviceLink.h"

#include <gmock/gmock.h>

#include "support/Raised.h"
#include "support/TempFolder.h"
#include "support/Terminal.h"

namespace k520 {
namespace {

namespace fs = std::filesystem;
using test::Terminal;

TEST(DeviceLink, TurnsAndRemovesOnlyItsOwnLink) {
    const test::TempFolder folder;
    const fs::path link = folder / "radio";
    for (const bool turnedElsewhere : {false, true}) {
        const DeviceLink first(link, "/dev/pts/100");
        {
            const DeviceLink second(link, "/dev/pts/101");
            EXPECT_EQ(fs::read_symlink(link), "/dev/pts/101");
            if (turnedElsewhere) {
                fs::remove(link);
                fs::create_symlink("/dev/elsewhere", link);
            }
        }
        EXPECT_EQ(fs::is_symlink(link), turnedElsewhere);
    }
    folder.write("file", "kept");
    EXPECT_EQ(test::raised([&] { DeviceLink(folder / "file", "/dev/null"); }), errNum::pathAccess);
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAre("radio", "file"));
}

TEST(DeviceLink, TakesTheLinkOfNobodyWhoRuns) {
    const test::TempFolder folder;
    const fs::path link = folder / "radio";
    const Terminal one;
    const Terminal other;
    const auto refused = [&] {
        return test::raised([&] { DeviceLink(link, other.path); }) == errNum::permissionDenied;
    };
    {
        const DeviceLink running(link, one.path);
        EXPECT_TRUE(refused());
        EXPECT_EQ(fs::read_symlink(link), one.path);
    }
    EXPECT_FALSE(refused());
    fs::create_symlink("/dev/null", link);
    EXPECT_TRUE(refused()) << "somebody's own link";
    EXPECT_EQ(fs::read_symlink(link), "/dev/null");
    // What a killed program leaves: its terminal's name has gone to a terminal without a link.
    fs::remove(link);
    fs::create_symlink(one.path, link);
    EXPECT_FALSE(refused());
    // A link may be relative to its own folder.
    folder.write("file", "");
    for (const char* target : {"file", "gone"}) {
        fs::create_symlink(target, link);
        EXPECT_EQ(refused(), target == std::string("file")) << target;
        fs::remove(link);
    }
}

}  // namespace
}  // namespace k520
