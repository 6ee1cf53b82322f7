// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/settings/frmOptPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <functional>

#include "base/Checked.h"
#include "desktop/widgets/SteadyComboBox.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "settings/optionPanel.h"

namespace k520 {

namespace {

using optionTable::Option;

/// The shortest text, in letters, that a list in a narrow panel still shows whole.
constexpr int leastEntryLength = 9;
constexpr int gap = 6;
constexpr int gapAboveHeading = 10;
constexpr int gapBetweenColumns = 32;
/// A caption and its control.
constexpr int cellsOfOption = 2;
/// Below all rows: it takes the height that is left.
constexpr int lastRow = 100;

QLabel* headingLabel() {
    auto* label = own<QLabel>();
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

/// The texts of a list's entries as the control holds them.
QStringList shownItems(const QComboBox& list) {
    QStringList items;
    for (int i = 0; i < list.count(); ++i) {
        items.append(list.itemText(i));
    }
    return items;
}

void showItems(QComboBox& list, const std::vector<std::string>& texts) {
    QStringList items;
    for (const std::string& text : texts) {
        items.append(qText(text));
    }
    // A list that is right already stays as it is: it may be open.
    if (items != shownItems(list)) {
        list.clear();
        list.addItems(items);
    }
}

void explain(QWidget& widget, const Option& option) {
    widget.setToolTip(qText(optionTable::tipText(option)));
    widget.setAccessibleDescription(widget.toolTip());
}

QString controlName(const Option& option) {
    return qText(option.control);
}

}  // namespace

/// A scroll area that is as wide as one column of options, and scrolls downwards only.
class frmOptPanel::ColumnScrollArea : public QScrollArea {
  public:
    /// The widths that one column needs at least, and would like to have.
    int least = 0;
    int preferred = 0;
    /// Called after its size has changed.
    std::function<void()> resized;

    [[nodiscard]] QSize minimumSizeHint() const override {
        return {widthFor(least), QScrollArea::minimumSizeHint().height()};
    }
    [[nodiscard]] QSize sizeHint() const override {
        return {widthFor(preferred), widget()->sizeHint().height()};
    }
    /// Whether two columns of options can be seen whole.
    [[nodiscard]] bool hasRoomForTwo() const {
        return width() >= widthFor(2 * preferred + gapBetweenColumns);
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        if (resized) {
            resized();
        }
    }

  private:
    [[nodiscard]] int widthFor(int content) const {
        return content + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    }
};

frmOptPanel::frmOptPanel(QWidget* parent)
    : QWidget(parent),
      fraOption_(ownNamed<QGroupBox>("fraOption")),
      scroll_(own<ColumnScrollArea>()) {
    setObjectName(QStringLiteral("frmOptPanel"));
    buildFrame();
    setFocusProxy(rows_.front().list);
    showState();
}

void frmOptPanel::buildFrame() {
    auto* content = own<QWidget>();
    grid_ = own<QGridLayout>(content);
    grid_->setSpacing(gap);
    grid_->setContentsMargins(0, 0, gap, 0);
    grid_->setRowStretch(lastRow, 1);
    for (int group = 0; group < optionTable::groupCount; ++group) {
        addGroup(static_cast<optionTable::Group>(group));
    }
    arrange(1);

    scroll_->resized = [this] { followWidth(); };
    scroll_->setWidget(content);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The frame's own ground shows through.
    scroll_->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);

    auto* inFrame = own<QVBoxLayout>(fraOption_);
    inFrame->setContentsMargins(gap, gap, 0, gap);
    inFrame->addWidget(scroll_);
    auto* whole = own<QVBoxLayout>(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(fraOption_);
}

void frmOptPanel::addGroup(optionTable::Group group) {
    headings_.push_back(headingLabel());
    for (const Option* option : optionTable::optionsOf(group)) {
        if (option->kind == optionTable::ControlKind::list) {
            addList(*option);
        } else {
            addCheckBox(*option);
        }
    }
}

void frmOptPanel::showOption(int number) {
    const Row& row = checkedAt(rows_, number, "option row");
    QWidget* control = row.box != nullptr ? static_cast<QWidget*>(row.box) : row.list;
    scroll_->ensureWidgetVisible(control);
    control->setFocus(Qt::OtherFocusReason);
}

/// Puts the groups into so many columns, the first half of them to the left.
void frmOptPanel::arrange(int columns) {
    shownColumns_ = columns;
    const int inFirst = (optionTable::groupCount + columns - 1) / columns;
    int row = 0;
    for (int group = 0; group < optionTable::groupCount; ++group) {
        row = group % inFirst == 0 ? 0 : row;
        row = placeGroup(group, row, group / inFirst * (cellsOfOption + 1));
    }
    for (const int column : {0, 1}) {
        const int entries = column * (cellsOfOption + 1) + 1;
        grid_->setColumnStretch(entries, column < columns ? 1 : 0);
    }
    grid_->setColumnMinimumWidth(cellsOfOption, columns > 1 ? gapBetweenColumns - 2 * gap : 0);
}

/// Returns the row below the group.
int frmOptPanel::placeGroup(int group, int row, int column) {
    QLabel* heading = headings_.at(static_cast<std::size_t>(group));
    heading->setContentsMargins(0, row > 0 ? gapAboveHeading : 0, 0, 0);
    grid_->addWidget(heading, row++, column, 1, cellsOfOption);
    for (const Option* option : optionTable::optionsOf(static_cast<optionTable::Group>(group))) {
        const Row& widgets = checkedAt(rows_, option->number, "option row");
        if (widgets.box != nullptr) {
            grid_->addWidget(widgets.box, row, column, 1, cellsOfOption, Qt::AlignLeft);
        } else {
            grid_->addWidget(widgets.label, row, column);
            grid_->addWidget(widgets.list, row, column + 1);
        }
        ++row;
    }
    return row;
}

void frmOptPanel::followWidth() {
    const int columns = scroll_->hasRoomForTwo() ? 2 : 1;
    if (columns != shownColumns_) {
        arrange(columns);
    }
}

void frmOptPanel::measure() {
    int label = 0;
    int least = 0;
    int preferred = 0;
    int box = 0;
    for (const Row& row : rows_) {
        if (row.box != nullptr) {
            box = std::max(box, row.box->sizeHint().width());
        } else {
            label = std::max(label, row.label->sizeHint().width());
            least = std::max(least, row.list->minimumSizeHint().width());
            preferred = std::max(preferred, row.list->sizeHint().width());
        }
    }
    scroll_->least = std::max(label + gap + least, box) + gap;
    scroll_->preferred = std::max(label + gap + preferred, box) + gap;
    scroll_->updateGeometry();
    followWidth();
}

void frmOptPanel::addList(const Option& option) {
    auto* list = own<SteadyComboBox>();
    list->setObjectName(controlName(option));
    list->setMinimumContentsLength(leastEntryLength);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* label = own<QLabel>();
    label->setBuddy(list);

    checkedAt(rows_, option.number, "option row") = {.label = label, .list = list};
    // The entry that is shown can be chosen again: then nothing changes, and it counts all the
    // same.
    for (const auto signal : {&QComboBox::currentIndexChanged, &QComboBox::activated}) {
        connect(list, signal, this,
                [number = option.number](int index) { optionPanel::optionClicked(number, index); });
    }
}

void frmOptPanel::addCheckBox(const Option& option) {
    auto* box = own<QCheckBox>();
    box->setObjectName(controlName(option));
    checkedAt(rows_, option.number, "option row") = {.box = box};
    connect(box, &QCheckBox::toggled, this,
            [number = option.number](bool on) { optionPanel::optionClicked(number, on ? 1 : 0); });
}

void frmOptPanel::showState() {
    fraOption_->setTitle(qText(optionPanel::state().frameCaption));
    for (std::size_t i = 0; i < headings_.size(); ++i) {
        headings_[i]->setText(qText(optionTable::groupText(static_cast<optionTable::Group>(i))));
    }
    for (int number = 0; number < optionTable::optionCount; ++number) {
        showControl(number);
    }
    measure();
}

void frmOptPanel::showControl(int number) {
    const optionPanel::OptionControl& control =
        checkedAt(optionPanel::state().controls, number, "option control");
    const Row& row = checkedAt(rows_, number, "option row");
    const Option& option = optionTable::optionAt(number);
    const QString caption = qText(control.markedCaption);
    if (row.box != nullptr) {
        const QSignalBlocker quiet(row.box);
        row.box->setText(caption);
        row.box->setChecked(control.checked);
        nameControl(*row.box, caption);
        explain(*row.box, option);
        return;
    }
    const QSignalBlocker quiet(row.list);
    explain(*row.label, option);
    explain(*row.list, option);
    row.label->setText(caption);
    showItems(*row.list, control.items);
    row.list->setCurrentIndex(control.selected);
    nameControl(*row.list, caption);
}

}  // namespace k520
