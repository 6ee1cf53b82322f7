// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Blanks stand in for what a pattern finds, so that lines keep their numbers.
std::string without(std::string code, const std::regex& pattern) {
    std::smatch found;
    auto from = code.cbegin();
    while (std::regex_search(from, code.cend(), found, pattern)) {
        const auto begin = code.begin() + (found[0].first - code.cbegin());
        const auto end = begin + found.length();
        std::replace_if(
            begin, end, [](char c) { return c != '\n'; }, ' ');
        from = code.cbegin() + (end - code.begin());
    }
    return code;
}

struct Literal {
    int line = 0;
    std::string text;  ///< as it is written in the source
};

/// The string literals of a source, comments left out; a literal of several parts is several.
std::vector<Literal> literalsOf(const std::string& code) {
    std::vector<Literal> found;
    int line = 1;
    for (std::size_t i = 0; i < code.size(); ++i) {
        const auto rest = std::string_view(code).substr(i);
        line += code[i] == '\n' ? 1 : 0;
        if (rest.starts_with("//")) {
            i = std::min(code.find('\n', i), code.size()) - 1;
        } else if (code[i] == '"' || code[i] == '\'') {
            const auto begin = i + 1;
            for (++i; i < code.size() && code[i] != code[begin - 1]; ++i) {
                i += code[i] == '\\' ? 1 : 0;
            }
            if (code[begin - 1] == '"') {
                found.push_back({line, code.substr(begin, i - begin)});
            }
        }
    }
    return found;
}

/// Words with a blank between them, or a letter that is not ASCII: more than a name. The places of
/// arguments, escapes, and signs such as an arrow are not words.
bool isWording(const std::string& literal) {
    // The first byte of dashes, arrows and the like; after the others come letters.
    constexpr unsigned char signs = 0xE2;
    constexpr unsigned char firstLead = 0xC3;
    static const std::regex places(R"(\\.|\{[^}]*\})");
    static const std::regex words(R"([A-Za-z][^ ]* +([^ ]* +)*[^ ]*[A-Za-z])");
    return std::regex_search(std::regex_replace(literal, places, ""), words) ||
           std::ranges::any_of(literal, [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte >= firstLead && byte != signs;
           });
}

/// What a source says in words outside constants of the type Text.
std::vector<Literal> wordingOf(const std::string& code) {
    static const std::regex constants(R"(\bText \w+\s*\{[\s\S]*?"\s*\};)");
    static const std::regex includes(R"(#\s*include[^\n]*)");
    static const std::regex asserts(R"(static_assert\([^;]*;)");
    static const std::regex numbers(R"(\d'\d)");
    auto literals =
        literalsOf(without(without(without(without(code, numbers), constants), includes), asserts));
    std::erase_if(literals, [](const Literal& literal) { return !isWording(literal.text); });
    return literals;
}

/// Words that may stand in the sources themselves.
struct Allowed {
    const char* files;  ///< a pattern of paths below src
    const char* words;  ///< a pattern of whole literals
    const char* why;
};

constexpr Allowed allowedWords[] = {
    {".*",
     "(list line|(grid|column|row|option) \\w+|memory image|token array|data buffer|help file)",
     "names of arrays, for the error of a wrong subscript"},
    {".*", "((transmit|receive) buffer|expected reply|script table|separated bytes|Ch\\w+ \\w+)",
     "names of arrays, for the error of a wrong subscript"},
    {"base/Text.h", ".*", "errors of the compiler"},
    {"app/softFaceTexts.cpp", ".*", "the numbered table of texts, which has both languages"},
    {"app/errTexts.cpp", ".*", "descriptions of standard errors, Chinese in every language"},
    {"app/modShowErr.cpp", " *(错误|可选功能项):.*",
     "lines of the error list, Chinese in every language"},
    {"settings/option(Table|Panel).cpp", "[^a-z]* +|出错位置: .*",
     "lines of the error list, Chinese in every language"},
    {"memview/modMemDat.cpp", "地址为: .*", "the line of a byte, Chinese in every language"},
    {"program/modStartUp.cpp", "Times New Roman|宋体", "names of fonts"},
    {"link/session/unfinishedWrite.cpp", "barely begun", "a word in a file"},
    {"base/generalDate.cpp", "%x %X", "the form of a date"},
    {"base/typedText.cpp|channels/cellText.cpp", "秒|兆赫|赫|赫兹",
     "units that may be typed after a number"},
    {"program/modFileCmd.cpp", "Data File.*", "the file filter, the same in every language"},
    {"(program/modPrint|desktop/main/frmShowErr|desktop/link/frmCommunGuards).cpp",
     "[^A-Za-z]*|.*<.*|.*&nbsp;.*", "marks and markup"},
    {"channels/toneCode.cpp", "无|無", "what a tone's off text may be in a settings file"},
    {"link/session/sessionAdvice.cpp", "。", "the end of a Chinese sentence"},
    {"cli/wideText.cpp", "[^A-Za-z]*", "marks that a line does not begin or end with"},
    {"cli/(commands|helpText).cpp",
     "((new|show|set|export|import|diff|hex|config|read|write|restore|"
     "verify|simulate) |\\{?k520-cli)[ -~]*",
     "command lines, the same in every language"},
};

/// What became of a row: whether its files have words at all, and whether it allowed one.
struct Use {
    bool seen = false;
    bool used = false;
};

bool isAllowed(const std::string& path, const std::string& words, std::vector<Use>& uses) {
    bool allowed = false;
    for (std::size_t i = 0; i < std::size(allowedWords); ++i) {
        const auto& row = allowedWords[i];
        const bool here = std::regex_match(path, std::regex(row.files));
        const bool fits = here && std::regex_match(words, std::regex(row.words));
        uses[i] = {uses[i].seen || here, uses[i].used || fits};
        allowed = allowed || fits;
    }
    return allowed;
}

TEST(Wording, EveryTextIsAConstantInBothLanguages) {
    const fs::path tree = fs::path(K520_SOURCE_DIR) / "src";
    std::vector<Use> uses(std::size(allowedWords));
    for (const auto& entry : fs::recursive_directory_iterator(tree)) {
        const auto& file = entry.path();
        const auto path = fs::relative(file, tree).generic_string();
        if (file.extension() != ".h" && file.extension() != ".cpp") {
            continue;
        }
        std::ifstream in(file);
        std::stringstream code;
        code << in.rdbuf();
        for (const auto& [line, text] : wordingOf(code.str())) {
            EXPECT_TRUE(isAllowed(path, text, uses))
                << path << ":" << line << ": \"" << text << "\" has one language";
        }
    }
    for (std::size_t i = 0; i < uses.size(); ++i) {
        EXPECT_TRUE(uses[i].used || !uses[i].seen)
            << "nothing needs: " << allowedWords[i].why << " in " << allowedWords[i].files;
    }
}

TEST(Wording, FindsWordsWhereverTheyStand) {
    const std::pair<const char*, std::size_t> cases[] = {
        {R"(fail(fmt::format("there is no {}", name));)", 1},
        {R"(throw RuntimeError(5, path + ": no program opens it");)", 1},
        {R"(return "另一个程序";)", 1},
        {R"(warn("\"" + name + "\" stands there\ttwice");)", 1},
        {R"(f('"', "a \" b");)", 1},
        {R"(constexpr Text usual{"一个", "a word"}; say(usual, "more words");)", 1},
        {R"(// says "a word"
            #include "two words.h"
            static_assert(size == 1, "a bit less");
            print("{} - {}", "key", 1'000, 'x', "name.of");)",
         0}};
    for (const auto& [code, count] : cases) {
        EXPECT_EQ(wordingOf(code).size(), count) << code;
    }
}

}  // namespace
