// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modFileCmd.h"

#include <filesystem>
#include <utility>

#include "app/Dialogs.h"
#include "app/Files.h"
#include "app/Guard.h"
#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "settings/modSysSet.h"

namespace k520::modFileCmd {

namespace {

constexpr const char* dataFilter = "Data File(*.dat)|*.dat";

constexpr int renewText = 74;
constexpr int saveText = 82;

bool askAndKeep(int textIndex) {
    const bool yes = theDialogs().ask(modSoftFace::text(modSoftFace::noticeText),
                                      modSoftFace::text(textIndex), textIndex == saveText);
    state().lastAnswer = yes ? answerYes : answerNo;
    return yes;
}

void remark(std::string text) {
    state().remark = std::move(text);
    if (state().onFilePanel) {
        state().onFilePanel();
    }
}

void renewIfWanted() {
    if (askAndKeep(renewText)) {
        setCurrentFile(state().defaultFilePath);
        NewFileSol();
        remark({});
    }
}

void tellFailure(int textIndex) {
    theDialogs().tell(BoxIcon::critical, modSoftFace::text(modSoftFace::noticeText),
                      modSoftFace::text(textIndex));
}

/// Opens the file that `choose` names, if it names one.
void openWith(const std::function<std::string()>& choose) {
    const bool done = guarded("mdifrmMain->OpenFile", [&] {
        const auto name = choose();
        if (!name.empty()) {
            const auto held = openDatFile(name);
            setCurrentFile(name);
            const auto size = modIicDat::IicDat().size();
            remark(held >= size ? std::string() : say(texts::shortFile, held, size));
        }
    });
    if (!done) {
        tellFailure(83);
    }
}

}  // namespace

State& state() {
    static State instance;
    return instance;
}

void setCurrentFile(std::string path) {
    State& s = state();
    s.currentFilePath = std::move(path);
    s.filePanel = modSoftFace::text(85) + s.currentFilePath;
    if (s.onFilePanel) {
        s.onFilePanel();
    }
}

void GenerateDatFolder() {
    guarded("mdifrmMain->GenerateDatFolder", [] {
        const auto folder = mdimoduMain::state().programFolder / "Data";
        state().defaultFilePath = (folder / "Untitled.dat").string();
        setCurrentFile(state().defaultFilePath);
        files::makeFolder(folder);
    });
}

void NewFile() {
    guarded("mdifrmMain->NewFile", renewIfWanted);
}

void customRangeOk(std::string_view minText, std::string_view maxText) {
    guarded("frmCustomFre->cmdOk_Click", renewIfWanted);
    modModel::acceptCustomRange(minText, maxText);
}

void NewFileSol() {
    guarded("mdifrmMain->NewFileSol", [] {
        const mdimoduMain::SettingsSnapshot settings;
        modIicDat::InitTempArray();
        modChMem::ChInfoSaveSol(1);
        modChMem::ShowChTblGrid();
        modSysSet::OptNowDefSol(0);
        modSysSet::OptNowDefSol(2);
        modChMem::refreshForm();
        modModel::cboModel_Click();
        modModel::applyShownBand();
    });
}

std::uint64_t openDatFile(const std::string& path) {
    const auto size = datFile::load(path, modIicDat::IicDat());
    modChMem::SoftDisplay();
    return size;
}

void openNamed(const std::string& path) {
    openWith([&] { return path; });
}

void OpenFile() {
    openWith([] { return theDialogs().openFile({dataFilter, state().currentFilePath, ""}); });
}

void SaveFile() {
    const bool done = guarded("mdifrmMain->SaveFile", [] {
        state().saveAsked = true;
        if (askAndKeep(saveText)) {
            SaveAsFile();
        }
    });
    if (!done) {
        tellFailure(84);
    }
}

void SaveAsFile() {
    const bool done = guarded("mdifrmMain->SaveAsFile", [] {
        const auto name = theDialogs().saveFile({dataFilter, state().currentFilePath, "dat"});
        if (!name.empty()) {
            setCurrentFile(name);
            SaveDatFile();
        }
    });
    if (!done) {
        tellFailure(86);
    }
}

bool SaveDatFile() {
    const bool saved = guarded("mdifrmMain->SaveDatFile", [] {
        modChMem::SetConvIicDat();
        datFile::save(state().currentFilePath, modIicDat::IicDat());
        setCurrentFile(state().currentFilePath);
    });
    remark(saved ? say(texts::fileSaved)
                 : say(texts::fileNotSaved, modShowErr::state().pendingSource));
    return saved;
}

}  // namespace k520::modFileCmd
