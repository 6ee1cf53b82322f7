// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

namespace k520 {

/// Texts of the program's own commands and windows, for which the numbered table (modSoftFace) has
/// no row. "&" marks a mnemonic, as there.
enum class OwnText {
    // Main window
    menuView,
    viewErrorList,
    viewTree,
    treeTitle,
    toolbarTitle,
    helpCannotOpen,
    fileSaved,
    fileNotSaved,  ///< with a place for the reason
    shortFile,     ///< with places for the bytes that it holds and those of the image
    // Channel window
    outOfBandTip,  ///< with two places for the band's limits in MHz
    openedTip,
    cutCells,
    pasteCells,
    // Communication dialog
    stopSession,
    showMemDat,
    dataList,
    addressRanges,
    maxAddress,
    readFrom,
    readTo,
    writeFrom,
    writeTo,
    badAddressTip,  ///< with a place for the address that stays in force
    communLight,
    closeWindow,
    // How a session ended
    readDone,  ///< with a place for the number of blocks, like the next
    writeDone,
    doneButLogged,  ///< with a place for an error's source
    sessionStopped,
    portMissing,  ///< these five with places for an error's source and for what it speaks of
    portDenied,
    portInUse,
    portNotSerial,
    portTroubleOther,
    contactLost,  ///< with a place for an error's source, like the next two
    rangeUnusable,
    endedByError,
    radioSilent,  ///< with a place for the number of attempts, like the next
    radioUnclear,
    imageUnchanged,
    imageMixed,  ///< with a place for the last address, like the last of the next three
    radioUnchanged,
    radioTouched,
    radioPartlyWritten,
    // Safeguards: the boxes, the stages, and what is said of them at the end
    keepCopy,
    backUpFirst,
    readBack,
    restoreRadio,
    restoreQuestion,  ///< with a place for the file's name, like restoreTip
    restoreTip,
    restoreNone,
    stageRead,
    stageReadAgain,
    stageBackUp,
    stageWrite,
    stageRestore,
    stageReadBack,
    backupLies,  ///< with a place for the file's name, like the next two
    copyLies,
    restoreOffered,
    earlierOffered,  ///< with a place for the file's name
    copyNotStored,   ///< with a place for the reason, like the next two
    backupNotStored,
    backupNotReadable,
    backUpFailed,  ///< nothing was written because the backup failed
    bothReadsAgree,
    radioHoldsAll,
    radioRestored,
    restoreAgain,
    restoreDiffers,  ///< with a place for the number of bytes
    readsDiffer,     ///< with a place for the number of bytes, like the next
    radioDiffers,
    notCompared,
    modelByte,
    bandBytes,
    stampBytes,
    channelNumber,  ///< with a place for the number
    // Port dialog: why a port cannot be chosen
    portMissingShort,
    portDeniedShort,
    portInUseShort,
    portNotSerialShort,
    portNotUsable,
    simulatedRadio,
    // Option panel
    groupTransmit,
    groupReceiver,
    groupVoice,
    groupPower,
    groupVox,
    groupBroadcast,
    neverStoredTip,
    // Memory data window
    memDatTitle,
    fillGrid,
    clearMarks,
    badByteTip,
    goToAddress,
    goToTip,
    tablesFirst,
    // Error list
    errorListTitle,
    copyLines,
    copyAll,
    errorListEmpty,
    last_  ///< none: behind the last one
};

/// The text in Chinese where the interface texts are those of language 1, in English beside all
/// others.
[[nodiscard]] const std::string& ownText(OwnText text);

}  // namespace k520
