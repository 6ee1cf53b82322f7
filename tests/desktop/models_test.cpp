// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>

#include "app/modSoftFace.h"
#include "desktop/CellGridModel.h"
#include "desktop/Desktop.h"
#include "desktop/DesktopClock.h"
#include "desktop/LineListModel.h"
#include "desktop/icons.h"
#include "desktop/qtText.h"

namespace k520 {
namespace {

constexpr auto strict = QAbstractItemModelTester::FailureReportingMode::Fatal;

TEST(CellGridModel, ShowsTheGridWithItsTitlesAsHeaders) {
    CellGrid grid;
    grid.reset(3, 4);
    CellGridModel model(grid, {.tip = [](int row, int) { return QString::number(row); }}, nullptr);
    const QAbstractItemModelTester tester(&model, strict);
    grid.setText(0, 2, "Two");
    grid.setText(2, 0, "二");
    grid.setText(1, 3, "x");
    grid.setBackground(1, 3, Colour{250, 240, 0});
    grid.setBackground(1, 1, Colour{10, 0, 200});
    EXPECT_EQ(model.rowCount() * 10 + model.columnCount(), 23);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Two"));
    EXPECT_EQ(model.headerData(1, Qt::Vertical, Qt::DisplayRole), qText("二"));
    const std::tuple<int, int, int, QVariant> cases[] = {
        {1, 3, Qt::DisplayRole, QStringLiteral("x")},
        {1, 3, Qt::BackgroundRole, QColor(250, 240, 0)},
        {1, 3, Qt::ForegroundRole, QColor(Qt::black)},
        {1, 1, Qt::ForegroundRole, QColor(Qt::white)},
        {2, 1, Qt::BackgroundRole, {}},
        {2, 1, Qt::ToolTipRole, QStringLiteral("2")}};
    for (const auto& [row, column, role, value] : cases) {
        EXPECT_EQ(model.data(model.indexOf(row, column), role), value) << role;
    }
    EXPECT_FALSE(model.indexOf(0, 1).isValid() || model.indexOf(3, 1).isValid());
}

TEST(CellGridModel, ManyChangesReachTheViewsTogether) {
    CellGrid grid;
    grid.reset(10, 10);
    CellGridModel model(grid, {}, nullptr);
    QSignalSpy cells(&model, &CellGridModel::dataChanged);
    QSignalSpy titles(&model, &CellGridModel::headerDataChanged);
    grid.setText(2, 3, "a");
    grid.setText(7, 5, "b");
    EXPECT_EQ(cells.count(), 0);
    QApplication::processEvents();
    ASSERT_EQ(cells.count(), 1);
    EXPECT_EQ(cells[0][0].toModelIndex(), model.indexOf(2, 3));
    EXPECT_EQ(cells[0][1].toModelIndex(), model.indexOf(7, 5));
    EXPECT_EQ(titles.count(), 0);
    grid.setText(0, 4, "title");
    QApplication::processEvents();
    EXPECT_EQ(titles.count(), 1);
    // A change of a cell that is gone when the views are told.
    grid.setText(9, 9, "gone");
    grid.reset(2, 2);
    QApplication::processEvents();
    EXPECT_EQ(cells.count(), 1);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST(CellGridModel, EditsGoThroughTheRules) {
    CellGrid grid;
    grid.reset(3, 3);
    CellGridModel model(grid,
                        {.mayEdit = [](int row, int) { return row == 2; },
                         .edited =
                             [&](int row, int column, const QString& text) {
                                 grid.setText(row, column, stdText(text));
                                 return text.size() == 1;
                             }},
                        nullptr);
    EXPECT_FALSE(model.flags(model.indexOf(1, 1)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.flags(model.indexOf(2, 1)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.setData(model.indexOf(2, 1), QStringLiteral("q"), Qt::EditRole));
    EXPECT_FALSE(model.setData(model.indexOf(2, 2), QStringLiteral("qq"), Qt::EditRole));
    EXPECT_FALSE(model.setData(model.indexOf(2, 1), QStringLiteral("z"), Qt::DisplayRole));
    EXPECT_EQ(grid.text(2, 1) + grid.text(2, 2), "qqq");
}

TEST(LineListModel, FollowsItsList) {
    LineList list;
    list.insertSelected(0, "first");
    LineListModel model(list, nullptr);
    const QAbstractItemModelTester tester(&model, strict);
    QModelIndex selected;
    QObject::connect(&model, &LineListModel::lineSelected,
                     [&](const QModelIndex& index) { selected = index; });
    list.insertSelected(1, "第二");
    list.insertSelected(0, "zeroth");
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(selected, model.index(0));
    EXPECT_EQ(model.data(model.index(2), Qt::DisplayRole), qText("第二"));
    list.clear();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(OwnTexts, EveryOneHasBothLanguages) {
    for (int i = 0; i < static_cast<int>(OwnText::last_); ++i) {
        SCOPED_TRACE(i);
        modSoftFace::state().language = mdimoduMain::languageChinese;
        const std::string chinese = ownText(static_cast<OwnText>(i));
        modSoftFace::state().language = mdimoduMain::languageTraditional;
        const std::string english = ownText(static_cast<OwnText>(i));
        EXPECT_FALSE(chinese.empty() || english.empty());
        EXPECT_EQ(chinese.find('&') == std::string::npos, english.find('&') == std::string::npos);
    }
}

TEST(Icons, AreDrawnInTheColourOfThePalette) {
    const QPalette before = QApplication::palette();
    const QIcon icon = icons::line(QStringLiteral("file-open"));
    for (const QColor colour : {QColor(Qt::white), QColor(20, 30, 40)}) {
        QPalette palette = before;
        palette.setColor(QPalette::Active, QPalette::WindowText, colour);
        QApplication::setPalette(palette);
        const QImage image = icon.pixmap(48).toImage().convertToFormat(QImage::Format_ARGB32);
        int opaque = 0;
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
            opaque += pixel.alpha() == 255 ? 1 : 0;
            EXPECT_TRUE(pixel.alpha() < 255 || pixel.rgb() == colour.rgb());
        }
        EXPECT_GT(opaque, 20);
    }
    QApplication::setPalette(before);
}

// The events of the wait come from a timer, so this test alone takes some real milliseconds.
TEST(DesktopClock, ServesEventsAndNeverReturnsEarly) {
    DesktopClock desktop;
    for (const int wait : {0, 300, 1000, 1500, 4200}) {
        int served = 0;
        QMetaObject::invokeMethod(
            qApp, [&] { ++served; }, Qt::QueuedConnection);
        const auto deadline = theClock().now() + Clock::Microseconds(wait);
        theClock().waitUntil(deadline);
        EXPECT_GE(theClock().now(), deadline);
        EXPECT_EQ(served, 1);
    }
    // A wait inside an event of a wait keeps neither from its end.
    QMetaObject::invokeMethod(
        qApp, [&] { theClock().waitUntil(theClock().now() + Clock::Microseconds(2000)); },
        Qt::QueuedConnection);
    theClock().waitUntil(theClock().now() + Clock::Microseconds(1000));
}

}  // namespace
}  // namespace k520
