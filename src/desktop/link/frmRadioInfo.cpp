// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmRadioInfo.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "app/modSoftFace.h"
#include "channels/modModel.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "link/protocol/modCommun.h"
#include "link/session/radioInfo.h"

namespace k520 {

namespace {

constexpr int widest = 560;
constexpr int debugSide = 16;

struct FieldRow {
    const char* label;
    const char* edit;
    SoftText caption;
    QString (*content)();
};

constexpr std::array<FieldRow, 4> fieldRows{{
    {"lblModel", "txtModel", SoftText::radioModel, [] { return softText(SoftText::model); }},
    {"lblRange", "txtRange", SoftText::radioBand,
     [] {
         const auto& band = modModel::state();
         return qText(radioInfo::bandText(band.bandLow, band.bandHigh));
     }},
    // The radio does not tell its version.
    {"lblSoftVer", "txtSoftVer", SoftText::radioVersion, [] { return QString(); }},
    {"lblLastPc", "txtLastPc", SoftText::radioLastWrite,
     [] { return qText(radioInfo::lastWriteText()); }},
}};

bool isLeftButton(const QEvent& event) {
    return static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
}

}  // namespace

frmRadioInfo::frmRadioInfo(QWidget* parent)
    : QWidget(parent),
      fraMain_(ownNamed<QGroupBox>("fraMain", this)),
      lblDebug_(ownNamed<QLabel>("lblDebug", fraMain_)) {
    layOut();
    fraMain_->installEventFilter(this);
    lblDebug_->installEventFilter(this);
    InitOpt();
}

void frmRadioInfo::InitOpt() {
    setWindowTitle(softText(SoftText::treeRoot));
    // The window's own caption is empty in every language.
    nameControl(*this, softText(SoftText::radioFrame));
    captionControl(*fraMain_, softText(SoftText::radioFrame));
    for (std::size_t i = 0; i < fieldRows.size(); ++i) {
        const QString caption = softText(fieldRows[i].caption);
        captionControl(*fields_[i].label, caption);
        nameControl(*fields_[i].edit, caption);
    }
    nameControl(*lblDebug_, {});
    refresh();
}

void frmRadioInfo::refresh() {
    for (std::size_t i = 0; i < fieldRows.size(); ++i) {
        fields_[i].edit->setText(fieldRows[i].content());
        // A text wider than its field shows its start.
        fields_[i].edit->setCursorPosition(0);
    }
}

bool frmRadioInfo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lblDebug_ && debugEvent(*event)) {
        return true;
    }
    if (watched == fraMain_ && event->type() == QEvent::MouseButtonDblClick) {
        if (isLeftButton(*event) && radioInfo::state().debugFlag == modCommun::flagTrue) {
            emit memDatWanted();
        }
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void frmRadioInfo::layOut() {
    auto* grid = own<QGridLayout>(fraMain_);
    int row = 0;
    for (const FieldRow& field : fieldRows) {
        auto* label = ownNamed<QLabel>(field.label, fraMain_);
        auto* edit = ownNamed<QLineEdit>(field.edit, fraMain_);
        edit->setReadOnly(true);
        label->setBuddy(edit);
        grid->addWidget(label, row, 0);
        grid->addWidget(edit, row, 1);
        fields_[static_cast<std::size_t>(row)] = {label, edit};
        ++row;
    }
    lblDebug_->setFixedSize(debugSide, debugSide);
    grid->addWidget(lblDebug_, row, 1, Qt::AlignRight | Qt::AlignBottom);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    fraMain_->setMaximumWidth(widest);

    // As wide as it may be before the room beside it grows.
    constexpr int firstOfAll = 100;
    auto* line = own<QHBoxLayout>();
    line->addStretch(1);
    line->addWidget(fraMain_, firstOfAll);
    line->addStretch(1);
    // The eye looks for it a little above the middle.
    auto* column = own<QVBoxLayout>(this);
    column->addStretch(1);
    column->addLayout(line);
    column->addStretch(2);
}

/// A click counts when the button goes up, the second one of a double click too. None of it
/// reaches the frame, which would take a double click for its own.
bool frmRadioInfo::debugEvent(const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonRelease:
            if (isLeftButton(event)) {
                radioInfo::lblDebug_Click();
            }
            return true;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return true;
        default:
            return false;
    }
}

}  // namespace k520
