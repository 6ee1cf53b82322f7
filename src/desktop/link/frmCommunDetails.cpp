// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunDetails.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "desktop/link/communTexts.h"
#include "desktop/link/frmCommunList.h"
#include "desktop/link/frmCommunRanges.h"
#include "desktop/widgets/LineListModel.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "link/protocol/modCommun.h"

namespace k520 {

namespace {

constexpr int usualLines = 12;
constexpr int leastLines = 4;
constexpr int leastHeight = 64;

}  // namespace

frmCommunDetails::frmCommunDetails(QWidget* parent)
    : QScrollArea(parent),
      lblRtData_(own<QLabel>()),
      listRtData_(ownNamed<frmCommunList>("listRtData")),
      ranges_(ownNamed<frmCommunRanges>("fraRanges")),
      chkShowMemDat_(ownNamed<QCheckBox>("chkShowMemDat")) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    listRtData_->setModel(own<LineListModel>(modCommun::state().listRtData, this));
    listRtData_->setMinimumHeight(listRtData_->fontMetrics().lineSpacing() * leastLines);
    lblRtData_->setBuddy(listRtData_);
    auto* body = own<QWidget>();
    auto* column = own<QVBoxLayout>(body);
    column->setContentsMargins({});
    column->addWidget(lblRtData_);
    column->addWidget(listRtData_, 1);
    column->addWidget(ranges_);
    column->addWidget(chkShowMemDat_);
    setWidget(body);
}

void frmCommunDetails::setCaptions() {
    lblRtData_->setText(qSay(texts::dataList));
    nameControl(*listRtData_, qSay(texts::dataList));
    captionControl(*chkShowMemDat_, qSay(texts::showMemDat));
    ranges_->setCaptions();
}

bool frmCommunDetails::showMemDatTicked() const {
    return chkShowMemDat_->isChecked();
}

QSize frmCommunDetails::sizeHint() const {
    const int more = listRtData_->fontMetrics().lineSpacing() * (usualLines - leastLines);
    return widget()->minimumSizeHint() + QSize(0, more);
}

QSize frmCommunDetails::minimumSizeHint() const {
    return {widget()->minimumSizeHint().width(), leastHeight};
}

}  // namespace k520
