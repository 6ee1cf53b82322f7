// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "program/modStartUp.h"

#include <fmt/format.h>

#include <array>
#include <exception>
#include <optional>
#include <span>
#include <system_error>

#include "app/Guard.h"
#include "app/interfaceLock.h"
#include "app/look.h"
#include "app/mdimoduMain.h"
#include "app/modSoftFace.h"
#include "app/ownTexts.h"
#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "base/Checked.h"
#include "base/Dialogs.h"
#include "base/ModuleState.h"
#include "base/userLocale.h"
#include "channels/modChMem.h"
#include "document/history.h"
#include "image/modIicDat.h"
#include "link/protocol/comPorts.h"
#include "link/protocol/modCommun.h"
#include "memview/modMemDat.h"
#include "program/changes.h"
#include "program/modFileCmd.h"

namespace k520::modStartUp {

namespace {

constexpr const char* section = "Setting";
constexpr const char* formLoad = "mdifrmMain->Form_Load";
constexpr std::int32_t simplifiedChinese = 2052;
constexpr std::int32_t traditionalChinese = 1028;
constexpr std::int32_t english = 1033;

constexpr SettingBuffer firstRunBuffer{3, 3};
constexpr SettingBuffer shortBuffer{9, 10};
constexpr SettingBuffer addressBuffer{15, 15};
constexpr SettingBuffer textBuffer{30, 30};

enum class Form { decimal, hexadecimal };

std::int16_t convert(Form form, const std::string& text) {
    return form == Form::decimal ? textToInt16(text) : hexToInt16(text);
}

/// A number setting; nothing, and a report, for a text that is not a number.
std::optional<std::int16_t> tryNumber(const char* key, Form form, SettingBuffer buffer,
                                      const char* fallback) {
    std::optional<std::int16_t> value;
    guarded(formLoad, [&] {
        const auto text = settingsStore::read(section, key, buffer, fallback);
        value = naming(fmt::format("[{}] {}", section, key), [&] { return convert(form, text); });
    });
    return value;
}

/// A number setting, or the default in place of a text that is not a number.
std::int16_t readNumber(const char* key, Form form, SettingBuffer buffer, const char* fallback) {
    const auto value = tryNumber(key, form, buffer, fallback);
    return value ? *value : convert(form, throughBuffer(fallback, buffer));
}

std::string readText(const char* key, SettingBuffer buffer, const char* fallback) {
    std::string value = throughBuffer(fallback, buffer);
    guarded(formLoad, [&] { value = settingsStore::read(section, key, buffer, fallback); });
    return value;
}

void readLanguage() {
    constexpr std::int16_t noLanguage = 0;
    mdimoduMain::state().Language =
        tryNumber("Language", Form::decimal, shortBuffer, " 2").value_or(noLanguage);
    mdimoduMain::correctLanguage();
}

void readImageSize() {
    const auto datNum = readNumber("DatNum", Form::decimal, shortBuffer, " 0");
    guarded(formLoad, [&] { modIicDat::sizeArrays(datNum); });
}

void readLook() {
    auto& s = look::state();
    // The two colours' defaults are the fonts' names: no colour, so a missing key means none.
    struct TextSetting {
        const char* key;
        std::string& target;
        const char* fallback;
    };
    const std::array settings{TextSetting{"EngFont", s.EngFont, "Times New Roman"},
                              TextSetting{"ChsFont", s.ChsFont, "宋体"},
                              TextSetting{"OverColor", s.OverColor, "Times New Roman"},
                              TextSetting{"DefColor", s.DefColor, "宋体"}};
    for (const auto& setting : settings) {
        setting.target = readText(setting.key, textBuffer, setting.fallback);
    }
    s.fontInUse =
        mdimoduMain::state().Language == mdimoduMain::languageChinese ? s.ChsFont : s.EngFont;
}

void readLimitsAndRanges() {
    auto& s = modIicDat::state();
    struct NumberSetting {
        const char* key;
        std::int16_t& target;
        Form form;
        SettingBuffer buffer;
        const char* fallback;
    };
    const std::array settings{
        NumberSetting{"CtMax", s.toneLimit, Form::decimal, textBuffer, " 50"},
        NumberSetting{"DcsMax", s.toneLimit, Form::decimal, textBuffer, " 210"},
        NumberSetting{"CtcDcsMax", s.combinedToneLimit, Form::decimal, textBuffer, " 260"},
        NumberSetting{"TableMaxAddr", s.TableMaxAddr, Form::hexadecimal, addressBuffer, "1FFF"},
        NumberSetting{"ReadStartAddr", s.readRange.start, Form::hexadecimal, addressBuffer, "0000"},
        NumberSetting{"ReadEndAddr", s.readRange.end, Form::hexadecimal, addressBuffer, "1FFF"},
        NumberSetting{"WriteStartAddr", s.writeRange.start, Form::hexadecimal, addressBuffer,
                      "0000"},
        NumberSetting{"WriteEndAddr", s.writeRange.end, Form::hexadecimal, addressBuffer, "1FFF"}};
    for (const auto& setting : settings) {
        setting.target = readNumber(setting.key, setting.form, setting.buffer, setting.fallback);
    }
    s.partialFillRange = {0, s.TableMaxAddr};
}

void readPort() {
    comPorts::usePort(readNumber("COM", Form::decimal, shortBuffer, " 1"));
}

void chooseUsablePort() {
    if (!comPorts::ProbeCom(modCommun::state().portNumber)) {
        comPorts::AutoSetPort();
    }
}

/// Everything after the port number, in the order of the settings' table.
void readOthers() {
    for (const char* discarded : {"ModelType", "ModelRange"}) {
        readText(discarded, shortBuffer, "0");
    }
    readImageSize();
    readLook();
    readLimitsAndRanges();
}

/// What the settings file says; nothing where there is none, or none that can be read.
std::optional<TextLanguage> languageOfSettings(const std::optional<std::string>& folder) {
    try {
        programFolder::look(folder);
        if (!std::filesystem::exists(programFolder::findFile(programFolder::settingsFileName))) {
            return std::nullopt;
        }
        const auto text = settingsStore::read(section, "Language", shortBuffer, " 2");
        return parseNumber(text) == mdimoduMain::languageChinese ? TextLanguage::chinese
                                                                 : TextLanguage::english;
    } catch (const std::exception&) {
        // Whoever needs the settings says what is wrong with them.
        return std::nullopt;
    }
}

void runStep(const std::function<void()>& step) {
    if (step) {
        guarded(formLoad, step);
    }
}

/// True when this is the first start without settings, which only leaves its mark. Where the mark
/// cannot be read or left the program goes on: it would end without a word at every start.
bool isVeryFirstStart() {
    bool quit = false;
    guarded(formLoad, [&] {
        const auto text = settingsStore::read(section, "FirRun", firstRunBuffer, " 2");
        if (textToInt16(text) == 2) {
            settingsStore::write(section, "FirRun", "1");
            state().quitting = true;
            quit = true;
        }
    });
    return quit;
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

std::int32_t localeIdentifier(const std::string& localeName) {
    const std::string name = lowerAscii(localeName);
    if (name.substr(0, name.find_first_of("_.@-")) != "zh") {
        return english;
    }
    const bool traditional = name.starts_with("zh_tw") || name.starts_with("zh_hk") ||
                             name.starts_with("zh_mo") || name.find("hant") != std::string::npos;
    return traditional ? traditionalChinese : simplifiedChinese;
}

std::int32_t GetSystemDefaultLCID() {
    return localeIdentifier(userLocale::name());
}

void chooseTextLanguage(const std::optional<std::string>& programFolder) {
    const auto chosen = languageOfSettings(programFolder);
    const bool chineseSystem = GetSystemDefaultLCID() == simplifiedChinese;
    setTextLanguage(chosen.value_or(chineseSystem ? TextLanguage::chinese : TextLanguage::english));
}

void GetSysLang() {
    guarded("mdifrmMain->GetSysLang", [] {
        const auto firstRun = settingsStore::read(section, "FirRun", firstRunBuffer, " 1");
        if (textToInt16(firstRun) == 0) {
            return;
        }
        settingsStore::write(section, "FirRun", "0");
        const bool chinese = GetSystemDefaultLCID() == simplifiedChinese;
        settingsStore::write(section, "Language", chinese ? "1" : "3");
        comPorts::AutoSetPort();
    });
}

void readSettings() {
    readLanguage();
    readPort();
    readOthers();
}

void prepareCore() {
    modChMem::GetValidCharTbl();
    modSoftFace::FillSoftFace(mdimoduMain::state().Language);
    modCommun::InitProtocol();
    modChMem::initChannelForm();
}

namespace {

/// What the windows begin with is where undoing ends.
void beginHistory() {
    history::start();
    history::setFile(modFileCmd::state().currentFilePath);
    history::markSaved();
}

}  // namespace

StartResult Form_Load(const WindowSteps& windows) {
    const settingsStore::Snapshot settings;
    if (isVeryFirstStart()) {
        return StartResult::quit;
    }
    GetSysLang();
    readLanguage();
    runStep(windows.checkLanguageItem);
    modChMem::GetValidCharTbl();
    modSoftFace::FillSoftFace(mdimoduMain::state().Language);
    readPort();
    chooseUsablePort();
    readOthers();
    modFileCmd::setCurrentFile(modFileCmd::state().defaultFilePath);
    modCommun::InitProtocol();
    modFileCmd::GenerateDatFolder();
    runStep(windows.setSoftFace);
    modChMem::initChannelForm();
    runStep(windows.initChannelForm);
    modFileCmd::NewFileSol();
    modMemDat::SetGridMemDat();
    runStep(windows.showChannelForm);
    interfaceLock::state().lockState =
        readText("ChannelLock", addressBuffer, interfaceLock::unlocked);
    beginHistory();
    runStep(windows.showLockState);
    return StartResult::running;
}

namespace {

/// Who was asked about unsaved changes is not asked once more.
bool mayExit() {
    const auto leave = changes::leave();
    return leave == changes::Leave::agreed ||
           (leave == changes::Leave::nothingToAsk &&
            theDialogs().ask(modSoftFace::text(SoftText::notice),
                             modSoftFace::text(SoftText::askExit), false));
}

}  // namespace

bool MDIForm_QueryUnload() {
    bool mayClose = false;
    guarded("mdifrmMain->MDIForm_QueryUnload", [&] {
        auto& s = state();
        mayClose = s.quitting || mayExit();
        s.exitAnswer = mayClose ? answerYes : answerNo;
        s.exiting = mayClose ? 1 : s.exiting;
    });
    return mayClose;
}

void SaveMdiFormShape(const Shape& shape) {
    guarded("mdifrmMain->SaveMdiFormShape", [&] {
        const std::array<settingsStore::KeyValue, 4> values{{
            {"MdiFormHeight", numberText(shape.height)},
            {"MdiFormWidth", numberText(shape.width)},
            {"MdiFormLeft", numberText(shape.left)},
            {"MdiFormTop", numberText(shape.top)},
        }};
        settingsStore::write(section, values);
    });
}

void lockChannels(bool lock) {
    guarded("mdifrmMain->mnuLockCh_Click", [&] {
        interfaceLock::state().lockState = lock ? interfaceLock::locked : interfaceLock::unlocked;
        settingsStore::write(section, "ChannelLock", interfaceLock::state().lockState);
    });
}

std::filesystem::path helpFile() {
    constexpr std::array names{"ChsHelp", "ChtHelp", "EngHelp"};
    mdimoduMain::correctLanguage();
    const auto& folders = programFolder::state();
    const std::string name = checkedAt(names, mdimoduMain::state().Language - 1, "help file");
    std::error_code error;
    const auto own = folders.own / (name + ".CHM");
    return std::filesystem::exists(own, error) ? own : folders.shipped / "help" / (name + ".html");
}

void Help() {
    const auto path = helpFile().string();
    if (!guarded("mdifrmMain->Help", [&] { theDialogs().openDocument(path); })) {
        theDialogs().tell(BoxIcon::critical, modSoftFace::text(SoftText::notice),
                          say(texts::helpCannotOpen) + "\n" + path);
    }
}

bool SwiLangFace(std::int16_t language) {
    auto& s = mdimoduMain::state();
    if (language == s.Language) {
        return false;
    }
    return guarded("mdifrmMain->SwiLangFace", [&] {
        settingsStore::write(section, "Language", numberText(language));
        s.Language = language;
        theDialogs().tell(BoxIcon::question, "Message",
                          modSoftFace::text(SoftText::languageChanged));
    });
}

}  // namespace k520::modStartUp
