// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/frmTreeView.h"

#include <gmock/gmock.h>

#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "app/RuntimeError.h"
#include "desktop/Desktop.h"

namespace k520::test {
namespace {

using testing::ElementsAre;

using TreeView = Desktop;

TEST_F(TreeView, HasItsNodesInEveryLanguage) {
    for (const auto& [language, texts] :
         {std::pair(1, "Norvik-K520|本机信息|信道信息|整机设置|"),
          {2, "||||"},
          {3, "ZEV-K520|Radio Info|Channel Info|Optional Features|"}}) {
        forget();
        start(language);
        frmTreeView window;
        window.InitRadioSet();
        auto& tree = find<QTreeWidget>(window, "treevMain");
        EXPECT_EQ(tree.topLevelItemCount(), 1);
        std::string all;
        for (QTreeWidgetItemIterator node(&tree); *node; ++node) {
            all += stdText((*node)->text(0)) + "|";
            EXPECT_FALSE((*node)->data(0, Qt::AccessibleTextRole).toString().isEmpty());
        }
        EXPECT_EQ(all, texts);
    }
}

TEST_F(TreeView, AClickOrReturnOnAChildAsksForItsWindow) {
    start();
    frmTreeView window;
    window.resize(240, 240);
    window.show();
    std::vector<std::string> wanted;
    QObject::connect(&window, &frmTreeView::windowWanted,
                     [&](const QString& key) { wanted.push_back(stdText(key)); });
    auto& tree = find<QTreeWidget>(window, "treevMain");
    QTreeWidgetItem* root = tree.topLevelItem(0);
    for (auto* item : {root->child(2), root->child(0), root}) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(item).center());
    }
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return, Qt::Key_Down, Qt::Key_Enter}) {
        QTest::keyClick(&tree, key);
    }
    EXPECT_THAT(wanted, ElementsAre("SysSet", "RadioInfo", "RadioInfo", "ChInfo"));
    QObject::connect(&window, &frmTreeView::windowWanted,
                     [] { throw RuntimeError(errNum::subscript, "window"); });
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_THAT(failures(), ElementsAre("frmTreeView->treevMain_NodeClick: 9 window"));
}

}  // namespace
}  // namespace k520::test
