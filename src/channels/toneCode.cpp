// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/toneCode.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "base/Checked.h"
#include "channels/codecTexts.h"

namespace k520::toneCode {

namespace {

constexpr std::array<CtcssTone, ctcssCount> ctcssTable{
    {{"67.0", "029E"},  {"69.3", "02B5"},  {"71.9", "02CF"},  {"74.4", "02E8"},
     {"77.0", "0302"},  {"79.7", "031D"},  {"82.5", "0339"},  {"85.4", "0356"},
     {"88.5", "0375"},  {"91.5", "0393"},  {"94.8", "03B4"},  {"97.4", "03CE"},
     {"100.0", "03E8"}, {"103.5", "040B"}, {"107.2", "0430"}, {"110.9", "0455"},
     {"114.8", "047C"}, {"118.8", "04A4"}, {"123.0", "04CE"}, {"127.3", "04F9"},
     {"131.8", "0526"}, {"136.5", "0555"}, {"141.3", "0585"}, {"146.2", "05B6"},
     {"151.4", "05EA"}, {"156.7", "061F"}, {"159.8", "063E"}, {"162.2", "0656"},
     {"165.5", "0677"}, {"167.9", "068F"}, {"171.3", "06B1"}, {"173.8", "06CA"},
     {"177.3", "06ED"}, {"179.9", "0707"}, {"183.5", "072B"}, {"186.2", "0746"},
     {"189.9", "076B"}, {"192.8", "0788"}, {"196.6", "07AE"}, {"199.5", "07CB"},
     {"203.5", "07F3"}, {"206.5", "0811"}, {"210.7", "083B"}, {"218.1", "0885"},
     {"225.7", "08D1"}, {"229.1", "08F3"}, {"233.6", "0920"}, {"241.8", "0972"},
     {"250.3", "09C7"}, {"254.1", "09ED"}}};

constexpr std::array<std::string_view, dcsCount> dcsTable{
    "023", "025", "026", "031", "032", "036", "043", "047", "051", "053", "054", "065",
    "071", "072", "073", "074", "114", "115", "116", "122", "125", "131", "132", "134",
    "143", "145", "152", "155", "156", "162", "165", "172", "174", "205", "212", "223",
    "225", "226", "243", "244", "245", "246", "251", "252", "255", "261", "263", "265",
    "266", "271", "274", "306", "311", "315", "325", "331", "332", "343", "346", "351",
    "356", "364", "365", "371", "411", "412", "413", "423", "431", "432", "445", "446",
    "452", "454", "455", "462", "464", "465", "466", "503", "506", "516", "523", "526",
    "532", "546", "565", "606", "612", "624", "627", "631", "632", "645", "654", "662",
    "664", "703", "712", "723", "731", "732", "734", "743", "754"};

constexpr std::array<std::string_view, 3> offTexts{"无", "無", "None"};

constexpr std::uint16_t offWord = 0xFFFF;
constexpr int lowestTenths = 600;
constexpr int highestTenths = 2650;
constexpr std::uint16_t dcsNormal = 0x2800;
constexpr std::uint16_t dcsInverted = 0xA800;
constexpr std::uint16_t dcsCodeMask = 0x01FF;
/// What the writer adds to a code: bit 11 for every one, and the polarity in the high byte.
constexpr int dcsMark = 0x0800;
constexpr int normalMark = 0x2000;
constexpr int invertedMark = 0xA000;

std::string ctcssText(int tenths) {
    return fmt::format("{}.{}", tenths / 10, tenths % 10);
}

std::string dcsText(std::uint16_t word, char polarity) {
    return fmt::format("D{:03o}{}", word & dcsCodeMask, polarity);
}

bool isOff(std::string_view text, std::string_view offText) {
    return text.empty() || text == offText || std::ranges::find(offTexts, text) != offTexts.end();
}

/// The characters of a UTF-8 text.
std::vector<std::string_view> charactersOf(std::string_view text) {
    std::vector<std::string_view> characters;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (continues && !characters.empty()) {
            const auto& last = characters.back();
            characters.back() = {last.data(), last.size() + 1};
        } else {
            characters.push_back(text.substr(i, 1));
        }
    }
    return characters;
}

std::uint16_t ctcssWord(double hertz) {
    const std::int32_t tenths = toInt32(hertz * 10);
    if (tenths < 0 || tenths > 0xFFFF) {
        throw RuntimeError(errNum::overflow, say(texts::toneOutOfRange, hertz));
    }
    return static_cast<std::uint16_t>(tenths);
}

std::uint16_t dcsWord(std::string_view text) {
    const auto characters = charactersOf(text);
    if (characters.size() > 5) {
        throwSubscript(say(texts::charactersOf, text), 5);
    }
    const auto digit = [&](std::size_t i) {
        if (i >= characters.size() || characters[i] < "0" || characters[i] > "9") {
            throw RuntimeError(errNum::typeMismatch, say(texts::toneUnreadable, text));
        }
        return characters[i].front() - '0';
    };
    const int code = digit(1) * 64 + digit(2) * 8 + digit(3);
    const bool normal = characters.size() > 4 && characters[4] == "N";
    return static_cast<std::uint16_t>(code + dcsMark + (normal ? normalMark : invertedMark));
}

bool isOctal(char c) noexcept {
    return c >= '0' && c <= '7';
}

/// A DCS text from three octal digits and perhaps a polarity letter.
std::optional<std::string> dcsFromDigits(std::string_view digits) {
    if (digits.size() < 3 || !std::ranges::all_of(digits.substr(0, 3), isOctal)) {
        return std::nullopt;
    }
    const char letter = digits.size() > 3 ? digits[3] : 'N';
    const char polarity = letter == 'I' || letter == 'i' ? 'I' : 'N';
    return fmt::format("D{}{}", digits.substr(0, 3), polarity);
}

}  // namespace

std::span<const CtcssTone, ctcssCount> ctcssTones() noexcept {
    return ctcssTable;
}

std::span<const std::string_view, dcsCount> dcsCodes() noexcept {
    return dcsTable;
}

std::string_view offTextOf(std::int16_t language) noexcept {
    return language >= 1 && language <= 3 ? offTexts[static_cast<std::size_t>(language - 1)]
                                          : offTexts.back();
}

std::span<const std::string_view> allOffTexts() noexcept {
    return offTexts;
}

std::string toneText(std::uint16_t word, std::string_view offText) {
    if (word >= lowestTenths && word <= highestTenths) {
        return ctcssText(word);
    }
    switch (word & ~dcsCodeMask) {
        case dcsNormal:
            return dcsText(word, 'N');
        case dcsInverted:
            return dcsText(word, 'I');
        default:
            return std::string(offText);
    }
}

std::uint16_t toneWord(std::string_view text, std::string_view offText) {
    if (isOff(text, offText)) {
        return offWord;
    }
    const auto hertz = parseNumber(text);
    return hertz ? ctcssWord(*hertz) : dcsWord(text);
}

std::optional<std::string> normaliseTone(std::string_view typed) {
    const auto text = trimBlanks(typed);
    if (const auto hertz = parseNumber(text)) {
        const double tenths = roundHalfEven(*hertz * 10);
        if (tenths >= lowestTenths && tenths <= highestTenths) {
            return ctcssText(static_cast<int>(tenths));
        }
    }
    const bool lettered = text.starts_with('D') || text.starts_with('d');
    return dcsFromDigits(lettered ? text.substr(1) : text);
}

}  // namespace k520::toneCode
