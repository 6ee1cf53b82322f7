// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/columnDefinition.h"

#include <algorithm>

#include "base/Checked.h"
#include "channels/codecTexts.h"

namespace k520::modChMem {

const std::string& ColumnDefinition::entry(int index) const {
    static const std::string blank;
    if (index < 0 || index >= capacity) {
        throwSubscript("ChColDef entry", index);
    }
    const auto at = static_cast<std::size_t>(index);
    return at < entries_.size() ? entries_[at] : blank;
}

std::int32_t ColumnDefinition::defaultValue() const {
    return naming(say(texts::defaultOfColumn, key()), [&] { return textToInt32(entry(2)); });
}

std::span<const std::string> ColumnDefinition::texts() const noexcept {
    const std::span all(entries_);
    return all.subspan(std::min<std::size_t>(firstText, all.size()));
}

const std::string& ColumnDefinition::textOf(std::int32_t value) const {
    // Checked before the addition, which could overflow.
    return entry(value < capacity ? value + firstText : capacity);
}

std::optional<typedText::Entry> ColumnDefinition::meaningOf(std::string_view text) const {
    const std::array<std::span<const std::string>, 2> lists{texts(), otherTexts_};
    const auto found = typedText::entry(text, lists);
    // The other language may have more entries.
    return found && found->value < std::ssize(texts()) ? found : std::nullopt;
}

bool ColumnDefinition::isList() const {
    using namespace columnKey;
    static constexpr std::array special{rx, tx, offset, name, decode, encode};
    return std::ranges::find(special, key()) == special.end();
}

}  // namespace k520::modChMem
