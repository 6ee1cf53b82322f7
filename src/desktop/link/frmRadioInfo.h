// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>
#include <array>

class QGroupBox;
class QLabel;
class QLineEdit;

namespace k520 {

/// The radio information: model, band, software version and the time of the last write, all
/// read-only, from the core's state. A click on `lblDebug`, a label without visible text, switches
/// the debug flag.
class frmRadioInfo : public QWidget {
    Q_OBJECT

  public:
    explicit frmRadioInfo(QWidget* parent = nullptr);

    /// Captions from the interface texts.
    void InitOpt();
    /// Shows the fields as the image has them now.
    void refresh();

  signals:
    /// A double click on `fraMain` while the debug flag is true.
    void memDatWanted();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Field {
        QLabel* label;
        QLineEdit* edit;
    };

    void layOut();
    [[nodiscard]] bool debugEvent(const QEvent& event);

    QGroupBox* fraMain_;
    QLabel* lblDebug_;
    std::array<Field, 4> fields_{};
};

}  // namespace k520
