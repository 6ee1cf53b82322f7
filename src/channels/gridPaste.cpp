// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/gridPaste.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "app/modSoftFace.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/Text.h"
#include "base/typedText.h"
#include "channels/cellText.h"
#include "channels/channelEdit.h"
#include "channels/channelTexts.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "image/documentOrigin.h"

namespace k520::gridPaste {

namespace {

using Block = std::vector<std::vector<std::string>>;

constexpr std::size_t mostReasons = 8;

const CellGrid& grid() {
    return modChMem::state().vsfgGridCh;
}

/// Cuts a text at every `separator`; a text without any is one piece.
std::vector<std::string_view> pieces(std::string_view text, char separator) {
    std::vector<std::string_view> all;
    for (auto end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        all.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    all.push_back(text);
    return all;
}

Place cornerOf(std::span<const Place> chosen) {
    Place corner = chosen.front();
    for (const Place& place : chosen) {
        corner = {std::min(corner.row, place.row), std::min(corner.col, place.col)};
    }
    return corner;
}

/// What is to be pasted where, what came of it so far, and why not.
class Pasting {
  public:
    void cell(Place place, const std::string& text, std::size_t line) {
        if (place.row >= grid().rows() || place.col >= grid().columns()) {
            return outside(place, text, line);
        }
        Channel& channel = channelAt(place.row);
        const auto& shown = grid().text(0, place.col);
        const auto against = channelEdit::refusalOf(channel, place.col);
        if (against && cellText::isEmpty(text)) {
            return;
        }
        std::string remark;
        if (const auto refusal = channelEdit::give(channel, place.col, text, remark)) {
            return refuse(place, say(texts::pastePlace, place.row, shown, refusal->reason));
        }
        cells_.push_back(place);
        if (!remark.empty()) {
            remarks_.push_back(say(texts::pastePlace, place.row, shown, remark));
        }
    }

    void remark(std::string text) { remarks_.push_back(std::move(text)); }

    std::vector<Place> finish() {
        if (!reasons_.empty()) {
            tellReasons();
            return {};
        }
        const auto remark = fmt::format("{}", fmt::join(remarks_, "; "));
        const documentOrigin::Step step(say(texts::stepPaste));
        for (auto& [row, channel] : channels_) {
            modChEdit::takeChannel(toInt16(row), std::move(channel), remark);
        }
        return std::move(cells_);
    }

  private:
    using Channel = modChMem::Channel;

    Channel& channelAt(int row) {
        return channels_.try_emplace(row, modChMem::ChInfo()(row)).first->second;
    }

    void outside(Place place, const std::string& text, std::size_t line) {
        if (cellText::isEmpty(text)) {
            return;
        }
        refuse(place, place.row >= grid().rows()
                          ? say(texts::pasteRow, line, grid().rows() - 1)
                          : say(texts::pasteColumn, line, typedText::shown(text)));
    }

    /// One reason a row: what is wrong with its later cells mostly follows from the first.
    void refuse(Place place, std::string reason) {
        if (std::exchange(refusedRow_, place.row) != place.row) {
            reasons_.push_back(std::move(reason));
        }
    }

    void tellReasons() const {
        std::string text = say(texts::nothingPasted);
        for (std::size_t i = 0; i < std::min(reasons_.size(), mostReasons); ++i) {
            text += "\n" + reasons_[i];
        }
        if (reasons_.size() > mostReasons) {
            text += "\n" + say(texts::pasteMore, reasons_.size() - mostReasons);
        }
        theDialogs().tell(BoxIcon::exclamation, modSoftFace::text(SoftText::notice), text);
    }

    std::map<int, Channel> channels_;
    std::vector<Place> cells_;
    std::vector<std::string> reasons_;
    std::vector<std::string> remarks_;
    int refusedRow_ = 0;
};

bool isTitles(const std::vector<std::string>& line, int col) {
    return std::ranges::all_of(line, [&](const std::string& text) {
        const bool same =
            col < grid().columns() &&
            lowerAscii(typedText::plain(text)) == lowerAscii(typedText::plain(grid().text(0, col)));
        ++col;
        return same;
    });
}

}  // namespace

Block blockOf(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    Block block;
    for (std::string_view line : pieces(text, '\n')) {
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        auto& texts = block.emplace_back();
        for (const std::string_view cell : pieces(line, '\t')) {
            texts.emplace_back(trimBlanks(cell));
        }
    }
    return block;
}

std::vector<Place> paste(std::string_view text, std::span<const Place> chosen) {
    // A clipboard without text must not empty what is chosen.
    if (modChEdit::locked() || chosen.empty() || text.empty()) {
        return {};
    }
    const Block block = blockOf(text);
    Pasting pasting;
    if (block.size() == 1 && block[0].size() == 1) {
        for (const Place& place : chosen) {
            pasting.cell(place, block[0][0], 1);
        }
        return pasting.finish();
    }
    Place at = cornerOf(chosen);
    const bool titled = block.size() > 1 && isTitles(block[0], at.col);
    if (titled) {
        pasting.remark(say(texts::titlesSkipped));
    }
    for (std::size_t i = titled ? 1 : 0; i < block.size(); ++i, ++at.row) {
        int col = at.col;
        for (const std::string& cell : block[i]) {
            pasting.cell({at.row, col++}, cell, i + 1);
        }
    }
    return pasting.finish();
}

}  // namespace k520::gridPaste
