// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QAbstractListModel>

#include "base/Controls.h"

namespace k520 {

/// A line list as an item model.
class LineListModel : public QAbstractListModel {
    Q_OBJECT

  public:
    LineListModel(LineList& list, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  signals:
    /// The list has selected a line that was just inserted; a view makes it its current one.
    void lineSelected(const QModelIndex& index);

  private:
    static constexpr int none = -1;

    LineList& list_;
    int rows_;
    int unseen_ = none;  ///< a line that the views do not know of yet
    Subscription inserted_;
    Subscription cleared_;
};

}  // namespace k520
