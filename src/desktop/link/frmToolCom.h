// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>
#include <cstdint>

class QButtonGroup;
class QGroupBox;
class QGridLayout;

namespace k520 {

namespace comPorts {
struct PortInfo;
}

/// The port dialog: sixteen option buttons `COM1`, those that can be opened first, the others
/// disabled, each with its device, what that says of itself and why it cannot be used. OK stores
/// the ticked port number, Cancel restores the one in force when the dialog was made.
class frmToolCom : public QDialog {
    Q_OBJECT

  public:
    /// Probes all sixteen ports.
    explicit frmToolCom(QWidget* parent = nullptr);

    void accept() override;
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Form_Load();
    void layOut(QGridLayout* ports);
    void addPort(QGridLayout& ports, const comPorts::PortInfo& port);
    void tickPort(int number);

    QGroupBox* fraToolCom_;
    QButtonGroup* COM1_;
    /// For Cancel.
    std::int16_t remembered_;
};

}  // namespace k520
