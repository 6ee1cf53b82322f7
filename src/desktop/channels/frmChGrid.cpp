// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChGrid.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <algorithm>
#include <numeric>
#include <set>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "base/Dialogs.h"
#include "channels/channelTexts.h"
#include "channels/columnTips.h"
#include "channels/gridCells.h"
#include "channels/gridPaste.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "desktop/channels/frmChEditors.h"
#include "desktop/channels/frmChGridHeader.h"
#include "desktop/widgets/CellGridModel.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "document/channelWords.h"
#include "document/history.h"

namespace k520 {

namespace {

namespace column = modChMem::column;

constexpr int cellMargin = 6;  ///< pixels beside a text
/// Why a cell is coloured, and what it was when the file was saved.
QString tipOf(int row, int col) {
    QString tip = qText(gridCells::tipOf(row, col));
    if (const auto saved = history::savedText(row, col)) {
        tip +=
            (tip.isEmpty() ? QString() : QStringLiteral("\n")) +
            qText(say(texts::savedValueTip, saved->empty() ? say(texts::savedValueEmpty) : *saved));
    }
    return tip;
}

constexpr int rowMargin = 8;  ///< pixels above and below a text, together: an editor fits in

}  // namespace

struct frmChGrid::KeyCommand {
    QKeyCombination keys;
    void (frmChGrid::*run)();
};

const frmChGrid::KeyCommand frmChGrid::keyCommands[] = {
    {Qt::Key_Return, &frmChGrid::goDown},
    {Qt::Key_Enter, &frmChGrid::goDown},
    {Qt::ShiftModifier | Qt::Key_Return, &frmChGrid::goUp},
    {Qt::ShiftModifier | Qt::Key_Enter, &frmChGrid::goUp},
    {Qt::Key_Delete, &frmChGrid::clearCells},
    {Qt::Key_Backspace, &frmChGrid::clearCells},
    {Qt::Key_Space, &frmChGrid::startEdit},
    {Qt::Key_F4, &frmChGrid::openList},
    {Qt::AltModifier | Qt::Key_Down, &frmChGrid::openList},
    {Qt::ControlModifier | Qt::Key_Home, &frmChGrid::goToFirst},
    {Qt::ControlModifier | Qt::Key_End, &frmChGrid::goToLast},
    {Qt::Key_Menu, &frmChGrid::showMenuOfCurrent},
    {Qt::ShiftModifier | Qt::Key_F10, &frmChGrid::showMenuOfCurrent},
    {Qt::ControlModifier | Qt::Key_C, &frmChGrid::copyCells},
    {Qt::ControlModifier | Qt::Key_Insert, &frmChGrid::copyCells},
    {Qt::ControlModifier | Qt::Key_X, &frmChGrid::cutCells},
    {Qt::ControlModifier | Qt::Key_V, &frmChGrid::pasteCells},
    {Qt::ShiftModifier | Qt::Key_Insert, &frmChGrid::pasteCells},
};

frmChGrid::frmChGrid(QWidget* parent)
    : EditTable(parent),
      model_(own<CellGridModel>(
          modChMem::state().vsfgGridCh,
          CellGridModel::Rules{
              // Asked at every paint; edit() asks the core.
              .mayEdit = [](int, int) { return !modChEdit::locked(); },
              .edited =
                  [](int row, int col, const QString& text) {
                      return gridCells::store(row, col, stdText(text));
                  },
              .tip = tipOf,
              .marked = [](int row, int col) { return history::savedText(row, col).has_value(); },
              .titleTip = [](int col) { return qText(columnTips::of(col)); },
              .rowWords = [](int row) { return qText(channelWords::ofNumber(row)); }},
          this)),
      titles_(own<TitleHeader>(this)),
      menu_(own<QMenu>(this)),
      corner_(own<QLabel>()) {
    setObjectName(QStringLiteral("vsfgGridCh"));
    setHorizontalHeader(titles_);
    setModel(model_);
    setItemDelegate(own<ChannelDelegate>(this));
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectItems);
    // Not DoubleClicked: it steps a list, see doubleClicked().
    setEditTriggers(AnyKeyPressed | EditKeyPressed | SelectedClicked);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(true);
    setHorizontalScrollMode(ScrollPerPixel);
    setMinimumSize(240, 160);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->setHighlightSections(true);
    }
    makeMenu();
    makeCorner();
    connect(this, &QTableView::doubleClicked, this, &frmChGrid::doubleClicked);
    connect(model_, &CellGridModel::modelReset, this, &frmChGrid::afterReset);
    connect(model_, &CellGridModel::headerDataChanged, this, &frmChGrid::fit);
    afterReset();
}

/// The title of the numbers' column stands in the corner, which a table leaves empty.
void frmChGrid::makeCorner() {
    auto* button = findChild<QAbstractButton*>();
    corner_->setParent(button != nullptr ? static_cast<QWidget*>(button) : this);
    corner_->setAlignment(Qt::AlignCenter);
    corner_->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (button != nullptr) {
        auto* layout = own<QHBoxLayout>(button);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(corner_);
    }
}

void frmChGrid::afterReset() {
    fit();
    goTo(model_->indexOf(1, 1));
}

// Sizes.

int frmChGrid::neededWidth(int column) const {
    int widest = 0;
    for (const std::string& text : gridCells::possibleTexts(column)) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(qText(text)));
    }
    const int word = titles_->widestWord(column - 1);
    return std::max(word, widest) + 2 * cellMargin;
}

int frmChGrid::neededRowHeight() const {
    const int wanted = model_->rowCount() > 0 ? model_->grid().rowHeight(1) : 0;
    return std::max(pixelsOfTwips(wanted, logicalDpiY()), fontMetrics().height() + rowMargin);
}

void frmChGrid::fit() {
    const CellGrid& grid = model_->grid();
    const int count = model_->columnCount();
    if (count == 0) {
        return;
    }
    corner_->setText(qText(grid.text(0, 0)));
    const int height = neededRowHeight();
    verticalHeader()->setDefaultSectionSize(height);
    verticalHeader()->setFixedWidth(std::max(
        {pixelsOfTwips(grid.columnWidth(0), logicalDpiX()), verticalHeader()->sizeHint().width(),
         fontMetrics().horizontalAdvance(corner_->text()) + 2 * cellMargin}));
    fitColumns(viewport()->width());
    horizontalHeader()->setFixedHeight(
        height + rowMargin / 2 + (titles_->wraps(cellMargin) ? fontMetrics().lineSpacing() : 0));
}

void frmChGrid::fitColumns(int room) {
    const int count = model_->columnCount();
    std::vector<int> widths;
    std::vector<int> margins;
    for (int column = 1; column <= count; ++column) {
        const int needed = neededWidth(column);
        const int wanted = pixelsOfTwips(model_->grid().columnWidth(column), logicalDpiX());
        widths.push_back(std::max(needed, wanted));
        margins.push_back(widths.back() - needed);
    }
    const int spare = room - std::accumulate(widths.begin(), widths.end(), 0);
    // Where it is narrow, columns wider than their texts give way.
    const std::vector<int> shares = spare < 0 ? margins : std::vector<int>(margins.size(), 1);
    const int all = std::max(1, std::accumulate(shares.begin(), shares.end(), 0));
    const int change = spare < 0 ? std::max(spare, -all) : spare;
    int before = 0;
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int after = before + shares[at];
        setColumnWidth(i, widths[at] + change * after / all - change * before / all);
        before = after;
    }
}

void frmChGrid::resizeEvent(QResizeEvent* event) {
    EditTable::resizeEvent(event);
    fit();
}

void frmChGrid::changeEvent(QEvent* event) {
    EditTable::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fit();
    }
}

// Going from cell to cell.

bool frmChGrid::canStep(int cellCount) const {
    const int columns = model_->columnCount();
    const int target = currentIndex().row() * columns + currentIndex().column() + cellCount;
    return currentIndex().isValid() && target >= 0 && target < columns * model_->rowCount();
}

void frmChGrid::step(int cellCount) {
    if (canStep(cellCount)) {
        const int columns = model_->columnCount();
        const int target = currentIndex().row() * columns + currentIndex().column() + cellCount;
        goTo(model_->index(target / columns, target % columns));
    }
}

void frmChGrid::goRows(int rows) {
    goTo(model_->index(currentIndex().row() + rows, currentIndex().column()));
}

void frmChGrid::goToFirst() {
    goTo(model_->index(0, 0));
}

void frmChGrid::showCell(int row, int column) {
    endEdit();
    goTo(model_->indexOf(row, column));
    scrollTo(currentIndex());
    viewport()->update();
    setFocus();
}

void frmChGrid::goToLast() {
    goTo(model_->index(model_->rowCount() - 1, model_->columnCount() - 1));
}

void frmChGrid::goTo(const QModelIndex& index) {
    // Shift, held for the way back, must not extend the selection.
    if (index.isValid()) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    }
}

void frmChGrid::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if ((key == Qt::Key_Tab && !canStep(1)) || (key == Qt::Key_Backtab && !canStep(-1))) {
        // Out of the table, to the next control.
        event->ignore();
        return;
    }
    const QKeyCombination keys(event->modifiers() & ~Qt::KeypadModifier, Qt::Key(key));
    const auto* command = std::ranges::find(keyCommands, keys, &KeyCommand::keys);
    if (command == std::end(keyCommands)) {
        EditTable::keyPressEvent(event);
    } else if (currentIndex().isValid()) {
        guarded("frmChMem->vsfgGridCh_KeyDown:", [&] { (this->*command->run)(); });
    }
}

// Editing.

bool frmChGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool starts = trigger == AllEditTriggers || (trigger & editTriggers()) != 0;
    if (starts && index.isValid() && state() != EditingState) {
        const int row = CellGridModel::gridRow(index);
        const int col = CellGridModel::gridColumn(index);
        const bool clicked = trigger == SelectedClicked;
        if ((clicked && (col == column::rx || col == column::tx)) || gridCells::refuses(row, col)) {
            trigger = NoEditTriggers;
        }
    }
    return EditTable::edit(index, trigger, event);
}

void frmChGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    EditTable::closeEditor(editor, QAbstractItemDelegate::NoHint);
    switch (hint) {
        case QAbstractItemDelegate::SubmitModelCache:
            return goDown();
        case QAbstractItemDelegate::EditNextItem:
            return step(1);
        case QAbstractItemDelegate::EditPreviousItem:
            return step(-1);
        default:
            return;
    }
}

void frmChGrid::startEdit() {
    edit(currentIndex(), AllEditTriggers, nullptr);
}

void frmChGrid::openList() {
    startEdit();
    auto* tones = qobject_cast<ToneEditor*>(window()->focusWidget());
    if (tones != nullptr && state() == EditingState) {
        tones->showPopup();
    }
}

void frmChGrid::doubleClicked(const QModelIndex& index) {
    const int row = CellGridModel::gridRow(index);
    const int col = CellGridModel::gridColumn(index);
    if (col >= modChMem::firstParameter) {
        modChEdit::vsfgGridCh_DblClick(toInt16(row), toInt16(col));
    } else {
        edit(index, AllEditTriggers, nullptr);
    }
}

void frmChGrid::clearCells() {
    QModelIndexList chosen = selectedIndexes();
    if (!mayEmpty(chosen)) {
        return;
    }
    // The receive frequency of a row first: without it there is nothing else to clear.
    std::sort(chosen.begin(), chosen.end());
    for (const QModelIndex& index : chosen) {
        gridCells::clear(CellGridModel::gridRow(index), CellGridModel::gridColumn(index));
    }
}

/// One channel is soon typed again; before several are lost the user is asked.
bool frmChGrid::mayEmpty(const QModelIndexList& chosen) {
    const auto count = std::ranges::count_if(chosen, [](const QModelIndex& index) {
        return gridCells::empties(CellGridModel::gridRow(index), CellGridModel::gridColumn(index));
    });
    return count < 2 || theDialogs().ask(modSoftFace::text(SoftText::notice),
                                         say(texts::emptyQuestion, count), false);
}

void frmChGrid::copyCells() {
    std::set<int> rows;
    std::set<int> columns;
    for (const QModelIndex& index : selectedIndexes()) {
        rows.insert(index.row());
        columns.insert(index.column());
    }
    QStringList lines;
    for (const int row : rows) {
        QStringList texts;
        for (const int col : columns) {
            const QModelIndex index = model_->index(row, col);
            texts.append(selectionModel()->isSelected(index) ? index.data().toString() : QString());
        }
        lines.append(texts.join(u'\t'));
    }
    if (!lines.empty()) {
        QApplication::clipboard()->setText(lines.join(u'\n'));
    }
}

void frmChGrid::cutCells() {
    copyCells();
    clearCells();
}

void frmChGrid::pasteCells() {
    std::vector<gridPaste::Place> chosen;
    for (const QModelIndex& index : selectedIndexes()) {
        chosen.push_back({CellGridModel::gridRow(index), CellGridModel::gridColumn(index)});
    }
    if (chosen.empty()) {
        chosen = {
            {CellGridModel::gridRow(currentIndex()), CellGridModel::gridColumn(currentIndex())}};
    }
    QItemSelection pasted;
    for (const auto& [row, col] :
         gridPaste::paste(stdText(QApplication::clipboard()->text()), chosen)) {
        pasted.select(model_->indexOf(row, col), model_->indexOf(row, col));
    }
    if (!pasted.isEmpty()) {
        selectionModel()->select(pasted, QItemSelectionModel::ClearAndSelect);
    }
}

}  // namespace k520
