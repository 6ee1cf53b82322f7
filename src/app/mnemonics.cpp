// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mnemonics.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <optional>

namespace k520::mnemonics {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

bool isSmall(char c) {
    return c >= 'a' && c <= 'z';
}

char capital(char c) {
    return isSmall(c) ? static_cast<char>(c - 'a' + 'A') : c;
}

bool has(std::string_view letters, char letter) {
    return letters.find(letter) != std::string_view::npos;
}

bool isLetter(char c) {
    return has(alphabet, capital(c));
}

bool isAscii(std::string_view caption) {
    return std::ranges::all_of(caption, [](char c) { return static_cast<unsigned char>(c) < 128; });
}

/// Where a caption has its letter.
std::optional<std::size_t> markedAt(std::string_view caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] == '&' && caption[++i] != '&') {
            return i;
        }
    }
    return std::nullopt;
}

/// The letters that a caption would like, the best first.
std::string wishes(std::string_view caption) {
    std::string firsts;
    std::string others;
    for (std::size_t i = 0; isAscii(caption) && i < caption.size(); ++i) {
        if (isLetter(caption[i])) {
            const bool first = i == 0 || !isLetter(caption[i - 1]);
            (first ? firsts : others) += capital(caption[i]);
        }
    }
    return firsts + others;
}

/// Who has which letter. A caption that finds all its wishes given away asks their owners to take
/// another of theirs.
class Letters {
  public:
    Letters(std::span<const std::string> captions, std::string_view taken) : taken_(taken) {
        for (const std::string& caption : captions) {
            wishes_.push_back(markedAt(caption) ? std::string() : wishes(caption));
        }
    }

    void place(std::size_t caption) {
        asked_.clear();
        give(caption);
    }
    [[nodiscard]] std::optional<char> letterOf(std::size_t caption) const {
        const auto found = std::ranges::find(owners_, std::optional(caption));
        return found == owners_.end()
                   ? std::nullopt
                   : std::optional(alphabet[static_cast<std::size_t>(found - owners_.begin())]);
    }
    /// Any letter that nobody has; nothing where there is none.
    std::optional<char> placeAnywhere(std::size_t caption) {
        for (std::size_t i = 0; i < owners_.size(); ++i) {
            if (!owners_.at(i) && !has(taken_, alphabet[i])) {
                owners_.at(i) = caption;
                return alphabet[i];
            }
        }
        return std::nullopt;
    }

  private:
    std::optional<std::size_t>& ownerOf(char letter) { return owners_.at(alphabet.find(letter)); }

    bool give(std::size_t caption) {
        const std::string& all = wishes_[caption];
        const auto mayHave = [&](char letter) { return !has(taken_, letter); };
        const auto free = std::ranges::find_if(
            all, [&](char letter) { return mayHave(letter) && !ownerOf(letter); });
        if (free != all.end()) {
            ownerOf(*free) = caption;
            return true;
        }
        return std::ranges::any_of(all, [&](char letter) {
            return mayHave(letter) && !has(asked_, letter) && takeOver(caption, letter);
        });
    }
    bool takeOver(std::size_t caption, char letter) {
        asked_ += letter;
        if (!give(*ownerOf(letter))) {
            return false;
        }
        ownerOf(letter) = caption;
        return true;
    }

    std::string taken_;
    std::vector<std::string> wishes_;
    std::array<std::optional<std::size_t>, alphabet.size()> owners_;
    std::string asked_;
};

/// A bracket makes a caption longer: where letters are few, the short ones get it.
std::vector<std::size_t> longestFirst(std::span<const std::string> captions) {
    std::vector<std::size_t> order(captions.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::ranges::greater(),
                             [&](std::size_t i) { return captions[i].size(); });
    return order;
}

/// The caption with its letter: at a word's beginning where it can be.
std::string withLetter(std::string caption, char letter) {
    if (!isAscii(caption)) {
        return caption + "(&" + letter + ")";
    }
    std::optional<std::size_t> place;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        const bool first = i == 0 || !isLetter(caption[i - 1]);
        if (capital(caption[i]) == letter && (first || !place)) {
            place = i;
            if (first) {
                break;
            }
        }
    }
    return place ? caption.insert(*place, 1, '&') : caption + " (&" + letter + ")";
}

}  // namespace

std::string lettersOf(std::span<const std::string> captions) {
    std::string letters;
    for (const std::string& caption : captions) {
        if (const auto at = markedAt(caption)) {
            letters += capital(caption[*at]);
        }
    }
    return letters;
}

std::vector<std::string> marked(std::vector<std::string> captions, std::string_view taken) {
    Letters letters(captions, std::string(taken) + lettersOf(captions));
    for (const std::size_t i : longestFirst(captions)) {
        letters.place(i);
    }
    for (std::size_t i = 0; i < captions.size(); ++i) {
        if (captions[i].empty() || markedAt(captions[i])) {
            continue;
        }
        const auto own = letters.letterOf(i);
        const auto letter = own ? own : letters.placeAnywhere(i);
        if (letter) {
            captions[i] = withLetter(captions[i], *letter);
        }
    }
    return captions;
}

}  // namespace k520::mnemonics
