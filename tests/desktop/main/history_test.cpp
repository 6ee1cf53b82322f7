// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/history.h"

#include "app/ownTexts.h"
#include "channels/modChMem.h"
#include "desktop/Desktop.h"
#include "desktop/memview/frmMemDat.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "program/modFileCmd.h"
#include "program/recentFiles.h"
#include "settings/optionPanel.h"

namespace k520 {
namespace {

using Texts = test::ScriptedDialogs::Texts;

class HistoryWindow : public test::MainWindow {
  protected:
    void begin() {
        open();
        grid = &find<QTableView>(*main, "vsfgGridCh");
        grid->setFocus();
    }
    void key(Qt::Key pressed, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(main->focusWidget(), pressed, with);
        QApplication::processEvents();
    }
    void beginToType(int row, int column, std::string_view text) {
        grid->setCurrentIndex(grid->model()->index(row - 1, column - 1));
        for (const char letter : text) {
            QTest::keyClick(main->focusWidget(), letter);
        }
    }
    void type(int row, int column, std::string_view text) {
        beginToType(row, column, text);
        key(Qt::Key_Return);
        QTest::qWait(0);
    }
    std::string cell(int row, int column) {
        return stdText(grid->model()->index(row - 1, column - 1).data().toString());
    }
    std::string current() {
        return fmt::format("{},{}", grid->currentIndex().row() + 1,
                           grid->currentIndex().column() + 1);
    }
    QTableView* grid = nullptr;
    test::ScriptedDialogs dialogs;
};

TEST_F(HistoryWindow, KeysGoBackAndForthAndShowWhere) {
    begin();
    const auto before = cell(4, 1);
    type(4, 1, "446.1");
    ASSERT_EQ(cell(4, 1), "446.1");
    optionPanel::optionClicked(1, 7);
    EXPECT_EQ(stdText(action("mnuUndo").text()), "&Undo: Sql");
    EXPECT_TRUE(stdText(main->windowTitle()).starts_with("Untitled.dat* - "));

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(main->focusWidget()->objectName(), QLatin1String("cboSql"));
    EXPECT_EQ(stdText(action("mnuUndo").text()), "&Undo: receive frequency of channel 4");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(4, 1), before);
    EXPECT_EQ(current(), "4,1");
    EXPECT_EQ(main->focusWidget(), grid);
    EXPECT_FALSE(action("mnuUndo").isEnabled());
    EXPECT_FALSE(main->windowTitle().contains(u'*'));
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cell(4, 1), "446.1");
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(optionPanel::state().controls.at(1).selected, 7);
    EXPECT_FALSE(action("mnuRedo").isEnabled());
}

TEST_F(HistoryWindow, AnOpenEditorIsTakenFirst) {
    begin();
    type(4, 1, "446.1");
    beginToType(4, 1, "447");
    ASSERT_TRUE(editorOpen());
    action("mnuUndo").trigger();
    EXPECT_FALSE(editorOpen());
    EXPECT_EQ(cell(4, 1), "446.1") << "what was typed last is taken back";
}

TEST_F(HistoryWindow, ChangedCellsAreMarkedAndTellTheOldValue) {
    begin();
    const auto old = cell(1, 1);
    const QModelIndex changed = grid->model()->index(0, 0);
    const auto image = [&] { return grid->viewport()->grab(grid->visualRect(changed)).toImage(); };
    const auto corner = [&] { return image().pixelColor(image().width() - 3, 2); };
    grid->setCurrentIndex(grid->model()->index(1, 0));
    const QColor unmarked = corner();
    type(1, 1, "446.1");
    grid->setCurrentIndex(grid->model()->index(1, 0));
    EXPECT_NE(corner(), unmarked);
    EXPECT_EQ(stdText(changed.data(Qt::ToolTipRole).toString()), "As saved: " + old);
    action("mnuUndo").trigger();
    grid->setCurrentIndex(grid->model()->index(1, 0));
    EXPECT_EQ(corner(), unmarked);
    EXPECT_EQ(changed.data(Qt::ToolTipRole).toString(), QString());
}

TEST_F(HistoryWindow, AByteIsShownInTheMemoryWindow) {
    begin();
    modIicDat::IicDat()(0x1234) ^= 0xFF;
    documentOrigin::edited("byte");
    action("mnuUndo").trigger();
    const auto& bytes = find<QTableView>(*main, "vsfgGridMemDat");
    EXPECT_EQ(bytes.currentIndex().row(), 0x123);
    EXPECT_EQ(bytes.currentIndex().column(), 4);
}

TEST_F(HistoryWindow, ADroppedAndARecentFileAreOpenedAndUndone) {
    begin();
    const std::string path = folder / "a & b.dat";
    auto other = modIicDat::IicDat();
    other(0x134) = 3;
    datFile::save(path, other);
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(qPath(path))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(main.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(main.get(), &drop);
    QTest::qWait(0);
    QApplication::processEvents();
    EXPECT_EQ(optionPanel::state().controls.at(1).selected, 3);
    EXPECT_TRUE(stdText(main->windowTitle()).starts_with("a & b.dat - "));

    action("mnuUndo").trigger();
    EXPECT_NE(optionPanel::state().controls.at(1).selected, 3);
    auto& recent = find<QMenu>(*main, "mnuRecent");
    emit recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 1);
    EXPECT_THAT(stdText(recent.actions()[0]->text()), testing::StartsWith("&1  a && b.dat  ("));
    recent.actions()[0]->trigger();
    EXPECT_EQ(optionPanel::state().controls.at(1).selected, 3);

    std::filesystem::remove(path);
    recent.actions()[0]->trigger();
    EXPECT_THAT(dialogs.take(), testing::ElementsAre(testing::HasSubstr("no such file")));
    EXPECT_TRUE(recentFiles::list().empty());
}

}  // namespace
}  // namespace k520
