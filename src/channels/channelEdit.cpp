// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/channelEdit.h"

#include <fmt/format.h>

#include <cmath>

#include "base/Checked.h"
#include "base/typedText.h"
#include "channels/cellText.h"
#include "channels/channelTexts.h"
#include "channels/frequency.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"

namespace k520::channelEdit {

namespace {

namespace column = modChMem::column;
using modChMem::columnOf;
using typedText::shown;

/// Beyond this many MHz no text is taken for a frequency.
constexpr double mostMegahertz = 20'000;

// Frequencies.

bool isFrequency(int col, std::string_view text) {
    const auto distance = cellText::distanceFromReceive(text);
    const auto mhz = distance && col == column::tx ? distance : cellText::megahertz(text);
    return mhz && std::abs(*mhz) <= mostMegahertz;
}

std::int32_t limitToBand(std::int32_t value) {
    const auto& band = modModel::state();
    if (value < band.absoluteMin) {
        return band.bandLow;
    }
    return value > band.absoluteMax ? band.bandHigh : value;
}

void setDefaults(Channel& channel) {
    for (int k = modChMem::firstParameter; k <= modChMem::state().ColNum; ++k) {
        if (channel.field(k) == -1) {
            channel.field(k) = columnOf(k).defaultValue();
        }
    }
}

/// The tones and parameters of a new channel.
void begin(Channel& channel) {
    const auto& model = modChMem::state().newChannel;
    channel.decodeTone = model ? model->decodeTone : std::string();
    channel.encodeTone = model ? model->encodeTone : std::string();
    for (int k = modChMem::firstParameter; model && k <= modChMem::state().ColNum; ++k) {
        channel.field(k) = model->field(k);
    }
}

/// A receive frequency alone makes a whole channel.
void completeChannel(Channel& channel) {
    if (!channel.transmits()) {
        channel.txFre() = channel.rxFre();
        setDefaults(channel);
    }
}

/// Without an encode tone of its own a channel takes its decode tone. A tone from a time without
/// transmit frequency was never seen, and goes.
void completeEncodeTone(Channel& channel, bool transmitted) {
    if (channel.encodeTone.empty()) {
        channel.encodeTone = channel.decodeTone;
    } else if (!transmitted) {
        channel.encodeTone.clear();
    }
}

void storeFrequency(Channel& channel, int col, std::int32_t value) {
    const bool isNew = !channel.present();
    const bool transmitted = channel.transmits();
    channel.field(col) = value;
    channel.outOfBand = !modModel::inBand(value);
    channel.opened = false;
    if (col == column::tx) {
        return completeEncodeTone(channel, transmitted);
    }
    if (isNew) {
        begin(channel);
    }
    completeChannel(channel);
}

/// Returns a remark on a frequency beyond the limits.
std::string snapFrequency(Channel& channel, int col, std::int32_t wanted, std::string_view text) {
    const auto snapped = modChEdit::ModifyTxRxFre(std::to_string(wanted));
    if (!snapped) {
        return {};
    }
    const std::int32_t value = limitToBand(*snapped);
    storeFrequency(channel, col, value);
    const auto& band = modModel::state();
    return value == *snapped
               ? std::string()
               : say(texts::limitedRemark, shown(text), frequency::mhzText(band.absoluteMin),
                     frequency::mhzText(band.absoluteMax), frequency::mhzText(value));
}

void clearFrequency(Channel& channel, int col) {
    if (col == column::rx) {
        return empty(channel);
    }
    channel.txFre() = frequency::none;
    channel.encodeTone.clear();
}

std::string typeFrequency(Channel& channel, int col, std::string_view text) {
    const auto distance =
        col == column::tx ? cellText::distanceFromReceive(text) : std::optional<double>();
    if (distance && *distance == 0) {
        // Just the receive frequency, also where that is on no raster.
        storeFrequency(channel, col, channel.rxFre());
        return {};
    }
    if (distance) {
        return snapFrequency(channel, col, toInt32(channel.rxFre() + *distance * frequency::perMhz),
                             text);
    }
    if (const auto mhz = cellText::megahertz(text)) {
        return snapFrequency(channel, col, frequency::fromMhz(*mhz), text);
    }
    clearFrequency(channel, col);
    return {};
}

// Tones and parameters.

std::string typeTone(Channel& channel, int col, std::string_view text) {
    const auto tone = cellText::tone(text);
    std::string& stored = col == column::decode ? channel.decodeTone : channel.encodeTone;
    stored = tone.value_or(modCtdcs::state().CtdcsOffText);
    return tone ? std::string() : say(texts::noToneRemark, shown(text));
}

std::string notAnEntry(std::string_view text, const modChMem::ColumnDefinition& definition) {
    return say(texts::notAnEntry, shown(text),
               fmt::join(definition.texts(), say(texts::entriesBetween)));
}

std::string typeEntry(Channel& channel, int col, std::string_view text) {
    const auto& definition = columnOf(col);
    const auto entry = definition.meaningOf(text);
    if (!entry) {
        throw RuntimeError(errNum::invalidCall, notAnEntry(text, definition));
    }
    channel.field(col) = entry->value;
    return entry->byIndex ? say(texts::byIndexRemark, shown(text), entry->value,
                                definition.textOf(entry->value))
                          : std::string();
}

/// The text of a plain column's cell; nothing where the column cannot hold it.
std::optional<std::string> plainText(int col, std::string_view text) {
    if (columnOf(col).key() == modChMem::columnKey::name) {
        return cellText::name(text);
    }
    const auto mhz = cellText::megahertz(text);
    return mhz ? std::optional(fmt::format("{:.5f}", *mhz))
               : (cellText::isEmpty(text) ? std::optional<std::string>(std::string())
                                          : std::nullopt);
}

std::string reasonAgainstPlain(int col, std::string_view text) {
    return columnOf(col).key() == modChMem::columnKey::name
               ? say(texts::notAName, shown(text))
               : say(texts::notAFrequency, shown(text));
}

std::string typePlain(Channel& channel, int col, std::string_view text) {
    const auto stored = plainText(col, text);
    if (!stored) {
        throw RuntimeError(errNum::invalidCall, reasonAgainstPlain(col, text));
    }
    channel.texts[col] = *stored;
    return {};
}

/// Why a text has no meaning in a column; empty where it has one.
std::string reasonAgainst(int col, std::string_view text) {
    switch (kindOf(col)) {
        case Kind::frequency:
            return cellText::isEmpty(text) || isFrequency(col, text)
                       ? std::string()
                       : say(texts::notAFrequency, shown(text));
        case Kind::tone:
            return cellText::tone(text) ? std::string() : say(texts::notATone, shown(text));
        case Kind::plain:
            return plainText(col, text) ? std::string() : reasonAgainstPlain(col, text);
        case Kind::list:
            break;
    }
    const auto& definition = columnOf(col);
    return definition.meaningOf(text) ? std::string() : notAnEntry(text, definition);
}

}  // namespace

Kind kindOf(int col) {
    if (col == column::rx || col == column::tx) {
        return Kind::frequency;
    }
    if (col == column::decode || col == column::encode) {
        return Kind::tone;
    }
    return columnOf(col).isList() ? Kind::list : Kind::plain;
}

std::optional<Refusal> refusalOf(const Channel& channel, int col) {
    if (!channel.present() && col != column::rx) {
        return Refusal{Cause::channelEmpty, say(texts::channelEmpty)};
    }
    if (col == column::encode && channel.present() && !channel.transmits()) {
        return Refusal{Cause::noTransmission, say(texts::noTransmission)};
    }
    return std::nullopt;
}

std::optional<Refusal> refusalOf(const Channel& channel, int col, std::string_view text) {
    auto reason = reasonAgainst(col, text);
    return reason.empty() ? refusalOf(channel, col) : Refusal{Cause::unreadable, std::move(reason)};
}

std::string type(Channel& channel, int col, std::string_view text) {
    switch (kindOf(col)) {
        case Kind::frequency:
            return typeFrequency(channel, col, text);
        case Kind::tone:
            return typeTone(channel, col, text);
        case Kind::plain:
            return typePlain(channel, col, text);
        case Kind::list:
            break;
    }
    return typeEntry(channel, col, text);
}

std::optional<Refusal> give(Channel& channel, int col, std::string_view text, std::string& remark) {
    if (auto refusal = refusalOf(channel, col, text)) {
        return refusal;
    }
    Channel edited = channel;
    try {
        remark = type(edited, col, text);
    } catch (const RuntimeError& error) {
        return Refusal{Cause::unreadable, error.source()};
    }
    channel = std::move(edited);
    return std::nullopt;
}

void open(Channel& channel) {
    empty(channel);
    begin(channel);
    channel.rxFre() = channel.txFre() = modModel::state().bandLow;
    channel.opened = true;
    setDefaults(channel);
}

void empty(Channel& channel) {
    channel.decodeTone.clear();
    channel.encodeTone.clear();
    channel.texts.clear();
    channel.opened = channel.outOfBand = false;
    for (int k = 1; k <= modChMem::state().ColNum; ++k) {
        channel.field(k) = -1;
    }
}

}  // namespace k520::channelEdit
