// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/frmStatusPanels.h"

#include <fmt/format.h>

#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include "app/ownTexts.h"
#include "base/Clock.h"
#include "channels/modChEdit.h"
#include "desktop/widgets/ElidedLabel.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "link/protocol/modCommun.h"
#include "program/modFileCmd.h"

namespace k520 {

namespace {

constexpr int refreshMs = 1000;

/// A panel's value, with what it means in tip and accessible name.
void showPanel(QLabel& panel, SoftText meaning, const QString& value) {
    panel.setText(value);
    panel.setToolTip(QStringLiteral("%1: %2").arg(softText(meaning), value));
    panel.setAccessibleName(panel.toolTip());
}

}  // namespace

frmStatusPanels::frmStatusPanels(QWidget* parent)
    : QStatusBar(parent),
      status_(ownNamed<ElidedLabel>("panStatus", this)),
      port_(ownNamed<QLabel>("panPort", this)),
      origin_(ownNamed<QLabel>("panOrigin", this)),
      file_(ownNamed<ElidedLabel>("panFile", this)),
      time_(ownNamed<QLabel>("panTime", this)),
      failures_(ownNamed<QToolButton>("cmdFailures", this)) {
    constexpr int wide = 1;
    addWidget(status_);
    addWidget(port_);
    addWidget(origin_);
    addWidget(file_, wide);
    addPermanentWidget(failures_);
    addPermanentWidget(time_);
    failures_->setAutoRaise(true);
    failures_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    failures_->setIcon(icons::line(QStringLiteral("error-list")));
    failures_->hide();
    QFont bold = origin_->font();
    bold.setBold(true);
    origin_->setFont(bold);
    connect(failures_, &QToolButton::clicked, this, &frmStatusPanels::errorListWanted);
    auto* tick = own<QTimer>(this);
    connect(tick, &QTimer::timeout, this, &frmStatusPanels::showTime);
    tick->start(refreshMs);
    showTime();
}

void frmStatusPanels::SetSoftFace() {
    failures_->setToolTip(qSay(texts::errorListTitle));
    failures_->setAccessibleName(qSay(texts::errorListTitle));
    refresh();
}

void frmStatusPanels::refresh() {
    const std::string ofFile = modFileCmd::shownRemark();
    const QString remark = qText(ofFile.empty() ? modChEdit::shownRemark() : ofFile);
    const QString state =
        softText(modChEdit::locked() ? SoftText::interfaceLocked : SoftText::ready);
    showPanel(*status_, SoftText::statusPanel,
              QStringLiteral("%1  %2").arg(state, remark).trimmed());
    showPanel(*port_, SoftText::portPanel,
              QStringLiteral("COM%1").arg(modCommun::state().portNumber));
    showPanel(*file_, SoftText::filePanel, qPath(modFileCmd::state().filePanel));
    const QString origin = qText(modFileCmd::shownOrigin());
    origin_->setText(origin);
    origin_->setToolTip(origin.isEmpty() ? QString() : qSay(texts::readNotSavedTip));
    origin_->setVisible(!origin.isEmpty());
}

void frmStatusPanels::setFailures(int count) {
    failures_->setText(QString::number(count));
    failures_->setVisible(count > 0);
}

void frmStatusPanels::showTime() {
    const DateTime now = theClock().dateTime();
    showPanel(*time_, SoftText::timePanel,
              qText(fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", now.year, now.month, now.day,
                                now.hour, now.minute, now.second)));
}

}  // namespace k520
