// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fmt/format.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/programFolder.h"
#include "base/Files.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/widgets/EditTable.h"
#include "desktop/widgets/qtText.h"
#include "link/protocol/comPorts.h"
#include "program/modStartUp.h"
#include "support/ProgramFolder.h"

namespace k520::test {

/// A simulated clock whose waits serve the event queue, as the desktop's do.
class EventClock : public SimulatedClock {
  public:
    void waitUntil(Microseconds deadline) override {
        QApplication::processEvents();
        if (onWait) {
            onWait();
        }
        SimulatedClock::waitUntil(deadline);
    }
    /// What a user does while the program waits.
    std::function<void()> onWait;
};

/// The shipped settings, but every port is the simulated radio. Windows are made by the tests.
class Desktop : public ProgramFolder {
  protected:
    /// The start-up without windows. Lines of section "Setting" go in front of the shipped ones.
    void start(int language = mdimoduMain::languageEnglish, const std::string& settings = {}) {
        writeSettings(language, settings);
        ASSERT_EQ(modStartUp::Form_Load(), modStartUp::StartResult::running);
    }
    void writeSettings(int language, const std::string& settings = {}) {
        const auto shipped =
            files::read(std::filesystem::path(K520_SHARE_DIR) / "Uninstall.exe", 1'000'000).bytes;
        std::string ports;
        for (int n = comPorts::firstPort; n <= comPorts::lastPort; ++n) {
            ports += fmt::format("COM{}=virtual\n", n);
        }
        std::string text(shipped.begin(), shipped.end());
        // Of two equal keys the first wins, and of two equal sections too.
        const auto putFirst = [&](const std::string& section, const std::string& lines) {
            text.insert(text.find(section) + section.size(), lines);
        };
        putFirst("[Ports]\n", ports);
        putFirst("[Setting]\n", fmt::format("FirRun=0\nLanguage={}\n{}", language, settings));
        folder.write("Uninstall.exe", text);
        programFolder::state().own = folder.path();
        programFolder::state().shipped = K520_SHARE_DIR;
    }
    /// Serves events until something holds; false when it does not after a great many rounds.
    static bool served(const std::function<bool()>& holds) {
        for (int round = 0; round < 1000 && !holds(); ++round) {
            QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
        }
        return holds();
    }
    /// A control by its name; the test ends where there is none.
    template <class Control>
    static Control& find(const QWidget& window, const char* name) {
        auto* found = window.findChild<Control*>(QLatin1String(name));
        return found != nullptr ? *found : throw std::runtime_error(std::string("no ") + name);
    }
    /// What a control says, which is its text or another of its properties.
    static std::string said(const QWidget& window, const char* name, const char* what = "text") {
        return stdText(find<QWidget>(window, name).property(what).toString());
    }
    /// Shows a window as the one that has the keyboard; false when it does not get it.
    static bool showActive(QWidget& window) {
        window.show();
        window.activateWindow();
        return served([&] { return window.isActiveWindow(); });
    }
    static std::vector<std::string> failures() {
        std::vector<std::string> all;
        for (const auto& entry : modShowErr::state().entries) {
            all.push_back(fmt::format("{} {} {}", entry.label, entry.number, entry.source));
        }
        return all;
    }

    EventClock clock;
    ScriptedDialogs dialogs;
};

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

    /// Whether an editor is open in a cell of a table, or of any table.
    [[nodiscard]] bool editorOpen(const char* name = nullptr) const {
        const auto tables = main->findChildren<EditTable*>(QLatin1String(name));
        return std::ranges::any_of(tables, [](const EditTable* table) {
            const auto inside =
                table->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
            return std::ranges::any_of(inside, [](const QWidget* w) { return !w->isHidden(); });
        });
    }

    QAction& action(const char* name) { return *main->findChild<QAction*>(QLatin1String(name)); }

    std::unique_ptr<mdifrmMain> main;
};

}  // namespace k520::test
