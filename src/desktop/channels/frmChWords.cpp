// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChWords.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>

#include "channels/channelTexts.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "document/channelWords.h"

namespace k520 {

namespace {

/// Pixels: half of what the grid asks for.
constexpr int firstWidth = 128;

/// The sentences of a grid's rows, one column of them.
class WordsModel : public QAbstractTableModel {
  public:
    WordsModel(QAbstractItemModel& grid, QObject* parent)
        : QAbstractTableModel(parent), grid_(grid) {
        connect(&grid_, &QAbstractItemModel::modelAboutToBeReset, this,
                [this] { beginResetModel(); });
        connect(&grid_, &QAbstractItemModel::modelReset, this, [this] { endResetModel(); });
        connect(&grid_, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& from, const QModelIndex& to) {
                    emit dataChanged(index(from.row(), 0), index(to.row(), 0));
                });
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : grid_.rowCount();
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : 1;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole || role == Qt::ToolTipRole
                   ? qText(channelWords::ofNumber(index.row() + 1))
                   : QVariant();
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override {
        return orientation == Qt::Horizontal && role == Qt::DisplayRole
                   ? qSay(texts::inWords)
                   : QAbstractTableModel::headerData(section, orientation, role);
    }

  private:
    QAbstractItemModel& grid_;
};

}  // namespace

frmChWords::frmChWords(QTableView& grid, QWidget* parent) : QTableView(parent), grid_(grid) {
    setObjectName(QStringLiteral("wordsOfCh"));
    setModel(own<WordsModel>(*grid.model(), this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setMinimumWidth(80);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, grid.verticalScrollBar(),
            &QScrollBar::setValue);
    connect(grid.verticalHeader(), &QHeaderView::sectionResized, this, &frmChWords::refresh);
    connect(grid.horizontalHeader(), &QHeaderView::geometriesChanged, this, &frmChWords::refresh);
    connect(this, &QTableView::clicked, this, [this](const QModelIndex& index) {
        grid_.setCurrentIndex(grid_.model()->index(index.row(), grid_.currentIndex().column()));
        grid_.setFocus();
    });
    refresh();
}

void frmChWords::refresh() {
    setAccessibleName(qSay(texts::inWords));
    verticalHeader()->setDefaultSectionSize(grid_.verticalHeader()->defaultSectionSize());
    horizontalHeader()->setFixedHeight(std::max(1, grid_.horizontalHeader()->height()));
    verticalScrollBar()->setValue(grid_.verticalScrollBar()->value());
}

QSize frmChWords::sizeHint() const {
    return {firstWidth, QTableView::sizeHint().height()};
}

}  // namespace k520
