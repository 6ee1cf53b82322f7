// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommunGuards.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/link/communTexts.h"
#include "desktop/widgets/SteadyFrame.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "link/session/sessionAdvice.h"

namespace k520 {

namespace {

using safeguards::choiceRows;
using safeguards::Choices;

struct BoxLook {
    Text caption;
    bool reading;  ///< whether the box concerns a read, and a write
    bool writing;
};

// By the rows of choiceRows.
constexpr std::array<BoxLook, choiceRows.size()> looks{{
    {texts::keepCopy, true, false},
    {texts::backUpFirst, false, true},
    {texts::readBack, true, true},
}};

bool concerns(const BoxLook& look, Direction direction) {
    return direction == Direction::read ? look.reading : look.writing;
}

}  // namespace

frmCommunGuards::frmCommunGuards(QWidget* parent)
    : QWidget(parent), lblStages_(ownNamed<QLabel>("lblStages", this)) {
    auto* row = own<QHBoxLayout>();
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        const auto& choice = choiceRows[i];
        boxes_[i] = ownNamed<QCheckBox>(choice.control.data(), this);
        row->addWidget(boxes_[i]);
        connect(boxes_[i], &QCheckBox::clicked, this, [this, &choice](bool on) {
            // A choice that cannot be kept holds for this dialog: the error list says so.
            safeguards::choose(choice, on);
            planStages();
        });
    }
    row->addStretch(1);
    lblStages_->setTextFormat(Qt::RichText);
    auto* column = own<QVBoxLayout>(this);
    column->setContentsMargins({});
    column->addLayout(row);
    column->addWidget(own<SteadyFrame>(lblStages_, this));
}

void frmCommunGuards::prepare(Direction direction) {
    direction_ = direction;
    const Choices stored = safeguards::chosen();
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        boxes_[i]->setChecked(stored.*choiceRows[i].member);
        boxes_[i]->setVisible(concerns(looks[i], direction));
    }
    planStages();
}

void frmCommunGuards::setCaptions() {
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        captionControl(*boxes_[i], qSay(looks[i].caption));
    }
}

Choices frmCommunGuards::choices() const {
    Choices choices;
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        choices.*choiceRows[i].member = boxes_[i]->isChecked() && concerns(looks[i], direction_);
    }
    return choices;
}

void frmCommunGuards::planStages() {
    stages_ = safeguards::stagesOf(direction_, choices());
    percents_.assign(stages_.size(), 0);
    phase_ = Phase::planned;
    current_ = 0;
    showStages();
}

void frmCommunGuards::start(std::vector<Stage> stages) {
    stages_ = std::move(stages);
    percents_.assign(stages_.size(), 0);
    current_ = 0;
    phase_ = Phase::running;
    for (QCheckBox* box : boxes_) {
        box->setEnabled(false);
    }
}

void frmCommunGuards::beginStage(Stage stage) {
    // A stage that was not planned, such as a look at the radio before a restore, is part of the
    // one that comes.
    const auto found = std::ranges::find(stages_, stage);
    current_ =
        found != stages_.end() ? static_cast<std::size_t>(found - stages_.begin()) : current_;
    showStages();
}

void frmCommunGuards::setProgress(std::int16_t percent) {
    // At the end of its session the bar goes back to 0; the stage keeps what it has reached.
    if (percent > 0 && current_ < percents_.size() && percents_[current_] != percent) {
        percents_[current_] = percent;
        showStages();
    }
}

void frmCommunGuards::fail() {
    phase_ = Phase::failed;
    showStages();
}

void frmCommunGuards::finish(bool good) {
    phase_ = good ? Phase::good : Phase::failed;
    for (QCheckBox* box : boxes_) {
        box->setEnabled(true);
    }
    showStages();
}

frmCommunGuards::Mark frmCommunGuards::markOf(std::size_t place) const {
    if (phase_ == Phase::planned) {
        return Mark::pending;
    }
    if (place != current_) {
        return place < current_ ? Mark::done : Mark::pending;
    }
    return phase_ == Phase::running ? Mark::current
           : phase_ == Phase::good  ? Mark::done
                                    : Mark::failed;
}

QString frmCommunGuards::textOf(std::size_t place) const {
    const QString name = qText(sessionAdvice::stageName(direction_, stages_[place]));
    switch (markOf(place)) {
        case Mark::current:
            return QStringLiteral("%1. %2 %3 %").arg(place + 1).arg(name).arg(percents_[place]);
        case Mark::done:
            return QStringLiteral("✓ %1").arg(name);
        case Mark::failed:
            return percents_[place] == 0
                       ? QStringLiteral("✗ %1").arg(name)
                       : QStringLiteral("✗ %1 %2 %").arg(name).arg(percents_[place]);
        case Mark::pending:
            break;
    }
    return QStringLiteral("%1. %2").arg(place + 1).arg(name);
}

void frmCommunGuards::showStages() {
    QStringList plain;
    QStringList rich;
    for (std::size_t i = 0; i < stages_.size(); ++i) {
        const bool strong = markOf(i) == Mark::current || markOf(i) == Mark::failed;
        plain << textOf(i);
        rich << QString(strong ? QStringLiteral("<b>%1</b>") : QStringLiteral("%1"))
                    .arg(plain.back().toHtmlEscaped());
    }
    const QString arrow = QStringLiteral(" → ");
    lblStages_->setAccessibleName(plain.join(arrow));
    lblStages_->setText(rich.join(QStringLiteral(" &nbsp;→&nbsp; ")));
}

}  // namespace k520
