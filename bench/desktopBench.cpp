// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// The windows in real time, on whatever screen the toolkit is given (QT_QPA_PLATFORM=offscreen for
// none): opening a data file to the repainted grid, opening the memory data window, and how long an
// event waits during a whole read at line speed.

#include <fmt/format.h>

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <ctime>
#include <vector>

#include "app/programFolder.h"
#include "channels/frequency.h"
#include "channels/gridPaste.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "desktop/link/frmCommun.h"
#include "desktop/main/mdifrmMain.h"
#include "desktop/widgets/DesktopClock.h"
#include "document/history.h"
#include "link/protocol/modCommun.h"
#include "link/simulator/simRadio.h"
#include "link/simulator/virtualPort.h"
#include "program/modFileCmd.h"
#include "support/TempFolder.h"

namespace {

using namespace k520;
using Milliseconds = std::vector<double>;

double now() {
    return std::chrono::duration<double, std::milli>(theClock().now()).count();
}

void print(const char* what, Milliseconds times) {
    std::ranges::sort(times);
    fmt::print("{}: min {:.2f}  median {:.2f}  max {:.2f} ms  ({} times)\n", what, times.front(),
               times[times.size() / 2], times.back(), times.size());
}

/// Two files whose sixteen channels differ in every frequency, opened by turns.
void openFiles(const test::TempFolder& folder) {
    const std::string paths[] = {(folder / "a.dat").string(), (folder / "b.dat").string()};
    for (int i = 0; i < 2; ++i) {
        for (int n = 1; n <= modChMem::state().ChNum; ++n) {
            auto& channel = modChMem::state().ChInfo(n);
            channel.rxFre() = channel.txFre() = modModel::state().bandLow + 2500 * (2 * n + i);
        }
        modFileCmd::setCurrentFile(paths[i]);
        modFileCmd::SaveDatFile();
    }
    Milliseconds times;
    for (int i = 0; i < 200; ++i) {
        const double start = now();
        modFileCmd::openDatFile(paths[i % 2]);
        QApplication::processEvents();
        times.push_back(now() - start);
    }
    print("open a data file to the repainted grid", times);
}

/// A block of all cells of all channels, as a spreadsheet gives it.
std::string wholeGrid(int offset) {
    std::string block;
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        const auto mhz =
            frequency::mhzText(modModel::state().bandLow + 2500 * (2 * n + offset) + 100'000);
        block += fmt::format("{0}\t{0}\t88.5\tD023N\tWide\tHigh\tOn\tOff\n", mhz);
    }
    return block;
}

/// Each paste is a step; then they are taken back, one after another.
void pasteAndUndo(mdifrmMain& window) {
    constexpr int rounds = 200;
    const std::string blocks[] = {wholeGrid(0), wholeGrid(1)};
    const gridPaste::Place corner{1, 1};
    Milliseconds pasted;
    Milliseconds undone;
    for (int i = 0; i < rounds; ++i) {
        const double start = now();
        gridPaste::paste(blocks[i % 2], {&corner, 1});
        QApplication::processEvents();
        pasted.push_back(now() - start);
    }
    print("paste 16 x 8 cells, repainted", pasted);
    for (int i = 0; i < rounds; ++i) {
        const double start = now();
        window.mnuUndo_Click();
        QApplication::processEvents();
        undone.push_back(now() - start);
    }
    print("undo a step of 16 x 8 cells, repainted", undone);
}

void openMemoryData(mdifrmMain& window) {
    const double start = now();
    window.showMemDat();
    QApplication::processEvents();
    print("open the memory data window", {now() - start});
}

/// From the scheduler's own count: the user and system times that the system tells are guessed from
/// its ticks, and a program that wakes by the clock is overrated by them.
double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// A timer of 10 ms runs through the session; whatever its events come late, any event would.
void readAtLineSpeed(mdifrmMain& window) {
    const auto radio = std::make_shared<SimRadio>();
    modCommun::state().portMaker = [&](std::int16_t) {
        return std::make_unique<VirtualPort>(radio);
    };
    constexpr double beat = 10;
    Milliseconds late;
    double last = now();
    QTimer heart;
    heart.setTimerType(Qt::PreciseTimer);
    QObject::connect(&heart, &QTimer::timeout, [&] {
        late.push_back(std::max(0.0, now() - last - beat));
        last = now();
    });
    window.mnuReadFre_Click();
    auto* dialog = window.findChild<frmCommun*>();
    bool done = false;
    QObject::connect(dialog, &frmCommun::sessionEnded,
                     [&](Direction, bool succeeded) { done = succeeded; });
    heart.start(static_cast<int>(beat));
    const double processor = processorSeconds();
    const double start = now();
    last = start;
    dialog->findChild<QPushButton*>(QStringLiteral("cmdRead"))->click();
    const double seconds = (now() - start) / 1000;
    print("events during a session, late by", late);
    fmt::print("the session: {}, {:.2f} s, processor {:.1f} %\n", done ? "succeeded" : "FAILED",
               seconds, 100 * (processorSeconds() - processor) / seconds);
}

}  // namespace

int main(int count, char** words) {
    QApplication application(count, words);
    DesktopClock clock;
    test::TempFolder folder;
    std::filesystem::copy_file(K520_SHARE_DIR "/Uninstall.exe", folder / "Uninstall.exe");
    programFolder::state().own = folder.path();
    programFolder::state().shipped = K520_SHARE_DIR;
    mdifrmMain window;
    static_cast<void>(window.Form_Load());
    window.show();
    QApplication::processEvents();
    openFiles(folder);
    pasteAndUndo(window);
    openMemoryData(window);
    // Nobody answers a question about unsaved changes.
    history::markSaved();
    readAtLineSpeed(window);
}
