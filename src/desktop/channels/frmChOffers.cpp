// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChOffers.h"

#include <QComboBox>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <algorithm>

#include "desktop/widgets/owned.h"

namespace k520 {

namespace {

constexpr int mostRows = 7;

}  // namespace

frmChOffers::frmChOffers(QComboBox& editor)
    : QListView(editor.window()), editor_(editor), matching_(own<QSortFilterProxyModel>(this)) {
    setObjectName(QStringLiteral("lstOffers"));
    matching_->setSourceModel(editor.model());
    matching_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    setModel(matching_);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A click on it leaves the keyboard in the line.
    setFocusPolicy(Qt::ClickFocus);
    setFocusProxy(&editor);
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex& index) { emit chosen(index.data().toString()); });
    connect(&editor, &QObject::destroyed, this, &QObject::deleteLater);
    hide();
}

void frmChOffers::offer(const QString& typed) {
    matching_->setFilterFixedString(typed);
    setCurrentIndex({});
    const bool any = !typed.isEmpty() && matching_->rowCount() > 0;
    if (any) {
        follow();
        raise();
    }
    setVisible(any);
}

QString frmChOffers::step(int rows) {
    const int last = matching_->rowCount() - 1;
    const int from = currentIndex().isValid() ? currentIndex().row() : (rows > 0 ? -1 : last + 1);
    setCurrentIndex(matching_->index(std::clamp(from + rows, 0, last), 0));
    return currentIndex().data().toString();
}

void frmChOffers::follow() {
    const QRect line(editor_.mapTo(window(), QPoint()), editor_.size());
    const int rows = std::min(mostRows, matching_->rowCount());
    const int wanted = rows * std::max(1, sizeHintForRow(0)) + 2 * frameWidth();
    const int below = window()->height() - line.bottom() - 1;
    const bool above = below < wanted && line.top() > below;
    const int height = std::min(wanted, above ? line.top() : below);
    setGeometry(line.left(), above ? line.top() - height : line.bottom() + 1, line.width(), height);
}

}  // namespace k520
