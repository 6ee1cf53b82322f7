// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "cli/program.h"

#include <fmt/format.h>

#include <set>
#include <string_view>
#include <system_error>

#include "app/mdimoduMain.h"
#include "app/modShowErr.h"
#include "app/programFolder.h"
#include "app/settingsStore.h"
#include "base/Checked.h"
#include "base/Files.h"
#include "base/RuntimeError.h"
#include "channels/modChMem.h"
#include "cli/Failure.h"
#include "cli/cliTexts.h"
#include "cli/output.h"
#include "image/datFile.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "program/modFileCmd.h"
#include "program/modStartUp.h"
#include "settings/modSysSet.h"

namespace k520::cli {

namespace fs = std::filesystem;

namespace {

std::string chosenFolder;

fs::path settingsFile() {
    return programFolder::findFile(programFolder::settingsFileName);
}

[[noreturn]] void failSettings(const std::string& what) {
    fail(say(texts::settingsFileSays, settingsFile().string(), what));
}

/// A number of the settings that has to lie within limits before anything can be decoded.
struct Requirement {
    Text what;
    int value;
    int least;
    int most;
    const char* section;
    std::string key;
    const char* shipped;
};

void require(const Requirement& needed) {
    if (needed.value >= needed.least && needed.value <= needed.most) {
        return;
    }
    failSettings(say(texts::settingOutOfRange, needed.section, needed.key,
                     settingsStore::read(needed.section, needed.key, ""), say(needed.what),
                     needed.least, needed.most,
                     configSetCommand(needed.section, needed.key, needed.shipped)));
}

/// A file that cannot be read, or that is none of ours, gets one message instead of one a key.
void requireSettings() {
    std::error_code ignored;
    if (!fs::exists(settingsFile(), ignored)) {
        fail(say(texts::noSettings, settingsFile().string()));
    }
    try {
        if (settingsStore::read("Setting", "DatNum", "").empty()) {
            failSettings(say(texts::foreignSettings));
        }
    } catch (const RuntimeError& error) {
        fail(say(texts::settingsUnreadable, error.source()));
    }
}

void requireUsableImage() {
    require({texts::highestAddress, modIicDat::state().DatNum, datFile::leastDatNum, 0x7FFF,
             "Setting", "DatNum", "8191"});
}

/// A default that is not an entry would make every new channel fail.
void requireUsableDefaults() {
    for (int k = modChMem::firstParameter; k <= modChMem::state().ColNum; ++k) {
        const auto& column = modChMem::columnOf(k);
        const auto value = parseNumber(column.entry(2));
        const auto count = static_cast<double>(column.texts().size());
        if (column.isList() && (!value || *value < 0 || *value >= count)) {
            failSettings(
                say(texts::defaultNotEntry, modChMem::defaultKey(k), column.entry(2), column.key(),
                    configSetCommand("ChInfo", fmt::format("{}", modChMem::defaultKey(k)), "0")));
        }
    }
}

void requireUsableGrid() {
    const auto& channels = modChMem::state();
    const int base = modChMem::keyBase();
    require({texts::channelCount, channels.ChNum, 1, modChMem::codecChannels, "ChInfo",
             fmt::format("{}", base), "16"});
    require({texts::columnCount, channels.ColNum, modChMem::column::encode, modChMem::lastField,
             "ChInfo", fmt::format("{}", base + 2), "8"});
}

/// Half-read tables of channels or options are nothing to work with.
void failOnHalfReadTables(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = mark; i < entries.size(); ++i) {
        if (entries[i].isOf(modChMem::procedures::readChInfo) ||
            entries[i].isOf(modSysSet::procedures::optNowDefSol)) {
            failSettings(entries[i].source);
        }
    }
}

/// The default image is needed only in part by most commands, so what is wrong with it is a
/// warning.
void warnOfDefaultImage() {
    const auto path = programFolder::findFile(programFolder::defaultImageFileName);
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (!error && size < modIicDat::IicDat().size()) {
        warn(say(texts::shortDefault, path.string(), size, modIicDat::IicDat().size()));
    }
}

/// Warnings and complaints stay in the user's language also where the output is for scripts.
void prepareFor(Reader reader) {
    if (reader == Reader::person) {
        modStartUp::prepareCore();
        return;
    }
    const SpeakingIn kept(textLanguage());
    mdimoduMain::state().Language = mdimoduMain::languageEnglish;
    modStartUp::prepareCore();
}

/// A word as a shell takes it for what it is.
std::string shellQuoted(const std::string& word) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-:=@%+,";
    if (!word.empty() && word.find_first_not_of(plain) == std::string::npos) {
        return word;
    }
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

}  // namespace

void chooseProgramFolder(const std::optional<std::string>& chosen) {
    chosenFolder = chosen.value_or(std::string());
    try {
        if (const auto remark = programFolder::choose(chosen)) {
            warn(*remark);
        }
    } catch (const RuntimeError& error) {
        fail(error.source());
    }
}

Reader readerOf(const Arguments& arguments) {
    return arguments.has("json") ? Reader::script : Reader::person;
}

void startCore(Reader reader) {
    settingsStore::state().writable = false;
    requireSettings();
    auto mark = failureMark();
    modStartUp::readSettings();
    requireUsableImage();
    warnOfFailuresSince(mark);
    mark = failureMark();
    prepareFor(reader);
    requireUsableGrid();
    failOnHalfReadTables(mark);
    requireUsableDefaults();
    warnOfFailuresSince(mark);
}

void startConfiguration(DefaultImage defaultImage, Reader reader) {
    const settingsStore::Snapshot settings;
    startCore(reader);
    warnOfDefaultImage();
    const auto mark = failureMark();
    modFileCmd::NewFileSol();
    failOnHalfReadTables(mark);
    if (defaultImage == DefaultImage::needed) {
        failOnFailureSince(mark, say(texts::defaultUnusable));
    }
    warnOfFailuresSince(mark);
}

void renewConfiguration() {
    // Decoding leaves the tones of channels that became empty, and a short default image the rest
    // of the image: neither may come from the document before.
    modChMem::state().ChInfo = {};
    modIicDat::sizeArrays(modIicDat::state().DatNum);
    modFileCmd::NewFileSol();
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const auto absolute = fs::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

std::string ownCommand(std::initializer_list<std::string> words) {
    std::string command = "k520-cli";
    if (!chosenFolder.empty()) {
        command += " --program-folder " + shellQuoted(absolutePath(chosenFolder));
    }
    for (const auto& word : words) {
        command += " " + shellQuoted(word);
    }
    return command;
}

std::string configSetCommand(const std::string& section, const std::string& key,
                             const std::string& value) {
    return ownCommand({"config", "set", section, key, value});
}

void warn(const std::string& message) {
    // What a second pass over the data meets again is not news.
    static std::set<std::string> told;
    if (told.insert(message).second) {
        printError("k520-cli: " + say(texts::warning) + message + "\n");
    }
}

std::size_t failureMark() {
    return modShowErr::state().entries.size();
}

std::optional<std::string> failureSince(std::size_t mark) {
    const auto& entries = modShowErr::state().entries;
    return mark < entries.size() ? std::optional(entries[mark].source) : std::nullopt;
}

void warnOfFailuresSince(std::size_t mark, const std::string& consequence) {
    const auto& entries = modShowErr::state().entries;
    for (std::size_t i = mark; i < entries.size(); ++i) {
        // A range that the scripts cannot hold concerns sessions only, and they refuse it.
        if (!entries[i].isOf(modCommun::procedures::initProtocol)) {
            warn(entries[i].source + consequence);
        }
    }
}

void failOnFailureSince(std::size_t mark, const std::string& doing) {
    if (const auto failure = failureSince(mark)) {
        fail(about(doing, *failure));
    }
}

}  // namespace k520::cli
