// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmToolCom.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <algorithm>
#include <vector>

#include "app/Guard.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/screenRoom.h"
#include "link/port/portTexts.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "link/session/sessionAdvice.h"
#include "link/simulator/virtualPort.h"

namespace k520 {

namespace {

constexpr int usualWidth = 520;
/// Room for the longest of the system's own device names; longer paths give way.
constexpr int deviceChars = 26;
constexpr int buttonChars = 12;
constexpr int gapBelowUsable = 8;

/// What stands beside a port: its own description, and what keeps it from being used.
QString remarkOn(const comPorts::PortInfo& port) {
    if (!port.usable) {
        const QString why = qText(sessionAdvice::portTroubleInShort(port.errorNumber));
        const QString what = qText(port.description);
        return what.isEmpty() ? why : what + QStringLiteral(" – ") + why;
    }
    return port.device == VirtualPort::name ? qSay(texts::simulatedRadio) : qText(port.description);
}

/// All ports in their order, those that can be used first.
std::vector<comPorts::PortInfo> portsToChoose() {
    std::vector<comPorts::PortInfo> ports;
    for (auto number = comPorts::firstPort; number <= comPorts::lastPort; ++number) {
        ports.push_back(comPorts::describe(number));
    }
    std::stable_partition(ports.begin(), ports.end(),
                          [](const comPorts::PortInfo& port) { return port.usable; });
    return ports;
}

QPushButton* buttonOf(const char* name, SoftText text, QWidget* parent) {
    auto* button = ownNamed<QPushButton>(name, parent);
    captionControl(*button, softText(text));
    button->setMinimumWidth(button->fontMetrics().averageCharWidth() * buttonChars);
    return button;
}

/// On a low screen the ports scroll, and the buttons below them stay in sight.
QScrollArea* scrolled(QGridLayout* ports) {
    auto* content = own<QWidget>();
    content->setLayout(ports);
    ports->setContentsMargins(0, 0, 0, 0);
    auto* area = own<QScrollArea>();
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    // The frame's own ground shows through.
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

}  // namespace

frmToolCom::frmToolCom(QWidget* parent)
    : QDialog(parent),
      fraToolCom_(ownNamed<QGroupBox>("fraToolCom", this)),
      COM1_(ownNamed<QButtonGroup>("COM1", this)),
      remembered_(modCommun::state().portNumber) {
    guarded("frmToolCom->Form_Load", [this] { Form_Load(); });
}

void frmToolCom::Form_Load() {
    setWindowTitle(softText(SoftText::portTitle));
    captionControl(*fraToolCom_, softText(SoftText::portFrame));
    auto* grid = own<QGridLayout>();
    layOut(grid);
    bool usable = true;
    for (const comPorts::PortInfo& port : portsToChoose()) {
        if (usable && !port.usable && grid->count() > 0) {
            grid->setRowMinimumHeight(grid->rowCount(), gapBelowUsable);
        }
        usable = port.usable;
        addPort(*grid, port);
    }
    tickPort(remembered_);
    // The dialog is placed by the size that it has before it is shown.
    fraToolCom_->updateGeometry();
    layout()->activate();
    const auto* area = fraToolCom_->findChild<QScrollArea*>();
    const int scrolled = area->widget()->sizeHint().height() - area->sizeHint().height();
    resize(usualWidth,
           std::min(sizeHint().height() + std::max(0, scrolled), roomOnScreen(*this).height()));
}

void frmToolCom::accept() {
    guarded("frmToolCom->cmdOK_Click", [this] {
        if (const int ticked = COM1_->checkedId(); ticked >= comPorts::firstPort) {
            comPorts::storePort(static_cast<std::int16_t>(ticked));
        }
    });
    QDialog::accept();
}

void frmToolCom::reject() {
    comPorts::usePort(remembered_);
    QDialog::reject();
}

/// Only now do all texts have the height that they keep. No port scrolls where the screen has room.
void frmToolCom::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    layout()->activate();
    fraToolCom_->layout()->activate();
    const auto* area = fraToolCom_->findChild<QScrollArea*>();
    const int missing = area->widget()->sizeHint().height() - area->viewport()->height();
    if (missing > 0) {
        resizeOnScreen(*this, {width(), height() + missing});
    }
}

void frmToolCom::layOut(QGridLayout* ports) {
    auto* lblToolCom = ownNamed<QLabel>("lblToolCom", fraToolCom_);
    captionControl(*lblToolCom, softText(SoftText::portLabel));
    ports->setHorizontalSpacing(16);
    ports->setVerticalSpacing(2);
    ports->setColumnStretch(2, 1);
    // The window itself is the frame.
    fraToolCom_->setFlat(true);
    auto* frame = own<QVBoxLayout>(fraToolCom_);
    frame->addWidget(lblToolCom);
    frame->addWidget(scrolled(ports));

    auto* cmdOk = buttonOf("cmdOk", SoftText::portOk, this);
    cmdOk->setDefault(true);
    auto* cmdCancel = buttonOf("cmdCancel", SoftText::portCancel, this);
    connect(cmdOk, &QPushButton::clicked, this, &frmToolCom::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &frmToolCom::reject);
    auto* buttons = own<QHBoxLayout>();
    buttons->addStretch(1);
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);

    auto* column = own<QVBoxLayout>(this);
    column->addWidget(fraToolCom_, 1);
    column->addLayout(buttons);
}

void frmToolCom::addPort(QGridLayout& ports, const comPorts::PortInfo& port) {
    const int row = ports.rowCount();
    auto* button = own<QRadioButton>(qText(port.name), fraToolCom_);
    button->setObjectName(QStringLiteral("COM1_%1").arg(port.number - comPorts::firstPort));
    button->setEnabled(port.usable);
    button->setAccessibleDescription(qText(port.device) + u' ' + remarkOn(port));
    COM1_->addButton(button, port.number);
    ports.addWidget(button, row, 0);

    int column = 1;
    for (const QString& text : {qText(port.device), remarkOn(port)}) {
        auto* label = own<ElidedLabel>(fraToolCom_);
        label->setText(text);
        label->setEnabled(port.usable);
        label->setToolTip(port.usable ? text : qText(port.reason));
        if (column == 1) {
            label->setMaximumWidth(label->fontMetrics().averageCharWidth() * deviceChars);
        }
        ports.addWidget(label, row, column++);
    }
    button->setToolTip(qText(port.reason));
}

/// Ticks a port, which may be one that cannot be used now, and gives the focus to one that can.
void frmToolCom::tickPort(int number) {
    QAbstractButton* ticked = COM1_->button(number);
    if (ticked != nullptr) {
        ticked->setChecked(true);
    }
    const auto buttons = COM1_->buttons();
    const auto firstUsable =
        std::ranges::find_if(buttons, [](const auto* button) { return button->isEnabled(); });
    if (ticked != nullptr && ticked->isEnabled()) {
        ticked->setFocus();
    } else if (firstUsable != buttons.end()) {
        // The group leads the tab key to the ticked button alone.
        (*firstUsable)->setFocusPolicy(Qt::StrongFocus);
        (*firstUsable)->setFocus();
    }
}

}  // namespace k520
