// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/edit.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "app/Checked.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "channels/toneCode.h"
#include "cli/Failure.h"
#include "cli/program.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"
#include "settings/optionTable.h"

namespace k520::cli {

namespace {

namespace column = modChMem::column;

std::string channelKey(int channel, std::string_view field) {
    return fmt::format("ch{}.{}", channel, field);
}

void requireEditable(int channel, int col) {
    const auto row = static_cast<std::int16_t>(channel);
    if (!modChEdit::vsfgGridCh_BeforeEdit(row, static_cast<std::int16_t>(col))) {
        return;
    }
    const bool present = modChMem::ChInfo()(channel).present();
    const auto missing = channelKey(channel, present ? "tx" : "rx");
    fail(fmt::format("{} cannot be set: channel {} {}; set {} first",
                     channelKey(channel, nameOfColumn(col)), channel,
                     present ? "does not transmit" : "is empty", missing));
}

/// Types a text into a cell of the grid and reports what the rules refuse.
void typeInto(int channel, int col, const std::string& text) {
    const auto mark = failureMark();
    const auto row = static_cast<std::int16_t>(channel);
    modChMem::state().vsfgGridCh.setText(channel, col, text);
    modChEdit::vsfgGridCh_AfterEdit(row, static_cast<std::int16_t>(col));
    if (const auto failure = failureSince(mark)) {
        refuse(channelKey(channel, nameOfColumn(col)) + ": " + *failure);
    }
}

void editFrequency(int channel, int col, const std::string& text) {
    // Blanks are no number either: only nothing clears a cell.
    if (!text.empty() && !isNumeric(text)) {
        refuse(fmt::format("{}: \"{}\" is not a frequency in MHz, such as 446.00625",
                           channelKey(channel, nameOfColumn(col)), text));
    }
    requireEditable(channel, col);
    typeInto(channel, col, text);
}

bool meansOff(const std::string& text) {
    const auto typed = lowerAscii(trimBlanks(text));
    return typed.empty() || typed == lowerAscii(modCtdcs::state().CtdcsOffText);
}

void editTone(int channel, int col, const std::string& text) {
    if (!meansOff(text) && !toneCode::normaliseTone(text)) {
        refuse(
            fmt::format("{}: \"{}\" is no tone; give a CTCSS tone such as 88.5, a DCS code such "
                        "as D023N or D023I, or nothing for off",
                        channelKey(channel, nameOfColumn(col)), text));
    }
    requireEditable(channel, col);
    modChEdit::cboGridChCtdcs_LostFocus(static_cast<std::int16_t>(channel),
                                        static_cast<std::int16_t>(col), text);
}

/// The value that a parameter's text or index means.
std::optional<std::int32_t> parameterValue(const modChMem::ColumnDefinition& definition,
                                           const std::string& text) {
    const auto texts = definition.texts();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (lowerAscii(texts[i]) == lowerAscii(text)) {
            return static_cast<std::int32_t>(i);
        }
    }
    const auto index = parseWhole(text);
    return index && *index >= 0 && *index < std::ssize(texts) ? index : std::nullopt;
}

void editParameter(int channel, int col, const std::string& text) {
    const auto& definition = modChMem::columnOf(col);
    const auto value = definition.isList() ? parameterValue(definition, text) : std::nullopt;
    if (!value) {
        refuse(fmt::format("{}: \"{}\" is no entry; there are: {}",
                           channelKey(channel, nameOfColumn(col)), text,
                           fmt::join(definition.texts(), ", ")));
    }
    requireEditable(channel, col);
    typeInto(channel, col, definition.textOf(*value));
}

void editChannel(std::string_view key, std::string_view rest, const std::string& value) {
    const auto dot = rest.find('.');
    const auto channel = parseWhole(rest.substr(0, dot));
    const int channels = modChMem::state().ChNum;
    if (dot == std::string_view::npos || !channel) {
        refuse(fmt::format("there is no key \"{}\"; channel keys look like ch1.rx", key));
    }
    if (*channel < 1 || *channel > channels) {
        refuse(fmt::format("{}: there are channels 1 to {}", key, channels));
    }
    const int col = columnOfKey(rest.substr(dot + 1));
    if (col == 0) {
        refuse(fmt::format("there is no key \"{}\"; see k520-cli set --help", key));
    }
    editCell(*channel, col, value);
}

void editCustomBand(const std::string& value, std::size_t dash) {
    const auto low = value.substr(0, dash);
    const auto high = value.substr(dash + 1);
    if (!isNumeric(low) || !isNumeric(high)) {
        refuse(fmt::format("band: \"{}\" is not LOW-HIGH in MHz, such as 400-470", value));
    }
    if (!modModel::acceptCustomRange(low, high)) {
        warn(
            fmt::format("band={}: not within 120 to 520 MHz, or reversed; the band is now 120 - "
                        "520 MHz",
                        value));
    }
}

void editBand(const std::string& value) {
    const auto index = parseWhole(value);
    if (index && *index >= 0 && *index < modModel::customBand) {
        modModel::selectBand(*index);
        return;
    }
    const auto dash = value.find('-', 1);
    if (index || dash == std::string::npos) {
        refuse(fmt::format("band: \"{}\" is neither an entry 0 to {} nor LOW-HIGH in MHz", value,
                           modModel::customBand - 1));
    }
    editCustomBand(value, dash);
}

void editOption(std::string_view name, const std::string& text) {
    const auto* option = optionTable::findOption(lowerAscii(name));
    if (option == nullptr) {
        refuse(fmt::format("there is no option \"{}\"; see k520-cli set --help", name));
    }
    const auto value = optionTable::parseValue(*option, text);
    if (!value) {
        refuse(fmt::format("option.{}: \"{}\" is no entry; there are: {}", option->name, text,
                           fmt::join(optionTable::entryTexts(*option), ", ")));
    }
    if (option->ownedMask == 0) {
        warn(fmt::format("option.{} is fixed in the radio and is never stored", option->name));
    }
    optionPanel::optionClicked(option->number, *value);
}

}  // namespace

int columnOfKey(std::string_view name) {
    const auto wanted = lowerAscii(name);
    const int last = modChMem::state().ColNum;
    for (int col = 1; col <= last; ++col) {
        if (lowerAscii(nameOfColumn(col)) == wanted) {
            return col;
        }
    }
    const auto number = wanted.starts_with('p') ? parseWhole(wanted.substr(1)) : std::nullopt;
    return number && *number >= modChMem::firstParameter && *number <= last ? *number : 0;
}

std::string nameOfColumn(int col) {
    switch (col) {
        case column::rx:
            return "rx";
        case column::tx:
            return "tx";
        case column::decode:
            return "decode";
        case column::encode:
            return "encode";
        default:
            return modChMem::columnOf(col).key();
    }
}

void editCell(int channel, int col, const std::string& value) {
    if (col == column::rx || col == column::tx) {
        editFrequency(channel, col, value);
    } else if (col == column::decode || col == column::encode) {
        editTone(channel, col, value);
    } else {
        editParameter(channel, col, value);
    }
}

void applyEdit(std::string_view key, const std::string& value) {
    constexpr std::string_view optionPrefix = "option.";
    const auto lower = lowerAscii(key);
    const std::string_view name = lower;
    if (name == "band") {
        editBand(value);
    } else if (name.starts_with(optionPrefix)) {
        editOption(name.substr(optionPrefix.size()), value);
    } else if (name.starts_with("ch")) {
        editChannel(key, name.substr(2), value);
    } else {
        refuse(fmt::format("there is no key \"{}\"; see k520-cli set --help", key));
    }
}

void applyEditWord(const std::string& word) {
    const auto equals = word.find('=');
    if (equals == std::string::npos) {
        refuse(fmt::format("\"{}\" is not KEY=VALUE", word));
    }
    applyEdit(std::string_view(word).substr(0, equals), word.substr(equals + 1));
}

}  // namespace k520::cli
