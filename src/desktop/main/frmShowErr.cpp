// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/frmShowErr.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "app/modShowErr.h"
#include "app/ownTexts.h"
#include "desktop/widgets/LineListModel.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

/// Gives every line its whole text as the tip, broken to the screen.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem&,
                   const QModelIndex& index) override {
        const QString line = index.data().toString().trimmed();
        QToolTip::showText(event->globalPos(),
                           line.isEmpty() ? line
                                          : QStringLiteral("<p style='white-space:pre-wrap'>") +
                                                line.toHtmlEscaped(),
                           view);
        return true;
    }
};

void copyText(const QModelIndexList& lines) {
    QStringList texts;
    for (const QModelIndex& line : lines) {
        texts.append(line.data().toString());
    }
    if (!texts.isEmpty()) {
        QGuiApplication::clipboard()->setText(texts.join(u'\n'));
    }
}

}  // namespace

frmShowErr::frmShowErr(QWidget* parent)
    : QDockWidget(parent),
      model_(own<LineListModel>(modShowErr::state().listShowErr, this)),
      listShowErr_(ownNamed<QListView>("listShowErr")),
      lblEmpty_(ownNamed<QLabel>("lblEmpty", listShowErr_->viewport())),
      cmdCopyAll_(ownNamed<QPushButton>("cmdCopyAll")),
      copyLines_(own<QAction>(listShowErr_)),
      copyAll_(own<QAction>(listShowErr_)) {
    setObjectName(QStringLiteral("frmShowErr"));
    buildList();
    buildFrame();
    SetSoftFace();
    showLine(model_->index(modShowErr::state().listShowErr.selected()));
    // Logging a failure never opens the list.
    hide();
}

void frmShowErr::buildList() {
    listShowErr_->setModel(model_);
    listShowErr_->setItemDelegate(own<LineDelegate>(listShowErr_));
    listShowErr_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listShowErr_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listShowErr_->setTextElideMode(Qt::ElideNone);
    listShowErr_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    listShowErr_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    listShowErr_->setContextMenuPolicy(Qt::ActionsContextMenu);
    listShowErr_->addActions({copyLines_, copyAll_});
    copyLines_->setShortcut(QKeySequence::Copy);
    copyLines_->setShortcutContext(Qt::WidgetShortcut);
    copyLines_->setIcon(icons::line(QStringLiteral("copy")));
    connect(copyLines_, &QAction::triggered, this, &frmShowErr::copyLines);
    connect(copyAll_, &QAction::triggered, this, &frmShowErr::copyAll);
    connect(cmdCopyAll_, &QPushButton::clicked, this, &frmShowErr::copyAll);
    connect(model_, &LineListModel::lineSelected, this, &frmShowErr::showLine);
    connect(model_, &LineListModel::modelReset, this, &frmShowErr::showEmpty);
}

void frmShowErr::buildFrame() {
    auto* over = own<QHBoxLayout>(listShowErr_->viewport());
    over->addWidget(lblEmpty_, 0, Qt::AlignCenter);
    lblEmpty_->setForegroundRole(QPalette::PlaceholderText);

    auto* content = own<QWidget>();
    auto* layout = own<QHBoxLayout>(content);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(listShowErr_, 1);
    layout->addWidget(cmdCopyAll_, 0, Qt::AlignTop);
    cmdCopyAll_->setIcon(icons::line(QStringLiteral("copy")));
    setWidget(content);
}

void frmShowErr::SetSoftFace() {
    setWindowTitle(qSay(texts::errorListTitle));
    listShowErr_->setAccessibleName(windowTitle());
    lblEmpty_->setText(qSay(texts::errorListEmpty));
    copyLines_->setText(qSay(texts::copyLines));
    copyAll_->setText(qSay(texts::copyAll));
    cmdCopyAll_->setText(qSay(texts::copyAll));
    cmdCopyAll_->setAccessibleName(plainCaption(cmdCopyAll_->text()));
}

void frmShowErr::showLine(const QModelIndex& index) {
    if (index.isValid()) {
        listShowErr_->setCurrentIndex(index);
        // A hidden list scrolls when it is shown; laid out for each line of a start that fails a
        // thousand times it would take seconds.
        if (listShowErr_->isVisible()) {
            listShowErr_->scrollTo(index);
        }
    }
    showEmpty();
}

void frmShowErr::showEmpty() {
    const bool empty = model_->rowCount() == 0;
    lblEmpty_->setVisible(empty);
    cmdCopyAll_->setEnabled(!empty);
    copyLines_->setEnabled(!empty);
    copyAll_->setEnabled(!empty);
}

void frmShowErr::copyLines() {
    QModelIndexList lines = listShowErr_->selectionModel()->selectedRows();
    if (lines.isEmpty()) {
        copyAll();
        return;
    }
    // They come in the order in which they were selected.
    std::sort(lines.begin(), lines.end());
    copyText(lines);
}

void frmShowErr::copyAll() {
    QModelIndexList lines;
    for (int row = 0; row < model_->rowCount(); ++row) {
        lines.append(model_->index(row));
    }
    copyText(lines);
}

}  // namespace k520
