// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChEditors.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QValidator>
#include <QWheelEvent>

#include "channels/channelTable.h"
#include "channels/modCtdcs.h"
#include "desktop/channels/frmChFrequency.h"
#include "desktop/channels/frmChOffers.h"
#include "desktop/widgets/CellGridModel.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

using Delegate = QAbstractItemDelegate;

constexpr int longestFrequency = 20;

/// Where a key goes that ends an edit; NoHint for all other keys.
Delegate::EndEditHint hintOf(int key) {
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return Delegate::SubmitModelCache;
        case Qt::Key_Tab:
            return Delegate::EditNextItem;
        case Qt::Key_Backtab:
            return Delegate::EditPreviousItem;
        default:
            return Delegate::NoHint;
    }
}

/// How many entries a key goes up or down in a list; 0 for all other keys.
int stepOf(int key) {
    constexpr int page = 6;
    switch (key) {
        case Qt::Key_Up:
            return -1;
        case Qt::Key_Down:
            return 1;
        case Qt::Key_PageUp:
            return -page;
        case Qt::Key_PageDown:
            return page;
        default:
            return 0;
    }
}

/// Reads what was meant: many keyboards have a comma in their number block, and a DCS code may be
/// typed without shift. Nothing is refused: a text that is not a number has a meaning of its own.
class MeantText : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& input, int&) const override {
        input.replace(u',', u'.');
        if (input.startsWith(u'd')) {
            input[0] = u'D';
        }
        return Acceptable;
    }
};

QLineEdit* frequencyEditor(const QString& text, QWidget* parent) {
    auto* editor = own<QLineEdit>(text, parent);
    editor->setMaxLength(longestFrequency);
    editor->setValidator(own<MeantText>(editor));
    editor->setInputMethodHints(Qt::ImhPreferNumbers);
    editor->setAlignment(Qt::AlignCenter);
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    return editor;
}

}  // namespace

void CellComboBox::finish(Delegate::EndEditHint hint) {
    if (!std::exchange(finished_, true)) {
        // An open list would keep the focus from going back to the grid.
        hidePopup();
        emit finished(hint);
    }
}

bool CellComboBox::settle() {
    takeHighlighted();
    finished_ = true;
    hidePopup();
    return true;
}

void CellComboBox::takeHighlighted() {
    const int row = view()->currentIndex().row();
    // The entry that an open list starts with must not replace what is typed in the line.
    if (view()->isVisible() && row >= 0 && row != currentIndex()) {
        setCurrentIndex(row);
    }
}

bool CellComboBox::focusNextPrevChild(bool) {
    return true;
}

ListEditor::ListEditor(const QStringList& choices, const QString& text, QWidget* parent)
    : CellComboBox(parent) {
    addItems(choices);
    setCurrentIndex(static_cast<int>(choices.indexOf(text)));
    connect(this, &QComboBox::activated, this, [this] { finish(Delegate::NoHint); });
    // Not before the grid has given the editor its focus; and a choice is told after the list has
    // been closed.
    connect(this, &ListEditor::shown, this, &ListEditor::open, Qt::QueuedConnection);
    connect(
        this, &ListEditor::listClosed, this, [this] { finish(Delegate::RevertModelCache); },
        Qt::QueuedConnection);
    view()->installEventFilter(this);
    view()->window()->installEventFilter(this);
}

bool ListEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched == view()->window()) {
        emit listClosed();
    }
    if (event->type() == QEvent::KeyPress && watched == view() &&
        leaveByTab(static_cast<QKeyEvent*>(event)->key())) {
        return true;
    }
    return CellComboBox::eventFilter(watched, event);
}

void ListEditor::showEvent(QShowEvent* event) {
    CellComboBox::showEvent(event);
    emit shown();
}

void ListEditor::keyPressEvent(QKeyEvent* event) {
    if (event->text().isEmpty()) {
        CellComboBox::keyPressEvent(event);
        return;
    }
    open();
    view()->keyboardSearch(event->text());
}

void ListEditor::open() {
    if (!view()->isVisible()) {
        showPopup();
    }
}

bool ListEditor::leaveByTab(int key) {
    if (key != Qt::Key_Tab && key != Qt::Key_Backtab) {
        return false;
    }
    takeHighlighted();
    finish(hintOf(key));
    return true;
}

ToneEditor::ToneEditor(const QString& text, QWidget* parent) : CellComboBox(parent) {
    setObjectName(QStringLiteral("cboGridChCtdcs"));
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    // The grid decides when an edit ends; the list would take that for a choice.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    for (const std::string& tone : modCtdcs::state().cboGridChCtdcs) {
        addItem(qText(tone));
    }
    setCurrentIndex(findText(text));
    lineEdit()->setObjectName(QStringLiteral("txtGridChCtdcs"));
    lineEdit()->setAlignment(Qt::AlignCenter);
    setValidator(own<MeantText>(this));
    lineEdit()->setText(text);
    lineEdit()->selectAll();
    offers_ = own<frmChOffers>(*this);
    connect(lineEdit(), &QLineEdit::textEdited, offers_, &frmChOffers::offer);
    connect(offers_, &frmChOffers::chosen, this, [this](const QString& tone) {
        setEditText(tone);
        finish(Delegate::NoHint);
    });
    connect(this, &QComboBox::activated, this, [this] { finish(Delegate::NoHint); });
}

void ToneEditor::showPopup() {
    offers_->hide();
    CellComboBox::showPopup();
}

void ToneEditor::keyPressEvent(QKeyEvent* event) {
    const int step = stepOf(event->key());
    if (step == 0 || event->modifiers() != Qt::NoModifier) {
        CellComboBox::keyPressEvent(event);
    } else if (offers_->isVisible()) {
        setEditText(offers_->step(step));
    } else {
        showPopup();
    }
}

void ToneEditor::moveEvent(QMoveEvent* event) {
    CellComboBox::moveEvent(event);
    offers_->follow();
}

void ToneEditor::hideEvent(QHideEvent* event) {
    CellComboBox::hideEvent(event);
    offers_->hide();
}

namespace {

/// A triangle in the upper right corner, as in a spreadsheet.
void paintChangeMark(QPainter& painter, const QStyleOptionViewItem& option) {
    const int side = std::max(6, option.fontMetrics.height() / 3);
    const QPoint corner = option.rect.topRight() + QPoint(1, 0);
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.palette.brush(selected ? QPalette::HighlightedText : QPalette::Link));
    painter.drawPolygon(QPolygon({corner, corner - QPoint(side, 0), corner + QPoint(0, side)}));
    painter.restore();
}

}  // namespace

QWidget* ChannelDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                       const QModelIndex& index) const {
    namespace column = modChMem::column;
    const auto* model = qobject_cast<const CellGridModel*>(index.model());
    const int col = CellGridModel::gridColumn(index);
    const QString text = index.data(Qt::EditRole).toString();
    QWidget* editor = nullptr;
    switch (model->grid().cell(CellGridModel::gridRow(index), col).editMode) {
        case EditMode::keyboard:
            editor = frequencyEditor(text, parent);
            break;
        case EditMode::list:
            editor = watched(own<ListEditor>(index.data(CellGridModel::choicesRole).toStringList(),
                                             text, parent));
            break;
        case EditMode::none:
            if (col == column::decode || col == column::encode) {
                editor = watched(own<ToneEditor>(text, parent));
            }
            break;
    }
    if (editor != nullptr) {
        const auto title = [&](int section, Qt::Orientation side) {
            return model->headerData(section, side, Qt::DisplayRole).toString();
        };
        editor->setAccessibleName(title(index.column(), Qt::Horizontal) + u' ' +
                                  title(index.row(), Qt::Vertical));
    }
    return editor;
}

void ChannelDelegate::setEditorData(QWidget*, const QModelIndex&) const {}

void ChannelDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const {
    const auto* line = qobject_cast<const QLineEdit*>(editor);
    if (line == nullptr || line->isModified()) {
        QStyledItemDelegate::setModelData(editor, model, index);
    }
}

void ChannelDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                           const QModelIndex&) const {
    QRect place = option.rect;
    if (qobject_cast<CellComboBox*>(editor) != nullptr) {
        place.setWidth(std::max(place.width(), editor->minimumSizeHint().width()));
        const int beyond = place.right() - editor->parentWidget()->rect().right();
        place.translate(-std::max(0, beyond), 0);
    }
    editor->setGeometry(place);
}

void ChannelDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    namespace column = modChMem::column;
    const int col = CellGridModel::gridColumn(index);
    if (col != column::rx && col != column::tx) {
        QStyledItemDelegate::paint(painter, option, index);
    } else {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        frmChFrequency::paint(*painter, cell);
    }
    if (index.data(CellGridModel::markedRole).toBool()) {
        paintChangeMark(*painter, option);
    }
}

bool ChannelDelegate::eventFilter(QObject* editor, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(editor);
    if (widget != nullptr && event->type() == QEvent::KeyPress) {
        const auto hint = hintOf(static_cast<QKeyEvent*>(event)->key());
        if (hint != NoHint) {
            end(widget, hint);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

void ChannelDelegate::end(QWidget* editor, EndEditHint hint) {
    if (auto* list = qobject_cast<CellComboBox*>(editor)) {
        return list->finish(hint);
    }
    emit commitData(editor);
    emit closeEditor(editor, hint);
}

QWidget* ChannelDelegate::watched(CellComboBox* editor) const {
    // Making an editor is const, ending an edit is not.
    auto* self = const_cast<ChannelDelegate*>(this);
    connect(editor, &CellComboBox::finished, self, [self, editor](EndEditHint hint) {
        if (hint != RevertModelCache) {
            emit self->commitData(editor);
        }
        emit self->closeEditor(editor, hint);
    });
    return editor;
}

}  // namespace k520
