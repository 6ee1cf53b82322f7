// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/channelTable.h"
#include "image/documentOrigin.h"

/// What happens when a person edits the channel grid. Edits go into the channel table at once; the
/// image follows when it is next saved or sent. Rows are channels, columns those of the grid. While
/// the window is locked nothing is accepted. Failures are logged under "frmChMem->", the handler's
/// name and a colon, and end the edit; what was stored before stays.
namespace k520::modChEdit {

struct State {
    /// What a person has to know of the last edit, beginning with what was typed: "600 is beyond
    /// 120 - 550 MHz; limited to 470 MHz". Mostly empty.
    std::string remark;
    /// Just before that edit; see shownRemark().
    documentOrigin::Moment said;
};

[[nodiscard]] State& state();

/// The remark, until the next change of the configuration.
[[nodiscard]] std::string shownRemark();

/// Whether the channel window is locked; then nothing is accepted.
[[nodiscard]] bool locked();

/// Before a cell is edited; returns true to refuse. Gives the cell its way of editing: columns 1
/// and 2 by keyboard, 3 and 4 not in the grid (the tone editor serves them), all others by a list
/// of the column's texts, or by keyboard where the column is not a list. Refused: everything but
/// column 1 of an empty channel, and the encode tone of a channel that does not transmit. Nothing
/// is decided for titles, nor while the window is locked: the grid has to refuse those itself. The
/// cell at row 100, column 10 is left alone.
[[nodiscard]] bool vsfgGridCh_BeforeEdit(std::int16_t row, std::int16_t col);

/// After the cell's text has changed: stores it as channelEdit::type says, and shows what was
/// stored. After a failure (5 for a text that is not an entry, 6 for a number that is too large)
/// the row shows the stored values again.
void vsfgGridCh_AfterEdit(std::int16_t row, std::int16_t col);

/// Puts an edited channel into its row and shows it; `words` is what there is to say of it.
void takeChannel(std::int16_t row, modChMem::Channel channel, std::string words);

/// The raster point of a frequency that is given as a text in 10 Hz units (frequency.h,
/// snapToRaster); nothing after a failure.
std::optional<std::int32_t> ModifyTxRxFre(std::string_view text);

/// The tone editor leaves column 3 or 4 with this text: stored and shown as cellText::tone reads
/// it, or as off where it is not a tone.
void cboGridChCtdcs_LostFocus(std::int16_t row, std::int16_t col, std::string_view text);

/// Steps a parameter of a channel that exists to its column's next text, and from the last to the
/// first. Only list columns above 4, without the reserved one, and no value of -1. The cell at row
/// 100, column 10 goes to its first text instead.
void vsfgGridCh_DblClick(std::int16_t row, std::int16_t col);

/// An item of the pop-up menu.
struct MenuItem {
    std::string caption;
    bool enabled = false;
};

/// The right button on a row: makes it the current channel and returns the menu's items: open and
/// delete this channel, delete all channels, save as default. Open is for an empty channel, delete
/// and save for one that exists, none while the window is locked. Nothing for a row that is
/// not a channel (9). Label "frmChMem->vsfgGridCh_MouseDown:".
[[nodiscard]] std::vector<MenuItem> channelMenu(std::int16_t channel);

/// "Open channel" on an empty channel: receives and transmits on the band's lower limit, with the
/// values of a new channel (channelEdit::open). The row stands in OverColor until its frequency is
/// edited. An existing channel stays as it is.
void openChannel(std::int16_t channel);
/// "Save as default" of a channel that exists: new channels get its tones and parameters, until New
/// or the end of the program. Its record goes into the default image, where the deletion of the
/// channel finds it. The default image's file stays as it is.
void saveAsDefault(std::int16_t channel);

}  // namespace k520::modChEdit
