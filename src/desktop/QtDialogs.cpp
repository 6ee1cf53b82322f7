// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/QtDialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QUrl>

#include "app/RuntimeError.h"
#include "channels/frmCustomFre.h"
#include "desktop/qtText.h"

namespace k520 {

namespace {

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

bool QtDialogs::ask(const std::string& title, const std::string& text) {
    QMessageBox box(QMessageBox::Question, qText(title), qText(text),
                    QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void QtDialogs::tell(BoxIcon icon, const std::string& title, const std::string& text) {
    QMessageBox(boxIcon(icon), qText(title), qText(text), QMessageBox::Ok,
                QApplication::activeWindow())
        .exec();
}

std::string QtDialogs::openFile(const FileChoice& choice) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return choose(dialog, choice);
}

std::string QtDialogs::saveFile(const FileChoice& choice) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(qText(choice.defaultExtension));
    return choose(dialog, choice);
}

void QtDialogs::customRange() {
    frmCustomFre(QApplication::activeWindow()).exec();
}

void QtDialogs::openDocument(const std::string& path) {
    const QString file = QFile::decodeName(path.c_str());
    if (!QFileInfo::exists(file)) {
        throw RuntimeError(errNum::fileNotFound, path);
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        throw RuntimeError(errNum::invalidCall, path + ": no program opens it");
    }
}

void QtDialogs::print(const std::string& html) {
    QPrinter printer(QPrinter::HighResolution);
    if (QPrintDialog(&printer, QApplication::activeWindow()).exec() != QDialog::Accepted) {
        return;
    }
    QTextDocument document;
    document.setHtml(qText(html));
    document.print(&printer);
    if (printer.printerState() == QPrinter::Error) {
        throw RuntimeError(errNum::deviceIo, "the printer reports an error");
    }
}

}  // namespace k520
