// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// A person at the channel grid and the option panel: any sequence of edits, commands and texts.

#include <array>

#include "app/interfaceLock.h"
#include "app/modShowErr.h"
#include "base/Dialogs.h"
#include "channels/bandCodec.h"
#include "channels/channelEdit.h"
#include "channels/gridCells.h"
#include "channels/gridPaste.h"
#include "channels/modChEdit.h"
#include "channels/modChMem.h"
#include "channels/modCtdcs.h"
#include "channels/modModel.h"
#include "channels/toneCode.h"
#include "program/modFileCmd.h"
#include "settings/modSysSet.h"
#include "settings/optionPanel.h"
#include "settings/optionTable.h"
#include "support.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;
namespace column = modChMem::column;

constexpr int mostEdits = 40;

struct Place {
    int row;
    int col;
};

Place cellFrom(Source& source) {
    const auto& grid = modChMem::state().vsfgGridCh;
    Place place{};
    place.row = 1 + source.below(grid.rows() - 1);
    place.col = 1 + source.below(grid.columns() - 1);
    return place;
}

std::int16_t channelFrom(Source& source) {
    return static_cast<std::int16_t>(1 + source.below(modChMem::state().ChNum));
}

/// Mostly texts that a cell takes.
std::string textFrom(Source& source) {
    static constexpr std::array<std::string_view, 24> words{
        "446,1 MHz", "=+7.6", "=",   "无",   "446.00625", "145.0124", "119.99", "550.1",
        "400",       "470.0", "1e3", "88.5", "D023N",     "d754i",    "265.0",  "023",
        "None",      "High",  "Low", "Wide", "On",        "Off",      "",       "99999999999"};
    const std::size_t kind = source.byte();
    return kind < 0xC0 ? std::string(words[kind % words.size()]) : source.text(24);
}

class InputDialogs : public Dialogs {
  public:
    explicit InputDialogs(Source& source) : source_(source) { setDialogs(this); }
    ~InputDialogs() override { setDialogs(nullptr); }
    InputDialogs(const InputDialogs&) = delete;
    InputDialogs& operator=(const InputDialogs&) = delete;

    bool ask(const std::string&, const std::string&, bool) override { return source_.flag(); }
    SaveAnswer askToSave(const std::string& /*title*/, const std::string& /*text*/) override {
        return SaveAnswer::dontSave;
    }
    void tell(BoxIcon, const std::string&, const std::string&) override {}
    std::string openFile(const FileChoice&) override { return {}; }
    std::string saveFile(const FileChoice&) override { return {}; }
    void customRange() override {
        if (source_.flag()) {
            const auto low = textFrom(source_);
            modModel::acceptCustomRange(low, textFrom(source_));
        }
    }
    void openDocument(const std::string&) override {}
    void print(const std::string&) override {}

  private:
    Source& source_;
};

/// All of a block is pasted, or nothing and a box says why.
void paste(Source& source) {
    const auto [row, col] = cellFrom(source);
    const auto before = fuzz::theChannels();
    const std::array<gridPaste::Place, 1> corner{{{row, col}}};
    if (gridPaste::paste(source.text(120), corner).empty()) {
        require(before == fuzz::theChannels(), "what is not pasted changes nothing");
    }
}

/// A typed text goes into a cell that takes one; a given one is refused with a reason, too.
void putText(Place place, const std::string& text, bool typed) {
    if (gridCells::refuses(place.row, place.col)) {
        return;
    }
    if (typed) {
        gridCells::store(place.row, place.col, text);
        return;
    }
    auto channel = modChMem::ChInfo()(place.row);
    std::string remark;
    if (const auto refusal = channelEdit::give(channel, place.col, text, remark)) {
        require(!refusal->reason.empty(), "a refusal says why");
    } else {
        modChEdit::takeChannel(static_cast<std::int16_t>(place.row), std::move(channel), remark);
    }
}

void clickOption(Source& source) {
    const auto& option = optionTable::optionAt(source.below(optionTable::optionCount));
    optionPanel::optionClicked(option.number, source.below(option.max + 1));
}

void decodeAgain() {
    modChMem::SetConvIicDat();
    modChMem::SoftDisplay();
    optionPanel::InitOpt();
}

void menuCommand(Source& source) {
    const auto channel = channelFrom(source);
    const auto items = modChEdit::channelMenu(channel);
    require(items.size() == 4, "the pop-up menu has four items");
    const auto choice = static_cast<std::size_t>(source.below(4));
    if (!items[choice].enabled) {
        return;
    }
    switch (choice) {
        case 0:
            modChEdit::openChannel(channel);
            break;
        case 1:
            modChMem::mnuDelOne_Click();
            break;
        case 2:
            modChMem::mnuDelAll_Click();
            break;
        default:
            modChEdit::saveAsDefault(channel);
    }
}

void edit(Source& source) {
    switch (source.byte() % 12) {
        case 0:
        case 1:
        case 2: {
            const auto place = cellFrom(source);
            putText(place, textFrom(source), source.flag());
            break;
        }
        case 3: {
            const auto [row, col] = cellFrom(source);
            gridCells::clear(row, col);
            break;
        }
        case 4: {
            const auto [row, col] = cellFrom(source);
            modChEdit::vsfgGridCh_DblClick(static_cast<std::int16_t>(row),
                                           static_cast<std::int16_t>(col));
            break;
        }
        case 5:
            menuCommand(source);
            break;
        case 6:
            modModel::chooseBand(source.below(bandCodec::bandCount));
            break;
        case 7:
            clickOption(source);
            break;
        case 8:
            paste(source);
            break;
        case 9:
            decodeAgain();
            break;
        case 10:
            interfaceLock::state().lockState =
                source.below(4) == 0 ? interfaceLock::locked : interfaceLock::unlocked;
            break;
        default:
            modFileCmd::NewFile();
    }
}

/// The option panel as it is after the start-up.
void freshPanel() {
    static const optionPanel::State fresh = (optionPanel::InitOpt(), optionPanel::state());
    optionPanel::state() = fresh;
}

void requireTone(const std::string& tone) {
    require(tone.empty() || tone == modCtdcs::state().CtdcsOffText ||
                toneCode::normaliseTone(tone) == tone,
            "a tone is off or in its normal form");
}

void requireValid(const modChMem::Channel& channel) {
    const auto usable = [](std::int32_t f) { return f >= 12'000'000 && f <= 55'000'000; };
    require(!channel.present() || usable(channel.rxFre()), "a frequency is 120 to 550 MHz");
    require(!channel.transmits() || usable(channel.txFre()), "a frequency is 120 to 550 MHz");
    require(channel.present() || !channel.transmits(), "an empty channel does not transmit");
    require(channel.present() || !channel.opened, "an empty channel is not open");
    requireTone(channel.decodeTone);
    requireTone(channel.encodeTone);
    for (int k = modChMem::firstParameter; k <= modChMem::state().ColNum; ++k) {
        const auto count = static_cast<std::int32_t>(modChMem::columnOf(k).texts().size());
        require(channel.field(k) < count && channel.field(k) >= (channel.present() ? 0 : -1),
                "a parameter is one of its column's texts");
    }
}

void requireShown(int row, const modChMem::Channel& channel) {
    const auto& grid = modChMem::state().vsfgGridCh;
    const auto shows = [&](int col, std::string_view text) {
        require(grid.text(row, col) == (channel.present() ? text : std::string_view()),
                "the grid shows the table");
    };
    const auto frequencyText = [](std::int32_t f) {
        return f == frequency::none ? std::string() : frequency::mhzText(f);
    };
    shows(column::rx, frequencyText(channel.rxFre()));
    shows(column::tx, frequencyText(channel.txFre()));
    // A channel that has no tone yet shows that it is off.
    const auto toneText = [](const std::string& tone) {
        return tone.empty() ? modCtdcs::state().CtdcsOffText : tone;
    };
    shows(column::decode, toneText(channel.decodeTone));
    shows(column::encode, channel.transmits() ? toneText(channel.encodeTone) : std::string());
    for (int k = modChMem::firstParameter; channel.present() && k <= modChMem::state().ColNum;
         ++k) {
        shows(k, modChMem::columnOf(k).textOf(channel.field(k)));
    }
}

void requireValidState() {
    for (int n = 1; n <= modChMem::state().ChNum; ++n) {
        requireValid(modChMem::ChInfo()(n));
        requireShown(n, modChMem::ChInfo()(n));
    }
    const auto& band = modModel::state();
    require(
        band.bandLow >= 12'000'000 && band.bandLow <= band.bandHigh && band.bandHigh <= 52'000'000,
        "a band lies within 120 to 520 MHz");
    for (const auto& option : optionTable::options()) {
        const auto value = modSysSet::OptNow()[static_cast<std::size_t>(option.number)];
        require(value >= 0 && value <= option.max, "an option is one of its entries");
    }
}

/// A number of MHz that 32 bits cannot hold is the one thing that may be refused.
void requireAllowedFailures() {
    static constexpr std::array<std::string_view, 2> labels{"frmChMem->vsfgGridCh_AfterEdit:",
                                                            "frmChMem->ModifyTxRxFre:"};
    fuzz::requireLabels(labels);
    for (const auto& entry : modShowErr::state().entries) {
        require(entry.number == errNum::overflow, "a number is too large");
    }
}

/// What counts of a channel in the image: off is one tone, whatever its text.
void requireSame(modChMem::Channel a, modChMem::Channel b) {
    const auto& off = modCtdcs::state().CtdcsOffText;
    for (auto* each : {&a, &b}) {
        each->modified() = 0;
        each->opened = each->outOfBand = false;
        for (auto* tone : {&each->decodeTone, &each->encodeTone}) {
            *tone = tone->empty() ? off : *tone;
        }
    }
    require(a == b || (!a.present() && !b.present()), "the image holds what was edited");
}

void requireKept() {
    const auto edited = fuzz::theChannels();
    const auto options = modSysSet::OptNow();
    decodeAgain();
    const auto kept = fuzz::theChannels();
    for (std::size_t i = 0; i < edited.size(); ++i) {
        requireSame(edited[i], kept[i]);
    }
    for (const auto& option : optionTable::options()) {
        const auto i = static_cast<std::size_t>(option.number);
        require(option.ownedMask == 0 || options[i] == modSysSet::OptNow()[i],
                "the image holds the options");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Source source(data, size);
    fuzz::freshCore();
    interfaceLock::state().lockState = interfaceLock::unlocked;
    const InputDialogs dialogs(source);
    freshPanel();
    for (int left = mostEdits; left > 0 && !source.empty(); --left) {
        edit(source);
        requireValidState();
    }
    requireKept();
    requireValidState();
    requireAllowedFailures();
    return 0;
}
