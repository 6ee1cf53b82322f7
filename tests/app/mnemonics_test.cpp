// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mnemonics.h"

#include <gmock/gmock.h>

namespace k520::mnemonics {
namespace {

using Captions = std::vector<std::string>;

TEST(Mnemonics, EachCaptionGetsALetterOfItsOwn) {
    const std::tuple<Captions, std::string, Captions> cases[] = {
        {{"Tone", "Time Out", ""}, "", {"T&one", "&Time Out", ""}},
        // The first letters of words come first, and taken letters are left alone.
        {{"Low Battery", "Beep"}, "L", {"Low &Battery", "B&eep"}},
        {{"Volume", "Vo"}, "", {"&Volume", "V&o"}},
        // Whoever can take another letter gives way, and the shortest goes without.
        {{"Alb", "Al", "A"}, "", {"Al&b", "A&l", "&A"}},
        {{"AC", "AB", "BBD", "C"}, "", {"&AC", "A&B", "BB&D", "&C"}},
        {{"A", "AA"}, "", {"A (&B)", "&AA"}},
        // A mark that is there already stays, and its letter is taken; "&&" is not a mark.
        {{"&Sql", "S && T", "S"}, "", {"&Sql", "S && &T", "S (&A)"}},
        // Other scripts, and a caption whose letters are all given away.
        {{"VOX延迟", "静噪(&A)", "音量"}, "", {"VOX延迟(&B)", "静噪(&A)", "音量(&C)"}},
        {{"[9]", "zz"}, "ABCDEFGHIJKLMNOPQRSTUVWXY", {"[9]", "&zz"}}};
    for (const auto& [captions, taken, wanted] : cases) {
        EXPECT_EQ(marked(captions, taken), wanted);
    }
    EXPECT_EQ(lettersOf(Captions{"&File", "编辑(&E)", "a && &b", "none", "end&"}), "FEB");
}

}  // namespace
}  // namespace k520::mnemonics
