// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/Signal.h"
#include "image/documentOrigin.h"

/// The file commands of the main window: New, Open, Save and Save As, over the image, the channel
/// table and the options.
namespace k520::modFileCmd {

/// A word to the person that is true only for a time.
struct Remark {
    std::string text;
    documentOrigin::Moment said;
    /// Whether an edit ends it; another configuration ends every one.
    bool untilEdit = false;
};

struct State {
    /// Program folder, "Data", "Untitled.dat".
    std::string defaultFilePath;
    /// The data file now open: the target of SaveDatFile and the folder of both file choosers.
    std::string currentFilePath;
    /// The status bar's file panel: text 85 and the current path, nothing between.
    std::string filePanel;
    /// Set by every Save.
    bool saveAsked = false;
    /// The answer to the last question of New or Save (6 = yes, 7 = no).
    std::int16_t lastAnswer = 0;
    /// How the last file command ended; see shownRemark().
    Remark remark;
    /// What is unusual about the file that was opened last; see shownNotice().
    Remark notice;
    /// What the saves of configuration `savedDocument` wrote last, by path.
    std::map<std::string, std::vector<std::uint8_t>> savedBytes;
    std::uint32_t savedDocument = 0;
    /// What the files held when this program opened or saved them last, by path.
    std::map<std::string, std::vector<std::uint8_t>> seenBytes;
    /// The file panel, the remark or the notice was rewritten.
    Signal<> onFilePanel;
};

[[nodiscard]] State& state();

/// The remark on the last file command as long as it holds ("Saved" until the next edit); empty
/// where there is nothing to say.
[[nodiscard]] std::string shownRemark();
/// What a person has to know about the file that was opened: that it is empty, short, too long, or
/// looks like no configuration. Empty for a good file, and after the next New, Open or Read.
[[nodiscard]] std::string shownNotice();
/// That what is shown was read from a radio and is in no file yet; empty otherwise. The current
/// path then still names the file that was open before.
[[nodiscard]] std::string shownOrigin();

/// Gives the current path a new value and rewrites the file panel.
void setCurrentFile(std::string path);

/// Makes the folder "Data" in the program folder where it is missing, and sets both paths to the
/// file "Untitled.dat" in it, which is not made.
void GenerateDatFolder();

/// Unsaved changes are asked about first. Without any, asks (text 74), and on Yes starts a new
/// configuration under the default path.
void NewFile();

/// A new configuration: default image, channels and grid, default options, model and band.
void NewFileSol();

/// The custom range dialog's OK: asks (text 74), on Yes starts a new configuration as New does, and
/// either way goes on with modModel::acceptCustomRange. Label "frmCustomFre->cmdOk_Click".
void customRangeOk(std::string_view minText, std::string_view maxText);

/// Asks for a data file and shows it. A failure also shows box 83; the current path stays.
void OpenFile();

/// Opens a file that is known already, as from the program's arguments. A failure's box
/// says which file it is, and why.
void openNamed(const std::string& path);

/// What OpenFile does with the chosen file, but for what it tells. Returns the file's size: below
/// that of the image, only so much of the image is new. Raises the system's error where the file
/// cannot be read.
std::uint64_t openDatFile(const std::string& path);

/// Asks on every call (text 82), and on Yes goes on with SaveAsFile. A failure shows box 84.
void SaveFile();

/// Asks for a name, offering the current one unless a radio was read, makes it the current path and
/// saves there. A failure before the save shows box 86, and the current path stays; one of the save
/// is told as SaveDatFile tells it.
///
/// What stood under that name, and is not the same, is kept beside it first (files::keepBeside),
/// but for what this command itself has written there since the last New, Open or Read. Where it
/// cannot be kept, or is larger than a megabyte and so is not a configuration, nothing is
/// overwritten. The number of such copies has no limit: they are the person's own files.
///
/// Where another program has changed the file since it was opened or saved here, the person is
/// asked first, and told what differs.
void SaveAsFile();

/// Saves under the current path without asking for a name, keeping as SaveAsFile does.
void saveAgain();

/// Brings the image up to date and writes it to the current path, keeping nothing of what was
/// there. Returns whether it did; a failure is in the error list and in the remark, and shows no
/// box.
bool SaveDatFile();

}  // namespace k520::modFileCmd
