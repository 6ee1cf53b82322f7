// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/frmShowErr.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QHelpEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QToolTip>

#include "app/Guard.h"
#include "app/RuntimeError.h"
#include "desktop/Desktop.h"

namespace k520::test {
namespace {

using testing::HasSubstr;

class ShowErr : public Desktop {
  protected:
    static void fail(const char* label) {
        guarded(label, [] { throw RuntimeError(errNum::subscript, "array"); });
    }
    static std::string line(int row) {
        return modShowErr::state().listShowErr.lines()[static_cast<std::size_t>(row)];
    }
};

TEST_F(ShowErr, ShowsWhatFailedBeforeAndAfterItWasMade) {
    start();
    {
        const frmShowErr early;
        for (const bool empty : {true, false}) {
            EXPECT_EQ(find<QLabel>(early, "lblEmpty").isVisibleTo(&early), empty);
            EXPECT_EQ(find<QPushButton>(early, "cmdCopyAll").isEnabled(), !empty);
            fail("early->one");
        }
        EXPECT_FALSE(early.isVisible());
    }
    const frmShowErr window;
    const auto& list = find<QListView>(window, "listShowErr");
    EXPECT_EQ(list.currentIndex().row(), 3);
    fail("late->two");
    EXPECT_TRUE(list.selectionModel()->isRowSelected(5));
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(stdText(list.model()->index(row, 0).data().toString()), line(row));
    }
}

TEST_F(ShowErr, CopiesTheSelectedLinesOrAll) {
    start();
    frmShowErr window;
    fail("a->0");
    fail("b->2");
    auto& list = find<QListView>(window, "listShowErr");
    list.setFocus();
    ASSERT_TRUE(showActive(window));
    const auto copied = [&](bool byKey) {
        QApplication::clipboard()->clear();
        if (byKey) {
            QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
        } else {
            find<QPushButton>(window, "cmdCopyAll").click();
        }
        return stdText(QApplication::clipboard()->text());
    };
    const std::string all = fmt::format("{}\n{}\n{}\n{}", line(0), line(1), line(2), line(3));
    // Line 3 is selected already: what comes later in the selection still comes in its place.
    list.selectionModel()->select(list.model()->index(1, 0), QItemSelectionModel::Select);
    EXPECT_EQ(copied(true), line(1) + "\n" + line(3));
    EXPECT_EQ(copied(false), all);
    list.clearSelection();
    EXPECT_EQ(copied(true), all);
}

TEST_F(ShowErr, ALongLineScrollsAndIsItsOwnTip) {
    start();
    frmShowErr window;
    window.resize(300, 150);
    window.show();
    fail("module<b>->procedure");
    auto& list = find<QListView>(window, "listShowErr");
    QApplication::processEvents();
    EXPECT_GT(list.horizontalScrollBar()->maximum(), 0);
    const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
    QHelpEvent help(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
    QApplication::sendEvent(list.viewport(), &help);
    EXPECT_THAT(stdText(QToolTip::text()),
                AllOf(HasSubstr("module&lt;b&gt;-&gt;"), HasSubstr("数组索引超出范围")));
}

}  // namespace
}  // namespace k520::test
