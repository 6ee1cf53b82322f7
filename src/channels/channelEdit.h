// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "channels/channelTable.h"

/// Edits of one channel as a value: what a text in one of its cells makes of it. Columns are the
/// grid's, from 1; the grid itself is not touched. See cellText.h for what texts mean.
namespace k520::channelEdit {

using modChMem::Channel;

enum class Cause : std::uint8_t {
    unreadable,      ///< the text has no meaning in that cell
    channelEmpty,    ///< only the receive frequency can make a channel
    noTransmission,  ///< a channel that does not transmit has no encode tone
};

/// Why a cell does not take a text. The reason is for people, without the cell's name.
struct Refusal {
    Cause cause = Cause::unreadable;
    std::string reason;
};

/// How a column's cells are edited.
enum class Kind : std::uint8_t { frequency, tone, list, plain };
[[nodiscard]] Kind kindOf(int col);

/// Why a cell takes no text at all, as the channel is now.
[[nodiscard]] std::optional<Refusal> refusalOf(const Channel& channel, int col);
/// Why a cell does not take a text that was pasted, imported or given to a command. What such a
/// text says has to be readable; a typed one is not asked.
[[nodiscard]] std::optional<Refusal> refusalOf(const Channel& channel, int col,
                                               std::string_view text);

/// What typing a text into a cell makes of the channel.
///  - A frequency is snapped to the raster, pulled to the band's edge where it lies beyond 120 or
///    550 MHz. A transmit frequency may be said by its distance from the receive frequency.
///  - A receive frequency makes a new channel with the tones and parameters of `newChannel`, or
///    with tones off and the parameters' defaults. It makes a channel without transmit frequency
///    transmit on the same one, and gives each parameter that is -1 its default.
///  - A text that is not a receive frequency empties the channel: all fields are -1. One that is
///  not a
///    transmit frequency ends transmission, and the encode tone with it.
///  - A transmit frequency in a channel without encode tone gives it the decode tone.
///  - A text that is not a tone is off.
///  - An entry of a list is stored as its number; 5 for a text that is none. So is a text that a
///    plain column cannot hold.
/// Returns what the person has to know, beginning with the text; mostly empty.
std::string type(Channel& channel, int col, std::string_view text);

/// Gives a cell a text that was pasted, imported or given to a command: as type() does, with the
/// remark in `remark`, or nothing at all and the reason why.
std::optional<Refusal> give(Channel& channel, int col, std::string_view text, std::string& remark);

/// Makes an empty channel of the band's lower limit, with the values of a new channel.
void open(Channel& channel);

/// No frequencies, no tones, every field -1.
void empty(Channel& channel);

}  // namespace k520::channelEdit
