// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gmock/gmock.h>

#include "desktop/Desktop.h"

namespace k520 {
namespace {

using testing::HasSubstr;

class WordsBesideTheGrid : public test::MainWindow {};

TEST_F(WordsBesideTheGrid, FollowTheChannelsAndAreRemembered) {
    open();
    auto& words = find<QTableView>(*main, "wordsOfCh");
    auto& grid = find<QTableView>(*main, "vsfgGridCh");
    const auto sentence = [&](int row) {
        return stdText(words.model()->index(row - 1, 0).data().toString());
    };
    EXPECT_TRUE(words.isHidden());
    action("mnuWords").trigger();
    QApplication::processEvents();
    EXPECT_TRUE(words.isVisible());
    EXPECT_THAT(folder.read("Uninstall.exe"), HasSubstr("ChannelWords=1\n"));
    EXPECT_EQ(sentence(2),
              "Hears 446.01875 MHz whatever the tone, sends on the same frequency without a tone, "
              "narrow, low power, scanned");
    EXPECT_EQ(sentence(5), "");
    QSignalSpy changed(words.model(), &QAbstractItemModel::dataChanged);
    grid.model()->setData(grid.model()->index(1, 2), QStringLiteral("88.5"));
    EXPECT_TRUE(served([&] { return changed.count() > 0; }));
    EXPECT_THAT(sentence(2), HasSubstr("with tone 88.5 Hz"));
    EXPECT_EQ(
        stdText(
            grid.model()->headerData(1, Qt::Vertical, Qt::AccessibleDescriptionRole).toString()),
        sentence(2));

    // Row beside row, at the same height.
    EXPECT_EQ(
        words.viewport()->mapToGlobal(words.visualRect(words.model()->index(7, 0)).topLeft()).y(),
        grid.viewport()->mapToGlobal(grid.visualRect(grid.model()->index(7, 0)).topLeft()).y());
    QTest::mouseClick(words.viewport(), Qt::LeftButton, {},
                      words.visualRect(words.model()->index(3, 0)).center());
    EXPECT_EQ(grid.currentIndex().row(), 3);

    main.reset();
    open(mdimoduMain::languageChinese, "ChannelWords=1\n");
    EXPECT_TRUE(find<QTableView>(*main, "wordsOfCh").isVisible());
    EXPECT_TRUE(action("mnuWords").isChecked());
}

}  // namespace
}  // namespace k520
