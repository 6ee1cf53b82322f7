// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Checked.h"
#include "base/Controls.h"
#include "base/Procedure.h"
#include "base/Signal.h"
#include "channels/channelCodec.h"
#include "channels/channelTable.h"
#include "channels/columnDefinition.h"

/// The channel table ChInfo, between the memory image and the channel grid: its codec, the grid's
/// definition and drawing, and the commands on whole channels.
///
/// Ic procedures decode (image to channel), Ci procedures encode (channel to image), Show
/// procedures draw, Sol procedures do the work of a command. Each logs its failure under its own
/// label ("modChMem->IcRxFreSol") and returns. Channels count from 1.
namespace k520::modChMem {

inline constexpr int maxColumns = 200;
inline constexpr int lastWidth = 50;

/// A frequency outside the band is painted in this colour where the settings give none that can be
/// used.
inline constexpr Colour warningColour{0xFF, 0xA0, 0x8C};

struct State {
    ChannelTable ChInfo;

    // The grid's definition. The texts are those of the language in force at start-up.
    std::int16_t ChNum = 16;
    std::int16_t ChRowHeight = 240;  ///< twips
    std::int16_t ColNum = 9;         ///< columns beside the title column
    /// Column titles from column 0, "|" between them.
    std::string ChGridHeader = "0|0|0|0|0|0|0|0|0|0";
    std::array<std::int16_t, lastWidth + 1> ChColWidth = defaultWidths();  ///< twips
    /// The definition of column k is at k - 1; see columnOf().
    std::array<ColumnDefinition, maxColumns> ChColDef;
    /// Titles of rows above 99: row n has the one at n - 1.
    std::array<std::string, tableChannels> ChRowTitle;
    /// The characters of a channel name, one to a text.
    std::array<std::string, 41> ValidCharTbl;

    /// The channel that "Save as default" was said of: new ones get its tones and parameters.
    std::optional<Channel> newChannel;

    CellGrid vsfgGridCh;
    /// The channel that the pop-up menu acts on.
    std::int16_t currentChannel = 0;
    /// The image was decoded afresh: whoever shows what was decoded puts it right.
    Signal<> onDecoded;
    /// The form is to be shown again. A subscriber shows, and changes no value.
    Signal<> onFormRefresh;

    [[nodiscard]] static std::array<std::int16_t, lastWidth + 1> defaultWidths() {
        std::array<std::int16_t, lastWidth + 1> widths{};
        widths.fill(1000);
        return widths;
    }
};

[[nodiscard]] State& state();

namespace procedures {
inline constexpr Procedure readChInfo{"modChMem->ReadChInfo"};
}

[[nodiscard]] inline const ChannelTable& ChInfo() {
    return state().ChInfo;
}
/// The definition of grid column 1 to 200; raises 9 outside them.
[[nodiscard]] const ColumnDefinition& columnOf(int number);

// --- The codec on the process-wide state (see channelCodec.h for what it does) ---

/// What decoding takes from the settings in force. Refers to the module's state.
[[nodiscard]] channelCodec::Columns columnsInForce();

/// 1 = IicDatToChInfo, 0 = ChInfoToIicDat; any other direction does nothing.
void ChInfoSaveSol(std::int16_t direction);

/// Decodes channels 1 to ChNum. A channel whose receive frequency's top byte is not 0x01 to 0x99 is
/// empty: no frequencies, every parameter at its column's default. Its tone texts are deliberately
/// left as they were. What fails in one channel leaves the others alone.
void IicDatToChInfo();
/// Encodes channels 1 to ChNum, but for those whose field 0 is -1.
void ChInfoToIicDat();
/// Encodes one channel, whatever its field 0. Raises 9 for a channel outside the table.
void encodeChannel(std::int16_t channel);

/// Fields 5 to 8. Above channel 16 these two fail with 9, after fields 5 and 6.
void IcChParaSol(std::int16_t channel);
void CiChParaSol(std::int16_t channel);
/// Bytes that are not BCD digits fail with 13; the field keeps its value.
void IcRxFreSol(std::int16_t channel);
/// Decodes a transmit frequency; a top byte outside 0x01 to 0x99 means no transmit frequency.
void IcTxFreSol(std::int16_t channel);
/// Four bytes FF for no frequency. The digits are taken as they are, without padding: only eight of
/// them (100 MHz and above) give what the radio expects. More fail with 9, and the image keeps what
/// it held.
void CiRxFreSol(std::int16_t channel);
void CiTxFreSol(std::int16_t channel);
void IcCtdcsDecSol(std::int16_t channel);
void IcCtdcsEncSol(std::int16_t channel);
/// A text that is not a tone fails as toneCode::toneWord does, and the image keeps what it held.
void CiCtdcsDecSol(std::int16_t channel);
void CiCtdcsEncSol(std::int16_t channel);

/// Splits a decimal text into BCD bytes (channelCodec::pairsOfDigits); nothing after a failure.
std::optional<std::array<std::uint8_t, 4>> SeparateFreChar(std::string_view text);
/// A stored tone as a text, and a text as the two bytes of a stored tone, the low one first. The
/// latter is nothing after a failure.
[[nodiscard]] std::string QtDqtIicToChar(std::uint8_t high, std::uint8_t low);
std::optional<std::array<std::uint8_t, 2>> QtDqtCharToIic(std::string_view text);

/// 2^index and its complement, for index 0 to 15; raise 9 outside them.
[[nodiscard]] std::uint16_t ChBitMask(int index);
[[nodiscard]] std::uint16_t ChBitClear(int index);

// --- The grid ---

/// Where the grid's definition begins among the keys of section "ChInfo": 1000 for language 1,
/// 3000 for the two others, which share a block. From there: +0 ChNum, +1 ChRowHeight, +2 ColNum,
/// +3 ChGridHeader, +100 the widths from column 0, +200 the columns' definitions from column 1,
/// fifty keys each, up to the entry "*EndOfThisItem*".
[[nodiscard]] int keyBase();
/// The key of a column's default value (entry 2 of its definition).
[[nodiscard]] int defaultKey(int column);

/// Reads the grid's definition. A value that is not a number is logged and keeps its default; so
/// does everything beyond the bounds of the arrays (9).
void ReadChInfo();
/// Makes an empty grid of that definition. It has as many columns as there are titles or
/// definitions, whichever are more, and never more than the table has rows or definitions.
void SetChGrid();

/// Draws channels 1 to ChNum; the rows of empty channels become blank.
void ShowChTblGrid();
/// Draws one channel, and the row's colours.
void showChannel(std::int16_t channel);
/// The texts of parameter columns, the reserved column left out. A value beyond the fifty entries
/// leaves a blank cell and fails with 9.
void ChParaShow(std::int16_t channel);
/// A frequency in MHz, in DefColor inside the band and in OverColor outside it.
void RxFreShow(std::int16_t channel);
/// Shows a transmit frequency, and blank for none.
void TxFreShow(std::int16_t channel);
void CtdcsDecShow(std::int16_t channel);
/// Blank for a channel that does not transmit.
void CtdcsEncShow(std::int16_t channel);
/// Colours the frequencies of all channels again, after a change of the band.
void repaintFrequencies();

/// What the cell of a column shows of a channel. Blank for an empty channel, in the reserved column
/// and for a value beyond the fifty entries.
[[nodiscard]] std::string shownText(const Channel& channel, int col);

/// The two colours of the settings file; nothing means the control's own.
[[nodiscard]] std::optional<Colour> defColour();
[[nodiscard]] Colour overColour();

// --- Whole channels ---

/// Empties a channel: no frequencies, no tones, marked as modified, its record in the image taken
/// from the default image, its row blank. The parameter values stay.
void DelOneChannel(std::int16_t channel);
/// DelOneChannel for channels 1 to ChNum.
void InitChTable();
/// The pop-up menu's deletions: of the current channel, and of all without a question.
void mnuDelOne_Click();
void mnuDelAll_Click();

/// Takes up what the image holds now, and shows it: channels, options, and the channel form. Edits
/// that are not in the image are lost.
void SoftDisplay();
/// The refresh of the channel form after a decoding: the band is selected from the image, what was
/// decoded is put right (onDecoded), then the form is shown (onFormRefresh). Who has decoded
/// nothing tells onFormRefresh alone.
void refreshForm();
/// Brings the image up to date with channels and options. Label "mdifrmMain->SetConvIicDat".
void SetConvIicDat();

/// Fills the table of a channel name's characters: "0" to "9", "A" to "Z", "-", "/", " ", "+", "_".
void GetValidCharTbl();
/// What the channel form needs before it can show channels: tone tables, grid, empty channels,
/// model and band lists.
void initChannelForm();

}  // namespace k520::modChMem
