// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/frmTreeView.h"

#include <gmock/gmock.h>

#include <QTreeWidget>

#include "app/RuntimeError.h"
#include "desktop/Desktop.h"
#include "desktop/qtText.h"

namespace k520::test {
namespace {

using testing::ElementsAre;

class TreeView : public Desktop {
  protected:
    static std::vector<std::string> nodes(const QTreeWidget& tree, int role) {
        const QTreeWidgetItem* root = tree.topLevelItem(0);
        std::vector<std::string> all{stdText(root->data(0, role).toString())};
        for (int i = 0; i < root->childCount(); ++i) {
            all.push_back(stdText(root->child(i)->data(0, role).toString()));
        }
        return all;
    }
};

TEST_F(TreeView, HasItsNodesInEveryLanguage) {
    const std::vector<std::pair<int, std::vector<std::string>>> languages{
        {1, {"Norvik-K520", "本机信息", "信道信息", "整机设置"}},
        {2, {"", "", "", ""}},
        {3, {"ZEV-K520", "Radio Info", "Channel Info", "Optional Features"}},
    };
    for (const auto& [language, texts] : languages) {
        SCOPED_TRACE(language);
        forget();
        start(language);
        frmTreeView window;
        window.InitRadioSet();
        const auto& tree = find<QTreeWidget>(window, "treevMain");
        EXPECT_EQ(tree.topLevelItemCount(), 1);
        EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
        EXPECT_EQ(nodes(tree, Qt::DisplayRole), texts);
        EXPECT_THAT(nodes(tree, Qt::UserRole),
                    ElementsAre("Radio", "RadioInfo", "ChInfo", "SysSet"));
        EXPECT_THAT(nodes(tree, Qt::AccessibleTextRole), testing::Each(testing::Ne("")));
        EXPECT_FALSE(tree.topLevelItem(0)->icon(0).isNull());
        EXPECT_FALSE(window.windowTitle().isEmpty());
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
