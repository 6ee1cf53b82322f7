// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/unfinishedWrite.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "app/Guard.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "image/datFile.h"
#include "image/stamp.h"
#include "link/session/backups.h"

namespace k520::unfinishedWrite {

namespace {

namespace fs = std::filesystem;
using modIicDat::AddressRange;
using Bytes = std::vector<std::uint8_t>;

/// More than a bad line falsifies in one session, less than one channel has.
constexpr int mostFalsified = 8;
/// More than any note has in front of its images.
constexpr std::size_t longestHead = 1U << 16U;
/// The write stamps its image a moment after the note was made.
constexpr std::chrono::minutes longestUntilStamped{1};

constexpr std::string_view begun = "begun";
constexpr std::string_view barelyBegun = "barely begun";

std::string_view extensionOf(State state) {
    return state == State::unfinished ? backups::unfinishedExtension : backups::writtenExtension;
}

fs::path noteBeside(const fs::path& backup, State state) {
    return fs::path(backup).replace_extension(extensionOf(state));
}

bool inStamp(int address) {
    return address >= stamp::address && address < stamp::address + stamp::length;
}

bool isUsable(const fs::path& backup) {
    return backups::parseName(backup) && files::stampOf(backup);
}

Bytes bytesOf(const Note& note) {
    std::string head = fmt::format("{}\n", note.barelyBegun ? barelyBegun : begun);
    for (const auto& backup : note.before) {
        head += backup.filename().string() + '\n';
    }
    head += '\n';
    Bytes bytes(head.begin(), head.end());
    for (const MemoryImage* image : {&note.found, &note.sent}) {
        bytes.insert(bytes.end(), image->bytes().begin(), image->bytes().end());
    }
    return bytes;
}

/// The images at the end of a note's file; what is in front of them is returned. Nothing where the
/// file is too short.
std::optional<std::string> splitOff(const Bytes& bytes, Note& note) {
    const std::size_t size = modIicDat::IicDat().size();
    if (size <= static_cast<std::size_t>(datFile::leastDatNum) || bytes.size() < 2 * size) {
        return std::nullopt;
    }
    note.found = note.sent = MemoryImage(size);
    const auto images = std::span(bytes).last(2 * size);
    std::ranges::copy(images.first(size), note.found.bytes().begin());
    std::ranges::copy(images.last(size), note.sent.bytes().begin());
    return std::string(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(2 * size));
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return lines;
}

/// The note beside a backup; nothing where there is none that can be used.
std::optional<Note> noteOf(const fs::path& backup, State state) {
    try {
        const auto file =
            files::read(noteBeside(backup, state), longestHead + 2 * modIicDat::IicDat().size());
        Note note{.backup = backup, .state = state};
        const auto head = splitOff(file.bytes, note);
        const auto lines = linesOf(head.value_or(""));
        // A note for images of another size has no empty line where this one's head ends.
        if (lines.size() < 3 || !lines.back().empty() || !head->ends_with("\n\n")) {
            return std::nullopt;
        }
        note.barelyBegun = lines.front() == barelyBegun;
        for (const auto& name : std::span(lines).subspan(1, lines.size() - 2)) {
            const auto before = backups::folder() / fs::path(name).filename();
            if (isUsable(before)) {
                note.before.push_back(before);
            }
        }
        return note.before.empty() ? std::nullopt : std::optional(std::move(note));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

/// An older version's note: the backup's name, a line end, and the images.
std::optional<Note> olderNote(const fs::path& path, State state) {
    const auto file = files::read(path, longestHead + 2 * modIicDat::IicDat().size());
    Note note{.backup = fs::path(), .state = state};
    const auto head = splitOff(file.bytes, note);
    if (!head || !head->ends_with('\n') || head->find('\n') + 1 != head->size()) {
        return std::nullopt;
    }
    note.backup = backups::folder() / fs::path(head->substr(0, head->size() - 1)).filename();
    note.before = {note.backup};
    // It was made before the stamp: any stamp fits.
    std::ranges::fill(note.sent.bytes().subspan(stamp::address, stamp::length), std::uint8_t{0xFF});
    return note;
}

void adopt(const fs::path& path, State state) {
    const auto note = olderNote(path, state);
    if (!note) {
        return;  // for an image of another size
    }
    const bool known = files::stampOf(noteBeside(note->backup, State::unfinished)) ||
                       files::stampOf(noteBeside(note->backup, State::written));
    if (isUsable(note->backup) && !known) {
        keep(*note);
    }
    files::remove(path);
}

void adoptOlder() {
    constexpr std::array<std::pair<const char*, State>, 2> older{
        {{"unfinished-write", State::unfinished}, {"last-write", State::written}}};
    for (const auto& [name, state] : older) {
        guarded("unfinishedWrite->adoptOlder", [&, which = state, path = backups::folder() / name] {
            if (files::stampOf(path)) {
                adopt(path, which);
            }
        });
    }
}

/// The newest first.
std::vector<Note> notesIn(std::initializer_list<State> states) {
    adoptOlder();
    const auto made = backups::list();
    std::vector<Note> notes;
    for (auto backup = made.rbegin(); backup != made.rend(); ++backup) {
        std::optional<Note> note;
        for (const State state : states) {
            note = note ? note : noteOf(backup->path, state);
        }
        if (note) {
            notes.push_back(std::move(*note));
        }
    }
    return notes;
}

/// What the radio held before the first attempt, by each backup that can be the one.
std::vector<MemoryImage> heldBefore(const Note& note) {
    std::vector<MemoryImage> images;
    for (const auto& backup : note.before) {
        try {
            images.push_back(backups::load(backup, backups::parseName(backup)->covered).image);
        } catch (const RuntimeError&) {
            continue;  // the others still count
        }
    }
    return images;
}

bool sameStamp(const MemoryImage& a, const MemoryImage& b) {
    return std::ranges::equal(a.bytes().subspan(stamp::address, stamp::length),
                              b.bytes().subspan(stamp::address, stamp::length));
}

std::chrono::minutes minutesOf(const DateTime& time) {
    const std::chrono::sys_days day(std::chrono::year(time.year) /
                                    std::chrono::month(static_cast<unsigned>(time.month)) /
                                    std::chrono::day(static_cast<unsigned>(time.day)));
    return day.time_since_epoch() + std::chrono::hours(time.hour) +
           std::chrono::minutes(time.minute);
}

/// Whether the stamp of a radio is that of the write.
bool stampedByWrite(const Note& note, const MemoryImage& now) {
    const auto sent = stamp::read(note.sent);
    const auto held = stamp::read(now);
    if (!sent || !held) {
        return !sent;
    }
    const auto later = minutesOf(*held) - minutesOf(*sent);
    return later >= std::chrono::minutes(0) && later <= longestUntilStamped;
}

bool stampFits(const Note& note, const std::vector<MemoryImage>& before, const MemoryImage& now,
               AddressRange range) {
    const bool covered =
        range.start <= stamp::address && range.end >= stamp::address + stamp::length - 1;
    if (!covered || stampedByWrite(note, now)) {
        return true;
    }
    const auto holdsIt = [&](const MemoryImage& image) { return sameStamp(image, now); };
    return note.state == State::unfinished &&
           (holdsIt(note.found) || std::ranges::any_of(before, holdsIt));
}

/// The bytes of a radio that speak for its being the one of a note, because only its write can have
/// put them there, and those that speak against it.
struct Weight {
    int forIt = 0;
    int against = 0;
};

Weight weigh(const Note& note, const std::vector<MemoryImage>& before, const MemoryImage& now,
             AddressRange range) {
    Weight weight;
    for (int address = range.start; address <= range.end; ++address) {
        const bool held = std::ranges::any_of(
            before, [&](const MemoryImage& image) { return image(address) == now(address); });
        const bool sent = note.sent(address) == now(address);
        const bool known = sent || note.found(address) == now(address) || inStamp(address) ||
                           (held && note.state == State::unfinished);
        weight.forIt += sent && !held ? 1 : 0;
        weight.against += known ? 0 : 1;
    }
    return weight;
}

bool contains(AddressRange outer, AddressRange inner) {
    return outer.start <= inner.start && inner.end <= outer.end;
}

/// Whether all that came from the radio of a note before its first attempt lies in a range.
bool allWithin(const Note& note, AddressRange range) {
    return std::ranges::all_of(note.before, [&](const auto& backup) {
        return contains(range, backups::parseName(backup)->covered);
    });
}

/// Whether two images agree in a range but for a smaller one. The stamp does not count.
bool agreeBeside(AddressRange written, const MemoryImage& a, const MemoryImage& b,
                 AddressRange range) {
    for (int address = range.start; address <= range.end; ++address) {
        const bool beside = address < written.start || address > written.end;
        if (beside && !inStamp(address) && a(address) != b(address)) {
            return false;
        }
    }
    return true;
}

AddressRange coveredBy(const Note& note) {
    return backups::parseName(note.backup)->covered;
}

/// What can be compared of a note's radio, of which the range was read.
AddressRange comparedFor(const Note& note, const std::optional<AddressRange>& range) {
    const auto covered = coveredBy(note);
    const auto read = range.value_or(covered);
    return {std::max(covered.start, read.start), std::min(covered.end, read.end)};
}

/// Whether a good write left what the radio of an unfinished one held before its first attempt.
bool wentBefore(const Note& written, const Note& later) {
    if (written.state != State::written || later.state != State::unfinished) {
        return false;
    }
    const auto held = heldBefore(later);
    const auto [first, last] = coveredBy(later);
    return !held.empty() &&
           std::ranges::all_of(held, [&, from = first, to = last](const auto& image) {
               for (int address = from; address <= to; ++address) {
                   if (!inStamp(address) && image(address) != written.sent(address)) {
                       return false;
                   }
               }
               return from > stamp::address || to < stamp::address + stamp::length - 1 ||
                      stampedByWrite(written, image);
           });
}

}  // namespace

void keep(const Note& note) {
    files::replace(noteBeside(note.backup, note.state), bytesOf(note));
    const State other = note.state == State::unfinished ? State::written : State::unfinished;
    files::remove(noteBeside(note.backup, other));
}

void drop(const fs::path& backup) {
    for (const State state : {State::unfinished, State::written}) {
        guarded("unfinishedWrite->drop", [&] { files::remove(noteBeside(backup, state)); });
    }
}

std::vector<Note> all() {
    // Where a program was killed between two files, the unfinished one counts.
    return notesIn({State::unfinished, State::written});
}

std::vector<Note> unfinished() {
    return notesIn({State::unfinished});
}

std::vector<fs::path> neededBackups() {
    std::vector<fs::path> needed;
    for (const Note& note : unfinished()) {
        needed.push_back(note.backup);
        needed.insert(needed.end(), note.before.begin(), note.before.end());
    }
    return needed;
}

std::optional<int> doubts(const Note& note, const MemoryImage& now, AddressRange range) {
    const auto before = heldBefore(note);
    if (!stampFits(note, before, now, range)) {
        return std::nullopt;
    }
    const auto [forIt, against] = weigh(note, before, now, range);
    // A whole radio may differ from one of its kind in no more bytes than a bad line falsifies.
    const bool fits = against == 0 || (against <= mostFalsified && against < forIt);
    return fits ? std::optional(against) : std::nullopt;
}

std::vector<Note> bestFitting(const std::vector<Note>& notes, const MemoryImage& now,
                              const std::optional<AddressRange>& range) {
    std::vector<Note> certain;
    std::vector<Note> doubtful;
    for (const Note& note : notes) {
        const auto compared = comparedFor(note, range);
        if (compared.end < compared.start) {
            continue;
        }
        if (const auto against = doubts(note, now, compared)) {
            (*against == 0 ? certain : doubtful).push_back(note);
        }
    }
    const auto& best = certain.empty() ? doubtful : certain;
    std::vector<Note> kept;
    std::ranges::copy_if(best, std::back_inserter(kept), [&](const Note& note) {
        return std::ranges::none_of(best, [&](const Note& later) {
            return wentBefore(note, later) && shows(later, now, comparedFor(later, range));
        });
    });
    return kept;
}

bool shows(const Note& note, const MemoryImage& now, AddressRange range) {
    return note.barelyBegun || weigh(note, heldBefore(note), now, range).forIt > 0;
}

bool staysTorn(const Note& note, const MemoryImage& now, AddressRange known, AddressRange written) {
    if (allWithin(note, written)) {
        return false;
    }
    const auto isWhole = [&](const MemoryImage& image) {
        return agreeBeside(written, image, now, known);
    };
    // What a later attempt sent stands on what an earlier one had torn.
    const bool first = note.before == std::vector{note.backup};
    return !allWithin(note, known) ||
           !(std::ranges::any_of(heldBefore(note), isWhole) || (first && isWhole(note.sent)));
}

}  // namespace k520::unfinishedWrite
