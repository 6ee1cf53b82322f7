// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <algorithm>
#include <vector>

#include "app/Guard.h"
#include "app/look.h"
#include "app/mdimoduMain.h"
#include "app/settingsStore.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"

namespace k520::modChMem {

namespace {

// Reading the definition.

constexpr const char* section = "ChInfo";
/// Marks the end of a list of entries.
constexpr const char* endOfItem = "*EndOfThisItem*";
constexpr SettingBuffer numberBuffer{20, 20};
constexpr SettingBuffer headerBuffer{200, 200};
constexpr SettingBuffer entryBuffer{100, 100};

std::string setting(int key, SettingBuffer buffer, std::string_view defaultText) {
    return settingsStore::read(section, std::to_string(key), buffer, defaultText);
}

/// Only the conversion may fail for one value alone: a file that cannot be read ends the reading.
void readNumber(std::int16_t& target, int key, std::string_view defaultText) {
    const std::string text = setting(key, numberBuffer, defaultText);
    guarded(procedures::readChInfo, [&] {
        target = naming("[ChInfo] " + std::to_string(key), [&] { return textToInt16(text); });
    });
}

constexpr int chineseBase = 1000;
constexpr int englishBase = 3000;

/// The key of entry 0 of a column's definition.
int firstKey(int base, int column) {
    return base + 200 + (column - 1) * ColumnDefinition::capacity;
}

/// The entries from a key on, up to the end marker.
std::vector<std::string> readEntries(int key) {
    std::vector<std::string> entries;
    for (int j = 0; j < ColumnDefinition::capacity; ++j) {
        std::string text = setting(key + j, entryBuffer, "0");
        if (text == endOfItem) {
            break;
        }
        entries.push_back(std::move(text));
    }
    return entries;
}

/// A column's texts in the other language; none where its block has another column there.
std::vector<std::string> readOtherTexts(int column, const std::string& columnKey) {
    const int key = firstKey(chineseBase + englishBase - keyBase(), column);
    if (setting(key, entryBuffer, "") != columnKey) {
        return {};
    }
    const ColumnDefinition other(readEntries(key));
    return {other.texts().begin(), other.texts().end()};
}

ColumnDefinition readColumn(int column) {
    auto entries = readEntries(firstKey(keyBase(), column));
    auto others =
        entries.empty() ? std::vector<std::string>{} : readOtherTexts(column, entries.front());
    return ColumnDefinition(std::move(entries), std::move(others));
}

void readWidths(int base) {
    State& s = state();
    for (int i = 0; i <= s.ColNum; ++i) {
        readNumber(checkedAt(s.ChColWidth, i, "ChColWidth"), base + 100 + i, "1000");
    }
}

void readColumns() {
    State& s = state();
    for (int k = 1; k <= s.ColNum; ++k) {
        ColumnDefinition& definition = checkedAt(s.ChColDef, k - 1, "ChColDef");
        definition = readColumn(k);
    }
}

// Making the grid.

constexpr const char* gridLabel = "modChMem->SetChGrid";
constexpr int firstTitledRow = 100;

std::vector<std::string> splitTitles(std::string_view header) {
    std::vector<std::string> titles;
    for (;;) {
        const auto bar = header.find('|');
        titles.emplace_back(header.substr(0, bar));
        if (bar == std::string_view::npos) {
            return titles;
        }
        header.remove_prefix(bar + 1);
    }
}

std::string_view formatOf(std::string_view key) {
    struct KeyFormat {
        std::string_view key;
        std::string_view format;
    };
    static constexpr std::array formats{
        KeyFormat{columnKey::rx, "###.#####"}, KeyFormat{columnKey::tx, "###.#####"},
        KeyFormat{columnKey::offset, "#0.00000"}, KeyFormat{columnKey::name, "00000"}};
    const auto* found = std::ranges::find(formats, key, &KeyFormat::key);
    return found == formats.end() ? std::string_view() : found->format;
}

void shapeGrid(const std::vector<std::string>& titles) {
    State& s = state();
    // Hostile counts must not ask for more memory than there is: the loops below fail beyond.
    const int rows = std::clamp<int>(s.ChNum, 0, tableChannels) + 1;
    const int columns = std::max(static_cast<int>(titles.size()), s.ColNum + 1);
    s.vsfgGridCh.reset(rows, std::clamp(columns, 1, maxColumns + 1));
    for (int col = 0; col < static_cast<int>(titles.size()); ++col) {
        s.vsfgGridCh.setText(0, col, titles[static_cast<std::size_t>(col)]);
    }
}

void setRows() {
    State& s = state();
    s.ChRowTitle[firstTitledRow - 1] = "VFO";
    s.vsfgGridCh.setRowHeight(0, s.ChRowHeight);
    for (int row = 1; row <= s.ChNum; ++row) {
        s.vsfgGridCh.setRowHeight(row, s.ChRowHeight);
        s.vsfgGridCh.setText(row, 0,
                             row < firstTitledRow ? std::to_string(row)
                                                  : checkedAt(s.ChRowTitle, row - 1, "ChRowTitle"));
    }
}

void setColumns() {
    State& s = state();
    for (int k = 1; k <= s.ColNum; ++k) {
        s.vsfgGridCh.setColumnFormat(k, std::string(formatOf(columnOf(k).key())));
    }
    for (int col = 0; col < s.vsfgGridCh.columns(); ++col) {
        s.vsfgGridCh.setColumnWidth(col, checkedAt(s.ChColWidth, col, "ChColWidth"));
    }
}

// Drawing.

void showFrequency(int row, int col, std::int32_t value) {
    CellGrid& grid = state().vsfgGridCh;
    const bool marked = state().ChInfo(row).opened || !modModel::inBand(value);
    grid.setText(row, col, frequency::mhzText(value));
    grid.setBackground(row, col, marked ? overColour() : defColour());
}

void paintRow(int row, std::optional<Colour> background) {
    for (int col = 1; col <= state().ColNum; ++col) {
        state().vsfgGridCh.setBackground(row, col, background);
    }
}

/// An empty row is not painted, but a warning colour in it would warn of nothing.
void dropWarning(int row) {
    for (int col = 1; col <= state().ColNum; ++col) {
        if (state().vsfgGridCh.cell(row, col).background == overColour()) {
            state().vsfgGridCh.setBackground(row, col, defColour());
        }
    }
}

void blankRow(int row) {
    for (int col = 1; col <= state().ColNum; ++col) {
        state().vsfgGridCh.setText(row, col, "");
    }
    dropWarning(row);
}

const std::string& parameterText(const Channel& channel, int col) {
    const auto typed = channel.texts.find(col);
    return typed != channel.texts.end() ? typed->second : columnOf(col).textOf(channel.field(col));
}

/// A tone that was never chosen is off.
const std::string& shownTone(const std::string& tone) {
    return tone.empty() ? modCtdcs::state().CtdcsOffText : tone;
}

std::string transmitText(const Channel& channel) {
    return channel.transmits() ? frequency::mhzText(channel.txFre()) : std::string();
}

std::string encodeText(const Channel& channel) {
    return channel.transmits() ? shownTone(channel.encodeTone) : std::string();
}

/// Whether parameterText finds one: what was typed, or one of the column's entries.
bool hasText(const Channel& channel, int col) {
    const auto value = channel.field(col);
    return channel.texts.contains(col) ||
           (value >= -ColumnDefinition::firstText &&
            value < ColumnDefinition::capacity - ColumnDefinition::firstText);
}

void drawChannel(std::int16_t number) {
    const Channel& channel = state().ChInfo(number);
    if (!channel.present()) {
        blankRow(number);
        return;
    }
    paintRow(number, channel.opened ? overColour() : defColour());
    ChParaShow(number);
    RxFreShow(number);
    TxFreShow(number);
    CtdcsDecShow(number);
    CtdcsEncShow(number);
}

}  // namespace

int defaultKey(int column) {
    return firstKey(keyBase(), column) + 2;
}

int keyBase() {
    mdimoduMain::correctLanguage();
    return mdimoduMain::state().Language == mdimoduMain::languageChinese ? chineseBase
                                                                         : englishBase;
}

void ReadChInfo() {
    guarded(procedures::readChInfo, [] {
        State& s = state();
        const int base = keyBase();
        readNumber(s.ChNum, base, "16");
        readNumber(s.ChRowHeight, base + 1, "240");
        readNumber(s.ColNum, base + 2, "9");
        s.ChGridHeader = setting(base + 3, headerBuffer, "0|0|0|0|0|0|0|0|0|0");
        guarded(procedures::readChInfo, [&] { readWidths(base); });
        readColumns();
    });
}

void SetChGrid() {
    guarded(gridLabel, [] {
        shapeGrid(splitTitles(state().ChGridHeader));
        // Too many columns must not cost the rows their titles.
        guarded(gridLabel, setRows);
        setColumns();
    });
}

void ShowChTblGrid() {
    guarded("modChMem->ShowChTblGrid", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            drawChannel(static_cast<std::int16_t>(n));
        }
    });
}

void showChannel(std::int16_t channel) {
    guarded("modChMem->showChannel", [&] { drawChannel(channel); });
}

void ChParaShow(std::int16_t channel) {
    guarded("modChMem->ChParaShow", [&] {
        State& s = state();
        for (int k = firstParameter; k <= s.ColNum; ++k) {
            if (k == column::reserved) {
                continue;
            }
            s.vsfgGridCh.setText(channel, k, "");
            s.vsfgGridCh.setText(channel, k, parameterText(s.ChInfo(channel), k));
        }
    });
}

void RxFreShow(std::int16_t channel) {
    guarded("modChMem->RxFreShow",
            [&] { showFrequency(channel, column::rx, state().ChInfo(channel).rxFre()); });
}

void TxFreShow(std::int16_t channel) {
    guarded("modChMem->TxFreShow", [&] {
        State& s = state();
        const Channel& row = s.ChInfo(channel);
        if (row.transmits()) {
            showFrequency(channel, column::tx, row.txFre());
            return;
        }
        s.vsfgGridCh.setText(channel, column::tx, "");
        s.vsfgGridCh.setBackground(channel, column::tx, defColour());
    });
}

void CtdcsDecShow(std::int16_t channel) {
    guarded("modChMem->CtdcsDecShow", [&] {
        State& s = state();
        s.vsfgGridCh.setText(channel, column::decode, shownTone(s.ChInfo(channel).decodeTone));
    });
}

void CtdcsEncShow(std::int16_t channel) {
    guarded("modChMem->CtdcsEncShow", [&] {
        State& s = state();
        s.vsfgGridCh.setText(channel, column::encode, encodeText(s.ChInfo(channel)));
    });
}

void repaintFrequencies() {
    guarded("modChMem->repaintFrequencies", [] {
        for (int n = 1; n <= state().ChNum; ++n) {
            if (state().ChInfo(n).present()) {
                RxFreShow(static_cast<std::int16_t>(n));
                TxFreShow(static_cast<std::int16_t>(n));
            }
        }
    });
}

std::string shownText(const Channel& channel, int col) {
    if (!channel.present() || col == column::reserved) {
        return {};
    }
    switch (col) {
        case column::rx:
            return frequency::mhzText(channel.rxFre());
        case column::tx:
            return transmitText(channel);
        case column::decode:
            return shownTone(channel.decodeTone);
        case column::encode:
            return encodeText(channel);
        default:
            return hasText(channel, col) ? parameterText(channel, col) : std::string();
    }
}

std::optional<Colour> defColour() {
    return parseColour(look::state().DefColor);
}

Colour overColour() {
    return parseColour(look::state().OverColor).value_or(warningColour);
}

}  // namespace k520::modChMem
