// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/LineListModel.h"

#include "desktop/widgets/qtText.h"

namespace k520 {

LineListModel::LineListModel(LineList& list, QObject* parent)
    : QAbstractListModel(parent), list_(list), rows_(list.size()) {
    inserted_ = list_.onInsert.subscribe([this](int line) {
        // The list tells of a line that is there already, and a model before it comes.
        unseen_ = line;
        beginInsertRows({}, line, line);
        unseen_ = none;
        ++rows_;
        endInsertRows();
        emit lineSelected(index(line));
    });
    cleared_ = list_.onClear.subscribe([this] {
        beginResetModel();
        rows_ = 0;
        endResetModel();
    });
}

int LineListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

QVariant LineListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::DisplayRole) {
        return {};
    }
    const int line = unseen_ != none && index.row() >= unseen_ ? index.row() + 1 : index.row();
    return qText(list_.lines()[static_cast<std::size_t>(line)]);
}

}  // namespace k520
