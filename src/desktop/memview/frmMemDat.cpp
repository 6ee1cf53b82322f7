// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/memview/frmMemDat.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include "app/Guard.h"
#include "desktop/memview/frmMemDatChars.h"
#include "desktop/memview/frmMemDatGrid.h"
#include "desktop/memview/frmPartFill.h"
#include "desktop/widgets/CellGridModel.h"
#include "desktop/widgets/icons.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "memview/memDatTexts.h"
#include "memview/modMemDat.h"

namespace k520 {

namespace {

constexpr int firstHeight = 560;
constexpr int tablesGap = 8;
/// What the layout may give to the empty place beside the tables.
constexpr int roundingRoom = 4;
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

struct frmMemDat::Button {
    const char* name;
    Text caption;
    Text tip;
    const char* icon;
    void (*command)(frmMemDat&);
};

frmMemDat::frmMemDat(QWidget* parent)
    : QWidget(parent),
      model_(own<CellGridModel>(
          grid(), CellGridModel::Rules{.mayEdit = mayEdit, .edited = storeByte, .tip = tipOf},
          this)),
      vsfgGridMemDat_(ownNamed<frmMemDatGrid>("vsfgGridMemDat")),
      txtGoTo_(ownNamed<QLineEdit>("txtGoTo")) {
    setObjectName(QStringLiteral("frmMemDat"));
    setWindowTitle(qSay(texts::memDatTitle));
    modMemDat::state().shown = true;
    modMemDat::TableFreDat();
    buildGrid();
    layOut();
    vsfgGridMemDat_->setCurrentIndex(model_->index(0, 0));
    vsfgGridMemDat_->setFocus();
    resize(fullWidth(), firstHeight);
}

frmMemDat::~frmMemDat() {
    modMemDat::state().shown = false;
}

void frmMemDat::layOut() {
    auto* bar = own<QHBoxLayout>();
    addGoTo(*bar);
    bar->addStretch();
    const Button buttons[] = {{"cmdFillGrid", texts::fillGrid, texts::fillGridTip, "refill",
                               [](frmMemDat&) { modMemDat::cmdFillGrid_Click(); }},
                              {"cmdSetDefCol", texts::clearMarks, texts::clearMarksTip,
                               "reset-marks", [](frmMemDat&) { modMemDat::cmdSetDefCol(); }},
                              {"cmdPartFill", texts::partFill, texts::partFillTip, "fill-range",
                               [](frmMemDat& window) { window.cmdPartFill_Click(); }}};
    for (const Button& button : buttons) {
        addButton(*bar, button);
    }
    auto* note = own<QLabel>(qSay(texts::tablesFirst));
    note->setForegroundRole(QPalette::PlaceholderText);
    note->setWordWrap(true);
    auto* tables = own<QHBoxLayout>();
    tables->setSpacing(tablesGap);
    // As wide as they may be before the room beside them grows.
    constexpr int firstOfAll = 1000;
    tables->addWidget(vsfgGridMemDat_, firstOfAll);
    tables->addWidget(characters_);
    tables->addStretch(1);
    auto* layout = own<QVBoxLayout>(this);
    layout->addLayout(bar);
    layout->addWidget(note);
    layout->addLayout(tables, 1);
}

void frmMemDat::buildGrid() {
    const bool built = grid().rows() > 0;
    vsfgGridMemDat_->showModel(*model_, qText(modMemDat::rowTitle(0xFFFF)),
                               built ? qText(grid().text(0, 0)) : QString());
    vsfgGridMemDat_->setAccessibleName(windowTitle());
    characters_ = ownNamed<frmMemDatChars>("characters", *vsfgGridMemDat_);
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

void frmMemDat::addButton(QHBoxLayout& bar, const Button& button) {
    auto* widget = ownNamed<QPushButton>(button.name, icons::line(QLatin1String(button.icon)),
                                         qSay(button.caption));
    widget->setAccessibleName(plainCaption(widget->text()));
    widget->setToolTip(qSay(button.tip));
    widget->setAutoDefault(false);
    connect(widget, &QPushButton::clicked, this, [this, command = button.command] {
        // What a cell shows is what the command works on.
        if (EditTable::commitAll()) {
            command(*this);
        }
    });
    bar.addWidget(widget);
}

void frmMemDat::cmdPartFill_Click() {
    guarded("frmMemDat->cmdPartFill_Click", [this] { frmPartFill(this).exec(); });
}

void frmMemDat::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showCharacters();
}

int frmMemDat::fullWidth() const {
    const QMargins margins = layout()->contentsMargins();
    return margins.left() + vsfgGridMemDat_->fullWidth() + tablesGap +
           characters_->sizeHint().width() + margins.right() + roundingRoom;
}

/// The characters take no room from the bytes; the rightmost table has the scroll bar of both.
void frmMemDat::showCharacters() {
    const int bytes = vsfgGridMemDat_->fullWidth();
    const bool room = width() >= fullWidth();
    characters_->setVisible(room);
    vsfgGridMemDat_->setVerticalScrollBarPolicy(room ? Qt::ScrollBarAlwaysOff
                                                     : Qt::ScrollBarAlwaysOn);
    vsfgGridMemDat_->setMaximumWidth(
        room ? bytes : bytes + vsfgGridMemDat_->verticalScrollBar()->sizeHint().width());
}

/// A text that is not an address of the grid stays there to be corrected.
void frmMemDat::goToAddress() {
    const auto address = modMemDat::parseAddress(stdText(txtGoTo_->text()));
    if (!address || !showAddress(*address)) {
        txtGoTo_->selectAll();
    }
}

bool frmMemDat::showAddress(int address) {
    const QModelIndex index =
        model_->index(address / modMemDat::bytesPerRow, address % modMemDat::bytesPerRow);
    if (!index.isValid()) {
        return false;
    }
    vsfgGridMemDat_->setCurrentIndex(index);
    vsfgGridMemDat_->scrollTo(index, QAbstractItemView::PositionAtCenter);
    vsfgGridMemDat_->setFocus();
    return true;
}

}  // namespace k520
