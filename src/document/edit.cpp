// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/edit.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "base/Checked.h"
#include "base/typedText.h"
#include "channels/bandCodec.h"
#include "channels/cellText.h"
#include "channels/channelEdit.h"
#include "channels/channelTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "document/Refused.h"
#include "document/editTexts.h"
#include "settings/optionPanel.h"
#include "settings/optionTable.h"

namespace k520::document {

namespace {

namespace column = modChMem::column;

std::string channelKey(int channel, std::string_view field) {
    return fmt::format("ch{}.{}", channel, field);
}

[[noreturn]] void refuseFor(const channelEdit::Refusal& refusal, int channel,
                            const std::string& key) {
    switch (refusal.cause) {
        case channelEdit::Cause::channelEmpty:
            refuse(Reason::notPossible, say(texts::cannotSetEmpty, key, channel, channel));
        case channelEdit::Cause::noTransmission:
            refuse(Reason::notPossible, say(texts::cannotSetSilent, key, channel, channel));
        case channelEdit::Cause::unreadable:
            break;
    }
    refuse(Reason::notUnderstood, say(texts::keyWithReason, key, refusal.reason));
}

/// Only nothing at all deletes: a script's variable that holds a blank must not empty a channel.
void requireMeant(int channel, int col, const std::string& value) {
    if (channelEdit::kindOf(col) == channelEdit::Kind::frequency && !value.empty() &&
        cellText::isEmpty(value)) {
        refuse(Reason::notUnderstood,
               say(texts::keyWithReason, channelKey(channel, nameOfColumn(col)),
                   say(texts::notAFrequency, typedText::shown(value))));
    }
}

void editChannel(std::string_view key, std::string_view rest, const std::string& value,
                 const Listener& listener) {
    const auto dot = rest.find('.');
    const auto channel = parseWhole(rest.substr(0, dot));
    const int channels = modChMem::state().ChNum;
    if (dot == std::string_view::npos || !channel) {
        refuse(Reason::notUnderstood, say(texts::keyNotOfChannel, key));
    }
    if (*channel < 1 || *channel > channels) {
        refuse(Reason::notUnderstood, say(texts::keyOutOfRange, key, channels));
    }
    const int col = columnOfKey(rest.substr(dot + 1));
    if (col == 0) {
        refuse(Reason::unknownName, say(texts::keyUnknown, key));
    }
    requireMeant(*channel, col, value);
    auto made = edited(modChMem::ChInfo()(*channel), *channel, col, value, listener);
    modChEdit::takeChannel(toInt16(*channel), std::move(made.channel), std::move(made.remark));
}

void editCustomBand(const std::string& value, std::size_t dash, const Listener& listener) {
    const auto low = value.substr(0, dash);
    const auto high = value.substr(dash + 1);
    if (!cellText::megahertz(low) || !cellText::megahertz(high)) {
        refuse(Reason::notUnderstood, say(texts::bandNotARange, typedText::shown(value)));
    }
    if (!modModel::acceptCustomRange(low, high)) {
        listener(say(texts::bandWidened, value));
    }
}

void editBand(const std::string& value, const Listener& listener) {
    const auto index = parseWhole(value);
    if (index && *index >= 0 && *index < bandCodec::customBand) {
        modModel::selectBand(*index);
        return;
    }
    const auto dash = value.find('-', 1);
    if (index || dash == std::string::npos) {
        refuse(Reason::notUnderstood,
               say(texts::bandUnknown, typedText::shown(value), bandCodec::customBand - 1));
    }
    editCustomBand(value, dash, listener);
}

void editOption(std::string_view name, const std::string& text, const Listener& listener) {
    const auto* option = optionTable::findOption(lowerAscii(name));
    if (option == nullptr) {
        refuse(Reason::unknownName, say(texts::optionUnknown, name));
    }
    const auto key = fmt::format("option.{}", option->name);
    const auto entry = optionTable::parseValue(*option, text);
    if (!entry) {
        refuse(Reason::notUnderstood,
               say(texts::keyWithReason, key,
                   say(texts::notAnEntry, typedText::shown(text),
                       fmt::join(optionTable::entryTexts(*option), say(texts::entriesBetween)))));
    }
    const auto value = static_cast<std::int16_t>(entry->value);
    if (entry->byIndex) {
        listener(key + "=" +
                 say(texts::byIndexRemark, text, value, optionTable::valueText(*option, value)));
    }
    if (option->ownedMask == 0) {
        listener(say(texts::optionNotStored, option->name));
    }
    optionPanel::optionClicked(option->number, value);
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

EditedChannel edited(modChMem::Channel channel, int number, int col, const std::string& value,
                     const Listener& listener) {
    const auto key = channelKey(number, nameOfColumn(col));
    EditedChannel result{std::move(channel), {}};
    if (const auto refusal = channelEdit::give(result.channel, col, value, result.remark)) {
        refuseFor(*refusal, number, key);
    }
    if (!result.remark.empty()) {
        listener(key + "=" + result.remark);
    }
    if (channelEdit::kindOf(col) == channelEdit::Kind::plain) {
        listener(say(texts::columnNotStored, key));
    }
    return result;
}

void applyEdit(std::string_view key, const std::string& value, const Listener& listener) {
    constexpr std::string_view optionPrefix = "option.";
    const auto lower = lowerAscii(key);
    const std::string_view name = lower;
    if (name == "band") {
        editBand(value, listener);
    } else if (name.starts_with(optionPrefix)) {
        editOption(name.substr(optionPrefix.size()), value, listener);
    } else if (name.starts_with("ch")) {
        editChannel(key, name.substr(2), value, listener);
    } else {
        refuse(Reason::unknownName, say(texts::keyUnknown, key));
    }
}

void applyEditWord(const std::string& word, const Listener& listener) {
    const auto equals = word.find('=');
    if (equals == std::string::npos) {
        refuse(Reason::notUnderstood, say(texts::keyWithoutValue, word));
    }
    applyEdit(std::string_view(word).substr(0, equals), word.substr(equals + 1), listener);
}

}  // namespace k520::document
