// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Signal.h"
#include "document/document.h"
#include "image/documentOrigin.h"

/// Undo and redo, and what differs from the file: whole configurations, remembered one a step.
///
/// Nothing is remembered before start(); a program without windows never starts. From then on
/// every change that documentOrigin tells of is a step.
namespace k520::history {

/// The most steps that are remembered; the oldest are forgotten.
inline constexpr std::size_t mostSteps = 1000;

/// Where in the windows a step took place: the first thing that differs.
struct Place {
    enum class Kind : std::uint8_t { cell, option, band, byte, nothing };

    Kind kind = Kind::nothing;
    int number = 0;  ///< a channel, an option, or an address
    int column = 0;  ///< of a cell

    friend bool operator==(const Place&, const Place&) = default;
};

/// A configuration whose parts are shared with its neighbours as long as they are equal: a thousand
/// of them differ in little.
struct Kept {
    using Cells = std::vector<document::Shown::GridCell>;

    std::shared_ptr<const MemoryImage> image;
    std::shared_ptr<const MemoryImage> defaultImage;
    std::vector<std::shared_ptr<const modChMem::Channel>> channels;
    std::vector<std::shared_ptr<const Cells>> rows;  ///< the grid's cells, from row 1
    /// All the rest; its images, channels and cells are empty.
    std::shared_ptr<const document::Document> rest;
};

[[nodiscard]] Kept keep(const document::Document& document, const Kept& neighbour);
[[nodiscard]] document::Document unpacked(const Kept& kept);

/// The first thing in which two configurations differ.
[[nodiscard]] Place firstDifference(const document::Document& a, const document::Document& b);

/// A state that can be gone back to.
struct Entry {
    Kept kept;
    std::uint32_t document = 0;  ///< which of the documents begun so far it is a state of
    std::string what;            ///< of a past one: the step that left it; of a future one: the
                                 ///< step that leads to it
};

/// Where a document belongs. All its states share that: undoing an edit does not undo Save As.
struct Home {
    std::string file;  ///< the current path
    documentOrigin::Origin origin = documentOrigin::Origin::defaults;
};

/// What a file holds, as saved or opened last.
struct Saved {
    MemoryImage image;  ///< as encoded, without the stamp
    document::Shown shown;
};

struct State {
    bool recording = false;
    bool moving = false;       ///< while a step is undone or redone
    Entry now;                 ///< as it was after the last step
    std::deque<Entry> past;    ///< the oldest first
    std::deque<Entry> future;  ///< the next one last
    std::map<std::uint32_t, Home> homes;
    std::map<std::string, Saved> saved;
    documentOrigin::Moment seen;
    bool changed = false;
    /// There is more or less to undo, or the change mark may have come or gone.
    Signal<> onChange;
    Subscription following;
};

[[nodiscard]] State& state();

/// Forgets everything; the configuration as it is now is the beginning, and counts as saved.
void start();

/// The document belongs to another file from now on.
void setFile(std::string path);
/// The file that it belongs to.
[[nodiscard]] std::string file();
/// That file holds what is shown now.
void markSaved();

/// Whether saving now would give another file than the one saved or opened last, its programming
/// stamp left out.
[[nodiscard]] inline bool changed() {
    return state().changed;
}
/// What a cell of the channel grid showed when the file was saved or opened; nothing where it shows
/// the same now.
[[nodiscard]] std::optional<std::string> savedText(int row, int column);

[[nodiscard]] inline bool canUndo() {
    return !state().past.empty();
}
[[nodiscard]] inline bool canRedo() {
    return !state().future.empty();
}
/// What undoing and redoing would take back or make again; empty where nobody named the step.
[[nodiscard]] std::string undoName();
[[nodiscard]] std::string redoName();

/// Goes back one step, or forward again; does nothing where there is none. The origin follows; the
/// current path, file(), is the caller's to set. Returns where something changed.
Place undo();
Place redo();

}  // namespace k520::history
