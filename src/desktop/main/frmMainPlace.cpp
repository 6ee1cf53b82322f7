// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "desktop/main/frmMainPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <vector>

#include "app/windowPlace.h"

namespace k520::frmMainPlace {

namespace {

/// Room for the frame that the window manager draws: it is not known before the window is shown.
constexpr QSize frameRoom(12, 40);

std::vector<windowPlace::Box> screens() {
    std::vector<windowPlace::Box> boxes;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect room = screen->availableGeometry();
        const windowPlace::Box box{room.left(), room.top(), room.width() - frameRoom.width(),
                                   room.height() - frameRoom.height()};
        // The first one is for a window that has no place on any.
        boxes.insert(screen == QGuiApplication::primaryScreen() ? boxes.begin() : boxes.end(), box);
    }
    return boxes;
}

}  // namespace

void restore(QWidget& window, QSize firstSize) {
    const auto stored = windowPlace::stored();
    const QPoint first = QGuiApplication::primaryScreen()->availableGeometry().topLeft();
    const auto box =
        windowPlace::fitted(stored.value_or(windowPlace::Box{
                                first.x(), first.y(), firstSize.width(), firstSize.height()}),
                            screens());
    window.resize(box.width, box.height);
    if (stored) {
        window.move(box.left, box.top);
    }
}

void save(const QWidget& window) {
    windowPlace::store({window.pos().x(), window.pos().y(), window.width(), window.height()});
}

}  // namespace k520::frmMainPlace
