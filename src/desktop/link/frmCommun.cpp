// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/link/frmCommun.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <span>
#include <utility>

#include "app/Guard.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "base/Clock.h"
#include "base/Dialogs.h"
#include "desktop/link/communTexts.h"
#include "desktop/link/frmCommunDetails.h"
#include "desktop/link/frmCommunGuards.h"
#include "desktop/link/frmCommunLight.h"
#include "desktop/link/frmCommunList.h"
#include "desktop/link/frmCommunRanges.h"
#include "desktop/link/frmCommunRestore.h"
#include "desktop/link/frmCommunResult.h"
#include "desktop/widgets/EditTable.h"
#include "desktop/widgets/SteadyFrame.h"
#include "desktop/widgets/captions.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/screenRoom.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "link/session/restoreList.h"

namespace k520 {

namespace {

constexpr int startChars = 14;
constexpr int usualWidth = 620;

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

/// What the error list holds from entry `mark` on.
std::span<const modShowErr::Entry> loggedSince(std::size_t mark) {
    const std::span<const modShowErr::Entry> logged(modShowErr::state().entries);
    return logged.subspan(std::min(mark, logged.size()));
}

}  // namespace

/// What a session drives.
class frmCommun::View : public CommunView {
  public:
    explicit View(frmCommun& dialog) : dialog_(dialog) {}

    void beginStage(Stage stage) override { dialog_.beginStage(stage); }
    void setStatus(const std::string& text) override {
        dialog_.lblComStatus_->setText(qText(text));
    }
    void setPercentText(const std::string& text) override {
        dialog_.lblComPercent_->setText(qText(text));
    }
    void setProgress(std::int16_t percent) override { dialog_.setProgress(percent); }
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
    void enableStopBox() override { dialog_.enableStop(); }
    bool stopTicked() override { return dialog_.chkStopCom_->isChecked(); }
    void setBlinking(bool on) override { dialog_.imgGreen_->setBlinking(on); }
    bool showMemDatTicked() override { return dialog_.details_->showMemDatTicked(); }
    void gaveUp(const modSession::Result& result) override { dialog_.gaveUp(result); }

  private:
    frmCommun& dialog_;
};

// The tab order is the order of making.
frmCommun::frmCommun(QWidget* parent)
    : QDialog(parent),
      result_(ownNamed<frmCommunResult>("fraResult", this)),
      guards_(ownNamed<frmCommunGuards>("fraGuards", this)),
      imgGreen_(ownNamed<frmCommunLight>("imgGreen", this)),
      lblComStatus_(ownNamed<QLabel>("lblComStatus", this)),
      lblComPercent_(ownNamed<QLabel>("lblComPercent", this)),
      lblTimeLeft_(ownNamed<QLabel>("lblTimeLeft", this)),
      prgCommunicate_(ownNamed<QProgressBar>("prgCommunicate", this)),
      cmdDetails_(ownNamed<QPushButton>("cmdDetails", this)),
      chkStopCom_(ownNamed<QCheckBox>("chkStopCom", this)),
      cmdRestore_(ownNamed<QPushButton>("cmdRestore", this)),
      cmdRead_(ownNamed<QPushButton>("cmdRead", this)),
      cmdWrite_(ownNamed<QPushButton>("cmdWrite", this)),
      cmdClose_(ownNamed<QPushButton>("cmdClose", this)),
      details_(ownNamed<frmCommunDetails>("fraDetails", this)),
      view_(std::make_unique<View>(*this)) {
    layOut();
    connect(cmdRead_, &QPushButton::clicked, this, [this] { run(Direction::read); });
    connect(cmdWrite_, &QPushButton::clicked, this, [this] { run(Direction::write); });
    connect(cmdRestore_, &QPushButton::clicked, this, &frmCommun::restore);
    connect(cmdClose_, &QPushButton::clicked, this, &frmCommun::reject);
    connect(cmdDetails_, &QPushButton::toggled, this, &frmCommun::showDetails);
    prepare(Direction::read);
    resize(usualWidth, sizeHint().height());
}

frmCommun::~frmCommun() = default;

void frmCommun::prepare(Direction direction) {
    if (running_) {
        return;
    }
    direction_ = direction;
    setCaptions();
    // The font goes with the language.
    result_->keepRoom();
    cmdRead_->setVisible(direction == Direction::read);
    cmdWrite_->setVisible(direction == Direction::write);
    QPushButton* const start = startButton(direction);
    start->setDefault(true);
    start->setFocus();
    view_->resetStopBox();
    prgCommunicate_->setValue(0);
    lblComStatus_->clear();
    lblComPercent_->clear();
    lblTimeLeft_->clear();
    ran_ = false;
    showBeforeRun();
    details_->ranges().fill();
    guards_->prepare(direction);
    dueBackup_.reset();
    showRestore();
}

void frmCommun::showBeforeRun() {
    const auto start = plainCaption(startButton(direction_)->text());
    result_->setNotice(sessionAdvice::beforeRun(direction_, stdText(start)));
}

void frmCommun::done(int result) {
    if (running_) {
        refuseClose();
        return;
    }
    QDialog::done(result);
}

void frmCommun::refuseClose() {
    // A session that has given up says why already.
    if (running_ && !gaveUp_) {
        closeRefused_ = true;
        showRunning();
    }
}

void frmCommun::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    keepOnScreen(*this);
}

void frmCommun::layOut() {
    prgCommunicate_->setRange(0, 100);
    prgCommunicate_->setTextVisible(false);
    cmdDetails_->setCheckable(true);
    for (QPushButton* button : {cmdRestore_, cmdDetails_}) {
        button->setAutoDefault(false);
    }
    for (QPushButton* start : {cmdRead_, cmdWrite_}) {
        start->setMinimumWidth(start->fontMetrics().averageCharWidth() * startChars);
    }
    details_->hide();

    auto* column = own<QVBoxLayout>(this);
    column->addWidget(result_);
    column->addWidget(guards_);
    auto* status = own<QHBoxLayout>();
    status->addWidget(imgGreen_);
    status->addWidget(own<SteadyFrame>(lblComStatus_, this), 1);
    status->addWidget(lblComPercent_);
    lblTimeLeft_->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    status->addWidget(own<SteadyFrame>(lblTimeLeft_, this), 1);
    column->addLayout(status);
    column->addWidget(prgCommunicate_);
    column->addLayout(
        rowOf({cmdDetails_}, {chkStopCom_, cmdRestore_, cmdRead_, cmdWrite_, cmdClose_}));
    column->addWidget(details_, 1);
    // Height without details is of no use to anything.
    column->addStretch(0);
}

void frmCommun::setCaptions() {
    setWindowTitle(softText(SoftText::communication));
    captionControl(*cmdRead_, softText(SoftText::readButton));
    captionControl(*cmdWrite_, softText(SoftText::writeButton));
    captionControl(*chkStopCom_, qSay(texts::stopSession));
    captionControl(*cmdRestore_, qSay(texts::restoreRadio));
    captionControl(*cmdClose_, qSay(texts::closeWindow));
    captionDetails();
    nameControl(*imgGreen_, qSay(texts::communLight));
    nameControl(*prgCommunicate_, softText(SoftText::communication));
    details_->setCaptions();
    guards_->setCaptions();
}

/// The triangle tells whether the details are shown.
void frmCommun::captionDetails() {
    const QString caption = qSay(texts::details);
    cmdDetails_->setText(caption +
                         (cmdDetails_->isChecked() ? QStringLiteral(" ▴") : QStringLiteral(" ▾")));
    nameControl(*cmdDetails_, caption);
}

/// The window grows by the details, and gives their room back.
void frmCommun::showDetails(bool shown) {
    captionDetails();
    details_->setVisible(shown);
    layout()->activate();
    resizeOnScreen(*this, {width(), sizeHint().height()});
}

QPushButton* frmCommun::startButton(Direction direction) const {
    return direction == Direction::read ? cmdRead_ : cmdWrite_;
}

template <class Body>
void frmCommun::held(std::vector<Stage> stages, Body&& body) {
    ran_ = true;
    mark_ = modShowErr::state().entries.size();
    timeLeft_.start(stages.size());
    prgCommunicate_->setValue(0);
    setRunning(true);
    guards_->start(std::move(stages));
    safeguards::Ending ending;
    // Whatever happens, the dialog must open up again.
    const bool ran = guarded("frmCommun->held", [&] { ending = body(); });
    guards_->finish(ran && ending.good());
    setRunning(false);
    // A session without a port leaves the light as it is.
    imgGreen_->setBlinking(false);
    lblTimeLeft_->clear();
    dueBackup_ = ran ? restoreList::dueAfter(ending) : std::nullopt;
    showRestore();
    // After a good end a mere Return must not begin again.
    QPushButton* const next = ran && ending.good() ? cmdClose_ : startButton(direction_);
    next->setDefault(true);
    next->setFocus();
    if (ran) {
        conclude(ending);
    } else {
        result_->setNotice(sessionAdvice::noticeOfError(runDirection_, loggedSince(mark_)));
    }
}

void frmCommun::beginStage(Stage stage) {
    stage_ = stage;
    mark_ = modShowErr::state().entries.size();
    gaveUp_ = false;
    guards_->beginStage(stage);
    timeLeft_.beginStage(guards_->currentStage());
    showRunning();
}

void frmCommun::showRunning() {
    // For the rest of the run: the stages stand below anyway.
    if (closeRefused_) {
        result_->setNotice(
            {sessionAdvice::Tone::warning, say(texts::cannotCloseNow), stoppingAdvice()});
        return;
    }
    const auto stage = guards_->currentStage();
    const auto name = sessionAdvice::stageName(runDirection_, stage_);
    const auto count = guards_->stageCount();
    result_->setNotice({sessionAdvice::Tone::plain,
                        count > 1 ? say(texts::stageUnderWay, stage + 1, count, name) : name,
                        stoppingAdvice()});
}

/// When a session can be stopped, which closing cannot do.
std::string frmCommun::stoppingAdvice() const {
    return say(texts::keepConnected) + "\n" +
           say(chkStopCom_->isEnabled() ? texts::stoppableNow : texts::notStoppableYet);
}

void frmCommun::enableStop() {
    if (!chkStopCom_->isEnabled()) {
        chkStopCom_->setEnabled(true);
        showRunning();
    }
}

void frmCommun::setProgress(std::int16_t percent) {
    prgCommunicate_->setValue(percent);
    guards_->setProgress(percent);
    if (running_ && percent > 0) {
        lblTimeLeft_->setText(qText(timeLeftText(timeLeft_.reached(percent, theClock().now()))));
    }
}

/// The box that follows tells little: what is known is said here at once, and nothing looks as if
/// it went on.
void frmCommun::gaveUp(const modSession::Result& result) {
    imgGreen_->setBlinking(false);
    lblComStatus_->clear();
    lblTimeLeft_->clear();
    guards_->fail();
    gaveUp_ = true;
    result_->setNotice(
        sessionAdvice::noticeWhileGivingUp(runDirection_, stage_, result, loggedSince(mark_)));
}

void frmCommun::run(Direction direction) {
    if (running_ || !EditTable::commitAll() || (direction == Direction::read && !mayRead_())) {
        return;
    }
    runDirection_ = direction;
    const auto choices = guards_->choices();
    held(safeguards::stagesOf(direction, choices), [&] {
        return direction == Direction::read ? safeguards::read(*view_, choices)
                                            : safeguards::write(*view_, choices);
    });
}

void frmCommun::restore() {
    if (running_ || !EditTable::commitAll()) {
        return;
    }
    const auto backup = chosenBackup();
    if (!backup) {
        // A reminder may have gone.
        if (!ran_) {
            showBeforeRun();
        }
        return;
    }
    runDirection_ = Direction::write;
    const auto choices = guards_->choices();
    held(safeguards::stagesOfRestore(choices),
         [&] { return safeguards::restore(*view_, *backup, choices); });
}

/// The backup that the user chooses and agrees to.
std::optional<std::filesystem::path> frmCommun::chosenBackup() {
    frmCommunRestore choice(dueBackup_.value_or(std::filesystem::path()), this);
    const bool wanted = choice.exec() == QDialog::Accepted;
    auto backup = wanted ? choice.chosen() : std::nullopt;
    if (!backup || !restoreList::asksBefore(*backup, dueBackup_) ||
        theDialogs().ask(modSoftFace::text(SoftText::notice),
                         say(texts::restoreQuestion, backup->filename().string()), false)) {
        return backup;
    }
    return std::nullopt;
}

void frmCommun::conclude(const safeguards::Ending& ending) {
    if (ending.what == safeguards::What::refused) {
        return;
    }
    // A good end tells of everything that was logged; a bad one's cause is in its last stage.
    result_->setNotice(
        sessionAdvice::noticeOf(ending, loggedSince(ending.good() ? ending.begin : ending.mark)));
    result_->setAdviceTip(qText(ending.backup.string()));
    // The session has emptied it; what was reached stays to be seen.
    prgCommunicate_->setValue(ending.good() ? prgCommunicate_->maximum() : 0);
    safeguards::listDifferences(ending);
    details_->list().showNow();

    const bool succeeded = ending.result.outcome == modSession::Outcome::succeeded;
    emit sessionEnded(ending.direction(), succeeded);
    if (succeeded && details_->showMemDatTicked()) {
        emit memDatWanted();
        // The window that shows it must not take the keyboard from a dialog that stays open.
        activateWindow();
    }
}

void frmCommun::showRestore() {
    const auto offer = restoreList::offerFor(direction_);
    cmdRestore_->setVisible(offer.shown);
    cmdRestore_->setEnabled(offer.enabled && !running_);
    cmdRestore_->setToolTip(qText(offer.tip));
}

void frmCommun::setRunning(bool running) {
    running_ = running;
    closeRefused_ = false;
    details_->ranges().setEnabled(!running);
    cmdRead_->setEnabled(!running);
    cmdWrite_->setEnabled(!running);
    cmdRestore_->setEnabled(false);
    if (running) {
        cmdClose_->setFocus();
    }
}

}  // namespace k520
