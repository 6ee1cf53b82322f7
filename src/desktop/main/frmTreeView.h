// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDockWidget>

class QTreeWidget;
class QTreeWidgetItem;

namespace k520 {

/// The docked navigation tree `treevMain`: the root "Radio" and the nodes "RadioInfo", "ChInfo" and
/// "SysSet", which stand for the three windows of the radio's data.
class frmTreeView : public QDockWidget {
    Q_OBJECT

  public:
    explicit frmTreeView(QWidget* parent = nullptr);

    /// Builds the tree anew with the interface texts and expands its root.
    void InitRadioSetTreeView();
    /// How wide it has to be for its texts to be seen whole.
    [[nodiscard]] int neededWidth() const noexcept { return neededWidth_; }
    /// Calls InitRadioSetTreeView.
    void InitRadioSet();
    /// Marks the node whose window is in front; the root for a window without a node.
    void showCurrent(const QString& key);

  signals:
    /// A click on a node that stands for a window, or Return on it; `key` as above.
    void windowWanted(const QString& key);

  protected:
    /// Return on a node is a click on it.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void treevMain_NodeClick(const QTreeWidgetItem* node);

    QTreeWidget* treevMain_;
    int neededWidth_ = 0;
};

}  // namespace k520
