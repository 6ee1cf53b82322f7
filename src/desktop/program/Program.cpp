// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/program/Program.h"

#include <QCommandLineParser>
#include <QLibraryInfo>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>

#include "app/Guard.h"
#include "app/programFolder.h"
#include "base/Interrupt.h"
#include "base/RuntimeError.h"
#include "base/display.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/program/programTexts.h"
#include "desktop/widgets/ClearStyle.h"
#include "desktop/widgets/owned.h"
#include "desktop/widgets/qtText.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"
#include "program/recovery.h"

namespace k520 {

namespace {

const QString folderOption = QStringLiteral("program-folder");
const QString paintedOption = QStringLiteral("until-painted");

void describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(qSay(texts::programDescription));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption({folderOption, qSay(texts::folderOptionHelp), QStringLiteral("folder")});
    // For measuring the start.
    QCommandLineOption painted(paintedOption);
    painted.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(painted);
    parser.addPositionalArgument(QStringLiteral("file"), qSay(texts::fileArgumentHelp),
                                 QStringLiteral("[file]"));
}

/// One line on stderr; returns the exit code.
int complain(const Text& text) {
    std::fputs(("k520: " + say(text) + '\n').c_str(), stderr);
    return EXIT_FAILURE;
}

/// Whether there is a program folder to work in; the user is told where not.
bool chooseProgramFolder(const QString& chosen) {
    try {
        // A folder that does not exist yet is made when something is first stored in it.
        static_cast<void>(programFolder::choose(chosen.isEmpty() ? std::nullopt
                                                                 : std::optional(stdPath(chosen))));
        return true;
    } catch (const RuntimeError& error) {
        theDialogs().tell(BoxIcon::critical, "K520", error.source());
        return false;
    }
}

}  // namespace

int Program::main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    modStartUp::chooseTextLanguage(programFolder::namedIn({words, arguments.size()}));
    const auto isGiven = [&](std::string_view word) {
        return std::ranges::count(arguments, word) != 0;
    };
    if (isGiven("--help") || isGiven("-h") || isGiven("--version") || isGiven("-v")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!display::mayBeThere() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
               !isGiven("-platform")) {
        return complain(texts::noDisplay);
    }
    interrupt::failOverlongWrites();
    return Program(count, words).run();
}

Program::Program(int& count, char** words) : QApplication(count, words) {
    setStyle(own<ClearStyle>());
    setApplicationName(QStringLiteral("k520"));
    setApplicationVersion(QStringLiteral(K520_VERSION));
    setDesktopFileName(QStringLiteral("k520"));
    // The toolkit's own words, also for what is told before there is a main window.
    if (textLanguage() == TextLanguage::chinese &&
        toolkitTexts_.load(QStringLiteral("qtbase_zh_CN"),
                           QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        installTranslator(&toolkitTexts_);
    }
}

Program::~Program() = default;

int Program::run() {
    QCommandLineParser parser;
    describe(parser);
    parser.process(*this);
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) {
        return complain(texts::oneFileOnly);
    }
    if (parser.isSet(folderOption) && parser.value(folderOption).isEmpty()) {
        return complain(texts::emptyFolderOption);
    }
    if (!chooseProgramFolder(parser.value(folderOption))) {
        return EXIT_FAILURE;
    }
    main_ = std::make_unique<mdifrmMain>();
    if (main_->Form_Load() == modStartUp::StartResult::quit) {
        return EXIT_SUCCESS;
    }
    main_->show();
    recovery::offer();
    if (!files.isEmpty()) {
        modFileCmd::openNamed(stdPath(files.constFirst()));
    }
    untilPainted_ = parser.isSet(paintedOption);
    const int code = exec();
    recovery::end();
    return code;
}

void Program::closeUnasked() {
    untilPainted_ = false;
    modStartUp::state().quitting = true;
    // After the painting of the other widgets.
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
