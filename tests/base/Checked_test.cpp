// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Checked.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "base/RuntimeError.h"
#include "base/Text.h"
#include "support/Raised.h"

namespace k520 {
namespace {

using test::raised;
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Checked, RoundsHalvesToEvenWithinTheLimits) {
    const std::pair<double, std::int32_t> rounded[] = {
        {0.5, 0},   {1.5, 2},   {2.5, 2},   {2.5000001, 3}, {0.49999999999999994, 0},
        {-0.5, 0},  {-1.5, -2}, {-2.5, -2}, {-3.5, -4},     {2147483647.4, 2147483647},
        {-0.51, -1}};
    for (const auto& row : rounded) {
        EXPECT_EQ(toInt32(row.first), row.second) << row.first;
    }
    EXPECT_EQ(toByte(-0.5) + toByte(254.5) + toInt16(32767.49) + toInt16(-32768.5), 253);
    EXPECT_EQ(toInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    for (const double value : {-0.51, 255.5, 1e300, infinite, -infinite, std::nan("")}) {
        EXPECT_EQ(raised([&] { return toByte(value); }), 6) << value;
        EXPECT_EQ(raised([&] { return toInt16(value * 128.5); }), std::abs(value) < 1 ? 0 : 6);
    }
    for (const double value : {2147483647.5, -2147483648.51, std::nan("")}) {
        EXPECT_EQ(raised([&] { return toInt32(value); }), 6) << value;
    }
}

TEST(RuntimeErrors, TheSystemsWordsStandAfterWhatTheyMean) {
    const std::pair<std::errc, const char*> words[] = {
        {std::errc::no_space_on_device, "磁盘空间不足（No space left on device）"},
        {std::errc::io_error, "设备读写错误（Input/output error）"},
        {std::errc::broken_pipe, "Broken pipe"}};
    for (const auto& [systemError, text] : words) {
        const SpeakingIn chinese(TextLanguage::chinese);
        EXPECT_EQ(systemWords(std::make_error_code(systemError)), text);
    }
    const SpeakingIn english(TextLanguage::english);
    EXPECT_EQ(systemWords(std::make_error_code(std::errc::no_space_on_device)),
              "No space left on device");
}

TEST(Checked, ReadsDecimalTexts) {
    const std::pair<const char*, double> numbers[] = {
        {"0", 0},       {" 12 ", 12}, {"+3", 3},     {"-4", -4},   {".5", .5},     {"5.", 5},
        {"-.25", -.25}, {"1e2", 100}, {"1E+2", 100}, {"1d2", 100}, {"1D-2", 0.01}, {"007", 7}};
    for (const auto& [text, value] : numbers) {
        EXPECT_EQ(parseNumber(text), value) << text;
    }
    for (const char* text :
         {"",     " ",   "-",   "+",   ".",   "-.",  "e5",  "1e",  "1e2e3", "1 2", "1,5",
          "0x10", "--1", "+-1", "-+1", "++1", "+ 1", "nan", "inf", "-inf",  "1a",  "１"}) {
        EXPECT_EQ(raised([&] { return textToInt32(text); }), 13) << text;
    }
    EXPECT_EQ(textToInt16(" -32768 "), -32768);
    EXPECT_EQ(raised([] { return textToInt16("32767.5"); }), 6);
    EXPECT_EQ(raised([] { return textToInt32("2147483648"); }), 6);
}

TEST(Checked, ReadsHexadecimalTextsIntoSixteenBits) {
    const std::pair<const char*, int> numbers[] = {{"0", 0},        {"1fFF", 0x1FFF},
                                                   {"7FFF", 32767}, {"8000", -32768},
                                                   {"FFFF", -1},    {"0000FFFF", -1}};
    for (const auto& [text, value] : numbers) {
        EXPECT_EQ(hexToInt16(text), value) << text;
    }
    for (const char* text : {"", "G", "FFFFFFFFFG", "-1", "0x1F", " 1F", "+1"}) {
        EXPECT_EQ(raised([&] { return hexToInt16(text); }), 13) << text;
    }
    EXPECT_EQ(raised([] { return hexToInt16("10000"); }), 6);
    EXPECT_EQ(raised([] { return hexToInt16("FFFFFFFFFF"); }), 6);
}

TEST(Checked, WritesNumbersAsSettingsHoldThem) {
    EXPECT_EQ(numberText(0) + numberText(3) + numberText(-3), " 0 3-3");
    EXPECT_EQ(hexText(0x1F, 4) + hexText(0xABCDE, 4) + hexText(0, 2), "001FABCDE00");
    EXPECT_EQ(trimBlanks("  a \t "), "a \t");
    EXPECT_EQ(lowerAscii("AZ[宋É"), "az[宋É");
}

TEST(Checked, KeepsAccessesWithinTheBounds) {
    BoundedArray<int, -1, 2> array;
    array(-1) = 7;
    array(2) = 8;
    EXPECT_EQ(array(-1) * 10 + array(0) + array(2), 78);
    EXPECT_EQ(raised([&] { return std::as_const(array)(-2); }), 9);
    std::string text = "ab";
    EXPECT_EQ(checkedAt(text, 1, "text"), 'b');
    EXPECT_EQ(raised([&] { return checkedAt(text, 2, "text"); }), 9);
    EXPECT_EQ(raised([&] { return checkedAt(text, -1, "text"); }), 9);
    EXPECT_THAT([&] { array(3, "IicDat") = 1; }, testing::Throws<RuntimeError>(testing::Property(
                                                     &RuntimeError::source, "IicDat(3)")));
}

}  // namespace
}  // namespace k520
