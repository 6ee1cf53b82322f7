// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/windowPlace.h"

#include "app/settingsStore.h"
#include "support/ProgramFolder.h"

namespace k520::windowPlace {
namespace {

using Place = test::ProgramFolder;

TEST_F(Place, LiesWithinAScreenThatIsThere) {
    const std::vector<Box> two{{0, 30, 1400, 870}, {1400, 0, 933, 600}};
    const struct {
        Box wanted, fitted;
    } cases[] = {{{10, 40, 1100, 720}, {10, 40, 1100, 720}},
                 {{0, 0, 1100, 720}, {0, 30, 1100, 720}},
                 {{1500, 20, 1100, 720}, {1400, 0, 933, 600}},
                 {{-5000, 100, 800, 500}, {0, 100, 800, 500}},
                 {{9000, 9000, 800, 500}, {600, 400, 800, 500}},
                 {{1300, 200, 400, 300}, {1400, 200, 400, 300}},
                 {{1399, 890, 900, 500}, {500, 400, 900, 500}},
                 {{0, 0, 1'000'000, 1'000'000}, {0, 30, 1400, 870}}};
    for (const auto& [wanted, expected] : cases) {
        EXPECT_EQ(fitted(wanted, two), expected);
    }
    EXPECT_EQ(fitted({1, 2, 3, 4}, {}), (Box{1, 2, 3, 4}));
}

TEST_F(Place, ComesBackFromTheSettings) {
    EXPECT_EQ(stored(), std::nullopt);
    store({-8, 20, 1024, 700});
    EXPECT_EQ(stored(), (Box{-8, 20, 1024, 700}));
    store({-1'000'000, 1'000'000, 1, 1});
    EXPECT_EQ(stored(), (Box{-1'000'000, 1'000'000, 1, 1}));
    for (const char* text :
         {"", "1,2,3", "1,2,3,4,", "1,2,3,x", "1,2,0,4", "1,2,3,-4", "1;2,3,4", "1,2,3,4000000000",
          "1000001,2,3,4", "1,-1000001,3,4", "1", "1,2,3,", "1, 2,3,4"}) {
        settingsStore::write("Setting", "WindowPlace", text);
        EXPECT_EQ(stored(), std::nullopt) << text;
    }
    EXPECT_EQ(failure(), "");
}

}  // namespace
}  // namespace k520::windowPlace
