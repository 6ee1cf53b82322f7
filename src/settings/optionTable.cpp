// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "settings/optionTable.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "settings/optionTexts.h"

namespace k520::optionTable {

namespace {

using enum Codec;
using enum ControlKind;
using enum EntryStyle;
using enum Group;

constexpr int secondsStep = 15;
constexpr int byteOffset = 134;

/// The meanings of the voice chip's field.
constexpr std::array<int, 4> chipValues{0, 1, 2, 1};
/// The letters that stand for crystals 0, 1, 2 and 3.
constexpr std::array<std::uint8_t, 4> crystalLetters{0x5A, 0x75, 0x49, 0xA8};

constexpr std::array<Option, optionCount> table{{
    {.number = 0,
     .control = "cboTot",
     .name = "tot",
     .caption = SoftText::timeOut,
     .group = transmit,
     .tip = texts::tipTot,
     .source = {{{0x130, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 20,
     .max = 20,
     .entries = offThenSeconds,
     .firstText = SoftText::timeOutOff,
     .rangeItem = "超时定时器     "},
    {.number = 1,
     .control = "cboSql",
     .name = "squelch",
     .caption = SoftText::squelch,
     .group = receiver,
     .tip = texts::tipSquelch,
     .source = {{{0x134, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 9,
     .max = 9,
     .rangeItem = "静噪电平     "},
    {.number = 2,
     .control = "cboVolume",
     .name = "volume",
     .caption = SoftText::volume,
     .group = receiver,
     .tip = texts::tipVolume,
     .source = {{{0x3FF, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 15,
     .max = 15,
     .rangeItem = "对讲机音量     "},
    {.number = 3,
     .control = "cboAnVoice",
     .name = "voice",
     .caption = SoftText::voice,
     .group = voiceAndTones,
     .tip = texts::tipVoice,
     .source = {{{0x12F, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 2,
     .max = 2,
     .entries = texts,
     .firstText = SoftText::firstVoice,
     .rangeItem = "语音通知     "},
    {.number = 4,
     .control = "cboRadioSql",
     .name = "broadcast_squelch",
     .caption = SoftText::broadcastSquelch,
     .group = broadcast,
     .tip = texts::tipBroadcastSquelch,
     .codec = offsetByte,
     .source = {{{0x3F6, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 32,
     .max = 32,
     .rangeItem = "收音机静噪电平   "},
    {.number = 5,
     .control = "cboRadioVolume",
     .name = "broadcast_volume",
     .caption = SoftText::broadcastVolume,
     .group = broadcast,
     .tip = texts::tipBroadcastVolume,
     .source = {{{0x3F7, 0x0F}}},
     .ownedMask = 0xFF,
     .max = 15,
     .rangeItem = "收音机音量     "},
    {.number = 6,
     .control = "chkBatSave",
     .name = "battery_save",
     .caption = SoftText::batterySave,
     .group = power,
     .tip = texts::tipBatterySave,
     .source = {{{0x135, 0x01}}},
     .ownedMask = 0xFF,
     .kind = checkBox,
     .entries = texts,
     .firstText = SoftText::boxOff},
    {.number = 7,
     .control = "chkBeep",
     .name = "beep",
     .caption = SoftText::beep,
     .group = voiceAndTones,
     .tip = texts::tipBeep,
     .source = {{{0x136, 0x01}}},
     .ownedMask = 0xFF,
     .kind = checkBox,
     .entries = texts,
     .firstText = SoftText::boxOff},
    {.number = 8,
     .control = "chkEmergencyAlarm",
     .name = "emergency_alarm",
     .caption = SoftText::emergencyAlarm,
     .group = voiceAndTones,
     .tip = texts::tipEmergencyAlarm,
     .codec = bit,
     .source = {{{0x3FC, 0x80}}},
     .ownedMask = 0x80,
     .kind = checkBox,
     .entries = texts,
     .firstText = SoftText::boxOff},
    // The field can give 2, which the list does not offer: the panel reports it.
    {.number = 9,
     .control = "cboAnChipSel",
     .name = "voice_chip",
     .caption = SoftText::voiceChip,
     .group = voiceAndTones,
     .tip = texts::tipVoiceChip,
     .codec = chip,
     .source = {{{0x3FE, 0x03}}},
     .max = 1,
     .entries = texts,
     .firstText = SoftText::firstVoiceChip,
     .rangeItem = "语音片选择     "},
    {.number = 10,
     .control = "cboCrystal",
     .name = "crystal",
     .caption = SoftText::crystal,
     .group = power,
     .tip = texts::tipCrystal,
     .codec = crystal,
     .source = {{{0x3D8, 0xFF}, {0x3D3, 0xC0}}},
     .max = 3,
     .entries = texts,
     .firstText = SoftText::firstCrystal,
     .rangeItem = "晶体频率     "},
    {.number = 11,
     .control = "cboPreTot",
     .name = "pre_tot",
     .caption = SoftText::timeOutWarning,
     .group = transmit,
     .tip = texts::tipPreTot,
     .source = {{{0x131, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 10,
     .max = 10,
     .entries = offThenNumbers,
     .firstText = SoftText::timeOutWarningOff,
     .rangeItem = "超时预警     "},
    {.number = 12,
     .control = "cboVoxLevel",
     .name = "vox_level",
     .caption = SoftText::voxGain,
     .group = vox,
     .tip = texts::tipVoxLevel,
     .source = {{{0x13A, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 10,
     .max = 10,
     .entries = offThenNumbers,
     .firstText = SoftText::voxGainOff,
     .rangeItem = "VOX增益电平     "},
    {.number = 13,
     .control = "cboVoxDly",
     .name = "vox_delay",
     .caption = SoftText::voxDelay,
     .group = vox,
     .tip = texts::tipVoxDelay,
     .source = {{{0x13B, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 5,
     .max = 5,
     .entries = texts,
     .firstText = SoftText::firstVoxDelay,
     .rangeItem = "VOX延迟时间[秒]     "},
    {.number = 14,
     .control = "cboVoxRxForbid",
     .name = "vox_inhibit_rx",
     .caption = SoftText::voxInhibit,
     .group = vox,
     .tip = texts::tipVoxInhibitRx,
     .source = {{{0x138, 0xFF}}},
     .ownedMask = 0xFF,
     .validMax = 1,
     .entries = texts,
     .firstText = SoftText::firstVoxInhibit,
     .rangeItem = "接收时禁止VOX     "},
    {.number = 15,
     .control = "chkLowBatTx",
     .name = "low_battery_tx",
     .caption = SoftText::lowBatteryTransmit,
     .group = transmit,
     .tip = texts::tipLowBatteryTx,
     .codec = bit,
     .source = {{{0x3FE, 0x04}}},
     .ownedMask = 0x04,
     .validMax = 1,
     .kind = checkBox,
     .entries = texts,
     .firstText = SoftText::boxOff},
}};

constexpr bool isOrdered() {
    for (int i = 0; i < optionCount; ++i) {
        if (table[static_cast<std::size_t>(i)].number != i) {
            return false;
        }
    }
    return true;
}
static_assert(isOrdered());

/// By Group.
constexpr std::array<const Text*, groupCount> groupHeadings{
    &texts::groupTransmit, &texts::groupReceiver,  &texts::groupVoice,
    &texts::groupVox,      &texts::groupBroadcast, &texts::groupPower};

/// The text of an entry; `textOf` gives the interface texts of a language.
template <class TextOf>
std::string entryText(const Option& option, int value, TextOf textOf) {
    const bool isFirst = value == 0;
    switch (option.entries) {
        case texts:
            return std::string(textOf(textAfter(option.firstText, value)));
        case offThenNumbers:
            return isFirst ? std::string(textOf(option.firstText)) : fmt::to_string(value);
        case offThenSeconds:
            return isFirst ? std::string(textOf(option.firstText))
                           : fmt::format("{}{}", secondsStep * value, textOf(SoftText::seconds));
        case numbers:
            break;
    }
    return fmt::to_string(value);
}

template <class TextOf>
std::vector<std::string> allEntries(const Option& option, TextOf textOf) {
    std::vector<std::string> entries;
    for (int value = 0; value <= option.max; ++value) {
        entries.push_back(entryText(option, value, textOf));
    }
    return entries;
}

std::vector<std::string> entriesIn(TextLanguage language, const Option& option) {
    return allEntries(option, [=](SoftText text) { return modSoftFace::textIn(language, text); });
}

bool isEntry(const Option& option, double value) noexcept {
    return value >= 0 && value <= option.max && value == roundHalfEven(value);
}

int crystalValue(std::uint8_t letter, const MemoryImage& image, ImageBits second) {
    const auto known = std::ranges::find(crystalLetters, letter);
    return known != crystalLetters.end() ? static_cast<int>(known - crystalLetters.begin())
                                         : (image(second.address) & second.mask) >> 6;
}

int rawValue(const Option& option, const MemoryImage& image) {
    const ImageBits& place = option.source[0];
    const std::uint8_t whole = image(place.address);
    const std::uint8_t field = whole & place.mask;
    switch (option.codec) {
        case byte:
            return field;
        case offsetByte:
            return field - byteOffset;
        case bit:
            return field != 0 ? 1 : 0;
        case chip:
            return chipValues[field];
        case crystal:
            break;
    }
    return crystalValue(whole, image, option.source[1]);
}

}  // namespace

std::span<const Option, optionCount> options() noexcept {
    return table;
}

const Option& optionAt(int number) {
    return checkedAt(table, number, "option");
}

const Option* findOption(std::string_view name) noexcept {
    const auto found = std::ranges::find(table, name, &Option::name);
    return found == table.end() ? nullptr : &*found;
}

const std::string& captionText(const Option& option) {
    return modSoftFace::text(option.caption);
}

std::string tipText(const Option& option) {
    return say(option.tip);
}

std::string groupText(Group group) {
    return say(*groupHeadings[static_cast<std::size_t>(group)]);
}

std::vector<const Option*> optionsOf(Group group) {
    std::vector<const Option*> members;
    for (const Option& option : table) {
        if (option.group == group) {
            members.push_back(&option);
        }
    }
    return members;
}

std::vector<std::string> entryTexts(const Option& option) {
    return allEntries(option, modSoftFace::text);
}

std::string valueText(const Option& option, std::int16_t value) {
    const std::string text =
        isEntry(option, value) ? entryText(option, value, modSoftFace::text) : std::string();
    return text.empty() ? fmt::to_string(value) : text;
}

std::optional<typedText::Entry> parseValue(const Option& option, std::string_view text) {
    const auto inForce = entryTexts(option);
    const auto chinese = entriesIn(TextLanguage::chinese, option);
    const auto english = entriesIn(TextLanguage::english, option);
    return typedText::entry(text,
                            std::array<std::span<const std::string>, 3>{inForce, chinese, english});
}

std::vector<ImageBits> ownedBits(const Option& option) {
    if (option.ownedMask != 0) {
        return {{option.source[0].address, option.ownedMask}};
    }
    std::vector<ImageBits> bits;
    std::ranges::copy_if(option.source, std::back_inserter(bits),
                         [](const ImageBits& place) { return place.mask != 0; });
    return bits;
}

std::optional<std::int16_t> decode(const Option& option, const MemoryImage& image) {
    const int value = rawValue(option, image);
    if (option.validMax && (value < 0 || value > *option.validMax)) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(value);
}

void encode(const Option& option, std::int16_t value, MemoryImage& image) {
    if (option.ownedMask == 0) {
        return;
    }
    std::uint8_t& target = image(option.source[0].address);
    if (option.codec == bit) {
        const int others = target & ~option.ownedMask;
        target = toByte(value == 1 ? others | option.ownedMask : others);
    } else {
        target = toByte(option.codec == offsetByte ? value + byteOffset : value);
    }
}

}  // namespace k520::optionTable
