// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>

#include "desktop/program/QtDialogs.h"
#include "desktop/widgets/DesktopClock.h"

namespace k520 {

class mdifrmMain;

/// The desktop program: its arguments, its clock and dialogs, its main window. What escapes from an
/// event's handler goes to the error list and no further.
class Program : public QApplication {
    Q_OBJECT

  public:
    /// The whole program; the exit code of the process. Help and version need no display, and a
    /// missing display is told in one line.
    [[nodiscard]] static int main(int count, char** words);

    Program(int& count, char** words);
    ~Program() override;
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Runs to the end; the exit code of the process.
    [[nodiscard]] int run();

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    /// Closes the main window without a question.
    void closeUnasked();

    QTranslator toolkitTexts_;
    DesktopClock clock_;
    QtDialogs dialogs_;
    std::unique_ptr<mdifrmMain> main_;
    bool untilPainted_ = false;
};

}  // namespace k520
