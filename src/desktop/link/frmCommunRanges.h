// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QGroupBox>
#include <array>

class QLabel;
class QLineEdit;

namespace k520 {

/// The five address fields of the communication dialog. Every keystroke goes to the rules; a text
/// that they do not take is marked, since the address then stays what it was.
class frmCommunRanges : public QGroupBox {
    Q_OBJECT

  public:
    explicit frmCommunRanges(QWidget* parent = nullptr);

    void setCaptions();
    /// Shows the addresses in force; nothing is stored.
    void fill();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Field {
        QLabel* label;
        QLineEdit* edit;
    };

    [[nodiscard]] Field makeField(std::size_t index);
    void typed(std::size_t index, const QString& text);
    static void mark(QLineEdit& edit, const QString& trouble);

    std::array<Field, 5> fields_{};
};

}  // namespace k520
