// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QDialog>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/communView.h"
#include "link/safeguards.h"

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace k520 {

class frmCommunGuards;
class frmCommunLight;
class frmCommunList;
class frmCommunRanges;

/// The communication dialog: one window for reading and writing, of which one start button is shown
/// at a time. It cannot be closed, nor a session started, while the busy mark is set.
class frmCommun : public QDialog {
    Q_OBJECT

  public:
    explicit frmCommun(QWidget* parent = nullptr);
    ~frmCommun() override;
    frmCommun(const frmCommun&) = delete;
    frmCommun& operator=(const frmCommun&) = delete;

    /// Makes the button of one direction visible and the other invisible, fills the address fields
    /// from the ranges in force, and empties what the last session left. The caller shows the
    /// dialog.
    void prepare(Direction direction);

    /// Refused while a session is on, whichever way the user tries to close the dialog.
    void done(int result) override;

  signals:
    /// A session has ended; `succeeded` tells how.
    void sessionEnded(k520::Direction direction, bool succeeded);
    /// A session that succeeded with `chkShowMemDat` ticked has refilled the memory data grid.
    void memDatWanted();

  private:
    class View;

    void layOut();
    void setCaptions();
    [[nodiscard]] QPushButton* startButton(Direction direction) const;
    void run(Direction direction);
    void restore();
    /// Runs `body`, which returns a report, with the dialog held open and still.
    template <class Body>
    void held(std::vector<Stage> stages, Body&& body);
    [[nodiscard]] std::optional<std::filesystem::path> chosenBackup() const;
    void conclude(const safeguards::Report& report);
    void showRestore();
    void showAdvice(const std::string& text);
    void setRunning(bool running);

    QPushButton* cmdRead_;
    QPushButton* cmdWrite_;
    QCheckBox* chkStopCom_;
    frmCommunGuards* guards_;
    frmCommunLight* imgGreen_;
    QLabel* lblComStatus_;
    QLabel* lblComPercent_;
    QProgressBar* prgCommunicate_;
    QLabel* lblAdvice_;
    QLabel* lblRtData_;
    frmCommunList* listRtData_;
    frmCommunRanges* ranges_;
    QCheckBox* chkShowMemDat_;
    QPushButton* cmdRestore_;
    QPushButton* cmdClose_;
    std::unique_ptr<View> view_;
    /// From the click until everything of the session is over, its last texts included.
    bool running_ = false;
    /// The last run has left the radio in a state that this backup, and no other, would mend.
    std::optional<std::filesystem::path> dueBackup_;
};

}  // namespace k520
