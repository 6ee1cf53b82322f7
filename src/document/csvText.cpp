// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "document/csvText.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "document/Refused.h"
#include "document/editTexts.h"

namespace k520::document {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<CsvRow> rows() {
        std::vector<CsvRow> result;
        while (at_ < text_.size()) {
            CsvRow row = nextRow();
            if (row.cells.size() > 1 || !row.cells.front().empty()) {
                result.push_back(std::move(row));
            }
        }
        return result;
    }

  private:
    CsvRow nextRow() {
        CsvRow row{line_, {}};
        do {
            row.cells.push_back(nextCell());
        } while (take(','));
        const bool ended = take('\r');
        if (!take('\n') && !ended && at_ < text_.size()) {
            refuse(Reason::notPossible,
                   say(texts::csvLineReason, line_, say(texts::csvAfterQuote)));
        }
        ++line_;
        return row;
    }

    std::string nextCell() {
        if (take('"')) {
            return quotedCell();
        }
        const auto begin = at_;
        at_ = std::min(text_.find_first_of(",\r\n", at_), text_.size());
        return std::string(text_.substr(begin, at_ - begin));
    }

    std::string quotedCell() {
        const int begin = line_;
        std::string cell;
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '"' && !take('"')) {
                return cell;
            }
            line_ += c == '\n' ? 1 : 0;
            cell += c;
        }
        refuse(Reason::notPossible, say(texts::csvLineReason, begin, say(texts::csvOpenQuote)));
    }

    bool take(char wanted) {
        const bool there = at_ < text_.size() && text_[at_] == wanted;
        at_ += there ? 1 : 0;
        return there;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int line_ = 1;
};

std::string quoted(const std::string& cell) {
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    std::string result = "\"";
    for (const char c : cell) {
        result += c == '"' ? "\"\"" : std::string(1, c);
    }
    return result + '"';
}

}  // namespace

std::vector<CsvRow> parseCsv(std::string_view text) {
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    return Reader(text).rows();
}

std::string csvLine(const std::vector<std::string>& cells) {
    std::vector<std::string> written;
    for (const auto& cell : cells) {
        written.push_back(quoted(cell));
    }
    return fmt::format("{}\n", fmt::join(written, ","));
}

}  // namespace k520::document
