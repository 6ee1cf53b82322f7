// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "image/MemoryImage.h"

/// Radio model and frequency band: the two lists above the channel grid, the band limits, and their
/// five bytes in the image. Frequencies are in 10 Hz units.
namespace k520::modModel {

/// In the image: the model's index in its list, then the band's lower and upper limit in 0.1 MHz as
/// four BCD digits each, most significant pair first (136 to 174 MHz is 13 60 17 40).
inline constexpr int modelAddress = 0x379;
inline constexpr int bandAddress = 0x37A;
inline constexpr int bandLength = 4;

/// An entry of the band list.
struct Band {
    std::string_view name;
    std::int32_t low;
    std::int32_t high;
};

inline constexpr int bandCount = 12;
/// The entries that mean more than their limits: what the program starts with, the whole range that
/// a custom band may lie in, and the custom band, which has no limits or name in the table.
inline constexpr int startBand = 5;
inline constexpr int wholeBand = 10;
inline constexpr int customBand = 11;

[[nodiscard]] std::span<const Band, bandCount> bands() noexcept;

/// A drop-down list; -1 while nothing is selected.
struct DropDown {
    std::vector<std::string> items;
    int selected = -1;
};

struct State {
    /// Frequencies outside the band are accepted and coloured.
    std::int32_t bandLow = 12'000'000;
    std::int32_t bandHigh = 52'000'000;
    /// Typed frequencies beyond these are pulled to the band's edge. They are the same for every
    /// band: 120 and 550 MHz.
    std::int32_t absoluteMin = 12'000'000;
    std::int32_t absoluteMax = 55'000'000;
    DropDown cboModel;
    DropDown cboFrequency;
    /// The limits in MHz that the custom range dialog shows: those accepted last.
    std::string customMin = "120";
    std::string customMax = "520";
};

[[nodiscard]] State& state();

/// Whether a frequency lies in the band, limits included.
[[nodiscard]] bool inBand(std::int32_t frequency);

/// Fills both lists, in the language in force, and selects the first model and 400 to 470 MHz,
/// which writes both into the image. Label "frmChMem->ChInfoModel".
void ChInfoModel();

/// Writes the selected model into the image; the first one where none is selected.
void cboModel_Click();
/// Selects an entry of the model list and goes on as for a user's click.
void selectModel(int index);

/// A user chose the selected band: sets the limits, writes them into the image and colours the
/// channels anew. The custom entry shows the custom range dialog, which sets the limits itself;
/// when it is cancelled the limits in force stay and are written. Raises nothing; 9 is logged where
/// no entry is selected or the image is too short, and the limits set before stay.
void cboFrequency_Click();

/// Takes a band for a program that follows what the list shows: never a dialog. The custom entry
/// keeps the limits in force and writes them.
void applyShownBand();

/// Selects an entry of the band list (9 outside it) and goes on as for a user's click.
void selectBand(int index);

/// A user's choice in the band list: selectBand. Where the custom entry leaves the limits as they
/// were, because its dialog was cancelled or brought nothing new, the entry before stays selected.
void chooseBand(int index);

/// Selects the entry whose limits the image holds, and sets them; nothing is written. Limits that
/// are in no entry select the custom one and become 120 to 520 MHz: custom limits are not kept.
/// Colours the channels anew.
void selectBandFromImage();

/// The entry that an image selects; the custom one for limits in no other entry. Raises 9 where the
/// image is too short.
[[nodiscard]] int bandOf(const MemoryImage& image);
/// The entry that the memory image selects.
[[nodiscard]] int bandOfImage();

/// A custom band from two numbers of MHz within 120 to 520, the lower one first. Accepted: they
/// become the band and the texts of the next opening. Otherwise the band becomes 120 to 520 MHz and
/// the texts "120" and "520", which is not a failure. Either way the custom entry is selected and
/// the image gets the limits. Returns whether they were accepted. This is the dialog's OK but for
/// its question, whether to start a new configuration first. Label "frmCustomFre->cmdOk_Click".
bool acceptCustomRange(std::string_view minText, std::string_view maxText);

/// 0.1 MHz units (0 to 9999) as four BCD digits and back; nothing where a nibble is above 9. Raises
/// 6 for a number outside that range.
[[nodiscard]] std::array<std::uint8_t, 2> bcdOfTenths(int tenths);
[[nodiscard]] std::optional<int> tenthsOfBcd(std::array<std::uint8_t, 2> bytes) noexcept;

/// A limit in 0.1 MHz, halves to even: 145.12345 MHz is 1451.
[[nodiscard]] int tenthsOf(std::int32_t limit);

}  // namespace k520::modModel
