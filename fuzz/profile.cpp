// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any bytes as a settings text: setting a value changes the value's line and no other byte.

#include "app/profileText.h"
#include "base/Checked.h"
#include "base/RuntimeError.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;

/// What is left of two texts without what they share at both ends.
struct Difference {
    std::string_view before;
    std::string_view after;
};

Difference differenceOf(std::string_view before, std::string_view after) {
    const auto length = std::min(before.size(), after.size());
    const auto same = std::ranges::mismatch(before, after);
    const auto front = static_cast<std::size_t>(same.in1 - before.begin());
    std::size_t back = 0;
    while (back < length - front &&
           before[before.size() - back - 1] == after[after.size() - back - 1]) {
        ++back;
    }
    return {before.substr(front, before.size() - front - back),
            after.substr(front, after.size() - front - back)};
}

std::string_view withoutSpace(std::string_view text) {
    const auto first = std::min(text.find_first_not_of(" \t"), text.size());
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

bool sameName(std::string_view a, std::string_view b) {
    return lowerAscii(withoutSpace(a)) == lowerAscii(withoutSpace(b));
}

struct Key {
    std::string section;
    std::string name;
};

void requireSet(const ProfileText& before, const Key& key, const std::string& value,
                const Key& other) {
    ProfileText text = before;
    try {
        text.setValue(key.section, key.name, value);
    } catch (const RuntimeError& error) {
        require(error.number() == errNum::invalidCall, "what a line cannot hold is refused");
        require(text.bytes() == before.bytes(), "a refused value changes nothing");
        return;
    }
    const auto held = text.value(key.section, key.name);
    // One pair of quotes around a value is dropped when it is read.
    const auto plain = withoutSpace(value);
    require(held && (*held == plain ||
                     (plain.size() >= 2 && plain.substr(1, plain.size() - 2) == *held)),
            "the value is there");
    const bool known = before.value(key.section, key.name).has_value();
    const auto [gone, come] = differenceOf(before.bytes(), text.bytes());
    require(known
                ? gone.find_first_of("\r\n") == gone.npos && come.find_first_of("\r\n") == come.npos
                : gone.empty(),
            "every other line stays");
    if (!sameName(key.section, other.section) || !sameName(key.name, other.name)) {
        require(before.value(other.section, other.name) == text.value(other.section, other.name),
                "every other value stays");
    }
    const std::string settled = text.bytes();
    text.setValue(key.section, key.name, value);
    require(text.bytes() == settled, "the same value again changes nothing");
}

std::size_t charactersOf(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void requireBuffered(const std::string& value, SettingBuffer buffer) {
    const auto read = throughBuffer(value, buffer);
    require(charactersOf(read) <= static_cast<std::size_t>(buffer.length), "a value is cut");
    require(value.find(read) != value.npos, "to a part of it");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    Key key;
    key.section = source.text(20);
    key.name = source.text(20);
    const std::string value = source.text(60);
    Key other;
    other.section = source.text(20);
    other.name = source.text(20);
    SettingBuffer buffer{};
    buffer.length = source.below(40) + 1;
    buffer.size = source.below(40) + 1;
    const std::string bytes = source.restText();
    const ProfileText text(bytes);
    require(text.bytes() == bytes, "a text is kept as it is");
    requireBuffered(bytes, buffer);
    requireSet(text, key, value, other);
    return 0;
}
