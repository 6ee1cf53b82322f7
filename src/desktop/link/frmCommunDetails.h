// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QScrollArea>

class QCheckBox;
class QLabel;

namespace k520 {

class frmCommunList;
class frmCommunRanges;

/// What few users of the communication dialog need: the data list, the address ranges, and the box
/// that shows the memory data. It scrolls where a small screen has no room for it.
class frmCommunDetails : public QScrollArea {
    Q_OBJECT

  public:
    explicit frmCommunDetails(QWidget* parent = nullptr);

    void setCaptions();
    [[nodiscard]] frmCommunList& list() const { return *listRtData_; }
    [[nodiscard]] frmCommunRanges& ranges() const { return *ranges_; }
    [[nodiscard]] bool showMemDatTicked() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  private:
    QLabel* lblRtData_;
    frmCommunList* listRtData_;
    frmCommunRanges* ranges_;
    QCheckBox* chkShowMemDat_;
};

}  // namespace k520
