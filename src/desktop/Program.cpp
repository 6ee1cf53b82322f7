// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/Program.h"

#include <QCommandLineParser>
#include <QTimer>

#include "app/Guard.h"
#include "app/RuntimeError.h"
#include "app/mdifrmMain.h"
#include "app/mdimoduMain.h"
#include "app/modFileCmd.h"
#include "app/programFolder.h"
#include "desktop/qtText.h"

namespace k520 {

namespace {

const QString folderOption = QStringLiteral("program-folder");
const QString paintedOption = QStringLiteral("until-painted");

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Programming software for the K520 two-way radio."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({folderOption,
                      QStringLiteral("Where settings, default image and data files are."),
                      QStringLiteral("folder")});
    parser.addOption(
        {paintedOption, QStringLiteral("End after the main window was first painted.")});
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A data file to open."),
                                 QStringLiteral("[file]"));
}

/// Whether there is a program folder to work in; the user is told where not.
bool chooseProgramFolder(const QString& chosen) {
    try {
        // A folder that does not exist yet is made when something is first stored in it.
        static_cast<void>(programFolder::choose(
            chosen.isEmpty() ? std::nullopt : std::optional(stdPath(chosen)), "program folder"));
        return true;
    } catch (const RuntimeError& error) {
        theDialogs().tell(BoxIcon::critical, "K520", error.source());
        return false;
    }
}

}  // namespace

Program::Program(int& count, char** words) : QApplication(count, words) {
    setApplicationName(QStringLiteral("k520"));
    setApplicationVersion(QStringLiteral(K520_VERSION));
    setDesktopFileName(QStringLiteral("k520"));
}

Program::~Program() = default;

int Program::run() {
    QCommandLineParser parser;
    describe(parser);
    parser.process(*this);
    if (!chooseProgramFolder(parser.value(folderOption))) {
        return EXIT_FAILURE;
    }
    main_ = std::make_unique<mdifrmMain>();
    if (main_->Form_Load() == modStartUp::StartResult::quit) {
        return EXIT_SUCCESS;
    }
    main_->show();
    if (!parser.positionalArguments().isEmpty()) {
        modFileCmd::openNamed(stdPath(parser.positionalArguments().constFirst()));
    }
    untilPainted_ = parser.isSet(paintedOption);
    return exec();
}

void Program::closeUnasked() {
    untilPainted_ = false;
    mdimoduMain::state().quitting = true;
    // Behind the painting of the other widgets.
    QTimer::singleShot(0, this, [this] { main_->close(); });
}

bool Program::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    guarded("k520->notify", [&] { handled = QApplication::notify(receiver, event); });
    if (untilPainted_ && event->type() == QEvent::Paint && receiver == main_.get()) {
        closeUnasked();
    }
    return handled;
}

}  // namespace k520
