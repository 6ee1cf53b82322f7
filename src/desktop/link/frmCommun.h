// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/protocol/communView.h"
#include "link/session/safeguards.h"
#include "link/session/sessionAdvice.h"
#include "link/session/timeLeft.h"

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace k520 {

class frmCommunDetails;
class frmCommunGuards;
class frmCommunLight;
class frmCommunResult;

/// The communication dialog: one window for reading and writing, of which one start button is shown
/// at a time. It cannot be closed, nor a session started, while the busy mark is set. The result
/// stands first; the data list and the address ranges are under Details.
class frmCommun : public QDialog {
    Q_OBJECT

  public:
    explicit frmCommun(QWidget* parent = nullptr);
    ~frmCommun() override;
    frmCommun(const frmCommun&) = delete;
    frmCommun& operator=(const frmCommun&) = delete;

    /// Makes the button of one direction visible and the other invisible, fills the address fields
    /// from the ranges in force, and empties what the last session left. Says so where an earlier
    /// write did not finish. The caller shows the dialog.
    void prepare(Direction direction);

    /// Asked before each read, which replaces what is shown; false = it is not begun.
    void setMayRead(std::function<bool()> mayRead) { mayRead_ = std::move(mayRead); }

    /// Refused in words while a session is on, whichever way the user tries to close the dialog.
    void done(int result) override;
    /// Says why nothing can be closed during a session; for a main window that has refused it, too.
    void refuseClose();

  signals:
    /// A session has ended; `succeeded` tells how.
    void sessionEnded(k520::Direction direction, bool succeeded);
    /// A session that succeeded with `chkShowMemDat` ticked has refilled the memory data grid.
    void memDatWanted();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    class View;

    void layOut();
    void setCaptions();
    void captionDetails();
    [[nodiscard]] QPushButton* startButton(Direction direction) const;
    void run(Direction direction);
    void restore();
    /// Runs `body`, which returns a report, with the dialog held open and still.
    template <class Body>
    void held(std::vector<Stage> stages, Body&& body);
    [[nodiscard]] std::optional<std::filesystem::path> chosenBackup();
    void showBeforeRun();
    void conclude(const safeguards::Ending& ending);
    void showRestore();
    void showDetails(bool shown);
    void setRunning(bool running);
    void beginStage(Stage stage);
    void setProgress(std::int16_t percent);
    void showRunning();
    [[nodiscard]] std::string stoppingAdvice() const;
    void enableStop();
    void gaveUp(const modSession::Result& result);

    frmCommunResult* result_;
    frmCommunGuards* guards_;
    frmCommunLight* imgGreen_;
    QLabel* lblComStatus_;
    QLabel* lblComPercent_;
    QLabel* lblTimeLeft_;
    QProgressBar* prgCommunicate_;
    QPushButton* cmdDetails_;
    QCheckBox* chkStopCom_;
    QPushButton* cmdRestore_;
    QPushButton* cmdRead_;
    QPushButton* cmdWrite_;
    QPushButton* cmdClose_;
    frmCommunDetails* details_;
    std::unique_ptr<View> view_;
    std::function<bool()> mayRead_ = [] { return true; };
    Direction direction_ = Direction::read;
    /// Something was started since prepare().
    bool ran_ = false;
    TimeLeft timeLeft_;
    /// The direction of the run, which for a restore is a write; the stage that is on, where its
    /// failures begin in the error list, and whether it has given up.
    Direction runDirection_ = Direction::read;
    Stage stage_ = Stage::read;
    std::size_t mark_ = 0;
    bool gaveUp_ = false;
    /// The user has tried to close the dialog during this run.
    bool closeRefused_ = false;
    /// From the click until everything of the session is over, its last texts included.
    bool running_ = false;
    /// The last run has left the radio in a state that this backup, and no other, would put right.
    std::optional<std::filesystem::path> dueBackup_;
};

}  // namespace k520
