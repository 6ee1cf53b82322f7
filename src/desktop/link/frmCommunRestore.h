// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>
#include <filesystem>
#include <optional>

#include "link/session/restoreList.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace k520 {

/// The choice of a backup that is to be put back into the radio, the newest first.
class frmCommunRestore : public QDialog {
    Q_OBJECT

  public:
    /// `due` is the backup to begin with, where there is one.
    explicit frmCommunRestore(std::filesystem::path due, QWidget* parent = nullptr);

    /// The backup of the selected row; nothing for an empty list.
    [[nodiscard]] std::optional<std::filesystem::path> chosen() const;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void layOut();
    void fill();
    void showChoice();
    void forget();
    [[nodiscard]] const restoreList::Row* selected() const;

    std::filesystem::path due_;
    restoreList::Rows rows_;
    QTreeWidget* lstBackups_;
    QLabel* lblCompared_;
    QPushButton* cmdForget_;
    QPushButton* cmdRestoreThis_;
    QPushButton* cmdCancel_;
};

}  // namespace k520
