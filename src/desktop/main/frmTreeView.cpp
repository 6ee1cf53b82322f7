// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/frmTreeView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeWidget>
#include <algorithm>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

struct Node {
    const char* key;
    const char* icon;
    SoftText text;
};

constexpr Node rootNode{"Radio", "radio", SoftText::treeRoot};
constexpr Node childNodes[] = {
    {"RadioInfo", "radio-info", SoftText::treeRadioInfo},
    {"ChInfo", "channels", SoftText::channels},
    {"SysSet", "options", SoftText::options},
};
constexpr int keyRole = Qt::UserRole;
/// On a small screen the texts give way.
constexpr int leastWidth = 130;

QTreeWidgetItem* nodeItem(const Node& node, const QString& text) {
    const QString key = QLatin1String(node.key);
    auto* item = own<QTreeWidgetItem>(QStringList{text});
    item->setData(0, keyRole, key);
    item->setData(0, Qt::AccessibleTextRole, text.isEmpty() ? key : text);
    item->setIcon(0, icons::line(QLatin1String(node.icon)));
    return item;
}

/// The model's name, for a root that would have no text at all.
QString rootText() {
    const QString text = softText(rootNode.text);
    return text.isEmpty() ? softText(SoftText::model) : text;
}

}  // namespace

frmTreeView::frmTreeView(QWidget* parent)
    : QDockWidget(parent), treevMain_(ownNamed<QTreeWidget>("treevMain")) {
    setObjectName(QStringLiteral("frmTreeView"));
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    treevMain_->setHeaderHidden(true);
    treevMain_->setColumnCount(1);
    treevMain_->header()->setStretchLastSection(false);
    treevMain_->installEventFilter(this);
    connect(treevMain_, &QTreeWidget::itemClicked, this, &frmTreeView::treevMain_NodeClick);
    setWidget(treevMain_);
    InitRadioSet();
}

void frmTreeView::InitRadioSetTreeView() {
    guarded("frmTreeView->InitRadioSetTreeView:", [this] {
        setWindowTitle(qSay(texts::treeTitle));
        treevMain_->setAccessibleName(windowTitle());
        treevMain_->clear();
        auto* rootItem = nodeItem(rootNode, rootText());
        treevMain_->addTopLevelItem(rootItem);
        for (const Node& child : childNodes) {
            rootItem->addChild(nodeItem(child, softText(child.text)));
        }
        rootItem->setExpanded(true);
        treevMain_->setCurrentItem(rootItem);
        // Only a column that does not stretch tells what its texts need.
        treevMain_->header()->setSectionResizeMode(QHeaderView::Interactive);
        treevMain_->resizeColumnToContents(0);
        neededWidth_ = treevMain_->columnWidth(0) + 2 * treevMain_->frameWidth();
        treevMain_->header()->setSectionResizeMode(QHeaderView::Stretch);
        treevMain_->setMinimumWidth(std::min(neededWidth_, leastWidth));
    });
}

void frmTreeView::InitRadioSet() {
    InitRadioSetTreeView();
}

void frmTreeView::showCurrent(const QString& key) {
    QTreeWidgetItem* root = treevMain_->topLevelItem(0);
    QTreeWidgetItem* found = root;
    for (int i = 0; i < root->childCount(); ++i) {
        if (root->child(i)->data(0, keyRole).toString() == key) {
            found = root->child(i);
        }
    }
    treevMain_->setCurrentItem(found);
}

bool frmTreeView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == treevMain_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            treevMain_NodeClick(treevMain_->currentItem());
            return true;
        }
    }
    return QDockWidget::eventFilter(watched, event);
}

void frmTreeView::treevMain_NodeClick(const QTreeWidgetItem* node) {
    guarded("frmTreeView->treevMain_NodeClick:", [&] {
        // The root stands for no window.
        if (node != nullptr && node->parent() != nullptr) {
            emit windowWanted(node->data(0, keyRole).toString());
        }
    });
}

}  // namespace k520
