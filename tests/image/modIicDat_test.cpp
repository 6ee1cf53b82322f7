// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "image/modIicDat.h"

#include <gtest/gtest.h>

#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "image/stamp.h"
#include "support/TempFolder.h"

namespace k520 {
namespace {

class Image : public testing::Test {
  protected:
    Image() {
        modIicDat::state() = {};
        modShowErr::state() = {};
        mdimoduMain::state() = {};
        mdimoduMain::state().programFolder = folder.path();
    }
    ~Image() override {
        modIicDat::state() = {};
        mdimoduMain::state() = {};
    }

    test::TempFolder folder;
};

TEST_F(Image, DefaultImageFillsBothArraysAsFarAsItReaches) {
    modIicDat::sizeArrays(7);
    modIicDat::IicDat()(7) = 0x55;
    folder.write(mdimoduMain::defaultImageFileName, "ABCDEF");
    modIicDat::InitTempArray();
    EXPECT_EQ(modIicDat::IicDat()(5), 'F');
    EXPECT_EQ(modIicDat::IicDatDef()(0), 'A');
    EXPECT_EQ(modIicDat::IicDat()(7), 0x55) << "beyond the file nothing changes";
    EXPECT_EQ(modShowErr::state().listShowErr.size(), 0);
}

TEST_F(Image, MissingDefaultImageIsReportedAndChangesNothing) {
    modIicDat::sizeArrays(3);
    modIicDat::InitTempArray();
    ASSERT_EQ(modShowErr::state().entries.size(), 1U);
    EXPECT_EQ(modShowErr::state().entries[0].label, "mdifrmMain->InitTempArray");
    EXPECT_EQ(modShowErr::state().entries[0].number, errNum::fileNotFound);
    EXPECT_EQ(modIicDat::IicDat(), MemoryImage(4));
}

TEST_F(Image, SizesAndBounds) {
    EXPECT_EQ(modIicDat::IicDat().size(), 1U) << "one byte until the settings say more";
    EXPECT_THROW(modIicDat::sizeArrays(-1), RuntimeError);
    modIicDat::sizeArrays(8191);
    EXPECT_EQ(modIicDat::IicDatDef().size(), modIicDat::state().IicDatSpare.size());
    EXPECT_THROW((void)modIicDat::IicDat()(8192), RuntimeError);
    EXPECT_THROW((void)modIicDat::IicDat()(-1), RuntimeError);
}

TEST_F(Image, SeparateCharSplitsFromTheLeftAndStopsBehindFourBytes) {
    struct Case {
        const char* text;
        std::array<std::uint8_t, 4> expected;
        std::int16_t error;
    };
    for (const Case& c :
         {Case{"1A2B", {0x1A, 0x2B, 9, 9}, 0}, Case{"123", {0x12, 0x03, 9, 9}, 0},
          Case{"", {9, 9, 9, 9}, 0}, Case{"0102030405", {1, 2, 3, 4}, errNum::subscript},
          Case{"01XY03", {1, 9, 9, 9}, errNum::typeMismatch}}) {
        SCOPED_TRACE(c.text);
        modShowErr::state() = {};
        modIicDat::state().separated = {9, 9, 9, 9};
        modIicDat::SeparateChar(c.text);
        EXPECT_EQ(modIicDat::state().separated, c.expected);
        const auto& entries = modShowErr::state().entries;
        EXPECT_EQ(entries.empty() ? 0 : entries[0].number, c.error);
    }
    EXPECT_TRUE(modShowErr::state().listShowErr.lines().back().starts_with(
        "         错误:  mdifrmMain->SeparateChar     出错号:  13"));
}

TEST_F(Image, StampHasItsOddForm) {
    MemoryImage image(0x400);
    const DateTime when{2026, 11, 21, 13, 5, 9};
    stamp::write(image, when);
    const std::vector<std::uint8_t> expected{0x26, 0x11, 21, 0x13, 0x05};
    const auto written = image.bytes().subspan(816, 5);
    EXPECT_EQ(std::vector<std::uint8_t>(written.begin(), written.end()), expected);
    EXPECT_EQ(stamp::read(image), (DateTime{2026, 11, 21, 13, 5, 0}));

    struct Case {
        int address;
        std::uint8_t value;
    };
    for (const Case& bad : {Case{816, 0xFF}, Case{817, 0x13}, Case{817, 0x00}, Case{818, 31},
                            Case{818, 0}, Case{819, 0x24}, Case{820, 0x60}, Case{820, 0x0A}}) {
        SCOPED_TRACE(testing::Message() << bad.address << " = " << int{bad.value});
        MemoryImage changed = image;
        changed(bad.address) = bad.value;
        EXPECT_FALSE(stamp::read(changed));
    }
    EXPECT_FALSE(stamp::read(MemoryImage(820)));
}

}  // namespace
}  // namespace k520
