// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>
#include <string_view>

#include "channels/channelTable.h"
#include "document/Refused.h"

/// Edits by the rules of the grid and the panel, named by keys: "ch1.rx", "option.tot", "band".
namespace k520::document {

/// Makes one edit in the tables; the image follows when it is next saved or sent.
/// Raises Refused for a key that does not exist, a channel number out of range, a value that is not
/// an entry, a frequency or a tone, and for an edit that the grid refuses. The tables are then as
/// they were.
void applyEdit(std::string_view key, const std::string& value, const Listener& listener);

/// Makes the edit that a word "KEY=VALUE" asks for.
void applyEditWord(const std::string& word, const Listener& listener);

/// What a text in a cell makes of the channel of that number: a frequency, a tone or a parameter by
/// its column. The tables stay as they are. Errors as above.
struct EditedChannel {
    modChMem::Channel channel;
    std::string remark;  ///< what a person has to know of it; mostly empty
};
[[nodiscard]] EditedChannel edited(modChMem::Channel channel, int number, int column,
                                   const std::string& value, const Listener& listener);

/// The column that a channel key's last part names ("rx", "decode", "p5", "Power"); 0 for none.
[[nodiscard]] int columnOfKey(std::string_view name);
/// The name of a column as a CSV file has it: rx, tx, decode, encode or the column's key.
[[nodiscard]] std::string nameOfColumn(int column);

}  // namespace k520::document
