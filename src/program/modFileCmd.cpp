// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/modFileCmd.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "app/Guard.h"
#include "app/modShowErr.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "base/Dialogs.h"
#include "base/Files.h"
#include "base/ModuleState.h"
#include "channels/modChMem.h"
#include "channels/modModel.h"
#include "channels/plausibility.h"
#include "document/history.h"
#include "document/imageDifferences.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "memview/modMemDat.h"
#include "program/changes.h"
#include "program/recentFiles.h"
#include "settings/modSysSet.h"

namespace k520::modFileCmd {

namespace {

/// What is longer is not a configuration; the settings allow 32 KiB.
constexpr std::uint64_t mostKept = 1'000'000;
constexpr const char* dataFilter = "Data File(*.dat)|*.dat";

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

bool askAndKeep(SoftText question) {
    const bool yes = theDialogs().ask(modSoftFace::text(SoftText::notice),
                                      modSoftFace::text(question), question == SoftText::askSave);
    state().lastAnswer = yes ? answerYes : answerNo;
    return yes;
}

void tellPanel() {
    state().onFilePanel.tell();
}

Remark remarkNow(std::string text, bool untilEdit = false) {
    return {std::move(text), documentOrigin::state().now, untilEdit};
}

void remark(std::string text, bool untilEdit = false) {
    state().remark = remarkNow(std::move(text), untilEdit);
    tellPanel();
}

std::string shown(const Remark& remark) {
    const auto& now = documentOrigin::state().now;
    const bool holds = remark.untilEdit ? remark.said == now : remark.said.document == now.document;
    return holds ? remark.text : std::string();
}

void startAnew() {
    const documentOrigin::Step step(say(texts::stepNew));
    NewFileSol();
    setCurrentFile(state().defaultFilePath);
    history::markSaved();
    remark({});
}

void renewIfWanted() {
    if (askAndKeep(SoftText::askRenew)) {
        startAnew();
    }
}

void tellFailure(SoftText failure) {
    theDialogs().tell(BoxIcon::critical, modSoftFace::text(SoftText::notice),
                      modSoftFace::text(failure));
}

/// What is unusual about a file of `held` bytes that was just opened.
std::string noticeOf(std::uint64_t held) {
    const auto size = modIicDat::IicDat().size();
    if (held == 0) {
        return say(texts::emptyFile);
    }
    std::string notice;
    if (held < size) {
        notice = say(texts::shortFile, held, size);
    } else if (held > size) {
        notice = say(texts::longFile, held, size);
    }
    if (!plausibility::looksLikeConfiguration(modIicDat::IicDat())) {
        notice += (notice.empty() ? "" : "\n") + say(texts::noConfiguration);
    }
    return notice;
}

/// A program without windows keeps no list.
void noteRecent(const std::string& path) {
    if (history::state().recording) {
        recentFiles::add(path);
    }
}

void noteSeen(const std::string& path) {
    state().seenBytes[path] = files::read(path, modIicDat::IicDat().size()).bytes;
}

/// Opens the file that `choose` names, if it names one. Returns whether nothing failed.
bool openWith(const std::function<std::string()>& choose) {
    const bool done = guarded("mdifrmMain->OpenFile", [&] {
        const auto name = choose();
        if (!name.empty()) {
            const documentOrigin::Step step(say(texts::stepOpen, fileName(name)));
            const auto held = openDatFile(name);
            setCurrentFile(name);
            noteSeen(name);
            history::markSaved();
            state().notice = remarkNow(noticeOf(held));
            remark({});
            noteRecent(name);
        }
    });
    if (!done) {
        remark(say(texts::fileNotOpened, modShowErr::state().pendingSource));
    }
    return done;
}

/// Whether the file holds what the last save of this configuration wrote there.
bool isOwnSave(const std::string& path, const std::vector<std::uint8_t>& held) {
    const State& s = state();
    const auto saved = s.savedBytes.find(path);
    return s.savedDocument == documentOrigin::state().now.document && saved != s.savedBytes.end() &&
           saved->second == held;
}

void noteOwnSave(std::vector<std::uint8_t> bytes) {
    State& s = state();
    const auto document = documentOrigin::state().now.document;
    if (std::exchange(s.savedDocument, document) != document) {
        s.savedBytes.clear();
    }
    s.seenBytes[s.currentFilePath] = bytes;
    s.savedBytes[s.currentFilePath] = std::move(bytes);
}

/// Whether a file that another program has changed meanwhile may be overwritten.
bool mayOverwrite(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    const auto seen = state().seenBytes.find(path);
    if (seen == state().seenBytes.end() || !files::stampOf(path)) {
        return true;
    }
    const auto held = files::read(path, bytes.size()).bytes;
    if (held == seen->second || held == bytes) {
        return true;
    }
    MemoryImage theirs(modIicDat::IicDat().size());
    datFile::load(path, theirs);
    const auto differences = imageDifferences::find(
        theirs, modIicDat::IicDat(), {0, static_cast<std::int16_t>(theirs.size() - 1)});
    return theDialogs().ask(
        modSoftFace::text(SoftText::notice),
        say(texts::changedMeanwhile, fileName(path),
            imageDifferences::summaryText(imageDifferences::summaryOf(differences))),
        false);
}

/// Keeps what the file holds beside it where writing `bytes` would lose it. Returns the copy's
/// path.
std::optional<std::filesystem::path> keepWhatIsLost(const std::string& path,
                                                    const std::vector<std::uint8_t>& bytes) {
    if (!files::stampOf(path)) {
        return std::nullopt;
    }
    const auto [held, size] = files::read(path, bytes.size());
    if (held.empty() || held == bytes || isOwnSave(path, held)) {
        return std::nullopt;
    }
    if (size > mostKept) {
        throw RuntimeError(errNum::pathAccess, say(texts::tooLargeToKeep, fileName(path)));
    }
    return naming(say(texts::notKept, fileName(path)), [&] { return files::keepBeside(path); });
}

void saveKeeping() {
    State& s = state();
    std::vector<std::uint8_t> bytes;
    std::optional<std::filesystem::path> kept;
    bool agreed = false;
    const bool mayWrite = guarded("mdifrmMain->SaveDatFile", [&] {
        modChMem::SetConvIicDat();
        bytes = datFile::bytesOf(modIicDat::IicDat());
        agreed = mayOverwrite(s.currentFilePath, bytes);
        if (agreed) {
            kept = keepWhatIsLost(s.currentFilePath, bytes);
        }
    });
    if (mayWrite && !agreed) {
        return remark(
            say(texts::fileNotSaved, say(texts::leftAsItIs, fileName(s.currentFilePath))));
    }
    if (!mayWrite) {
        remark(say(texts::fileNotSaved, modShowErr::state().pendingSource));
        return;
    }
    if (!SaveDatFile()) {
        return;
    }
    noteOwnSave(std::move(bytes));
    noteRecent(s.currentFilePath);
    if (kept) {
        remark(say(texts::fileSavedKept, fileName(s.currentFilePath), fileName(kept->string())),
               true);
    }
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::string shownRemark() {
    return shown(state().remark);
}

std::string shownNotice() {
    return shown(state().notice);
}

std::string shownOrigin() {
    return documentOrigin::state().origin == documentOrigin::Origin::radio
               ? say(texts::readNotSaved)
               : std::string();
}

void setCurrentFile(std::string path) {
    State& s = state();
    s.currentFilePath = std::move(path);
    history::setFile(s.currentFilePath);
    s.filePanel = modSoftFace::text(SoftText::fileName) + s.currentFilePath;
    tellPanel();
}

void GenerateDatFolder() {
    guarded("mdifrmMain->GenerateDatFolder", [] {
        const auto folder = programFolder::state().own / "Data";
        state().defaultFilePath = (folder / "Untitled.dat").string();
        setCurrentFile(state().defaultFilePath);
        files::makeFolder(folder);
    });
}

void NewFile() {
    guarded("mdifrmMain->NewFile", [] {
        switch (changes::leave()) {
            case changes::Leave::nothingToAsk:
                return renewIfWanted();
            case changes::Leave::agreed:
                return startAnew();
            case changes::Leave::stay:
                return;
        }
    });
}

void customRangeOk(std::string_view minText, std::string_view maxText) {
    const documentOrigin::Step step(say(texts::stepRange));
    guarded("frmCustomFre->cmdOk_Click", renewIfWanted);
    modModel::acceptCustomRange(minText, maxText);
}

void NewFileSol() {
    guarded("mdifrmMain->NewFileSol", [] {
        const settingsStore::Snapshot settings;
        modChMem::state().newChannel.reset();
        modIicDat::InitTempArray();
        modChMem::ChInfoSaveSol(1);
        modChMem::ShowChTblGrid();
        modSysSet::OptNowDefSol(0);
        modSysSet::OptNowDefSol(2);
        modChMem::refreshForm();
        modModel::cboModel_Click();
        modModel::applyShownBand();
    });
    documentOrigin::begin(documentOrigin::Origin::defaults);
}

std::uint64_t openDatFile(const std::string& path) {
    const auto size = datFile::load(path, modIicDat::IicDat());
    modChMem::SoftDisplay();
    modMemDat::followImage();
    documentOrigin::begin(documentOrigin::Origin::file);
    return size;
}

void openNamed(const std::string& path) {
    if (!changes::mayLeave()) {
        return;
    }
    if (!openWith([&] { return path; })) {
        std::error_code unknown;
        const auto whole = std::filesystem::absolute(path, unknown);
        const bool missing = modShowErr::state().pendingNumber == errNum::fileNotFound;
        theDialogs().tell(BoxIcon::critical, modSoftFace::text(SoftText::notice),
                          missing ? say(texts::fileMissing, (unknown ? path : whole.string()))
                                  : state().remark.text);
    }
}

void OpenFile() {
    if (!changes::mayLeave()) {
        return;
    }
    if (!openWith([] {
            return theDialogs().openFile({dataFilter, state().currentFilePath, ""});
        })) {
        tellFailure(SoftText::wrongFileType);
    }
}

void SaveFile() {
    const bool done = guarded("mdifrmMain->SaveFile", [] {
        state().saveAsked = true;
        if (askAndKeep(SoftText::askSave)) {
            SaveAsFile();
        }
    });
    if (!done) {
        tellFailure(SoftText::saveFailed);
    }
}

void SaveAsFile() {
    const bool done = guarded("mdifrmMain->SaveAsFile", [] {
        const std::string& current = state().currentFilePath;
        // What was read from a radio is not what that file holds.
        const std::string offered = shownOrigin().empty() ? fileName(current) : std::string();
        const auto name = theDialogs().saveFile({dataFilter, current, "dat", offered});
        if (!name.empty()) {
            setCurrentFile(name);
            saveKeeping();
        }
    });
    if (!done) {
        tellFailure(SoftText::fileWriteFailed);
    }
}

void saveAgain() {
    saveKeeping();
}

bool SaveDatFile() {
    const bool saved = guarded("mdifrmMain->SaveDatFile", [] {
        modChMem::SetConvIicDat();
        modMemDat::followImage();
        datFile::save(state().currentFilePath, modIicDat::IicDat());
        setCurrentFile(state().currentFilePath);
        documentOrigin::saved();
        history::markSaved();
    });
    remark(
        saved ? say(texts::fileSaved) : say(texts::fileNotSaved, modShowErr::state().pendingSource),
        saved);
    return saved;
}

}  // namespace k520::modFileCmd
