// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

namespace k520 {

/// The numbers by which answers to questions are kept.
inline constexpr std::int16_t answerYes = 6;
inline constexpr std::int16_t answerNo = 7;

/// What becomes of changes before something takes their place.
enum class SaveAnswer { save, dontSave, cancel };

/// The icon of a message box.
enum class BoxIcon { question, exclamation, critical };

/// A file chooser: `filter` in the form "Data File(*.dat)|*.dat", `folder` where it starts, and for
/// saving the `name` that is filled in.
struct FileChoice {
    std::string filter;
    std::string folder;
    std::string defaultExtension;
    std::string name = {};
};

/// The seam through which every question and box goes. The desktop shows windows, the command line
/// answers by its arguments, tests by a script.
class Dialogs {
  public:
    virtual ~Dialogs() = default;

    /// A Yes/No box with the question icon; true for Yes. `usual` is the answer of a mere Return:
    /// No where Yes gives something up.
    virtual bool ask(const std::string& title, const std::string& text, bool usual) = 0;
    /// A box with the buttons Save, Don't save and Cancel; Save is the answer of a mere Return, and
    /// Cancel that of a box that is closed.
    virtual SaveAnswer askToSave(const std::string& title, const std::string& text) = 0;
    /// A box with an OK button.
    virtual void tell(BoxIcon icon, const std::string& title, const std::string& text) = 0;
    /// The chosen file's path, or an empty text when cancelled.
    virtual std::string openFile(const FileChoice& choice) = 0;
    /// The path chosen for saving; asks nothing before an existing file is overwritten. Raises a
    /// RuntimeError where the chooser fails after a name was given.
    virtual std::string saveFile(const FileChoice& choice) = 0;
    /// Shows the custom range dialog; it sets the band limits itself.
    virtual void customRange() = 0;
    /// Hands a document to the program that the system keeps for such files. Raises a RuntimeError
    /// that names the file where there is no such program.
    virtual void openDocument(const std::string& path) = 0;
    /// Prints a document, given as HTML, after the user has chosen where and how; does nothing when
    /// cancelled. Raises a RuntimeError where the printer fails.
    virtual void print(const std::string& html) = 0;
};

/// The dialogs in force: ones that answer No, choose nothing and show nothing until setDialogs puts
/// others in their place.
[[nodiscard]] Dialogs& theDialogs() noexcept;
/// Puts `dialogs` in force, or the silent ones for a null pointer. The caller keeps them alive.
void setDialogs(Dialogs* dialogs) noexcept;

}  // namespace k520
