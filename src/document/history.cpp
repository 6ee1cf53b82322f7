// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/history.h"

#include <algorithm>
#include <utility>

#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "document/encoded.h"

namespace k520::history {

namespace {

using document::Document;
using document::Shown;

template <class T>
std::shared_ptr<const T> shared(const T& value, const std::shared_ptr<const T>& neighbour) {
    return neighbour && *neighbour == value ? neighbour : std::make_shared<const T>(value);
}

template <class T>
std::shared_ptr<const T> shared(const T& value, const std::vector<std::shared_ptr<const T>>& all,
                                std::size_t i) {
    return shared(value, i < all.size() ? all[i] : nullptr);
}

std::vector<Kept::Cells> rowsOf(const Shown& shown) {
    std::vector<Kept::Cells> rows;
    const auto width = static_cast<std::ptrdiff_t>(shown.columns);
    for (auto from = shown.cells.begin(); width > 0 && shown.cells.end() - from >= width;
         from += width) {
        rows.emplace_back(from, from + width);
    }
    return rows;
}

/// All but what is shared by itself.
Document restOf(const Document& document) {
    Document rest;
    rest.newChannel = document.newChannel;
    rest.options = document.options;
    rest.optionDefaults = document.optionDefaults;
    rest.band = document.band;
    rest.shown.columns = document.shown.columns;
    rest.shown.options = document.shown.options;
    return rest;
}

std::shared_ptr<const Document> sharedRest(const Document& document, const Kept& neighbour) {
    auto rest = restOf(document);
    const bool same =
        neighbour.rest && *neighbour.rest == rest && neighbour.rest->shown == rest.shown;
    return same ? neighbour.rest : std::make_shared<const Document>(std::move(rest));
}

template <class T>
std::optional<int> firstUnequal(const T& a, const T& b) {
    const auto [at, other] = std::ranges::mismatch(a, b);
    return at == std::ranges::end(a) && other == std::ranges::end(b)
               ? std::nullopt
               : std::optional(static_cast<int>(at - std::ranges::begin(a)));
}

/// The text of a cell of the channel grid, rows from 1; null outside it.
const std::string* textOf(const Shown& shown, int row, int column) {
    const auto place = static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(shown.columns) +
                       static_cast<std::size_t>(column);
    return row >= 1 && column >= 0 && column < shown.columns && place < shown.cells.size()
               ? &shown.cells[place].text
               : nullptr;
}

/// The cell of a channel that shows a difference; its first one where none does.
Place cellOf(const Document& a, const Document& b, int channel) {
    for (int column = 1; column < a.shown.columns; ++column) {
        const auto* before = textOf(a.shown, channel, column);
        const auto* after = textOf(b.shown, channel, column);
        if (before != nullptr && after != nullptr && *before != *after) {
            return {Place::Kind::cell, channel, column};
        }
    }
    return {Place::Kind::cell, channel, 1};
}

/// The document that is being told of: another one where New, Open or Read was said since.
std::uint32_t documentNow() {
    const auto begun = documentOrigin::state().now.document;
    return begun != state().seen.document ? begun : state().now.document;
}

/// The first state of a document lies where the one before did, until somebody says otherwise.
Home& home() {
    State& s = state();
    const auto document = documentNow();
    const auto before = s.homes.find(s.now.document);
    return s.homes.try_emplace(document, before != s.homes.end() ? before->second : Home())
        .first->second;
}

void weighChange() {
    State& s = state();
    const auto saved = s.saved.find(home().file);
    s.changed = saved == s.saved.end() ||
                saved->second.image != document::encodedWithoutStamp(document::capture());
}

/// Whether somebody would see a difference. The mark of an edited channel (field 0) is none.
bool sameForAPerson(const Kept& a, const Kept& b) {
    const auto sameChannel = [](const auto& one, const auto& other) {
        auto marked = *one;
        marked.modified() = other->field(0);
        return marked == *other;
    };
    return a.image == b.image && a.defaultImage == b.defaultImage && a.rest == b.rest &&
           a.rows == b.rows && std::ranges::equal(a.channels, b.channels, sameChannel);
}

/// What was shown becomes the past; what is shown now is kept.
void takeStep() {
    State& s = state();
    const auto& origin = documentOrigin::state();
    home().origin = origin.origin;
    const auto document = documentNow();
    Kept kept = keep(document::capture(), s.now.kept);
    if (document == s.now.document && sameForAPerson(kept, s.now.kept)) {
        return;
    }
    s.now.what = origin.what;
    s.past.push_back(std::exchange(s.now, {std::move(kept), document, {}}));
    if (s.past.size() > mostSteps) {
        s.past.pop_front();
    }
    s.future.clear();
}

void follow() {
    State& s = state();
    const auto& now = documentOrigin::state().now;
    if (!s.moving) {
        if (s.seen == now) {
            home().origin = documentOrigin::state().origin;
        } else {
            takeStep();
        }
    }
    s.seen = now;
    weighChange();
    s.onChange.tell();
}

Place move(std::deque<Entry>& from, std::deque<Entry>& to) {
    State& s = state();
    if (from.empty()) {
        return {};
    }
    const auto here = document::capture();
    Entry target = std::move(from.back());
    from.pop_back();
    const auto there = unpacked(target.kept);
    to.push_back({keep(here, target.kept), s.now.document, std::exchange(target.what, {})});
    s.now = std::move(target);
    s.moving = true;
    document::restore(there);
    documentOrigin::state().origin = home().origin;
    documentOrigin::edited();
    s.moving = false;
    return firstDifference(here, there);
}

std::string nameOfLast(const std::deque<Entry>& steps) {
    return steps.empty() ? std::string() : steps.back().what;
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

Kept keep(const Document& document, const Kept& neighbour) {
    Kept kept;
    kept.image = shared(document.image, neighbour.image);
    kept.defaultImage = shared(document.defaultImage, neighbour.defaultImage);
    for (const auto& channel : document.channels) {
        kept.channels.push_back(shared(channel, neighbour.channels, kept.channels.size()));
    }
    for (const auto& row : rowsOf(document.shown)) {
        kept.rows.push_back(shared(row, neighbour.rows, kept.rows.size()));
    }
    kept.rest = sharedRest(document, neighbour);
    return kept;
}

Document unpacked(const Kept& kept) {
    Document document = *kept.rest;
    document.image = *kept.image;
    document.defaultImage = *kept.defaultImage;
    for (const auto& channel : kept.channels) {
        document.channels.push_back(*channel);
    }
    for (const auto& row : kept.rows) {
        document.shown.cells.insert(document.shown.cells.end(), row->begin(), row->end());
    }
    return document;
}

Place firstDifference(const Document& a, const Document& b) {
    if (const auto channel = firstUnequal(a.channels, b.channels)) {
        return cellOf(a, b, *channel + 1);
    }
    if (const auto option = firstUnequal(a.options, b.options)) {
        return {Place::Kind::option, *option, 0};
    }
    if (a.band != b.band) {
        return {Place::Kind::band, 0, 0};
    }
    if (const auto address = firstUnequal(a.image.bytes(), b.image.bytes())) {
        return {Place::Kind::byte, *address, 0};
    }
    return {};
}

void start() {
    State& s = state();
    s.past.clear();
    s.future.clear();
    s.homes.clear();
    s.saved.clear();
    s.seen = documentOrigin::state().now;
    s.now = {keep(document::capture(), {}), s.seen.document, {}};
    s.recording = true;
    home().origin = documentOrigin::state().origin;
    s.following = documentOrigin::state().onChange.subscribe(follow);
}

void setFile(std::string path) {
    if (state().recording) {
        home().file = std::move(path);
    }
}

std::string file() {
    return state().recording ? home().file : std::string();
}

void markSaved() {
    State& s = state();
    if (s.recording) {
        const auto document = document::capture();
        s.saved[home().file] = {document::encodedWithoutStamp(document), document.shown};
        weighChange();
        s.onChange.tell();
    }
}

std::optional<std::string> savedText(int row, int column) {
    const State& s = state();
    if (!s.recording || !s.changed) {
        return std::nullopt;
    }
    const auto saved = s.saved.find(home().file);
    const auto* text = saved == s.saved.end() ? nullptr : textOf(saved->second.shown, row, column);
    const bool same = text == nullptr || *text == modChMem::state().vsfgGridCh.text(row, column);
    return same ? std::nullopt : std::optional(*text);
}

std::string undoName() {
    return nameOfLast(state().past);
}

std::string redoName() {
    return nameOfLast(state().future);
}

Place undo() {
    return move(state().past, state().future);
}

Place redo() {
    return move(state().future, state().past);
}

}  // namespace k520::history
