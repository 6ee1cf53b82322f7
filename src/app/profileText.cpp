// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/profileText.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <random>

#include "base/Checked.h"
#include "base/causeTexts.h"

namespace k520 {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view lineBreaks = "\r\n";
constexpr auto noSection = static_cast<std::size_t>(-1);
constexpr auto freeSlot = static_cast<std::uint32_t>(-1);
constexpr std::string_view notInALine{"\r\n\0", 3};

std::size_t textBegin(std::string_view bytes) {
    return bytes.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
}

std::string_view withoutSpaceBehind(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::string_view withoutSpace(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view()
                                           : withoutSpaceBehind(text.substr(first));
}

/// A value as it counts: the text after "=" without its space and one pair of quotes.
std::string_view plainValue(std::string_view raw) {
    const std::string_view value = withoutSpace(raw);
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view sectionName(std::string_view line) {
    return withoutSpace(line.substr(1, line.find(']') - 1));
}

/// The name of a key line; nothing for any other line.
std::string_view keyName(std::string_view line) {
    const auto equals = line.find('=');
    const auto name = withoutSpace(line.substr(0, equals));
    return equals == std::string_view::npos || name.starts_with(';') ? std::string_view() : name;
}

/// Of a name under a parent; the same for small and capital letters. Another in each process, so
/// that no file can be made whose names all meet.
std::uint64_t nameHash(std::size_t parent, std::string_view name) {
    static const std::uint64_t seed = std::random_device{}();
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = ((0xCBF29CE484222325 ^ seed) * prime) ^ parent;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(lowerAscii(c))) * prime;
    }
    // The index takes the low bits, and the high ones are the well mixed.
    return hash ^ (hash >> 32U);
}

struct LineSpan {
    std::size_t end;   ///< offset of the line's end mark, or the end of the text
    std::size_t next;  ///< offset of the next line
};

LineSpan lineAt(std::string_view bytes, std::size_t begin) {
    const std::size_t end = std::min(bytes.find_first_of(lineBreaks, begin), bytes.size());
    const std::size_t mark = bytes.substr(end, 2) == "\r\n" ? 2 : 1;
    return {end, std::min(end + mark, bytes.size())};
}

/// A lone CR ends a line, but is never chosen for a new one: few programs would see it.
std::string_view lineEndOf(std::string_view bytes) {
    const auto feed = bytes.find('\n');
    const bool windows = feed != std::string_view::npos && feed > 0 && bytes[feed - 1] == '\r';
    return windows ? "\r\n" : "\n";
}

void requireHoldable(std::string_view section, std::string_view key, std::string_view value) {
    const auto holds = [](std::string_view text, std::string_view characters) {
        return text.find_first_of(characters) != std::string_view::npos;
    };
    if (section.empty() || key.empty()) {
        throw RuntimeError(errNum::invalidCall, say(texts::settingNeedsNames));
    }
    if (holds(section, notInALine) || holds(key, notInALine) || holds(value, notInALine) ||
        holds(section, "]") || holds(key, "=") || key.front() == ';' || key.front() == '[') {
        throw RuntimeError(errNum::invalidCall,
                           say(texts::settingNotHoldable, section, key, value));
    }
}

/// The length of the first character of a text that is not empty. A byte that begins no whole
/// UTF-8 character counts as one.
std::size_t characterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 1;
    const std::string_view rest = text.substr(1, length - 1);
    const bool whole =
        rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
        });
    return whole ? length : 1;
}

struct Characters {
    std::string_view text;
    int count = 0;
};

Characters firstCharacters(std::string_view text, int limit) {
    std::size_t bytes = 0;
    int count = 0;
    for (; count < limit && bytes < text.size(); ++count) {
        bytes += characterLength(text.substr(bytes));
    }
    return {text.substr(0, bytes), count};
}

std::string_view withoutLastCharacter(std::string_view text) {
    const int count = firstCharacters(text, std::numeric_limits<int>::max()).count;
    return firstCharacters(text, count - 1).text;
}

}  // namespace

ProfileText::ProfileText(std::string bytes) : bytes_(std::move(bytes)) {
    parse();
}

void ProfileText::parse() {
    entries_.clear();
    index_.clear();
    const std::string_view all = bytes_;
    std::size_t section = noSection;
    for (std::size_t begin = all.find_first_not_of(lineBreaks, textBegin(all)); begin < all.size();
         begin = all.find_first_not_of(lineBreaks, begin)) {
        const LineSpan span = lineAt(all, begin);
        const auto line = all.substr(begin, span.end - begin);
        const auto text = withoutSpace(line);
        if (text.starts_with('[')) {
            // Nobody can ask for a section without a name, nor for the second of a name.
            const auto name = sectionName(text);
            const bool counts = !name.empty() && addEntry(0, name, span.next);
            section = counts ? entries_.size() - 1 : noSection;
        } else if (section != noSection && !text.empty()) {
            entries_[section].end = span.next;
            const auto name = keyName(line);
            if (!name.empty()) {
                addEntry(entries_[section].nameBegin, name, span.end, begin + line.find('=') + 1);
            }
        }
        begin = span.next;
    }
}

bool ProfileText::addEntry(std::size_t parent, std::string_view name, std::size_t end,
                           std::size_t valueBegin) {
    if (entries_.size() * 2 >= index_.size()) {
        growIndex();
    }
    const std::uint64_t hash = nameHash(parent, name);
    auto& slot = index_[slotOf(hash, parent, name)];
    if (slot != freeSlot) {
        return false;
    }
    slot = static_cast<std::uint32_t>(entries_.size());
    const auto nameBegin = static_cast<std::size_t>(name.data() - bytes_.data());
    entries_.push_back({hash, parent, nameBegin, nameBegin + name.size(), end, valueBegin});
    return true;
}

void ProfileText::growIndex() {
    constexpr std::size_t smallest = 1024;
    index_.assign(std::max(smallest, index_.size() * 4), freeSlot);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const auto& entry = entries_[i];
        index_[slotOf(entry.hash, entry.parent, nameOf(entry))] = static_cast<std::uint32_t>(i);
    }
}

/// Where a name stands in the index, or the free slot where it would.
std::size_t ProfileText::slotOf(std::uint64_t hash, std::size_t parent,
                                std::string_view name) const {
    const auto isIt = [&](const Entry& entry) {
        return entry.hash == hash && entry.parent == parent &&
               std::ranges::equal(nameOf(entry), name,
                                  [](char a, char b) { return lowerAscii(a) == lowerAscii(b); });
    };
    const std::size_t last = index_.size() - 1;
    std::size_t slot = hash & last;
    while (index_[slot] != freeSlot && !isIt(entries_[index_[slot]])) {
        slot = (slot + 1) & last;
    }
    return slot;
}

const ProfileText::Entry* ProfileText::find(std::size_t parent, std::string_view name) const {
    if (entries_.empty()) {
        return nullptr;
    }
    const auto place = index_[slotOf(nameHash(parent, name), parent, name)];
    return place == freeSlot ? nullptr : &entries_[place];
}

std::string_view ProfileText::nameOf(const Entry& entry) const {
    return std::string_view(bytes_).substr(entry.nameBegin, entry.nameEnd - entry.nameBegin);
}

std::string_view ProfileText::valueOf(const Entry& key) const {
    return plainValue(std::string_view(bytes_).substr(key.valueBegin, key.end - key.valueBegin));
}

std::optional<std::string> ProfileText::value(std::string_view section,
                                              std::string_view key) const {
    const Entry* sectionEntry = find(0, withoutSpace(section));
    const Entry* entry =
        sectionEntry == nullptr ? nullptr : find(sectionEntry->nameBegin, withoutSpace(key));
    return entry == nullptr ? std::nullopt : std::optional<std::string>(valueOf(*entry));
}

void ProfileText::setValue(std::string_view section, std::string_view key, std::string_view value) {
    section = withoutSpace(section);
    key = withoutSpace(key);
    requireHoldable(section, key, value);
    const std::string keyLine = fmt::format("{}={}{}", key, value, lineEndOf(bytes_));
    const Entry* place = find(0, section);
    const Entry* entry = place == nullptr ? nullptr : find(place->nameBegin, key);
    if (entry != nullptr) {
        if (valueOf(*entry) == plainValue(value)) {
            return;
        }
        bytes_.replace(entry->valueBegin, entry->end - entry->valueBegin, value);
    } else if (place != nullptr) {
        insertLines(place->end, keyLine);
    } else {
        insertLines(bytes_.size(), fmt::format("[{}]{}{}", section, lineEndOf(bytes_), keyLine));
    }
    parse();
}

void ProfileText::insertLines(std::size_t offset, const std::string& lines) {
    const bool atLineBegin = offset <= textBegin(bytes_) ||
                             lineBreaks.find(bytes_[offset - 1]) != std::string_view::npos;
    bytes_.insert(offset, atLineBegin ? lines : std::string(lineEndOf(bytes_)) + lines);
}

std::string throughBuffer(std::string_view value, SettingBuffer buffer) {
    const auto copied = firstCharacters(value, std::min(buffer.length, buffer.size - 1));
    const bool nulFits = copied.count < buffer.length;
    if (!nulFits) {
        return std::string(withoutLastCharacter(trimBlanks(copied.text)));
    }
    // The NUL keeps the blanks in front of it from being trimmed, and is what gets dropped.
    return std::string(
        copied.text.substr(std::min(copied.text.find_first_not_of(' '), copied.text.size())));
}

}  // namespace k520
