// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QListView>

class QComboBox;
class QSortFilterProxyModel;

namespace k520 {

/// The entries of a list that contain what is typed into its line, shown below the line. It is a
/// part of the window and not a window of its own: it takes no keys and no clicks but those on
/// itself, so that shortcuts, buttons and other cells work as if it were not there.
class frmChOffers : public QListView {
    Q_OBJECT

  public:
    /// Lives as long as `editor`, in its window.
    explicit frmChOffers(QComboBox& editor);

    /// Shows what contains a text, whatever the case; hides where nothing does or nothing is typed.
    void offer(const QString& typed);
    /// Goes up or down so many offers, from none to the first or the last; returns the one there.
    QString step(int rows);
    /// Puts the list below its line again, or above it where there is more room.
    void follow();

  signals:
    void chosen(const QString& text);

  private:
    QComboBox& editor_;
    QSortFilterProxyModel* matching_;
};

}  // namespace k520
