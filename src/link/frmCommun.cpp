// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/frmCommun.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <span>
#include <utility>

#include "app/Dialogs.h"
#include "app/Guard.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "desktop/LineListModel.h"
#include "desktop/SteadyFrame.h"
#include "desktop/captions.h"
#include "desktop/owned.h"
#include "link/frmCommunGuards.h"
#include "link/frmCommunLight.h"
#include "link/frmCommunList.h"
#include "link/frmCommunRanges.h"
#include "link/linkTexts.h"
#include "link/modCommun.h"
#include "link/modSession.h"
#include "link/sessionAdvice.h"
#include "link/waysBack.h"

namespace k520 {

namespace {

constexpr int readText = 100;
constexpr int writeText = 101;
constexpr int titleText = 156;
constexpr int adviceLines = 5;
constexpr int startChars = 14;
constexpr QSize usualSize(600, 640);

QHBoxLayout* rowOf(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right) {
    auto* row = own<QHBoxLayout>();
    for (QWidget* widget : left) {
        row->addWidget(widget);
    }
    row->addStretch(1);
    for (QWidget* widget : right) {
        row->addWidget(widget);
    }
    return row;
}

/// The backups of writes that have not come to their good end, and the last one made before a
/// write.
std::vector<std::filesystem::path> likelyWaysBack() {
    std::vector<std::filesystem::path> unfinished;
    std::filesystem::path latest;
    for (const auto& way : waysBack::list()) {
        if (way.unfinished) {
            unfinished.push_back(way.path);
        } else if (latest.empty() && way.reason == backups::Reason::beforeWrite) {
            latest = way.path;
        }
    }
    if (!latest.empty()) {
        unfinished.push_back(latest);
    }
    return unfinished;
}

}  // namespace

/// What a session drives.
class frmCommun::View : public CommunView {
  public:
    explicit View(frmCommun& dialog) : dialog_(dialog) {}

    void beginStage(Stage stage) override { dialog_.guards_->beginStage(stage); }
    void setStatus(const std::string& text) override {
        dialog_.lblComStatus_->setText(qText(text));
    }
    void setPercentText(const std::string& text) override {
        dialog_.lblComPercent_->setText(qText(text));
    }
    void setProgress(std::int16_t percent) override {
        dialog_.prgCommunicate_->setValue(percent);
        dialog_.guards_->setProgress(percent);
    }
    void enableStart(Direction direction, bool enabled) override {
        dialog_.startButton(direction)->setEnabled(enabled);
    }
    void setBusy(bool /*busy*/) override {
        // The dialog is held open and still for a little longer: see `running_`.
    }
    void resetStopBox() override {
        dialog_.chkStopCom_->setChecked(false);
        dialog_.chkStopCom_->setEnabled(false);
    }
    void enableStopBox() override { dialog_.chkStopCom_->setEnabled(true); }
    bool stopTicked() override { return dialog_.chkStopCom_->isChecked(); }
    void setBlinking(bool on) override { dialog_.imgGreen_->setBlinking(on); }
    bool showMemDatTicked() override { return dialog_.chkShowMemDat_->isChecked(); }

  private:
    frmCommun& dialog_;
};

// The tab order is the order of making.
frmCommun::frmCommun(QWidget* parent)
    : QDialog(parent),
      cmdRead_(ownNamed<QPushButton>("cmdRead", this)),
      cmdWrite_(ownNamed<QPushButton>("cmdWrite", this)),
      chkStopCom_(ownNamed<QCheckBox>("chkStopCom", this)),
      guards_(ownNamed<frmCommunGuards>("fraGuards", this)),
      imgGreen_(ownNamed<frmCommunLight>("imgGreen", this)),
      lblComStatus_(ownNamed<QLabel>("lblComStatus", this)),
      lblComPercent_(ownNamed<QLabel>("lblComPercent", this)),
      prgCommunicate_(ownNamed<QProgressBar>("prgCommunicate", this)),
      lblAdvice_(ownNamed<QLabel>("lblAdvice", this)),
      lblRtData_(own<QLabel>(this)),
      listRtData_(ownNamed<frmCommunList>("listRtData", this)),
      ranges_(ownNamed<frmCommunRanges>("fraRanges", this)),
      chkShowMemDat_(ownNamed<QCheckBox>("chkShowMemDat", this)),
      cmdRestore_(ownNamed<QPushButton>("cmdRestore", this)),
      cmdClose_(ownNamed<QPushButton>("cmdClose", this)),
      view_(std::make_unique<View>(*this)) {
    listRtData_->setModel(own<LineListModel>(modCommun::state().listRtData, this));
    layOut();
    connect(cmdRead_, &QPushButton::clicked, this, [this] { run(Direction::read); });
    connect(cmdWrite_, &QPushButton::clicked, this, [this] { run(Direction::write); });
    connect(cmdRestore_, &QPushButton::clicked, this, &frmCommun::restore);
    connect(cmdClose_, &QPushButton::clicked, this, &frmCommun::reject);
    prepare(Direction::read);
}

frmCommun::~frmCommun() = default;

void frmCommun::prepare(Direction direction) {
    if (running_) {
        return;
    }
    setCaptions();
    // Room of its own, so that nothing moves when it speaks; the font goes with the language.
    lblAdvice_->ensurePolished();
    lblAdvice_->setFixedHeight(lblAdvice_->fontMetrics().lineSpacing() * adviceLines +
                               lblAdvice_->fontMetrics().descent());
    cmdRead_->setVisible(direction == Direction::read);
    cmdWrite_->setVisible(direction == Direction::write);
    startButton(direction)->setDefault(true);
    startButton(direction)->setFocus();
    view_->resetStopBox();
    view_->setProgress(0);
    lblComStatus_->clear();
    lblComPercent_->clear();
    showAdvice({});
    ranges_->fill();
    guards_->prepare(direction);
    dueBackup_.reset();
    showRestore();
}

void frmCommun::done(int result) {
    if (!running_) {
        QDialog::done(result);
    }
}

void frmCommun::layOut() {
    prgCommunicate_->setRange(0, 100);
    prgCommunicate_->setTextVisible(false);
    lblAdvice_->setWordWrap(true);
    lblAdvice_->setTextFormat(Qt::PlainText);
    lblAdvice_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    lblAdvice_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    cmdClose_->setAutoDefault(false);
    cmdRestore_->setAutoDefault(false);
    for (QPushButton* start : {cmdRead_, cmdWrite_}) {
        start->setMinimumWidth(start->fontMetrics().averageCharWidth() * startChars);
    }
    lblRtData_->setBuddy(listRtData_);

    auto* column = own<QVBoxLayout>(this);
    column->addLayout(rowOf({cmdRead_, cmdWrite_}, {chkStopCom_}));
    column->addWidget(guards_);
    auto* status = own<QHBoxLayout>();
    status->addWidget(imgGreen_);
    status->addWidget(own<SteadyFrame>(lblComStatus_, this), 1);
    status->addWidget(lblComPercent_);
    column->addLayout(status);
    column->addWidget(prgCommunicate_);
    column->addWidget(lblAdvice_);
    column->addWidget(lblRtData_);
    column->addWidget(listRtData_, 1);
    column->addWidget(ranges_);
    column->addLayout(rowOf({chkShowMemDat_}, {cmdRestore_, cmdClose_}));
    resize(usualSize);
}

void frmCommun::setCaptions() {
    setWindowTitle(softText(titleText));
    captionControl(*cmdRead_, softText(readText));
    captionControl(*cmdWrite_, softText(writeText));
    captionControl(*chkStopCom_, qSay(texts::stopSession));
    captionControl(*chkShowMemDat_, qSay(texts::showMemDat));
    captionControl(*cmdRestore_, qSay(texts::restoreRadio));
    captionControl(*cmdClose_, qSay(texts::closeWindow));
    lblRtData_->setText(qSay(texts::dataList));
    nameControl(*listRtData_, qSay(texts::dataList));
    nameControl(*imgGreen_, qSay(texts::communLight));
    nameControl(*prgCommunicate_, softText(titleText));
    ranges_->setCaptions();
    guards_->setCaptions();
}

QPushButton* frmCommun::startButton(Direction direction) const {
    return direction == Direction::read ? cmdRead_ : cmdWrite_;
}

template <class Body>
void frmCommun::held(std::vector<Stage> stages, Body&& body) {
    QWidget* const focused = focusWidget();
    showAdvice({});
    setRunning(true);
    guards_->start(std::move(stages));
    safeguards::Report report;
    // Whatever happens, the dialog must open up again.
    const bool ran = guarded("frmCommun->held", [&] { report = body(); });
    guards_->finish(ran && report.good);
    setRunning(false);
    // A session without a port leaves the light as it is.
    imgGreen_->setBlinking(false);
    const bool due = ran && !report.good && safeguards::radioChanged(report) &&
                     !report.backup.empty() && report.earlier.empty();
    dueBackup_ = due ? std::optional(report.backup) : std::nullopt;
    showRestore();
    if (focused != nullptr) {
        focused->setFocus();
    }
    if (ran) {
        conclude(report);
    }
}

void frmCommun::run(Direction direction) {
    if (running_) {
        return;
    }
    const auto choices = guards_->choices();
    held(safeguards::stagesOf(direction, choices), [&] {
        return direction == Direction::read ? safeguards::read(*view_, choices)
                                            : safeguards::write(*view_, choices);
    });
}

void frmCommun::restore() {
    if (running_) {
        return;
    }
    const auto backup = chosenBackup();
    if (!backup) {
        return;
    }
    auto choices = guards_->choices();
    choices.backUpFirst = false;
    auto stages = safeguards::stagesOf(Direction::write, choices);
    stages.front() = Stage::restore;
    held(std::move(stages), [&] { return safeguards::restore(*view_, *backup, choices); });
}

/// The first of the ways back that the user agrees to. Right after a write that failed there is
/// nothing to lose with its backup, and nothing is asked.
std::optional<std::filesystem::path> frmCommun::chosenBackup() const {
    if (dueBackup_) {
        return dueBackup_;
    }
    const auto ways = likelyWaysBack();
    const auto agreed = std::ranges::find_if(ways, [](const std::filesystem::path& backup) {
        return theDialogs().ask(modSoftFace::text(modSoftFace::noticeText),
                                say(texts::restoreQuestion, backup.filename().string()), false);
    });
    return agreed != ways.end() ? std::optional(*agreed) : std::nullopt;
}

void frmCommun::conclude(const safeguards::Report& report) {
    if (report.result.outcome == modSession::Outcome::busy) {
        return;
    }
    // A good end tells of everything that was logged; a bad one's cause is in its last stage.
    const std::span logged(modShowErr::state().entries);
    const auto mark = std::min(report.good ? report.begin : report.mark, logged.size());
    showAdvice(sessionAdvice::adviceAfter(report, logged.subspan(mark)));
    if (!report.backup.empty()) {
        lblAdvice_->setToolTip(qText(report.backup.string()));
    }
    safeguards::listDifferences(report);
    listRtData_->showNow();

    const bool succeeded = report.result.outcome == modSession::Outcome::succeeded;
    emit sessionEnded(report.direction, succeeded);
    if (succeeded && chkShowMemDat_->isChecked()) {
        emit memDatWanted();
        // The window that shows it must not take the keyboard from a dialog that stays open.
        activateWindow();
    }
}

/// Offers the backups that lead back.
void frmCommun::showRestore() {
    const auto ways = likelyWaysBack();
    cmdRestore_->setVisible(cmdWrite_->isVisibleTo(this));
    cmdRestore_->setEnabled(!running_ && !ways.empty());
    cmdRestore_->setToolTip(qText(ways.empty()
                                      ? say(texts::restoreNone)
                                      : say(texts::restoreTip, ways.front().filename().string())));
}

void frmCommun::showAdvice(const std::string& text) {
    lblAdvice_->setText(qText(text));
    lblAdvice_->setToolTip(qText(text));
}

void frmCommun::setRunning(bool running) {
    running_ = running;
    ranges_->setEnabled(!running);
    cmdClose_->setEnabled(!running);
    cmdRestore_->setEnabled(false);
}

}  // namespace k520
