// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/frmOptPanel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <string_view>

#include "app/Checked.h"
#include "desktop/SteadyComboBox.h"
#include "desktop/captions.h"
#include "desktop/owned.h"
#include "desktop/qtText.h"
#include "settings/optionPanel.h"
#include "settings/optionTexts.h"

namespace k520 {

namespace {

using optionTable::Option;

/// Options that belong together under a heading, by the names that scripts call them.
struct Group {
    Text heading;
    std::vector<std::string_view> options;
};

const std::array<Group, 6>& groups() {
    static const std::array<Group, 6> all{{
        {texts::groupTransmit, {"tot", "pre_tot", "low_battery_tx"}},
        {texts::groupReceiver, {"squelch", "volume"}},
        {texts::groupVoice, {"voice", "voice_chip", "beep", "emergency_alarm"}},
        {texts::groupVox, {"vox_level", "vox_delay", "vox_inhibit_rx"}},
        {texts::groupBroadcast, {"broadcast_squelch", "broadcast_volume"}},
        {texts::groupPower, {"crystal", "battery_save"}},
    }};
    return all;
}

/// The shortest text, in letters, that a list in a narrow panel still shows whole.
constexpr int leastEntryLength = 9;
constexpr int gap = 6;
constexpr int gapAboveHeading = 10;
constexpr int columns = 2;

/// A scroll area that is never narrower than what it holds, so that it scrolls downwards only.
class ColumnScrollArea : public QScrollArea {
  public:
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {widthFor(widget()->minimumSizeHint()), QScrollArea::minimumSizeHint().height()};
    }
    [[nodiscard]] QSize sizeHint() const override {
        const QSize whole = widget()->sizeHint();
        return {widthFor(whole), whole.height()};
    }

  private:
    [[nodiscard]] int widthFor(QSize content) const {
        return content.width() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    }
};

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

/// Voice chip and crystal are what the radio is built of.
void tellIfNeverStored(QWidget& widget, const Option& option) {
    if (option.ownedMask == 0) {
        widget.setToolTip(qSay(texts::neverStoredTip));
        widget.setAccessibleDescription(widget.toolTip());
    }
}

QString controlName(const Option& option) {
    return qText(option.control);
}

}  // namespace

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
    auto* grid = own<QGridLayout>(content);
    grid->setSpacing(gap);
    grid->setContentsMargins(0, 0, gap, 0);
    grid->setColumnStretch(columns - 1, 1);
    addGroups(*grid);
    grid->setRowStretch(grid->rowCount(), 1);

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

void frmOptPanel::addGroups(QGridLayout& grid) {
    for (const Group& group : groups()) {
        if (grid.count() > 0) {
            grid.setRowMinimumHeight(grid.rowCount(), gapAboveHeading);
        }
        headings_.push_back(headingLabel());
        grid.addWidget(headings_.back(), grid.rowCount(), 0, 1, columns);
        for (const std::string_view name : group.options) {
            const Option& option = *optionTable::findOption(name);
            if (option.kind == optionTable::ControlKind::list) {
                addList(grid, option);
            } else {
                addCheckBox(grid, option);
            }
        }
    }
}

void frmOptPanel::addList(QGridLayout& grid, const Option& option) {
    auto* list = own<SteadyComboBox>();
    list->setObjectName(controlName(option));
    list->setMinimumContentsLength(leastEntryLength);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* label = own<QLabel>();
    label->setBuddy(list);

    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(list, row, 1);
    checkedAt(rows_, option.number, "option row") = {.label = label, .list = list};
    // The entry that is shown can be chosen again: then nothing changes, and it counts all the
    // same.
    for (const auto signal : {&QComboBox::currentIndexChanged, &QComboBox::activated}) {
        connect(list, signal, this,
                [number = option.number](int index) { optionPanel::optionClicked(number, index); });
    }
}

void frmOptPanel::addCheckBox(QGridLayout& grid, const Option& option) {
    auto* box = own<QCheckBox>();
    box->setObjectName(controlName(option));
    grid.addWidget(box, grid.rowCount(), 0, 1, columns, Qt::AlignLeft);
    checkedAt(rows_, option.number, "option row") = {.box = box};
    connect(box, &QCheckBox::toggled, this,
            [number = option.number](bool on) { optionPanel::optionClicked(number, on ? 1 : 0); });
}

void frmOptPanel::showState() {
    fraOption_->setTitle(qText(optionPanel::state().frameCaption));
    for (std::size_t i = 0; i < headings_.size(); ++i) {
        headings_[i]->setText(qSay(groups()[i].heading));
    }
    for (int number = 0; number < optionTable::optionCount; ++number) {
        showControl(number);
    }
    scroll_->updateGeometry();
}

void frmOptPanel::showControl(int number) {
    const optionPanel::OptionControl& control =
        checkedAt(optionPanel::state().controls, number, "option control");
    const Row& row = checkedAt(rows_, number, "option row");
    const QString caption = qText(control.caption);
    if (row.box != nullptr) {
        const QSignalBlocker quiet(row.box);
        row.box->setText(caption);
        row.box->setChecked(control.checked);
        nameControl(*row.box, caption);
        return;
    }
    const QSignalBlocker quiet(row.list);
    tellIfNeverStored(*row.label, optionTable::optionAt(number));
    tellIfNeverStored(*row.list, optionTable::optionAt(number));
    row.label->setText(caption);
    showItems(*row.list, control.items);
    row.list->setCurrentIndex(control.selected);
    nameControl(*row.list, caption);
}

}  // namespace k520
