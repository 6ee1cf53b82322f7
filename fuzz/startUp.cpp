// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any bytes as the settings file: the program starts, and writes only what a start has to write.

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <ctime>

#include "app/mdimoduMain.h"
#include "app/profileText.h"
#include "app/programFolder.h"
#include "base/RuntimeError.h"
#include "channels/modCtdcs.h"
#include "image/modIicDat.h"
#include "link/protocol/modCommun.h"
#include "program/modStartUp.h"
#include "support.h"
#include "support/TempFolder.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;

class InputPort : public SerialPort {
  public:
    explicit InputPort(bool usable) : usable_(usable) {}
    void open() override {
        if (!usable_) {
            throw RuntimeError(errNum::fileNotFound, "no such device");
        }
    }
    [[nodiscard]] bool isOpen() const override { return usable_; }
    void close() override {}
    void emptyInput() override {}
    void emptyOutput() override {}
    void write(std::span<const std::uint8_t>) override {}
    [[nodiscard]] std::size_t waiting() override { return 0; }
    [[nodiscard]] std::vector<std::uint8_t> readAll() override { return {}; }

  private:
    bool usable_;
};

/// A program folder that lives as long as this process.
class Folder {
  public:
    Folder() {
        std::filesystem::copy_file(
            std::filesystem::path(K520_SHARE_DIR) / programFolder::defaultImageFileName,
            folder_ / programFolder::defaultImageFileName);
    }
    [[nodiscard]] const std::filesystem::path& path() const { return folder_.path(); }
    void settings(const std::string& text) {
        const auto path = folder_.write(programFolder::settingsFileName, text);
        // Written long ago, and never twice at the same time: so the program need not read it anew
        // for every key.
        const std::array<timespec, 2> times{timespec{++time_, 0}, timespec{time_, 0}};
        require(::utimensat(AT_FDCWD, path.c_str(), times.data(), 0) == 0, "the time is set");
    }
    void removeSettings() { std::filesystem::remove(folder_ / programFolder::settingsFileName); }
    [[nodiscard]] std::string settings() const {
        return folder_.read(programFolder::settingsFileName);
    }
    [[nodiscard]] std::size_t count() const { return folder_.names().size(); }

  private:
    test::TempFolder folder_;
    std::time_t time_ = 0;
};

/// The values that a start may set, in the order in which it does.
ProfileText afterStart(const std::string& before, const ProfileText& after) {
    ProfileText expected(before);
    const auto take = [&](std::string_view section, const std::string& key, bool isNumber) {
        const auto value = after.value(section, key);
        if (value && expected.value(section, key) != value) {
            expected.setValue(section, key,
                              isNumber && !value->starts_with('-') ? " " + *value : *value);
        }
    };
    take("Setting", "FirRun", false);
    take("Setting", "Language", false);
    take("Setting", "COM", true);
    for (int i = 0; i < 100; ++i) {
        take("Option", std::to_string(mdimoduMain::state().Language * 1000 + 501 + i), true);
    }
    return expected;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Folder folder;
    static test::SimulatedClock clock;
    Source source(data, size);
    const int usablePort = source.below(20);
    const bool present = source.byte() != 0;
    const std::string text = source.restText();
    resetModules();
    programFolder::state().own = folder.path();
    modCommun::state().portMaker = [&](std::int16_t number) {
        return std::make_unique<InputPort>(number == usablePort);
    };
    if (present) {
        folder.settings(text);
    } else {
        folder.removeSettings();
    }
    const ProfileText before(present ? text : std::string());

    const auto result = modStartUp::Form_Load();

    const ProfileText after(folder.settings());
    if (result == modStartUp::StartResult::quit) {
        ProfileText marked = before;
        marked.setValue("Setting", "FirRun", "1");
        require(after.bytes() == marked.bytes(),
                "the first start leaves its mark and nothing else");
        return 0;
    }
    require(afterStart(before.bytes(), after).bytes() == after.bytes(),
            "a start writes the first run's values and the current options only");
    const auto& image = modIicDat::state();
    require(image.IicDat.size() == static_cast<std::size_t>(image.DatNum) + 1 &&
                image.IicDatDef.size() == image.IicDat.size(),
            "the image has the size that the settings give");
    const auto language = mdimoduMain::state().Language;
    require(language >= 1 && language <= 3, "the language is one of three");
    require(folder.count() == 3, "no file is left");
    return 0;
}
