// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/mdimoduMain.h"
#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "channels/gridCells.h"
#include "channels/gridPaste.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "document/channelCsv.h"
#include "document/csvText.h"
#include "document/edit.h"
#include "image/modIicDat.h"
#include "support/ProgramFolder.h"

namespace k520 {
namespace {

const std::string refused = "-";
void unheard(const std::string& /*remark*/) {}
const std::string longText(300, '9');

/// One text through the four ways into a cell of channel 1, which before each of them is 446 MHz
/// both ways, 67.0 both ways, and "Low".
class OneMeaning : public test::ProgramFolder {
  protected:
    void start(std::int16_t language) {
        programFolder::state().shipped = K520_SHARE_DIR;
        settingsStore::state().writable = false;
        mdimoduMain::state().Language = language;
        modSoftFace::FillSoftFace(language);
        modIicDat::sizeArrays(0x1FFF);
        modChMem::initChannelForm();
        modIicDat::InitTempArray();
        modChMem::SoftDisplay();
        EXPECT_EQ(failure(), "");
    }
    static modChMem::Channel& channel() { return modChMem::state().ChInfo(1); }
    static void begin() {
        channel() = {};
        channel().rxFre() = channel().txFre() = 44'600'000;
        channel().decodeTone = channel().encodeTone = "67.0";
        channel().field(6) = 1;
        modChMem::showChannel(1);
    }
    static std::string cell(int col) { return modChMem::state().vsfgGridCh.text(1, col); }

    std::string typed(int col, const std::string& text) {
        begin();
        EXPECT_FALSE(gridCells::refuses(1, col));
        gridCells::store(1, col, text);
        return cell(col);
    }
    std::string pasted(int col, const std::string& text) {
        begin();
        const auto before = channel();
        // The empty cell after it makes a block of it: a clipboard without text pastes nothing.
        const auto places = gridPaste::paste(text + "\n", {{{1, col}}});
        const bool taken = dialogs.take().empty();
        EXPECT_EQ(!places.empty(), taken);
        EXPECT_TRUE(taken || channel() == before);
        return taken ? cell(col) : refused;
    }
    template <class Command>
    static std::string given(int col, Command command) {
        begin();
        const auto before = channel();
        try {
            command();
            return cell(col);
        } catch (const document::Refused& refusal) {
            EXPECT_NE(std::string(refusal.what()), "");
            EXPECT_TRUE(channel() == before);
            return refused;
        }
    }
    static std::string set(int col, const std::string& text) {
        return given(col, [&] {
            const auto made = document::edited(channel(), 1, col, text, unheard);
            modChEdit::takeChannel(1, made.channel, made.remark);
        });
    }
    static std::string imported(int col, const std::string& text) {
        return given(col, [&] {
            document::takeChannelCsv(document::csvLine({"channel", document::nameOfColumn(col)}) +
                                         document::csvLine({"1", text}),
                                     unheard);
        });
    }

    test::ScriptedDialogs dialogs;
};

struct Case {
    int col;
    std::string text;
    std::string expected;  ///< the cell then
    std::string typed;     ///< where the text is refused: the cell after typing it
};

const Case cases[] = {
    // Frequencies.
    {1, "145.5", "145.5", {}},
    {1, "145,5", "145.5", {}},
    {1, " 446.2 mhz ", "446.2", {}},
    {1, "446.2MHz", "446.2", {}},
    {2, "４４６，１　兆赫", "446.1", {}},
    {1, "１４５", "145", {}},
    {1, "\u00A0145\u3000", "145", {}},
    {1, "145。5", "145.5", {}},
    {1, "1e3", "470", {}},
    {1, "-5", "400", {}},
    {1, "446,", "446", {}},
    {1, "", "", {}},
    {1, " ", "", {}},
    {2, "", "", {}},
    {1, "abc", refused, ""},
    {1, "446 kHz", refused, ""},
    {1, "446,1,2", refused, ""},
    {1, "1.446,1", refused, ""},
    {1,
     "44\x01"
     "6",
     refused, ""},
    {1, "nan", refused, ""},
    {1, "0x1BE", refused, ""},
    {1, "=", refused, ""},
    {1, "1e30", refused, "446"},
    {1, longText, refused, "446"},
    {1, "四四六", refused, ""},
    {1, "\xFF\xEF\xBC", refused, ""},
    {2, "abc", refused, ""},
    {2, "=", "446", {}},
    {2, "=+7.6", "453.6", {}},
    {2, " =- 7,6 MHz", refused, ""},
    {2, "=-7,6 MHz", "438.4", {}},
    {2, "＝＋７．６", "453.6", {}},
    {2, "=7.6", refused, ""},
    {2, "=+", refused, ""},
    {2, "=+-1", refused, ""},
    // Tones.
    {3, "88,5 Hz", "88.5", {}},
    {3, "88.54", "88.5", {}},
    {4, "d023n", "D023N", {}},
    {4, "D023 N", "D023N", {}},
    {4, " 023i", "D023I", {}},
    {3, "", "None", {}},
    {3, " ", "None", {}},
    {3, "NONE", "None", {}},
    {3, "无", "None", {}},
    {4, "無", "None", {}},
    {3, "1e2", "100.0", {}},
    {3, "９１．５", "91.5", {}},
    {3, "67", "67.0", {}},
    {3, "23", "D023N", {}},
    {4, " ５４ ", "D054N", {}},
    {3, "65", "65.0", {}},
    {3, "114", "114.0", {}},
    {3, "17", refused, "None"},
    {3, "28", refused, "None"},
    {3, "3", refused, "None"},
    {3, "D23", refused, "None"},
    {3, "off", refused, "None"},
    {3, "59.9", refused, "None"},
    {3, "D089N", refused, "None"},
    {3, "88.5 MHz", refused, "None"},
    {3, longText, refused, "None"},
    {3, "\x01", refused, "None"},
    // Entries.
    {6, "High", "High", {}},
    {6, "hIGH ", "High", {}},
    {6, "高", "High", {}},
    {6, "0", "High", {}},
    {6, "０", "High", {}},
    {8, "载波", "Carrier", {}},
    {7, "开", "On", {}},
    {8, "2", "Tone", {}},
    {6, "", refused, "Low"},
    {6, "2", refused, "Low"},
    {6, "-1", refused, "Low"},
    {6, "1.0", refused, "Low"},
    {6, "Medium", refused, "Low"},
    {6, longText, refused, "Low"},
    {6, "Hi\x01gh", refused, "Low"}};

TEST_F(OneMeaning, TypedPastedSetAndImported) {
    start(mdimoduMain::languageEnglish);
    for (const auto& [col, text, expected, instead] : cases) {
        SCOPED_TRACE(testing::Message() << "column " << col << ": " << text);
        EXPECT_EQ(typed(col, text), expected == refused ? instead : expected);
        EXPECT_EQ(pasted(col, text), expected);
        EXPECT_EQ(set(col, text), expected);
        EXPECT_EQ(imported(col, text), expected);
    }
}

TEST_F(OneMeaning, EntriesOfEveryLanguageInEveryLanguage) {
    const std::tuple<std::int16_t, const char*, const char*> languages[] = {
        {mdimoduMain::languageChinese, "高", "无"},
        {mdimoduMain::languageTraditional, "High", "無"},
        {mdimoduMain::languageEnglish, "High", "None"}};
    for (const auto& [language, high, off] : languages) {
        start(language);
        for (const char* text : {"High", "高"}) {
            for (const auto& shown :
                 {typed(6, text), pasted(6, text), set(6, text), imported(6, text)}) {
                EXPECT_EQ(shown, high) << text;
            }
        }
        for (const char* text : {"None", "无", "無"}) {
            EXPECT_EQ(set(3, text), off) << text;
        }
    }
}

TEST_F(OneMeaning, AnExportOfOneLanguageIsTakenInTheOther) {
    start(mdimoduMain::languageChinese);
    document::applyEdit("ch2.rx", "433,5", unheard);
    document::applyEdit("ch2.decode", "无", unheard);
    document::applyEdit("ch2.BusyLock", "tone", unheard);
    const auto chinese = document::channelCsv();
    resetModules();
    start(mdimoduMain::languageEnglish);
    document::takeChannelCsv(chinese, unheard);
    const auto english = document::channelCsv();
    resetModules();
    start(mdimoduMain::languageChinese);
    document::takeChannelCsv(english, unheard);
    EXPECT_EQ(document::channelCsv(), chinese);
    EXPECT_NE(english, chinese);
}

}  // namespace
}  // namespace k520
