// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <string>

#include "document/history.h"

/// Unsaved changes: what the title says of them, the question before something takes their place,
/// and taking steps back.
namespace k520::changes {

/// What a question about unsaved changes led to.
enum class Leave {
    nothingToAsk,  ///< there were no unsaved changes
    agreed,        ///< they are saved, or the person gives them up
    stay,          ///< cancelled, or they could not be saved
};

/// Asks Save / Don't save / Cancel where there are unsaved changes. Save writes to the current file
/// where what is shown belongs to one, and asks for a name where it does not.
[[nodiscard]] Leave leave();
/// Whether what is shown may be replaced.
[[nodiscard]] bool mayLeave();

/// The main window's title: with the file's name in front of the prescribed one where what is
/// shown is in a file or was changed, and "*" after the name while changes are not saved.
[[nodiscard]] std::string title();

/// The captions of the two commands, with what they would undo or redo.
[[nodiscard]] std::string undoCaption();
[[nodiscard]] std::string redoCaption();
/// Whether there is a step to take, and nothing forbids it: locked channels do.
[[nodiscard]] bool mayUndo();
[[nodiscard]] bool mayRedo();
/// One step back or forward; the current file follows. Returns where something changed.
history::Place undo();
history::Place redo();

}  // namespace k520::changes
