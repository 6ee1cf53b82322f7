// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Ways to a data file beside the file chooser: the recent ones, and one that is dropped.
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>

#include "app/ownTexts.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/widgets/qtText.h"
#include "link/session/modSession.h"
#include "program/modFileCmd.h"
#include "program/recentFiles.h"

namespace k520 {

namespace {

/// The one local file that is dragged; empty for anything else.
QString fileOf(const QMimeData& dragged) {
    const auto urls = dragged.urls();
    return urls.size() == 1 && urls.constFirst().isLocalFile() ? urls.constFirst().toLocalFile()
                                                               : QString();
}

/// The first ten have the digits as their letters.
QString numbered(int number, const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const QString folder = QFileInfo(path).absolutePath();
    return QStringLiteral("&%1  %2  (%3)")
        .arg(number % recentFiles::most)
        .arg(QString(name).replace(u'&', QStringLiteral("&&")),
             QString(folder).replace(u'&', QStringLiteral("&&")));
}

}  // namespace

void mdifrmMain::openFile(const QString& path) {
    command([&] {
        const auto file = stdPath(path);
        modFileCmd::openNamed(file);
        if (!QFileInfo::exists(path)) {
            recentFiles::remove(file);
        }
    });
}

void mdifrmMain::showRecentMenu() {
    auto* menu = menuBar()->findChild<QMenu*>(QStringLiteral("mnuRecent"));
    menu->clear();
    for (const auto& file : recentFiles::list()) {
        const QString path = qPath(file);
        auto* item = menu->addAction(numbered(static_cast<int>(menu->actions().size()) + 1, path));
        connect(item, &QAction::triggered, this, [this, path] { openFile(path); });
    }
    if (menu->isEmpty()) {
        menu->addAction(qSay(texts::noRecentFiles))->setEnabled(false);
    }
}

void mdifrmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (!modSession::running() && !fileOf(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void mdifrmMain::dropEvent(QDropEvent* event) {
    const QString path = fileOf(*event->mimeData());
    event->acceptProposedAction();
    // The program that is dragged from waits for the end of this event; a question may take long.
    QTimer::singleShot(0, this, [this, path] { openFile(path); });
}

}  // namespace k520
