// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunRanges.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "desktop/link/communTexts.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "image/modIicDat.h"
#include "link/session/modSession.h"

namespace k520 {

namespace {

/// In the order of modSession::AddressField; `row` and `column` are places for pairs of label and
/// field.
struct FieldRow {
    const char* name;
    Text caption;
    std::int16_t (*address)();
    int row;
    int column;
};

constexpr std::array<FieldRow, 5> fieldRows{{
    {"txtMaxAddr", texts::maxAddress, [] { return modIicDat::state().TableMaxAddr; }, 0, 2},
    {"txtReadStartAddr", texts::readFrom, [] { return modIicDat::state().readRange.start; }, 0, 0},
    {"txtReadEndAddr", texts::readTo, [] { return modIicDat::state().readRange.end; }, 0, 1},
    {"txtWriteStartAddr", texts::writeFrom, [] { return modIicDat::state().writeRange.start; }, 1,
     0},
    {"txtWriteEndAddr", texts::writeTo, [] { return modIicDat::state().writeRange.end; }, 1, 1},
}};

}  // namespace

frmCommunRanges::frmCommunRanges(QWidget* parent) : QGroupBox(parent) {
    auto* grid = own<QGridLayout>(this);
    grid->setHorizontalSpacing(10);
    for (std::size_t i = 0; i < fieldRows.size(); ++i) {
        fields_[i] = makeField(i);
        const FieldRow& row = fieldRows[i];
        grid->addWidget(fields_[i].label, row.row, row.column * 2);
        grid->addWidget(fields_[i].edit, row.row, row.column * 2 + 1);
    }
    constexpr int columns = 6;
    grid->setColumnStretch(columns, 1);
    // From left to right and from top to bottom, the limit last.
    for (std::size_t i = 1; i + 1 < fields_.size(); ++i) {
        setTabOrder(fields_[i].edit, fields_[i + 1].edit);
    }
    setTabOrder(fields_.back().edit, fields_.front().edit);
    setCaptions();
    fill();
}

void frmCommunRanges::setCaptions() {
    captionControl(*this, qSay(texts::addressRanges));
    for (std::size_t i = 0; i < fieldRows.size(); ++i) {
        const QString caption = qSay(fieldRows[i].caption);
        fields_[i].label->setText(caption);
        nameControl(*fields_[i].edit, caption);
    }
}

void frmCommunRanges::fill() {
    for (std::size_t i = 0; i < fieldRows.size(); ++i) {
        const QSignalBlocker nothingTyped(fields_[i].edit);
        const auto address = static_cast<std::uint16_t>(fieldRows[i].address());
        fields_[i].edit->setText(qText(hexText(address, 4)));
        mark(*fields_[i].edit, {});
    }
}

frmCommunRanges::Field frmCommunRanges::makeField(std::size_t index) {
    auto* label = own<QLabel>(this);
    auto* edit = ownNamed<QLineEdit>(fieldRows[index].name, this);
    label->setBuddy(edit);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("DDDDDDDD")));
    // Return ends the typing: it must not press the dialog's start button.
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::textChanged, this,
            [this, index](const QString& text) { typed(index, text); });
    return {label, edit};
}

bool frmCommunRanges::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        return key == Qt::Key_Return || key == Qt::Key_Enter;
    }
    return QGroupBox::eventFilter(watched, event);
}

void frmCommunRanges::typed(std::size_t index, const QString& text) {
    const auto field = static_cast<modSession::AddressField>(index);
    const bool taken = modSession::addressFieldChanged(field, stdText(text));
    const auto address = static_cast<std::uint16_t>(fieldRows[index].address());
    mark(*fields_[index].edit, taken ? QString() : qText(say(texts::badAddressTip, address)));
}

/// Marks a field whose text is not an address, or takes the mark away where the text is one.
void frmCommunRanges::mark(QLineEdit& edit, const QString& trouble) {
    QPalette palette;
    if (!trouble.isEmpty()) {
        palette.setColor(QPalette::Base, QColor(255, 205, 205));
        palette.setColor(QPalette::Text, Qt::black);
    }
    edit.setPalette(palette);
    edit.setToolTip(trouble);
    edit.setAccessibleDescription(trouble);
}

}  // namespace k520
