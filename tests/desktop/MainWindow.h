// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <QAction>
#include <memory>

#include "app/mdifrmMain.h"
#include "desktop/Desktop.h"

namespace k520::test {

/// The whole program in its main window.
class MainWindow : public Desktop {
  protected:
    void open(int language = mdimoduMain::languageEnglish, const std::string& settings = {}) {
        writeSettings(language, settings);
        main = std::make_unique<mdifrmMain>();
        ASSERT_EQ(main->Form_Load(), modStartUp::StartResult::running);
        main->show();
        main->activateWindow();
        QApplication::processEvents();
    }
    ~MainWindow() override { main.reset(); }

    QAction& action(const char* name) { return *main->findChild<QAction*>(QLatin1String(name)); }

    std::unique_ptr<mdifrmMain> main;
};

}  // namespace k520::test
