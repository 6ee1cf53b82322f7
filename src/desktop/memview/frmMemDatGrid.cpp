// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/memview/frmMemDatGrid.h"

#include <QAbstractButton>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QValidator>

#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "memview/memDatTexts.h"
#include "memview/modMemDat.h"

namespace k520 {

namespace {

/// Room beside the digits of a cell and above and below them, in pixels.
constexpr int cellPadding = 8;
constexpr int rowPadding = 3;
/// The ground of an editor whose text was refused; white can be read on it.
constexpr QColor refusedGround{176, 0, 32};

bool isReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

class ByteEditor : public QLineEdit, public CellEditor {
  public:
    ByteEditor(const QString& text, QWidget* parent) : QLineEdit(text, parent) {
        setFrame(false);
        setAlignment(Qt::AlignCenter);
        setAccessibleDescription(qSay(texts::badByteTip));
        connect(this, &QLineEdit::textEdited, this, [this] { setPalette({}); });
    }
    bool settle() override {
        if (!hasAcceptableInput()) {
            refuse();
        }
        return hasAcceptableInput();
    }
    void refuse() {
        setPalette(refusedPalette(palette()));
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), qSay(texts::badByteTip), this);
    }
};

/// Lets any text be typed, in capital letters, and only a byte be accepted.
class ByteValidator : public QValidator {
  public:
    explicit ByteValidator(ByteEditor& editor) : QValidator(&editor), editor_(editor) {}

    State validate(QString& text, int&) const override {
        text = text.toUpper();
        return modMemDat::isByteText(stdText(text)) ? Acceptable : Intermediate;
    }
    /// Only asked for when a text that is not a byte was to be accepted.
    void fixup(QString&) const override { editor_.refuse(); }

  private:
    ByteEditor& editor_;
};

class ByteDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* editor = own<ByteEditor>(index.data(Qt::EditRole).toString(), parent);
        editor->setValidator(own<ByteValidator>(*editor));
        return editor;
    }

    /// Nothing: a change beside the edit must not replace what is being typed.
    void setEditorData(QWidget*, const QModelIndex&) const override {}

  protected:
    /// A text that is not a byte stays when the keyboard goes: a command would go on without it.
    /// And Return stores at once, not when events are next served.
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* editor = dynamic_cast<ByteEditor*>(watched);
        if (editor != nullptr && event->type() == QEvent::FocusOut && !editor->settle()) {
            return false;
        }
        if (editor != nullptr && event->type() == QEvent::KeyPress &&
            isReturn(*static_cast<QKeyEvent*>(event))) {
            if (editor->settle()) {
                emit commitData(editor);
                emit closeEditor(editor, SubmitModelCache);
            }
            return true;
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }
    /// A marked cell keeps its colour, darkened, when it is the selected one.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const QVariant mark = index.data(Qt::BackgroundRole);
        if (mark.isValid()) {
            option->palette.setColor(QPalette::Highlight, mark.value<QColor>().darker(180));
            option->palette.setColor(QPalette::HighlightedText, Qt::white);
        }
    }
};

}  // namespace

QPalette refusedPalette(QPalette palette) {
    palette.setColor(QPalette::Base, refusedGround);
    palette.setColor(QPalette::Text, Qt::white);
    return palette;
}

frmMemDatGrid::frmMemDatGrid(QWidget* parent) : EditTable(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setItemDelegate(own<ByteDelegate>(this));
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setSelectionMode(SingleSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setAlternatingRowColors(true);
    setWordWrap(false);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->setMinimumSectionSize(1);
        header->setSectionResizeMode(QHeaderView::Fixed);
    }
}

void frmMemDatGrid::showModel(QAbstractItemModel& model, const QString& widestTitle,
                              const QString& corner) {
    // Headers show the section of the current cell in bold.
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int titleWidth = metrics.horizontalAdvance(widestTitle) + 2 * cellPadding;
    const int byteWidth = metrics.horizontalAdvance(QStringLiteral("FF")) + 2 * cellPadding;
    verticalHeader()->setDefaultSectionSize(metrics.height() + 2 * rowPadding);
    verticalHeader()->setFixedWidth(titleWidth);
    horizontalHeader()->setDefaultSectionSize(byteWidth);
    setModel(&model);
    setCornerText(corner);
    constexpr int leastColumns = 4;
    setMinimumWidth(titleWidth + leastColumns * byteWidth + 2 * frameWidth());
}

int frmMemDatGrid::fullWidth() const {
    return verticalHeader()->width() + horizontalHeader()->length() + 2 * frameWidth();
}

/// The corner is a button without a text of its own.
void frmMemDatGrid::setCornerText(const QString& text) {
    auto* corner = findChild<QAbstractButton*>();
    if (corner == nullptr || corner->layout() != nullptr) {
        return;
    }
    auto* layout = own<QHBoxLayout>(corner);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(own<QLabel>(text), 0, Qt::AlignCenter);
}

void frmMemDatGrid::go(CursorAction step) {
    setCurrentIndex(moveCursor(step, Qt::NoModifier));
}

void frmMemDatGrid::keyPressEvent(QKeyEvent* event) {
    if (isReturn(*event)) {
        go(MoveDown);
        return;
    }
    EditTable::keyPressEvent(event);
}

void frmMemDatGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // A byte that Tab reaches is chosen, not opened.
    EditTable::closeEditor(editor, QAbstractItemDelegate::NoHint);
    switch (hint) {
        case QAbstractItemDelegate::SubmitModelCache:
            return go(MoveDown);
        case QAbstractItemDelegate::EditNextItem:
            return go(MoveNext);
        case QAbstractItemDelegate::EditPreviousItem:
            return go(MovePrevious);
        default:
            return;
    }
}

}  // namespace k520
