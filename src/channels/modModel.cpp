// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "channels/modModel.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "base/Bcd.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "channels/cellText.h"
#include "channels/codecTexts.h"
#include "channels/frequency.h"
#include "channels/modChMem.h"
#include "image/documentOrigin.h"
#include "image/modIicDat.h"

namespace k520::modModel {

namespace {

constexpr Band mhz(std::string_view name, std::int32_t low, std::int32_t high) {
    return {name, low * frequency::perMhz, high * frequency::perMhz};
}

constexpr std::array<Band, bandCount> bandTable{
    mhz("136 - 174 MHz", 136, 174), mhz("136 - 150 MHz", 136, 150), mhz("150 - 174 MHz", 150, 174),
    mhz("200 - 260 MHz", 200, 260), mhz("245 - 246 MHz", 245, 246), mhz("400 - 470 MHz", 400, 470),
    mhz("400 - 440 MHz", 400, 440), mhz("440 - 480 MHz", 440, 480), mhz("470 - 520 MHz", 470, 520),
    mhz("400 - 520 MHz", 400, 520), mhz("120 - 520 MHz", 120, 520), mhz("", 0, 0)};

constexpr const Band& wholeRange = bandTable[wholeBand];
constexpr std::int32_t perTenth = frequency::perMhz / 10;

void setLimits(std::int32_t low, std::int32_t high) {
    State& s = state();
    s.bandLow = low;
    s.bandHigh = high;
    s.absoluteMin = 120 * frequency::perMhz;
    s.absoluteMax = 550 * frequency::perMhz;
    modChMem::repaintFrequencies();
}

void writeLimit(int address, std::int32_t limit) {
    for (const std::uint8_t byte : bcdOfTenths(tenthsOf(limit))) {
        modIicDat::IicDat()(address++) = byte;
    }
}

void writeBand() {
    writeLimit(bandAddress, state().bandLow);
    writeLimit(bandAddress + bandLength / 2, state().bandHigh);
}

/// A limit as the image holds it, in 10 Hz; nothing where its bytes are not digits.
std::optional<std::int32_t> readLimit(const MemoryImage& image, int address) {
    const auto tenths = tenthsOfBcd({image(address), image(address + 1)});
    return tenths ? std::optional(*tenths * perTenth) : std::nullopt;
}

void applyBand(bool mayAsk) {
    guarded("frmChMem->cboFrequency_Click", [&] {
        const int index = state().cboFrequency.selected;
        const Band& band = checkedAt(bandTable, index, "cboFrequency");
        if (index != customBand) {
            setLimits(band.low, band.high);
        } else if (mayAsk) {
            theDialogs().customRange();
        }
        writeBand();
    });
}

/// A custom limit in 10 Hz; nothing for a text that is not a number or for one beyond the range.
std::optional<std::int32_t> customLimit(std::string_view text) {
    const auto number = cellText::megahertz(text);
    const double limit = roundHalfEven(number.value_or(0) * frequency::perMhz);
    return limit >= wholeRange.low && limit <= wholeRange.high
               ? std::optional(static_cast<std::int32_t>(limit))
               : std::nullopt;
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::span<const Band, bandCount> bands() noexcept {
    return bandTable;
}

bool inBand(std::int32_t frequency) {
    return state().bandLow <= frequency && frequency <= state().bandHigh;
}

void ChInfoModel() {
    guarded("frmChMem->ChInfoModel", [] {
        State& s = state();
        s.cboModel = {{modSoftFace::text(SoftText::model)}, 0};
        cboModel_Click();
        s.cboFrequency.items.clear();
        for (const Band& band : bandTable) {
            s.cboFrequency.items.emplace_back(band.name);
        }
        s.cboFrequency.items[customBand] = modSoftFace::text(SoftText::customBand);
        selectBand(startBand);
    });
}

void cboModel_Click() {
    guarded("frmChMem->cboModel_Click", [] {
        int& selected = state().cboModel.selected;
        selected = std::max(selected, 0);
        modIicDat::IicDat()(modelAddress) = toByte(selected);
    });
}

void selectModel(int index) {
    state().cboModel.selected = index;
    cboModel_Click();
    documentOrigin::edited();
}

void cboFrequency_Click() {
    applyBand(true);
}

void applyShownBand() {
    applyBand(false);
}

void selectBand(int index) {
    state().cboFrequency.selected = index;
    cboFrequency_Click();
}

int bandOf(const MemoryImage& image) {
    const auto low = readLimit(image, bandAddress);
    const auto high = readLimit(image, bandAddress + bandLength / 2);
    const auto found = std::ranges::find_if(
        bandTable, [&](const Band& band) { return low == band.low && high == band.high; });
    return std::min(static_cast<int>(found - bandTable.begin()), customBand);
}

int bandOfImage() {
    return bandOf(modIicDat::IicDat());
}

void chooseBand(int index) {
    State& s = state();
    const auto [low, high, entry] = std::tuple(s.bandLow, s.bandHigh, s.cboFrequency.selected);
    selectBand(index);
    if (index == customBand && s.bandLow == low && s.bandHigh == high) {
        s.cboFrequency.selected = entry;
        return;
    }
    documentOrigin::edited();
}

void selectBandFromImage() {
    guarded("frmChMem->selectBandFromImage", [] {
        const int index = bandOfImage();
        const Band& band =
            index == customBand ? wholeRange : bandTable[static_cast<std::size_t>(index)];
        setLimits(band.low, band.high);
        // Not as a user's click: that would ask and write.
        state().cboFrequency.selected = index;
    });
}

bool acceptCustomRange(std::string_view minText, std::string_view maxText) {
    bool accepted = false;
    guarded("frmCustomFre->cmdOk_Click", [&] {
        State& s = state();
        const auto low = customLimit(minText);
        const auto high = customLimit(maxText);
        accepted = low && high && *low <= *high;
        s.customMin = accepted ? minText : "120";
        s.customMax = accepted ? maxText : "520";
        s.cboFrequency.selected = customBand;
        setLimits(accepted ? *low : wholeRange.low, accepted ? *high : wholeRange.high);
        writeBand();
    });
    return accepted;
}

std::array<std::uint8_t, 2> bcdOfTenths(int tenths) {
    if (tenths < 0 || tenths > 9999) {
        throw RuntimeError(errNum::overflow, say(texts::notFourDigits, tenths));
    }
    return {bcd::byteOf(tenths / 100), bcd::byteOf(tenths % 100)};
}

std::optional<int> tenthsOfBcd(std::array<std::uint8_t, 2> bytes) noexcept {
    const auto hundreds = bcd::numberOf(bytes[0]);
    const auto rest = bcd::numberOf(bytes[1]);
    return hundreds && rest ? std::optional(*hundreds * 100 + *rest) : std::nullopt;
}

int tenthsOf(std::int32_t limit) {
    return toInt32(static_cast<double>(limit) / perTenth);
}

}  // namespace k520::modModel
