// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace k520 {

/// The texts that the program asks for, by what they say there; the values are their numbers.
enum class SoftText : std::int16_t {
    // Toolbar buttons.
    toolNew = 0,
    toolOpen = 1,
    toolSave = 2,
    toolRead = 3,
    toolWrite = 4,
    toolPort = 5,
    toolHelp = 6,
    toolExit = 7,
    toolPrint = 8,
    // Title and menus of the main window.
    mainTitle = 16,
    menuFile = 20,
    menuNew = 21,
    menuOpen = 22,
    menuSave = 23,
    menuSaveAs = 24,
    menuExit = 25,
    menuProgram = 26,
    menuRead = 27,
    menuWrite = 28,
    menuOption = 29,
    menuOptionalFeatures = 30,
    menuSettings = 31,
    menuPort = 32,
    menuLanguage = 33,
    menuSimplified = 34,
    menuEnglish = 35,
    menuHelp = 36,
    menuHelpTopic = 37,
    menuPrint = 43,
    menuLockChannels = 47,
    menuTraditional = 57,
    // Port selection dialog.
    portTitle = 60,
    portFrame = 61,
    portLabel = 62,
    portOk = 63,
    portCancel = 64,
    // Channel window.
    channelTitle = 66,
    // Message boxes; `notice` is the title of them all.
    languageChanged = 68,
    notice = 70,
    askExit = 73,
    askRenew = 74,
    checkPort = 79,
    askSave = 82,
    wrongFileType = 83,
    saveFailed = 84,
    fileWriteFailed = 86,
    printFailed = 106,
    // Status bar.
    fileName = 85,
    statusPanel = 90,
    timePanel = 91,
    portPanel = 92,
    filePanel = 93,
    ready = 94,
    interfaceLocked = 116,
    // Communication dialog.
    readButton = 100,
    writeButton = 101,
    communication = 156,
    reading = 164,
    readDone = 165,
    readFailed = 166,
    noStatus = 168,
    done = 171,
    failed = 172,
    noReply = 175,
    // Pop-up menu of the channel grid.
    deleteChannel = 110,
    deleteAllChannels = 112,
    saveAsDefault = 113,
    openChannel = 114,
    // Radio information window.
    unknownTime = 179,
    radioFrame = 183,
    radioModel = 184,
    radioBand = 185,
    radioVersion = 186,
    radioLastWrite = 187,
    treeRoot = 300,
    treeRadioInfo = 301,
    // Optional features: the frame, then the captions, each before the first of its entries.
    optionFrame = 200,
    squelch = 217,
    off = 220,
    on = 221,
    boxOff = 224,
    voice = 226,
    firstVoice = 227,
    timeOut = 233,
    timeOutOff = 234,
    seconds = 238,
    volume = 239,
    broadcastSquelch = 240,
    broadcastVolume = 241,
    emergencyAlarm = 293,
    voiceChip = 315,
    firstVoiceChip = 316,
    firstCrystal = 320,
    crystal = 326,
    batterySave = 327,
    beep = 328,
    timeOutWarning = 330,
    timeOutWarningOff = 331,
    voxGain = 333,
    voxGainOff = 334,
    voxDelay = 336,
    firstVoxDelay = 337,
    voxInhibit = 346,
    firstVoxInhibit = 347,
    lowBatteryTransmit = 351,
    // Names of the two kinds of data, and of the one model.
    channels = 302,
    options = 303,
    model = 356,
    // Model and band lists above the channel grid, custom range dialog.
    modelFrame = 370,
    modelLabel = 371,
    bandLabel = 372,
    customBand = 373,
    customTitle = 374,
    customMin = 375,
    customMax = 376,
    customOk = 377,
    customCancel = 378,
};

/// The text that stands `steps` after another one, for lists whose entries are in a row.
[[nodiscard]] constexpr SoftText textAfter(SoftText first, int steps) noexcept {
    return static_cast<SoftText>(static_cast<int>(first) + steps);
}

/// One interface text in both languages. Captions, list entries and messages have an
/// index, 0 to 445.
struct SoftFaceRow {
    std::int16_t index;
    std::string_view chinese;  ///< Simplified Chinese, UTF-8
    std::string_view english;  ///< UTF-8: a few texts contain full-width punctuation
};

/// All texts, ascending by index. An index without a row has no text in either language.
/// "&" marks the mnemonic of a menu item or button. The texts are established wording and are
/// shown as they are, misspellings and punctuation included.
[[nodiscard]] std::span<const SoftFaceRow> softFaceRows() noexcept;

}  // namespace k520
