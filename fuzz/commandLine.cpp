// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
// Any command line, run in this process in a folder of its own. Words are made so that they name
// nothing outside it, and no port but the simulated radio's is opened.

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <deque>
#include <map>

#include "app/programFolder.h"
#include "base/Files.h"
#include "cli/Command.h"
#include "cli/Failure.h"
#include "cli/run.h"
#include "link/protocol/modCommun.h"
#include "link/session/modSession.h"
#include "support.h"
#include "support/TempFolder.h"

namespace {

using namespace k520;
using fuzz::require;
using fuzz::Source;
namespace fs = std::filesystem;

constexpr int mostWords = 12;

constexpr std::array<std::string_view, 64> words{"new",
                                                 "show",
                                                 "set",
                                                 "export",
                                                 "import",
                                                 "diff",
                                                 "hex",
                                                 "config",
                                                 "get",
                                                 "read",
                                                 "write",
                                                 "verify",
                                                 "simulate",
                                                 "ports",
                                                 "a.dat",
                                                 "b.dat",
                                                 "a.csv",
                                                 "new.dat",
                                                 "-o",
                                                 "--output",
                                                 "--json",
                                                 "--verify",
                                                 "-p",
                                                 "virtual",
                                                 "--backup",
                                                 "--trace",
                                                 "-",
                                                 "--from",
                                                 "--to",
                                                 "0010",
                                                 "1FFF",
                                                 "--default",
                                                 "Setting",
                                                 "DatNum",
                                                 "ChInfo",
                                                 "3000",
                                                 "Language",
                                                 "1039",
                                                 "8191",
                                                 "ch1.rx=446",
                                                 "ch2.rx=145.5",
                                                 "ch1.rx=",
                                                 "ch1.decode=88.5",
                                                 "ch1.encode=D023N",
                                                 "ch1.tx=",
                                                 "band=5",
                                                 "band=400-470",
                                                 "option.tot=60s",
                                                 "option.squelch=3",
                                                 "--help",
                                                 "--version",
                                                 "--program-folder",
                                                 "home",
                                                 "missing",
                                                 "--image",
                                                 "--lose",
                                                 "--delay",
                                                 "5:10",
                                                 "--baud",
                                                 "9600",
                                                 "Ports",
                                                 "COM1",
                                                 "Option",
                                                 "ReadEndAddr"};

std::string wordFrom(Source& source) {
    const std::size_t kind = source.byte();
    if (kind < 0xD0) {
        return std::string(words[kind % words.size()]);
    }
    std::string word = source.text(24);
    if (kind < 0xE0) {
        word.insert(0, words[source.byte() % words.size()]);
    }
    // Nothing outside the folder, and what no command line can hold.
    std::ranges::replace(word, '/', '_');
    std::ranges::replace(word, '\0', '0');
    return word == ".." ? "." : word;
}

/// The folder that the command lines work in, and what is in it at their start.
class Folder {
  public:
    Folder() {
        fs::create_directory(folder_ / "home");
        const fs::path shipped = K520_SHARE_DIR;
        take("home/Uninstall.exe", shipped / programFolder::settingsFileName);
        take("home/PL220_CV.exe", shipped / programFolder::defaultImageFileName);
        take("a.dat", shipped / programFolder::defaultImageFileName);
        files_["b.dat"] =
            std::vector<std::uint8_t>(files_["a.dat"].rbegin(), files_["a.dat"].rend());
        const std::string csv = "channel,rx,tx\n1,446.00625,446.00625\n2,,\n";
        files_["a.csv"] = {csv.begin(), csv.end()};
        require(::chdir(folder_.path().c_str()) == 0, "the folder can be entered");
    }
    void restore() {
        for (const auto& entry : content()) {
            if (!files_.contains(entry.first)) {
                fs::remove_all(entry.first);
            }
        }
        const auto present = content();
        for (const auto& [name, bytes] : files_) {
            const auto found = present.find(name);
            if (found == present.end() || found->second != bytes) {
                fs::remove_all(name);
                folder_.write(name, {bytes.begin(), bytes.end()});
            }
        }
    }
    [[nodiscard]] bool isUntouched() const { return content() == files_; }
    void requireNothingLeft() const {
        for (const auto& [name, bytes] : content()) {
            require(!name.starts_with(".k520") && name.find("/.k520") == name.npos,
                    "no temporary file is left");
        }
    }

  private:
    using Content = std::map<std::string, std::vector<std::uint8_t>>;

    void take(const std::string& name, const fs::path& from) {
        files_[name] = files::read(from, 1U << 20U).bytes;
    }
    static Content content() {
        Content all;
        for (const auto& entry : fs::recursive_directory_iterator(".")) {
            if (!entry.is_directory()) {
                const auto name = entry.path().lexically_normal().string();
                all[name] = entry.is_regular_file() ? files::read(name, 1U << 20U).bytes
                                                    : std::vector<std::uint8_t>();
            } else if (entry.path() != "./home") {
                all[entry.path().lexically_normal().string()] = {};
            }
        }
        return all;
    }

    test::TempFolder folder_;
    Content files_;
};

/// Whether a command line neither plays a radio until somebody ends it nor opens a true port.
bool mayRun(const std::deque<std::string>& line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::string& word = line[i];
        const bool virtualPort =
            (word == "-p" || word == "--port") && i + 1 < line.size() && line[i + 1] == "virtual";
        const bool port = word.starts_with("-p") || word.starts_with("--port");
        if (word == "simulate" || word == "ports" || (port && !virtualPort)) {
            return false;
        }
    }
    return true;
}

/// Takes a command line apart and no more.
int parseOnly(int count, const char* const* line) {
    try {
        static_cast<void>(cli::parse(count, line));
        return 0;
    } catch (const cli::Failure& failure) {
        return failure.code();
    }
}

/// Lets stdout and stderr go nowhere while it lives.
class Silence {
  public:
    Silence() {
        for (std::size_t i = 0; i < kept_.size(); ++i) {
            kept_[i] = ::dup(static_cast<int>(i) + 1);
            ::dup2(nowhere(), static_cast<int>(i) + 1);
        }
    }
    ~Silence() {
        std::fflush(stdout);
        for (std::size_t i = 0; i < kept_.size(); ++i) {
            ::dup2(kept_[i], static_cast<int>(i) + 1);
            ::close(kept_[i]);
        }
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

  private:
    static int nowhere() {
        static const int descriptor = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        return descriptor;
    }

    std::array<int, 2> kept_{};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Folder folder;
    static test::SimulatedClock clock;
    Source source(data, size);
    std::deque<std::string> line{"k520-cli", "--program-folder", "home"};
    if (source.below(8) == 7) {
        line.resize(1);
        ::setenv("K520_HOME", "home", 1);
    } else {
        ::unsetenv("K520_HOME");
    }
    while (!source.empty() && line.size() < mostWords) {
        line.push_back(wordFrom(source));
    }
    std::vector<const char*> pointers;
    for (const auto& word : line) {
        pointers.push_back(word.c_str());
    }
    const int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    folder.restore();
    resetModules();
    int code = 0;
    {
        const Silence silence;
        code = mayRun(line) ? cli::run(count, pointers.data()) : parseOnly(count, pointers.data());
    }
    require(code == 0 || code == 1 || code == 2, "an exit code of the program");
    require(code != 2 || folder.isUntouched(), "a wrong command line changes no file");
    folder.requireNothingLeft();
    require(!modCommun::state().comCommun && !modSession::running(), "no session is left");
    return 0;
}
