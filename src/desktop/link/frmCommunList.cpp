// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunList.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QShortcut>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

#include "desktop/widgets/owned.h"

namespace k520 {

namespace {

constexpr std::chrono::milliseconds showInterval{200};

}  // namespace

frmCommunList::frmCommunList(QWidget* parent) : QListView(parent), wait_(own<QTimer>(this)) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    wait_->setInterval(showInterval);
    wait_->setSingleShot(true);
    connect(wait_, &QTimer::timeout, this, &frmCommunList::showNow);
    auto* copy = own<QShortcut>(QKeySequence(QKeySequence::Copy), this);
    copy->setContext(Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, &frmCommunList::copyLines);
}

void frmCommunList::showNow() {
    wait_->stop();
    const int newest = std::exchange(newest_, none);
    if (newest >= 0 && newest < model()->rowCount()) {
        QListView::rowsInserted({}, newest, newest);
        setCurrentIndex(model()->index(newest, 0));
    }
}

/// The view lays itself out anew whatever rows have come, so it is told of the newest alone. Until
/// then it shows what it knows: rows are only ever added after the others.
void frmCommunList::rowsInserted(const QModelIndex& /*parent*/, int /*start*/, int end) {
    newest_ = end;
    if (!wait_->isActive()) {
        wait_->start();
    }
}

void frmCommunList::copyLines() const {
    QModelIndexList selected = selectedIndexes();
    std::ranges::sort(selected, {}, &QModelIndex::row);
    QStringList lines;
    for (const QModelIndex& index : selected) {
        lines.append(index.data().toString());
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace k520
