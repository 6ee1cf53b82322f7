// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunRestore.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/modSoftFace.h"
#include "base/Dialogs.h"
#include "desktop/link/communTexts.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/screenRoom.h"

namespace k520 {

namespace {

constexpr QSize usualSize(680, 340);
constexpr int columnGap = 16;
constexpr int madeColumn = 1;
constexpr int changesColumn = 2;

QTreeWidgetItem* itemOf(const restoreList::Row& row) {
    auto* item =
        own<QTreeWidgetItem>(QStringList{qText(row.time), qText(row.made), qText(row.changes)});
    item->setToolTip(0, qPath(row.way.path));
    item->setToolTip(changesColumn, qText(row.changes));
    if (row.way.unfinished) {
        QFont bold = item->font(madeColumn);
        bold.setBold(true);
        item->setFont(madeColumn, bold);
    }
    return item;
}

}  // namespace

// The tab order is the order of making.
frmCommunRestore::frmCommunRestore(std::filesystem::path due, QWidget* parent)
    : QDialog(parent),
      due_(std::move(due)),
      lstBackups_(ownNamed<QTreeWidget>("lstBackups", this)),
      lblCompared_(ownNamed<QLabel>("lblCompared", this)),
      cmdForget_(ownNamed<QPushButton>("cmdForget", this)),
      cmdRestoreThis_(ownNamed<QPushButton>("cmdRestoreThis", this)),
      cmdCancel_(ownNamed<QPushButton>("cmdCancel", this)) {
    setObjectName(QStringLiteral("frmCommunRestore"));
    layOut();
    fill();
    connect(lstBackups_, &QTreeWidget::currentItemChanged, this, &frmCommunRestore::showChoice);
    connect(lstBackups_, &QTreeWidget::itemDoubleClicked, this, &frmCommunRestore::accept);
    connect(cmdForget_, &QPushButton::clicked, this, &frmCommunRestore::forget);
    connect(cmdRestoreThis_, &QPushButton::clicked, this, &frmCommunRestore::accept);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmCommunRestore::reject);
}

std::optional<std::filesystem::path> frmCommunRestore::chosen() const {
    const auto* row = selected();
    return row != nullptr ? std::optional(row->way.path) : std::nullopt;
}

void frmCommunRestore::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    keepOnScreen(*this);
}

void frmCommunRestore::layOut() {
    setWindowTitle(plainCaption(qSay(texts::restoreRadio)));
    auto* prompt = own<QLabel>(qSay(texts::chooseBackup), this);
    prompt->setBuddy(lstBackups_);
    nameControl(*lstBackups_, qSay(texts::chooseBackup));
    captionControl(*cmdForget_, qSay(texts::forgetBackup));
    captionControl(*cmdRestoreThis_, qSay(texts::restoreRadio));
    captionControl(*cmdCancel_, qSay(texts::cancelRestore));
    cmdForget_->setToolTip(qSay(texts::forgetTip));
    cmdForget_->setAutoDefault(false);
    cmdRestoreThis_->setDefault(true);
    lstBackups_->setHeaderLabels(
        {qSay(texts::backupTime), qSay(texts::backupMade), qSay(texts::backupChanges)});
    lstBackups_->setRootIsDecorated(false);
    lstBackups_->setUniformRowHeights(true);
    lstBackups_->setAlternatingRowColors(true);
    lstBackups_->setAllColumnsShowFocus(true);

    auto* buttons = own<QHBoxLayout>();
    buttons->addWidget(cmdForget_);
    buttons->addStretch(1);
    buttons->addWidget(cmdRestoreThis_);
    buttons->addWidget(cmdCancel_);
    auto* column = own<QVBoxLayout>(this);
    column->addWidget(prompt);
    column->addWidget(lstBackups_, 1);
    column->addWidget(lblCompared_);
    column->addLayout(buttons);
    resize(usualSize);
}

void frmCommunRestore::fill() {
    rows_ = restoreList::rows();
    lstBackups_->clear();
    for (const auto& row : rows_.rows) {
        lstBackups_->addTopLevelItem(itemOf(row));
    }
    lblCompared_->setText(qText(rows_.comparedWith));
    for (int column = 0; column < changesColumn; ++column) {
        lstBackups_->resizeColumnToContents(column);
        lstBackups_->setColumnWidth(column, lstBackups_->columnWidth(column) + columnGap);
    }
    const auto likeliest = restoreList::likeliest(rows_.rows, due_);
    if (likeliest) {
        lstBackups_->setCurrentItem(lstBackups_->topLevelItem(static_cast<int>(*likeliest)));
    }
    showChoice();
}

void frmCommunRestore::showChoice() {
    const auto* row = selected();
    cmdRestoreThis_->setEnabled(row != nullptr);
    cmdForget_->setEnabled(row != nullptr && row->way.unfinished);
}

/// No radio needs it any more, so nobody is reminded of it. The backup itself stays.
void frmCommunRestore::forget() {
    const auto* row = selected();
    if (row != nullptr &&
        theDialogs().ask(modSoftFace::text(SoftText::notice),
                         say(texts::forgetQuestion, row->way.path.filename().string()), false)) {
        waysBack::forget(row->way);
        fill();
    }
}

const restoreList::Row* frmCommunRestore::selected() const {
    const int place = lstBackups_->indexOfTopLevelItem(lstBackups_->currentItem());
    return place >= 0 ? &rows_.rows[static_cast<std::size_t>(place)] : nullptr;
}

}  // namespace k520
