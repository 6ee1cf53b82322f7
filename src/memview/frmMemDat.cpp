// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "memview/frmMemDat.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "desktop/CellGridModel.h"
#include "desktop/icons.h"
#include "desktop/owned.h"
#include "desktop/qtText.h"
#include "memview/frmMemDatGrid.h"
#include "memview/memDatTexts.h"
#include "memview/modMemDat.h"

namespace k520 {

namespace {

constexpr int firstHeight = 560;
/// Four digits and the "H" that the row titles carry.
constexpr int addressLength = 5;

CellGrid& grid() {
    return modMemDat::state().vsfgGridMemDat;
}

bool mayEdit(int row, int column) {
    return grid().cell(row, column).editMode == EditMode::keyboard;
}

bool storeByte(int row, int column, const QString& text) {
    return modMemDat::typeByte(row, column, stdText(text));
}

QString tipOf(int row, int column) {
    return qText(modMemDat::CellTipHint(row, column)).trimmed();
}

}  // namespace

frmMemDat::frmMemDat(QWidget* parent)
    : QWidget(parent),
      model_(own<CellGridModel>(
          grid(), CellGridModel::Rules{.mayEdit = mayEdit, .edited = storeByte, .tip = tipOf},
          this)),
      vsfgGridMemDat_(ownNamed<frmMemDatGrid>("vsfgGridMemDat")),
      txtGoTo_(ownNamed<QLineEdit>("txtGoTo")) {
    setObjectName(QStringLiteral("frmMemDat"));
    setWindowTitle(qSay(texts::memDatTitle));
    modMemDat::TableFreDat();
    buildGrid();
    auto* bar = own<QHBoxLayout>();
    addGoTo(*bar);
    bar->addStretch();
    addButton(*bar, "cmdFillGrid", texts::fillGrid, QStringLiteral("refill"),
              modMemDat::cmdFillGrid_Click);
    addButton(*bar, "cmdSetDefCol", texts::clearMarks, QStringLiteral("reset-marks"),
              modMemDat::cmdSetDefCol);
    auto* layout = own<QVBoxLayout>(this);
    layout->addLayout(bar);
    auto* note = own<QLabel>(qSay(texts::tablesFirst));
    note->setForegroundRole(QPalette::PlaceholderText);
    layout->addWidget(note);
    layout->addWidget(vsfgGridMemDat_);
    vsfgGridMemDat_->setFocus();
    resize(minimumSizeHint().width(), firstHeight);
}

void frmMemDat::buildGrid() {
    const bool built = grid().rows() > 0;
    vsfgGridMemDat_->showModel(*model_, qText(modMemDat::rowTitle(0xFFFF)),
                               built ? qText(grid().text(0, 0)) : QString());
    vsfgGridMemDat_->setAccessibleName(windowTitle());
}

void frmMemDat::addGoTo(QHBoxLayout& bar) {
    auto* label = own<QLabel>(qSay(texts::goToAddress));
    label->setBuddy(txtGoTo_);
    txtGoTo_->setMaxLength(addressLength);
    txtGoTo_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("W")) *
                            (addressLength + 1));
    txtGoTo_->setAccessibleName(plainCaption(label->text()));
    txtGoTo_->setToolTip(qSay(texts::goToTip));
    connect(txtGoTo_, &QLineEdit::returnPressed, this, &frmMemDat::goToAddress);
    bar.addWidget(label);
    bar.addWidget(txtGoTo_);
}

void frmMemDat::addButton(QHBoxLayout& bar, const char* name, Text caption, const QString& icon,
                          void (*command)()) {
    auto* button = ownNamed<QPushButton>(name, icons::line(icon), qSay(caption));
    button->setAccessibleName(plainCaption(button->text()));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [command] { command(); });
    bar.addWidget(button);
}

/// An address that is none, or is not in the grid, stays there to be mended.
void frmMemDat::goToAddress() {
    QString text = txtGoTo_->text().trimmed().toUpper();
    if (text.endsWith(u'H')) {
        text.chop(1);
    }
    bool isNumber = false;
    const int address = text.toInt(&isNumber, 16);
    const QModelIndex index =
        model_->index(address / modMemDat::bytesPerRow, address % modMemDat::bytesPerRow);
    if (!isNumber || !index.isValid()) {
        txtGoTo_->selectAll();
        return;
    }
    vsfgGridMemDat_->setCurrentIndex(index);
    vsfgGridMemDat_->scrollTo(index, QAbstractItemView::PositionAtCenter);
    vsfgGridMemDat_->setFocus();
}

}  // namespace k520
