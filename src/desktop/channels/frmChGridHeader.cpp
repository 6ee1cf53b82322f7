// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/channels/frmChGridHeader.h"

#include <QStyleOptionHeader>
#include <algorithm>

namespace k520 {

TitleHeader::TitleHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
}

int TitleHeader::widestWord(int section) const {
    int widest = 0;
    for (const QString& word : titleOf(section).split(u' ')) {
        widest = std::max(widest, widthOf(word));
    }
    return widest;
}

bool TitleHeader::wraps(int margin) const {
    bool any = false;
    for (int i = 0; i < count(); ++i) {
        any = any || widthOf(titleOf(i)) + 2 * margin > sectionSize(i);
    }
    return any;
}

void TitleHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    option->textAlignment |= Qt::Alignment(static_cast<int>(Qt::TextWordWrap));
}

QString TitleHeader::titleOf(int section) const {
    return model()->headerData(section, Qt::Horizontal).toString();
}

int TitleHeader::widthOf(const QString& text) const {
    // The current column's title is bold.
    QFont bold = font();
    bold.setBold(true);
    return QFontMetrics(bold).horizontalAdvance(text);
}

}  // namespace k520
