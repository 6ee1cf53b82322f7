// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/memview/frmMemDatChars.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <utility>

#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "memview/memDatTexts.h"
#include "memview/modMemDat.h"

namespace k520 {

namespace {

/// The model of the bytes with characters instead of digits, and without titles.
class CharacterModel : public QIdentityProxyModel {
  public:
    using QIdentityProxyModel::QIdentityProxyModel;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        QVariant value = QIdentityProxyModel::data(index, role);
        if (role != Qt::DisplayRole) {
            return value;
        }
        const std::string digits = stdText(value.toString());
        return modMemDat::isByteText(digits)
                   ? QVariant(QChar(
                         QLatin1Char(modMemDat::characterOf(modMemDat::SeparateChar(digits)))))
                   : QVariant();
    }
    [[nodiscard]] QVariant headerData(int, Qt::Orientation, int) const override { return {}; }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override {
        return QIdentityProxyModel::flags(index) & ~Qt::ItemIsEditable;
    }
};

/// Draws one letter a cell, without the room that styles keep free beside a text.
class CharacterDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QString letter = std::exchange(cell.text, QString());
        cell.widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        const bool selected = cell.state.testFlag(QStyle::State_Selected);
        painter->setPen(cell.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(cell.rect, Qt::AlignCenter, letter);
    }
};

}  // namespace

frmMemDatChars::frmMemDatChars(QTableView& bytes, QWidget* parent)
    : QTableView(parent), bytes_(bytes) {
    setFont(bytes.font());
    auto* characters = own<CharacterModel>(this);
    characters->setSourceModel(bytes.model());
    setModel(characters);
    setItemDelegate(own<CharacterDelegate>(this));
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setFocusPolicy(Qt::NoFocus);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setAccessibleName(qSay(texts::characters));
    shape();
    follow();
}

void frmMemDatChars::shape() {
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(bytes_.verticalHeader()->defaultSectionSize());
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setFixedHeight(bytes_.horizontalHeader()->sizeHint().height());
    constexpr int gap = 3;
    horizontalHeader()->setDefaultSectionSize(fontMetrics().horizontalAdvance(u'M') + gap);
    auto* title = own<QHBoxLayout>(horizontalHeader());
    title->setContentsMargins(0, 0, 0, 0);
    auto* label = own<QLabel>(qSay(texts::characters));
    label->setAlignment(Qt::AlignCenter);
    // The lines between the columns would look like a fault.
    label->setAutoFillBackground(true);
    title->addWidget(label);
    horizontalHeader()->setToolTip(qSay(texts::charactersTip));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
}

void frmMemDatChars::follow() {
    QScrollBar* here = verticalScrollBar();
    QScrollBar* there = bytes_.verticalScrollBar();
    connect(there, &QScrollBar::valueChanged, here, &QScrollBar::setValue);
    connect(here, &QScrollBar::valueChanged, there, &QScrollBar::setValue);
    const auto pair = [this](QTableView& from, QTableView& to) {
        connect(from.selectionModel(), &QItemSelectionModel::currentChanged, this,
                [&to](const QModelIndex& now) {
                    const QModelIndex same = to.model()->index(now.row(), now.column());
                    if (to.currentIndex() != same) {
                        to.setCurrentIndex(same);
                    }
                });
    };
    pair(bytes_, *this);
    pair(*this, bytes_);
}

QSize frmMemDatChars::sizeHint() const {
    return {
        horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
        QTableView::sizeHint().height()};
}

}  // namespace k520
