// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/changes.h"

#include <filesystem>

#include "app/Guard.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "base/Dialogs.h"
#include "channels/modChEdit.h"
#include "program/modFileCmd.h"

namespace k520::changes {

namespace {

std::string fileName() {
    return std::filesystem::path(modFileCmd::state().currentFilePath).filename().string();
}

bool belongsToFile() {
    return documentOrigin::state().origin == documentOrigin::Origin::file;
}

bool save() {
    if (belongsToFile()) {
        modFileCmd::saveAgain();
    } else {
        modFileCmd::SaveAsFile();
    }
    return !history::changed();
}

std::string caption(const Text& plain, const Text& named, bool possible, const std::string& name) {
    return possible && !name.empty() ? say(named, name) : say(plain);
}

history::Place moved(history::Place (*move)()) {
    history::Place place;
    guarded("mdifrmMain->undo", [&] {
        place = move();
        modFileCmd::setCurrentFile(history::file());
    });
    return place;
}

}  // namespace

Leave leave() {
    if (!history::changed()) {
        return Leave::nothingToAsk;
    }
    switch (theDialogs().askToSave(
        modSoftFace::text(SoftText::notice),
        say(texts::changesOf, fileName()) + "\n" + modSoftFace::text(SoftText::askSave))) {
        case SaveAnswer::save:
            return save() ? Leave::agreed : Leave::stay;
        case SaveAnswer::dontSave:
            return Leave::agreed;
        case SaveAnswer::cancel:
            break;
    }
    return Leave::stay;
}

bool mayLeave() {
    return leave() != Leave::stay;
}

std::string title() {
    const auto prescribed = modSoftFace::text(SoftText::mainTitle);
    if (history::changed()) {
        return say(texts::changedTitle, fileName(), prescribed);
    }
    return belongsToFile() ? say(texts::unchangedTitle, fileName(), prescribed) : prescribed;
}

std::string undoCaption() {
    return caption(texts::undo, texts::undoStep, mayUndo(), history::undoName());
}

std::string redoCaption() {
    return caption(texts::redo, texts::redoStep, mayRedo(), history::redoName());
}

bool mayUndo() {
    return history::canUndo() && !modChEdit::locked();
}

bool mayRedo() {
    return history::canRedo() && !modChEdit::locked();
}

history::Place undo() {
    return mayUndo() ? moved(history::undo) : history::Place();
}

history::Place redo() {
    return mayRedo() ? moved(history::redo) : history::Place();
}

}  // namespace k520::changes
