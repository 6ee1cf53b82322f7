// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChLists.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <numeric>

#include "desktop/widgets/owned.h"

namespace k520 {

namespace {

constexpr int gapBetweenLists = 22;
/// A label, its list, and the gap after them.
constexpr int columnsOfList = 3;

}  // namespace

frmChLists::frmChLists(QWidget* parent) : QGroupBox(parent), grid_(own<QGridLayout>(this)) {}

void frmChLists::add(QLabel& label, QComboBox& list) {
    list.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    rows_.push_back({&label, &list});
    // What is left of the width stands after the last list.
    const int end = columnsOfList * static_cast<int>(rows_.size());
    grid_->setColumnStretch(end - columnsOfList, 0);
    grid_->setColumnStretch(end, 1);
    arrange();
}

QSize frmChLists::minimumSizeHint() const {
    int widest = 0;
    for (const Row& row : rows_) {
        widest = std::max(widest, widthOf(row));
    }
    return {widest + margins(), QGroupBox::minimumSizeHint().height()};
}

void frmChLists::resizeEvent(QResizeEvent* event) {
    QGroupBox::resizeEvent(event);
    arrange();
}

bool frmChLists::event(QEvent* event) {
    const bool done = QGroupBox::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        arrange();
    }
    return done;
}

int frmChLists::widthOf(const Row& row) const {
    return row.label->sizeHint().width() + grid_->horizontalSpacing() +
           row.list->sizeHint().width();
}

int frmChLists::margins() const {
    const QMargins all = contentsMargins() + grid_->contentsMargins();
    return all.left() + all.right();
}

void frmChLists::arrange() {
    const int all = std::accumulate(
        rows_.begin(), rows_.end(), margins(),
        [&](int sum, const Row& row) { return sum + widthOf(row) + gapBetweenLists; });
    const bool stacked = width() < all;
    if (stacked == stacked_ && grid_->count() == 2 * static_cast<int>(rows_.size())) {
        return;
    }
    stacked_ = stacked;
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
        const Row& row = rows_[static_cast<std::size_t>(i)];
        const int column = stacked ? 0 : columnsOfList * i;
        grid_->addWidget(row.label, stacked ? i : 0, column);
        grid_->addWidget(row.list, stacked ? i : 0, column + 1);
    }
    grid_->setColumnMinimumWidth(columnsOfList - 1,
                                 stacked ? 0 : gapBetweenLists - 2 * grid_->horizontalSpacing());
}

}  // namespace k520
