// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QHeaderView>

namespace k520 {

/// The columns' titles above the channel grid. Where it is narrow, the words of a title go below
/// each other.
class TitleHeader : public QHeaderView {
    Q_OBJECT

  public:
    explicit TitleHeader(QWidget* parent);

    /// Pixels that the widest word of a title needs.
    [[nodiscard]] int widestWord(int section) const;
    /// Whether any title needs more than one line, with `margin` pixels on either side.
    [[nodiscard]] bool wraps(int margin) const;

  protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;

  private:
    [[nodiscard]] QString titleOf(int section) const;
    [[nodiscard]] int widthOf(const QString& text) const;
};

}  // namespace k520
