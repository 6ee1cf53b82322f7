// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/program/QtDialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>

#include "app/ownTexts.h"
#include "base/RuntimeError.h"
#include "desktop/channels/frmCustomFre.h"
#include "desktop/program/programTexts.h"
#include "desktop/widgets/qtText.h"

namespace k520 {

namespace {

/// What a box has to stand in front of, also when the user is in another program just now.
QWidget* frontWindow() {
    for (QWidget* window : {QApplication::activeWindow(), QApplication::activeModalWidget()}) {
        if (window != nullptr) {
            return window;
        }
    }
    const auto windows = QApplication::topLevelWidgets();
    const auto shown = std::ranges::find_if(windows, &QWidget::isVisible);
    return shown == windows.end() ? nullptr : *shown;
}

/// A box of plain text: a path in it may look like anything.
void setUp(QMessageBox& box, const std::string& title, const std::string& text) {
    box.setWindowTitle(qText(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(qText(text));
}

QMessageBox::Icon boxIcon(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::question:
            return QMessageBox::Question;
        case BoxIcon::exclamation:
            return QMessageBox::Warning;
        case BoxIcon::critical:
            break;
    }
    return QMessageBox::Critical;
}

/// "Data File(*.dat)|*.dat" in the toolkit's form, which has the pattern in its brackets.
QString nameFilter(const std::string& filter) {
    return qText(filter.substr(0, filter.find('|')));
}

std::string choose(QFileDialog& dialog, const FileChoice& choice) {
    dialog.setNameFilter(nameFilter(choice.filter));
    dialog.setDirectory(QFileInfo(QFile::decodeName(choice.folder.c_str())).absolutePath());
    if (!choice.name.empty()) {
        dialog.selectFile(QFile::decodeName(choice.name.c_str()));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    return stdPath(dialog.selectedFiles().constFirst());
}

}  // namespace

QtDialogs::QtDialogs() {
    setDialogs(this);
}

QtDialogs::~QtDialogs() {
    setDialogs(nullptr);
}

bool QtDialogs::ask(const std::string& title, const std::string& text, bool usual) {
    QMessageBox box(frontWindow());
    setUp(box, title, text);
    box.setIcon(QMessageBox::Question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(usual ? QMessageBox::Yes : QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

SaveAnswer QtDialogs::askToSave(const std::string& title, const std::string& text) {
    QMessageBox box(frontWindow());
    setUp(box, title, text);
    box.setIcon(QMessageBox::Question);
    QPushButton* const save = box.addButton(qSay(texts::saveButton), QMessageBox::AcceptRole);
    const auto* const drop =
        box.addButton(qSay(texts::dontSaveButton), QMessageBox::DestructiveRole);
    QPushButton* const cancel = box.addButton(qSay(texts::cancelButton), QMessageBox::RejectRole);
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    box.exec();
    return box.clickedButton() == save   ? SaveAnswer::save
           : box.clickedButton() == drop ? SaveAnswer::dontSave
                                         : SaveAnswer::cancel;
}

void QtDialogs::tell(BoxIcon icon, const std::string& title, const std::string& text) {
    QMessageBox box(frontWindow());
    setUp(box, title, text);
    box.setIcon(boxIcon(icon));
    box.exec();
}

std::string QtDialogs::openFile(const FileChoice& choice) {
    QFileDialog dialog(frontWindow());
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return choose(dialog, choice);
}

std::string QtDialogs::saveFile(const FileChoice& choice) {
    QFileDialog dialog(frontWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(qText(choice.defaultExtension));
    return choose(dialog, choice);
}

void QtDialogs::customRange() {
    frmCustomFre(frontWindow()).exec();
}

void QtDialogs::openDocument(const std::string& path) {
    const QString file = QFile::decodeName(path.c_str());
    if (!QFileInfo::exists(file)) {
        throw RuntimeError(errNum::fileNotFound, path, say(texts::noSuchFile));
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        throw RuntimeError(errNum::invalidCall, path, say(texts::noProgramOpens));
    }
}

void QtDialogs::print(const std::string& html) {
    QPrinter printer(QPrinter::HighResolution);
    if (QPrintDialog(&printer, frontWindow()).exec() != QDialog::Accepted) {
        return;
    }
    QTextDocument document;
    document.setHtml(qText(html));
    document.print(&printer);
    if (printer.printerState() == QPrinter::Error) {
        throw RuntimeError(errNum::deviceIo, say(texts::printerFails));
    }
}

}  // namespace k520
