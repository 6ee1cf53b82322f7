// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/widgets/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "desktop/widgets/owned.h"

namespace k520::icons {

namespace {

QString pathOf(const QString& name) {
    return QStringLiteral(":/icons/%1.svg").arg(name);
}

QColor colourFor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::WindowText);
        case QIcon::Selected:
            return palette.color(QPalette::Active, QPalette::HighlightedText);
        default:
            return palette.color(QPalette::Active, QPalette::WindowText);
    }
}

/// Draws the lines of a picture in one colour, chosen when it is drawn.
class LineEngine : public QIconEngine {
  public:
    explicit LineEngine(QString path) : path_(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, drawn(rect.size() * ratio, mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        return drawn(size, mode);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
        return drawn(size, mode);
    }
    [[nodiscard]] QIconEngine* clone() const override { return own<LineEngine>(path_); }

  private:
    [[nodiscard]] QPixmap drawn(const QSize& size, QIcon::Mode mode) const {
        const QColor colour = colourFor(mode);
        const QString key = QStringLiteral("%1 %2x%3 %4")
                                .arg(path_, QString::number(size.width()),
                                     QString::number(size.height()), colour.name(QColor::HexArgb));
        QPixmap picture;
        if (!QPixmapCache::find(key, &picture)) {
            picture = QPixmap(size);
            picture.fill(Qt::transparent);
            QPainter painter(&picture);
            QSvgRenderer(path_).render(&painter);
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(picture.rect(), colour);
            painter.end();
            QPixmapCache::insert(key, picture);
        }
        return picture;
    }

    QString path_;
};

}  // namespace

QIcon line(const QString& name) {
    const QString path = pathOf(name);
    return QFile::exists(path) ? QIcon(own<LineEngine>(path)) : QIcon();
}

QIcon program() {
    return QIcon(pathOf(QStringLiteral("k520")));
}

}  // namespace k520::icons
