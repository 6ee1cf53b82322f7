// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "channels/bandCodec.h"

/// Radio model and frequency band: the two lists above the channel grid, and the band limits (see
/// bandCodec.h for the image's bytes). Frequencies are in 10 Hz units.
namespace k520::modModel {

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

/// The limits in force.
[[nodiscard]] bandCodec::Limits limits();

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

/// A custom band from two numbers of MHz within 120 to 520, the lower one first. Accepted: they
/// become the band and the texts of the next opening. Otherwise the band becomes 120 to 520 MHz and
/// the texts "120" and "520", which is not a failure. Either way the custom entry is selected and
/// the image gets the limits. Returns whether they were accepted. This is the dialog's OK but for
/// its question, whether to start a new configuration first. Label "frmCustomFre->cmdOk_Click".
bool acceptCustomRange(std::string_view minText, std::string_view maxText);

}  // namespace k520::modModel
