// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/CellGridModel.h"

#include <QColor>
#include <utility>

#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

QColor qColour(const Colour& colour) {
    return {colour.red, colour.green, colour.blue};
}

/// The eye weighs green most and blue least.
QColor readableOn(const Colour& background) {
    const int light = 299 * background.red + 587 * background.green + 114 * background.blue;
    return light >= 128'000 ? QColor(Qt::black) : QColor(Qt::white);
}

QStringList choicesOf(const Cell& cell) {
    QStringList choices;
    for (const std::string& choice : cell.choices) {
        choices.append(qText(choice));
    }
    return choices;
}

QVariant coloured(const Cell& cell, QColor (*colour)(const Colour&)) {
    return cell.background ? QVariant(colour(*cell.background)) : QVariant();
}

}  // namespace

CellGridModel::CellGridModel(CellGrid& grid, Rules rules, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), rules_(std::move(rules)) {
    cellChanged_ =
        grid_.onCellChanged.subscribe([this](int row, int column) { noteChange(row, column); });
    reset_ = grid_.onReset.subscribe([this] {
        changed_ = {};
        beginResetModel();
        endResetModel();
    });
}

int CellGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(0, grid_.rows() - 1);
}

int CellGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(0, grid_.columns() - 1);
}

QVariant CellGridModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Cell& cell = grid_.cell(gridRow(index), gridColumn(index));
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return qText(cell.text);
        case Qt::BackgroundRole:
            return coloured(cell, qColour);
        case Qt::ForegroundRole:
            return coloured(cell, readableOn);
        case Qt::TextAlignmentRole:
            return Qt::AlignCenter;
        case Qt::ToolTipRole:
            return rules_.tip ? rules_.tip(gridRow(index), gridColumn(index)) : QVariant();
        case Qt::AccessibleDescriptionRole:
            return rules_.rowWords ? rules_.rowWords(gridRow(index)) : QVariant();
        case markedRole:
            return rules_.marked && rules_.marked(gridRow(index), gridColumn(index));
        case choicesRole:
            return choicesOf(cell);
        default:
            return {};
    }
}

bool CellGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    return role == Qt::EditRole && checkIndex(index, CheckIndexOption::IndexIsValid) &&
           rules_.edited && rules_.edited(gridRow(index), gridColumn(index), value.toString());
}

QVariant CellGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const int count = orientation == Qt::Horizontal ? columnCount() : rowCount();
    if (section < 0 || section >= count) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return Qt::AlignCenter;
    }
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal && rules_.titleTip) {
        return rules_.titleTip(section + 1);
    }
    const bool ofRow = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    if (ofRow && orientation == Qt::Vertical && rules_.rowWords) {
        return rules_.rowWords(section + 1);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    return qText(orientation == Qt::Horizontal ? grid_.text(0, section + 1)
                                               : grid_.text(section + 1, 0));
}

Qt::ItemFlags CellGridModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && rules_.mayEdit && rules_.mayEdit(gridRow(index), gridColumn(index))) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

void CellGridModel::noteChange(int row, int column) {
    if (changed_.isNull()) {
        QMetaObject::invokeMethod(this, &CellGridModel::tellChanges, Qt::QueuedConnection);
    }
    changed_ |= QRect(column - 1, row - 1, 1, 1);
}

void CellGridModel::tellChanges() {
    const QRect area = std::exchange(changed_, {});
    const QRect whole(0, 0, columnCount(), rowCount());
    if (area.left() < 0 && !whole.isEmpty()) {
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
    if (area.top() < 0 && !whole.isEmpty()) {
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
    const QRect cells = area & whole;
    if (!cells.isEmpty()) {
        emit dataChanged(index(cells.top(), cells.left()), index(cells.bottom(), cells.right()));
    }
}

}  // namespace k520
