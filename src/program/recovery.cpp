// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/recovery.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <system_error>
#include <utility>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "app/programFolder.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "base/systemFiles.h"
#include "channels/modChMem.h"
#include "document/encoded.h"
#include "document/history.h"
#include "document/imageDifferences.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "program/modFileCmd.h"

namespace k520::recovery {

namespace {

namespace fs = std::filesystem;
using systemFiles::OpenFolder;

constexpr const char* copyName = "unsaved.bin";
constexpr const char* label = "mdifrmMain->recovery";
/// More programs than anybody runs at once.
constexpr int mostFolders = 20;
constexpr std::size_t longestPath = 4096;

fs::path numbered(int number) {
    return programFolder::state().own / "Recovery" / std::to_string(number);
}

/// The folder, locked; null where another program has it, or where there is none.
std::shared_ptr<OpenFolder> locked(const fs::path& folder) {
    std::error_code error;
    auto open = std::make_shared<OpenFolder>(folder, error);
    return !error && open->tryLock() ? open : nullptr;
}

std::vector<std::uint8_t> copyNow() {
    auto image = document::encoded(document::capture());
    const auto bytes = image.bytes();
    std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    const auto file = history::file();
    copy.insert(copy.end(), file.begin(), file.end());
    return copy;
}

std::optional<Found> read(const fs::path& copy) {
    const std::size_t size = modIicDat::IicDat().size();
    auto bytes = files::read(copy, size + longestPath).bytes;
    if (bytes.size() < size) {
        return std::nullopt;
    }
    const auto path = bytes.begin() + static_cast<std::ptrdiff_t>(size);
    Found found{copy, {path, bytes.end()}, {}};
    bytes.erase(path, bytes.end());
    found.image = std::move(bytes);
    return found;
}

/// Only what a killed program left can be locked.
std::optional<Found> leftIn(const fs::path& folder) {
    std::optional<Found> left;
    if (fs::exists(folder / copyName) && locked(folder) != nullptr) {
        guarded(label, [&] { left = read(folder / copyName); });
    }
    return left;
}

std::string fileName(const Found& found) {
    return fs::path(found.file).filename().string();
}

/// What the copy's file holds now, or nothing where it cannot be read.
std::optional<MemoryImage> imageOfFile(const Found& found) {
    std::optional<MemoryImage> image(std::in_place, modIicDat::IicDat().size());
    try {
        datFile::load(found.file, *image);
    } catch (const RuntimeError&) {
        image.reset();
    }
    return image;
}

MemoryImage imageOf(const Found& found) {
    MemoryImage image(found.image.size());
    std::ranges::copy(found.image, image.bytes().begin());
    return image;
}

/// Where declined work goes.
fs::path declinedName(const Found& found) {
    const auto folder = fs::path(modFileCmd::state().defaultFilePath).parent_path();
    const auto stem = fs::path(found.file).stem().string();
    fs::path name;
    int number = 1;
    do {
        name = folder / (number == 1 ? say(texts::recoveredName, stem)
                                     : say(texts::recoveredNameNumbered, stem, number));
        ++number;
    } while (fs::exists(name));
    return name;
}

std::string question(const Found& found) {
    const auto held = imageOfFile(found);
    const auto keptAs = declinedName(found).filename().string();
    if (!held) {
        return say(texts::recoverNew, fileName(found), keptAs);
    }
    const auto last = static_cast<std::int16_t>(held->size() - 1);
    const auto differences = imageDifferences::find(*held, imageOf(found), {0, last});
    return say(texts::recover, fileName(found),
               imageDifferences::summaryText(imageDifferences::summaryOf(differences)), keptAs);
}

void show(const MemoryImage& image) {
    modIicDat::IicDat() = image;
    modChMem::SoftDisplay();
}

/// The file first, so that what differs from it counts as unsaved.
void take(const Found& found) {
    const documentOrigin::Step step(say(texts::stepRecovered, fileName(found)));
    const auto held = imageOfFile(found);
    documentOrigin::begin(held ? documentOrigin::Origin::file : documentOrigin::Origin::defaults);
    modFileCmd::setCurrentFile(found.file);
    if (held) {
        show(*held);
        history::markSaved();
    }
    show(imageOf(found));
}

void discard(const fs::path& folder) {
    files::remove(folder / copyName);
    std::error_code notEmpty;
    fs::remove(folder, notEmpty);
}

/// Takes the first folder that nobody has and that holds nobody's work.
void takeFolder() {
    State& s = state();
    for (int number = 1; number <= mostFolders && !s.alone; ++number) {
        s.folder = numbered(number);
        if (!fs::exists(s.folder / copyName)) {
            files::makeFolder(s.folder);
            s.alone = locked(s.folder);
        }
    }
}

/// Tells of a failure, but not of the next ones until a copy was made again.
void tell(const std::function<void()>& action) {
    State& s = state();
    try {
        action();
        s.told = false;
    } catch (const RuntimeError& error) {
        if (!std::exchange(s.told, true)) {
            guarded(label, [&] { throw error; });
        }
    }
}

/// Whether the last copy is on its way; a failure is told once.
bool writing() {
    State& s = state();
    if (!s.writing.valid()) {
        return false;
    }
    if (s.writing.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        return true;
    }
    const auto written = std::exchange(s.writing, {});
    tell([&] {
        const auto kept = std::exchange(s.kept, {});
        written.get();
        s.kept = kept;
    });
    return false;
}

void write(std::vector<std::uint8_t> copy) {
    State& s = state();
    s.kept = copy;
    s.writing =
        std::async(std::launch::async, [path = s.folder / copyName, bytes = std::move(copy)] {
            files::replace(path, bytes);
        }).share();
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::vector<Found> found() {
    std::vector<Found> all;
    for (int number = 1; number <= mostFolders; ++number) {
        if (auto left = leftIn(numbered(number))) {
            all.push_back(std::move(*left));
        }
    }
    const auto modified = [](const Found& one) {
        const auto stamp = files::stampOf(one.copy);
        return stamp ? stamp->modified : std::chrono::nanoseconds();
    };
    std::ranges::stable_sort(all, std::ranges::greater(), modified);
    return all;
}

void offer() {
    for (const auto& each : found()) {
        bool taken = false;
        guarded(label, [&] {
            taken = theDialogs().ask(modSoftFace::text(SoftText::notice), question(each), true);
            if (taken) {
                take(each);
                keep();
                wait();
            } else {
                auto image = imageOf(each);
                datFile::save(declinedName(each), image);
            }
            discard(each.copy.parent_path());
        });
        if (taken) {
            return;
        }
    }
}

void keep() {
    State& s = state();
    if (writing()) {
        return;
    }
    if (!history::changed()) {
        if (!std::exchange(s.kept, {}).empty()) {
            guarded(label, [&] { files::remove(s.folder / copyName); });
        }
        return;
    }
    if (!s.alone) {
        tell(takeFolder);
    }
    auto copy = copyNow();
    if (s.alone && copy != s.kept) {
        write(std::move(copy));
    }
}

void wait() {
    if (state().writing.valid()) {
        state().writing.wait();
        static_cast<void>(writing());
    }
}

void end() {
    wait();
    State& s = state();
    if (s.alone) {
        guarded(label, [&] { discard(s.folder); });
        s = State();
    }
}

}  // namespace k520::recovery
