// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/EditTable.h"

#include <QApplication>
#include <QInputMethod>

namespace k520 {

bool EditTable::commitAll() {
    for (QWidget* widget : QApplication::allWidgets()) {
        auto* table = qobject_cast<EditTable*>(widget);
        if (table != nullptr && !table->commitEditor()) {
            table->openEditor()->setFocus();
            return false;
        }
    }
    return true;
}

void EditTable::endEdit() {
    if (!commitEditor()) {
        closeEditor(openEditor(), QAbstractItemDelegate::RevertModelCache);
    }
}

QWidget* EditTable::openEditor() const {
    return state() == EditingState ? indexWidget(edited_) : nullptr;
}

bool EditTable::commitEditor() {
    QWidget* editor = openEditor();
    if (editor == nullptr) {
        return true;
    }
    // What an input method still composes belongs to the text.
    QGuiApplication::inputMethod()->commit();
    auto* cell = dynamic_cast<CellEditor*>(editor);
    if (cell != nullptr && !cell->settle()) {
        return false;
    }
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

bool EditTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool wasEditing = state() == EditingState;
    const bool handled = QTableView::edit(index, trigger, event);
    if (!wasEditing && state() == EditingState) {
        edited_ = index;
    }
    return handled;
}

void EditTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    endEdit();
    QTableView::currentChanged(current, previous);
}

void EditTable::hideEvent(QHideEvent* event) {
    endEdit();
    QTableView::hideEvent(event);
}

}  // namespace k520
