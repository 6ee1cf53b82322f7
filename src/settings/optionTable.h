// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/softFaceTexts.h"
#include "base/Text.h"
#include "base/typedText.h"
#include "image/MemoryImage.h"

/// The sixteen radio-wide options: one row joins an option's number, names, texts, place in the
/// memory image, ranges and control. Codec, panel and command line all walk these rows.
namespace k520::optionTable {

inline constexpr int optionCount = 16;

/// Some bits of one byte of the memory image.
struct ImageBits {
    std::uint16_t address = 0;
    std::uint8_t mask = 0;

    friend bool operator==(const ImageBits&, const ImageBits&) = default;
};

/// How an option's value stands in the image.
enum class Codec : std::uint8_t {
    byte,        ///< read: the byte under the mask; written: the whole byte
    offsetByte,  ///< the byte is the value + 134, the form of the broadcast receiver's chip
    bit,         ///< read: 1 where the bit is set; written: the bit, set for the value 1 only
    chip,        ///< read only: the field 0, 1, 2, 3 means 0, 1, 2, 1
    crystal,     ///< read only: a letter, or else the two high bits of a second byte
};

enum class ControlKind : std::uint8_t { list, checkBox };

/// What belongs together, in the order in which it is shown.
enum class Group : std::uint8_t { transmit, receiver, voiceAndTones, vox, broadcast, power };
inline constexpr int groupCount = 6;

/// What a list's entries are, value 0 first.
enum class EntryStyle : std::uint8_t {
    numbers,         ///< the numbers from 0
    texts,           ///< interface texts from `firstText` on
    offThenNumbers,  ///< interface text `firstText`, then the numbers from 1
    offThenSeconds,  ///< interface text `firstText`, then 15, 30, 45 ... with the unit's text
};

struct Option {
    std::int16_t number = 0;
    std::string_view control = {};  ///< name of the panel's control
    std::string_view name = {};     ///< what scripts call it
    SoftText caption{};             ///< beside the control
    Group group = Group::transmit;
    Text tip;  ///< what the option is for; an option without one does not compile

    Codec codec = Codec::byte;
    /// Where the value is read from; a second place of mask 0 is none.
    std::array<ImageBits, 2> source{};
    /// The bits of the first place that encoding sets; 0 = never encoded.
    std::uint8_t ownedMask = 0;
    /// A value read from the image is accepted from 0 to here; nothing = always.
    std::optional<std::int16_t> validMax = std::nullopt;

    ControlKind kind = ControlKind::list;
    /// The highest value that the control can show; 1 for a check box.
    std::int16_t max = 1;
    EntryStyle entries = EntryStyle::numbers;
    SoftText firstText{};  ///< see EntryStyle
    /// The list's name in the message about a value above `max`, the blanks after it included.
    std::string_view rangeItem = {};
};

/// All options; an option's place is its number.
[[nodiscard]] std::span<const Option, optionCount> options() noexcept;

/// Option `number`. Raises 9 outside 0..15.
[[nodiscard]] const Option& optionAt(int number);

/// The option that scripts call `name`; null where there is none.
[[nodiscard]] const Option* findOption(std::string_view name) noexcept;

/// The text beside the option's control, in the language in force.
[[nodiscard]] const std::string& captionText(const Option& option);

/// What the option is for, in the language in force.
[[nodiscard]] std::string tipText(const Option& option);

/// The heading of a group, in the language in force.
[[nodiscard]] std::string groupText(Group group);
/// The options of a group. Every option is in one.
[[nodiscard]] std::vector<const Option*> optionsOf(Group group);

/// The entries of the option's list, values 0..max, in the language in force. A check box has the
/// texts for off and on. In a language without texts only what is made of digits remains.
[[nodiscard]] std::vector<std::string> entryTexts(const Option& option);

/// The entry's text; the number itself where there is no such entry or its text is empty.
[[nodiscard]] std::string valueText(const Option& option, std::int16_t value);

/// The way back: the entry that a person's text means, in Chinese and in English whatever the
/// language in force (see typedText.h). Nothing for any other text.
[[nodiscard]] std::optional<typedText::Entry> parseValue(const Option& option,
                                                         std::string_view text);

/// The bits of the image that belong to the option: those that encoding sets, or those that a
/// read-only option is read from. Bits of a whole byte that do not count for the value are among
/// them, so two images can differ there and still give the same value.
[[nodiscard]] std::vector<ImageBits> ownedBits(const Option& option);

/// The value that the image holds; nothing where it is outside the valid range. Raises 9 where the
/// image is too short.
[[nodiscard]] std::optional<std::int16_t> decode(const Option& option, const MemoryImage& image);

/// Puts a value into the image; does nothing for a read-only option. Raises 6 where the byte would
/// be outside 0..255, 9 where the image is too short.
void encode(const Option& option, std::int16_t value, MemoryImage& image);

}  // namespace k520::optionTable
