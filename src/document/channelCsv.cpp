// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/channelCsv.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/Checked.h"
#include "base/typedText.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "document/Refused.h"
#include "document/csvText.h"
#include "document/decoded.h"
#include "document/edit.h"
#include "document/editTexts.h"
#include "document/picture.h"

namespace k520::document {

namespace {

constexpr const char* channelTitle = "channel";

[[noreturn]] void failAt(int line, const std::string& reason) {
    refuse(Reason::notPossible, say(texts::csvLineReason, line, reason));
}

/// The columns that stand in a CSV file: all but the reserved one.
std::vector<int> csvColumns() {
    std::vector<int> columns;
    for (int col = 1; col <= modChMem::state().ColNum; ++col) {
        if (col != modChMem::column::reserved) {
            columns.push_back(col);
        }
    }
    return columns;
}

std::string withoutOff(const std::string& tone) {
    return tone == modCtdcs::state().CtdcsOffText ? std::string() : tone;
}

/// The cells of a channel as export writes them, by column number; a tone that is off is empty.
std::vector<std::string> cellsOf(const ChannelPicture& channel) {
    std::vector<std::string> cells(static_cast<std::size_t>(modChMem::state().ColNum) + 1);
    if (!channel.rx) {
        return cells;
    }
    cells[modChMem::column::rx] = frequencyText(channel.rx);
    cells[modChMem::column::tx] = frequencyText(channel.tx);
    cells[modChMem::column::decode] = withoutOff(channel.decode);
    cells[modChMem::column::encode] = channel.tx ? withoutOff(channel.encode) : std::string();
    for (const auto& parameter : channel.parameters) {
        cells[static_cast<std::size_t>(parameter.field)] = parameter.text;
    }
    return cells;
}

/// Channels while a text is taken into them.
class Taking {
  public:
    Taking(Channels channels, const Listener& listener)
        : taken_{std::move(channels), {}}, listener_(listener) {}

    [[nodiscard]] std::vector<std::string> cells(int number) {
        return cellsOf(channelPicture(number, channel(number), modModel::limits()));
    }

    void edit(int number, int col, const std::string& value) {
        auto made = edited(channel(number), number, col, value, listener_);
        channel(number) = std::move(made.channel);
        taken_.remarks[number] = std::move(made.remark);
    }

    [[nodiscard]] TakenCsv result() && { return std::move(taken_); }

  private:
    [[nodiscard]] modChMem::Channel& channel(int number) {
        return checkedAt(taken_.channels, number - 1, "ChInfo");
    }

    TakenCsv taken_;
    const Listener& listener_;
};

/// The grid column of each CSV column; 0 for the channel's number.
std::vector<int> columnsOfTitles(const CsvRow& titles) {
    std::vector<int> columns;
    for (const auto& cell : titles.cells) {
        const auto name = lowerAscii(trimBlanks(cell));
        const int col = name == channelTitle ? 0 : columnOfKey(name);
        if (col == 0 && name != channelTitle) {
            failAt(titles.line, say(texts::csvTitleUnknown, typedText::shown(cell)));
        }
        if (std::ranges::find(columns, col) != columns.end()) {
            failAt(titles.line, say(texts::csvTitleTwice, cell));
        }
        columns.push_back(col);
    }
    if (std::ranges::find(columns, 0) == columns.end()) {
        failAt(titles.line, say(texts::csvTitleMissing, channelTitle));
    }
    return columns;
}

/// One line of channels: what it gives for each grid column, where it gives anything.
struct ImportRow {
    int channel = 0;
    std::vector<std::optional<std::string>> cells;
};

int channelNumber(const std::string& text) {
    const auto number = parseWhole(trimBlanks(text));
    const int channels = modChMem::state().ChNum;
    if (!number || *number < 1 || *number > channels) {
        refuse(Reason::notPossible, say(texts::csvNoChannel, typedText::shown(text), channels));
    }
    return *number;
}

ImportRow importRow(const CsvRow& row, const std::vector<int>& columns) {
    if (row.cells.size() != columns.size()) {
        refuse(Reason::notPossible, say(texts::csvCellCount, row.cells.size(), columns.size()));
    }
    ImportRow result;
    result.cells.resize(static_cast<std::size_t>(modChMem::state().ColNum) + 1);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i] == 0) {
            result.channel = channelNumber(row.cells[i]);
        } else {
            result.cells[static_cast<std::size_t>(columns[i])] = trimBlanks(row.cells[i]);
        }
    }
    return result;
}

/// A channel whose receive cell is emptied goes, whatever its row still says of it.
bool deletes(const ImportRow& row, const std::vector<std::string>& before) {
    if (row.cells[modChMem::column::rx] != std::string()) {
        return false;
    }
    for (std::size_t col = modChMem::column::tx; col < row.cells.size(); ++col) {
        const auto& cell = row.cells[col];
        if (cell && !cell->empty() && *cell != before[col]) {
            return false;
        }
    }
    return true;
}

/// Types every cell that says something else than the grid, from left to right: what the file
/// leaves as it was is not snapped to a raster or changed in any other way.
void takeRow(const ImportRow& row, Taking& taking) {
    auto cells = taking.cells(row.channel);
    if (deletes(row, cells)) {
        if (!cells[modChMem::column::rx].empty()) {
            taking.edit(row.channel, modChMem::column::rx, "");
        }
        return;
    }
    for (std::size_t col = modChMem::column::rx; col < row.cells.size(); ++col) {
        if (row.cells[col] && *row.cells[col] != cells[col]) {
            taking.edit(row.channel, static_cast<int>(col), *row.cells[col]);
            // An edit may change its neighbours, too.
            cells = taking.cells(row.channel);
        }
    }
}

void takeRows(const std::vector<CsvRow>& rows, Taking& taking) {
    if (rows.empty()) {
        refuse(Reason::notPossible, say(texts::csvNoTitles));
    }
    const auto columns = columnsOfTitles(rows.front());
    std::set<int> seen;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        try {
            const auto row = importRow(rows[i], columns);
            if (!seen.insert(row.channel).second) {
                refuse(Reason::notPossible, say(texts::csvChannelTwice, row.channel));
            }
            takeRow(row, taking);
        } catch (const Refused& refused) {
            failAt(rows[i].line, refused.what());
        }
    }
}

}  // namespace

std::string csvOf(const Channels& channels) {
    std::vector<std::string> titles{channelTitle};
    const auto columns = csvColumns();
    for (const int col : columns) {
        titles.push_back(nameOfColumn(col));
    }
    std::string text = csvLine(titles);
    int number = 0;
    for (const auto& channel : channels) {
        const auto cells = cellsOf(channelPicture(++number, channel, modModel::limits()));
        std::vector<std::string> row{fmt::format("{}", number)};
        for (const int col : columns) {
            row.push_back(cells[static_cast<std::size_t>(col)]);
        }
        text += csvLine(row);
    }
    return text;
}

TakenCsv taken(std::string_view text, Channels channels, const Listener& listener) {
    Taking taking(std::move(channels), listener);
    takeRows(parseCsv(text), taking);
    return std::move(taking).result();
}

std::string channelCsv() {
    return csvOf(channelsInForce());
}

void takeChannelCsv(std::string_view text, const Listener& listener) {
    auto [channels, remarks] = taken(text, channelsInForce(), listener);
    for (auto& [number, remark] : remarks) {
        modChEdit::takeChannel(toInt16(number), checkedAt(channels, number - 1, "ChInfo"),
                               std::move(remark));
    }
}

}  // namespace k520::document
