// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/qtText.h"

#include <QFile>
#include <QRegularExpression>

#include "app/modSoftFace.h"

namespace k520 {

QString qText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string stdText(const QString& text) {
    return text.toStdString();
}

QString qPath(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

std::string stdPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString softText(SoftText text) {
    return qText(modSoftFace::text(text));
}

QString qSay(const Text& text) {
    return qText(say(text));
}

QString plainCaption(QString caption) {
    static const QRegularExpression bracketed(QStringLiteral(" ?\\(&.\\)"));
    return caption.remove(bracketed).remove(u'&');
}

QString withMnemonic(QString caption, char letter) {
    const QChar key = QLatin1Char(letter);
    if (caption.isEmpty()) {
        return caption;
    }
    const auto at = caption.indexOf(key, 0, Qt::CaseInsensitive);
    return at >= 0 ? caption.insert(at, u'&') : QStringLiteral("%1(&%2)").arg(caption, key);
}

}  // namespace k520
