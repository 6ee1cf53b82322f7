// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChFrequency.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace k520::frmChFrequency {

namespace {

/// A number with all places that a frequency can have stands in the middle of its cell.
const QString& wholeBefore() {
    static const QString text = QStringLiteral("000");
    return text;
}
const QString& wholeNumber() {
    static const QString text = QStringLiteral("000.00000");
    return text;
}

QColor textColour(const QStyleOptionViewItem& option) {
    const auto group = (option.state & QStyle::State_Enabled) == 0  ? QPalette::Disabled
                       : (option.state & QStyle::State_Active) != 0 ? QPalette::Active
                                                                    : QPalette::Inactive;
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    return option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

}  // namespace

int indent(const QString& text, const QFontMetrics& font, int width) {
    const int point =
        (width - font.horizontalAdvance(wholeNumber())) / 2 + font.horizontalAdvance(wholeBefore());
    const int start = point - font.horizontalAdvance(text.section(u'.', 0, 0));
    return start + font.horizontalAdvance(text) <= width ? start : -1;
}

void paint(QPainter& painter, const QStyleOptionViewItem& option) {
    const QWidget* widget = option.widget;
    const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    const int start = indent(option.text, option.fontMetrics, option.rect.width());
    if (start < 0) {
        style->drawControl(QStyle::CE_ItemViewItem, &option, &painter, widget);
        return;
    }
    // Background, selection and focus as in any other cell.
    QStyleOptionViewItem blank = option;
    blank.text.clear();
    style->drawControl(QStyle::CE_ItemViewItem, &blank, &painter, widget);
    painter.save();
    painter.setFont(option.font);
    painter.setPen(textColour(option));
    painter.drawText(option.rect.adjusted(start, 0, 0, 0),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                     option.text);
    painter.restore();
}

}  // namespace k520::frmChFrequency
