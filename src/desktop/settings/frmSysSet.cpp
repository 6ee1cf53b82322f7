// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/settings/frmSysSet.h"

#include <QHBoxLayout>

#include "app/modSoftFace.h"
#include "desktop/settings/frmOptPanel.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

/// In a wider window an entry would stand too far from its caption.
constexpr int greatestWidth = 960;

}  // namespace

frmSysSet::frmSysSet(QWidget* parent) : QWidget(parent), panel_(own<frmOptPanel>()) {
    setObjectName(QStringLiteral("frmSysSet"));
    setWindowTitle(softText(SoftText::options));
    panel_->setMaximumWidth(greatestWidth);
    auto* layout = own<QHBoxLayout>(this);
    layout->addStretch();
    // The panel takes all there is up to its greatest width.
    layout->addWidget(panel_, 1000);
    layout->addStretch();
    setFocusProxy(panel_);
}

}  // namespace k520
