// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QListView>

class QTimer;

namespace k520 {

/// The data list `listRtData`. It follows its newest line, and copies selected lines. Lines come a
/// hundred times a second: shown one by one they would cost more than the rest of a session, so
/// they are shown a few times a second, many at once.
class frmCommunList : public QListView {
    Q_OBJECT

  public:
    explicit frmCommunList(QWidget* parent = nullptr);

    /// Shows what has come until now.
    void showNow();

  protected:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

  private:
    void copyLines() const;

    static constexpr int none = -1;

    QTimer* wait_;
    int newest_ = none;
};

}  // namespace k520
