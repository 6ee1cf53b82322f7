// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <vector>

#include "link/protocol/communView.h"
#include "link/session/safeguards.h"

class QCheckBox;
class QLabel;

namespace k520 {

/// The safeguards of the communication dialog: a box for each choice that concerns the direction,
/// and under them the stages that a run will have, has had, and is in, each with its progress.
class frmCommunGuards : public QWidget {
    Q_OBJECT

  public:
    explicit frmCommunGuards(QWidget* parent = nullptr);

    /// Shows the boxes of a direction as the settings file has them, and the stages to come.
    void prepare(Direction direction);
    void setCaptions();
    /// What the boxes say; those of the other direction count as off.
    [[nodiscard]] safeguards::Choices choices() const;

    /// A run of these stages begins: the boxes are locked until it ends.
    void start(std::vector<Stage> stages);
    void beginStage(Stage stage);
    void setProgress(std::int16_t percent);
    /// The place of the stage that is on, from 0, and how many the run has.
    [[nodiscard]] std::size_t currentStage() const noexcept { return current_; }
    [[nodiscard]] std::size_t stageCount() const noexcept { return stages_.size(); }
    /// The stage has failed; the boxes stay locked until the run has ended.
    void fail();
    /// The run has ended in the stage that it is in; `good` marks that one as done, too.
    void finish(bool good);

  private:
    /// Where the run is as a whole.
    enum class Phase { planned, running, good, failed };
    enum class Mark { pending, current, done, failed };

    void showStages();
    void planStages();
    [[nodiscard]] Mark markOf(std::size_t place) const;
    [[nodiscard]] QString textOf(std::size_t place) const;

    std::array<QCheckBox*, safeguards::choiceRows.size()> boxes_{};
    QLabel* lblStages_;
    Direction direction_ = Direction::read;
    std::vector<Stage> stages_;
    /// The stage that is on or was on last, and how far each has come, in percent.
    std::size_t current_ = 0;
    std::vector<int> percents_;
    Phase phase_ = Phase::planned;
};

}  // namespace k520
