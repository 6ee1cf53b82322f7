// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
//
// Every system call of a save fails, or is the last one: the old or the new file, and "saved" only
// where it is.
#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <set>
#include <sstream>

#include "faults/Campaign.h"

namespace k520::faults {
namespace {

namespace fs = std::filesystem;
using test::TempFolder;

/// A command that writes files; "@" is the folder that it works in.
struct Save {
    const char* name;
    Words words;
    Words targets;           ///< relative to the folder
    bool always = false;     ///< not only where all is to be tried
    bool promises = true;    ///< exit code 0 says that the targets are written
    bool repeatable = true;  ///< the same command once more gives the same files
    bool together = false;   ///< a failure leaves all targets old or all of them new
    std::string note = {};   ///< may stand there after a failure: it tells of what is not done

    friend void PrintTo(const Save& save, std::ostream* out) { *out << save.name; }
};

Words cli(Words words) {
    return after({K520_CLI, "--program-folder", "@home"}, words);
}

const std::vector<Save>& saves() {
    constexpr bool always = true;
    static const std::vector<Save> all{
        {"set, in place", cli({"set", "@long.dat", "ch1.rx=446.1"}), {"long.dat"}},
        {"set, through a link", cli({"set", "@link.dat", "ch1.rx=446.1"}), {"long.dat"}, always},
        {"new", cli({"new", "@fresh.dat"}), {"fresh.dat"}},
        {"export", cli({"export", "@a.dat", "-o", "@out.csv"}), {"out.csv"}, always},
        {"import", cli({"import", "@a.dat", "@in.csv"}), {"a.dat"}},
        {"config set",
         cli({"config", "set", "Setting", "COM", "7"}),
         {"home/Uninstall.exe"},
         always},
        {"config set, first of a folder",
         {K520_CLI, "--program-folder", "@new", "config", "set", "Setting", "COM", "7"},
         {"new/Uninstall.exe"}},
        {"read -o", cli({"read", "-p", "virtual", "-o", "@a.dat"}), {"a.dat"}},
        {"write --backup",
         cli({"write", "-p", "virtual", "@a.dat", "--backup", "@out.dat"}),
         {"out.dat"},
         always,
         true,
         false},
        {"read --keep-copy",
         cli({"read", "-p", "virtual", "-o", "@copy.dat", "--keep-copy"}),
         {"home/Data/Backups/TIME_read_0000-000F.dat",
          "home/Data/Backups/TIME_read_0000-000F.lost"},
         always,
         true,
         false,
         true},
        {"write --keep-copy",
         cli({"write", "-p", "virtual", "@a.dat", "--keep-copy"}),
         {"home/Data/Backups/TIME_before-write_0000-000F.dat",
          "home/Data/Backups/TIME_before-write_0000-000F.lost"},
         always,
         true,
         false,
         true,
         "home/Data/Backups/TIME_before-write_0000-000F.unfinished"},
        {"first start of a user",
         {"env", "XDG_DATA_HOME=@data", K520_CLI, "show", "@a.dat"},
         {"data/k520/Uninstall.exe", "data/k520/PL220_CV.exe"},
         always,
         false},
        {"desktop: Save As", {K520_FAULT_DRIVER, "@home", "save", "@a.dat"}, {"a.dat"}, always},
        {"desktop: lock", {K520_FAULT_DRIVER, "@home", "lock"}, {"home/Uninstall.exe"}},
    };
    return all;
}

/// Calls that have to do with files; all others can only be killed.
bool isFileCall(const std::string& name) {
    static const std::set<std::string> calls{
        "openat",    "read",       "write",     "pwrite64", "fsync",
        "fdatasync", "close",      "renameat",  "rename",   "fchmod",
        "fchown",    "flock",      "fcntl",     "lseek",    "unlinkat",
        "mkdir",     "fchmodat",   "ftruncate", "readlink", "copy_file_range",
        "sendfile",  "newfstatat", "faccessat2"};
    return calls.contains(name);
}

/// The n-th call of a name in a plain run.
struct Call {
    std::string name;
    int number;
    std::string line;
};

struct Fault {
    Call call;
    std::string what;  ///< as strace takes it; "+" after it for every later call, too
};

using Files = std::map<std::string, std::string>;

/// A folder of files, all old enough for the program to believe their stamps.
class Workplace {
  public:
    void add(const std::string& name, const std::string& bytes) {
        fs::create_directories((folder / name).parent_path());
        fs::last_write_time(folder.write(name, bytes),
                            fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    void link(const std::string& target, const std::string& name) const {
        fs::create_symlink(target, folder / name);
    }
    /// All files by their names; of a link what it leads to, and that it is one. A time in a
    /// name is "TIME", and the folder in a settings file, which lists recent files, is "FOLDER".
    [[nodiscard]] Files files() const {
        Files all;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            if (entry.is_regular_file()) {
                const auto name = fs::relative(entry.path(), folder.path()).string();
                static const std::regex time("\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d");
                std::string bytes = folder.read(name);
                if (const auto at = bytes.find(folder.path().string() + "/");
                    at != std::string::npos) {
                    bytes.replace(at, folder.path().string().size(), "FOLDER");
                }
                all[std::regex_replace(name, time, "TIME") + (entry.is_symlink() ? "@" : "")] =
                    std::move(bytes);
            }
        }
        return all;
    }
    TempFolder folder;
};

bool isLeftOver(const std::string& name) {
    return fs::path(name).filename().string().starts_with(".k520-");
}

/// One command, tried again and again in fresh folders.
class Trials {
  public:
    explicit Trials(const Save& save) : save_(save) {
        const auto in = fresh();
        old_ = in->files();
        const auto plain = execute(placed(save.words, in->folder), scratch_);
        EXPECT_EQ(plain.code, 0) << save.name << ": " << plain.err;
        new_ = in->files();
        for (const auto& target : save.targets) {
            EXPECT_NE(at(new_, target), std::nullopt) << target;
            EXPECT_NE(at(new_, target), at(old_, target)) << save.name << " changes nothing";
        }
    }

    /// The calls of a plain run in their order, but for the start itself.
    [[nodiscard]] std::vector<Call> calls() const {
        const auto in = fresh();
        const auto log = scratch_ / "log";
        const auto run = execute(
            placed(after({"strace", "-E", noLeakCheck, "-o", log}, save_.words), in->folder),
            scratch_);
        EXPECT_EQ(run.code, 0) << run.err;
        std::vector<Call> calls;
        std::map<std::string, int> counts;
        std::istringstream lines(scratch_.read("log"));
        for (std::string line; std::getline(lines, line);) {
            const auto name = line.substr(0, line.find('('));
            if (name.find_first_of(" +-") == std::string::npos && name != "execve" &&
                name != "exit_group" && !line.starts_with("write(2,")) {
                calls.push_back({name, ++counts[name], line});
            }
        }
        return calls;
    }

    void inject(const Fault& fault, Row& row) const {
        const auto in = fresh();
        const TempFolder scratch;
        const bool killed = fault.what == "signal=KILL";
        const bool mayLeave = killed || fault.call.name == "unlinkat";
        const auto words =
            after({"strace", "-E", noLeakCheck, "-o", "/dev/null", "-e",
                   fmt::format("inject={}:{}:when={}{}", fault.call.name,
                               fault.what.substr(0, fault.what.find('+')), fault.call.number,
                               fault.what.ends_with('+') ? "+" : "")},
                  save_.words);
        SCOPED_TRACE(fmt::format("{}: {} at {} {}", save_.name, fault.what, fault.call.number,
                                 fault.call.line));
        const auto run = execute(placed(words, in->folder), scratch);
        const bool muted = fault.call.name == "write" && fault.what.ends_with('+');
        check(*in, run, killed || muted, mayLeave, row);
        if (mayLeave) {
            goOn(*in);
        }
    }

    void limit(std::size_t bytes, Row& row) const {
        const auto in = fresh();
        const TempFolder scratch;
        SCOPED_TRACE(fmt::format("{} with files of at most {} bytes", save_.name, bytes));
        const auto run = execute(
            placed(after({"prlimit", fmt::format("--fsize={}", bytes)}, save_.words), in->folder),
            scratch);
        // A limit may be too small for the message, too, when that goes to a file.
        constexpr std::size_t longestMessage = 512;
        check(*in, run, bytes < longestMessage, false, row);
    }

    [[nodiscard]] std::size_t largest() const {
        std::size_t most = 0;
        for (const auto& target : save_.targets) {
            most = std::max(most, at(new_, target)->size());
        }
        return most;
    }

  private:
    static constexpr const char* noLeakCheck = "ASAN_OPTIONS=detect_leaks=0";

    static std::optional<std::string> at(const Files& files, const std::string& name) {
        const auto found = files.find(name);
        return found == files.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] static std::unique_ptr<Workplace> fresh() {
        static const Files first = [] {
            const TempFolder scratch;
            const Workplace made;
            const auto run = [&](const Words& words) {
                const auto outcome = execute(placed(cli(words), made.folder), scratch);
                EXPECT_EQ(outcome.code, 0) << outcome.err;
            };
            fs::create_directory(made.folder / "home");
            run({"config", "set", "Setting", "ReadEndAddr", "000F"});
            run({"config", "set", "Setting", "WriteEndAddr", "000F"});
            run({"config", "set", "Setting", "FirRun", "0"});
            run({"new", "@a.dat"});
            run({"set", "@a.dat", "ch1.rx=440", "ch2.rx=441"});
            run({"export", "@a.dat", "-o", "@out.csv"});
            made.folder.write("in.csv", made.folder.read("out.csv"));
            run({"set", "@a.dat", "ch1.rx=442", "ch2.rx="});
            made.folder.write("long.dat", made.folder.read("a.dat") + std::string(70'000, 't'));
            made.folder.write("fresh.dat", "old");
            return made.files();
        }();
        auto place = std::make_unique<Workplace>();
        for (const auto& [name, bytes] : first) {
            place->add(name, bytes);
        }
        place->link("long.dat", "link.dat");
        return place;
    }

    void check(const Workplace& in, const Outcome& run, bool mayBeMute, bool mayLeave,
               Row& row) const {
        const auto files = in.files();
        bool allNew = true;
        bool allOld = true;
        for (const auto& target : save_.targets) {
            const auto now = at(files, target);
            EXPECT_TRUE(now == at(old_, target) || now == at(new_, target))
                << target << " is neither old nor new: " << (now ? now->size() : 0) << " bytes";
            allNew = allNew && now == at(new_, target);
            allOld = allOld && now == at(old_, target);
        }
        for (const auto& [name, bytes] : files) {
            EXPECT_TRUE(old_.contains(name) || new_.contains(name) || name == save_.note ||
                        (mayLeave && isLeftOver(name)))
                << "left behind: " << name;
        }
        EXPECT_TRUE(!save_.together || mayLeave || allNew || allOld) << "half of it is there";
        EXPECT_TRUE(!save_.promises || run.code != 0 || allNew) << "said to be saved";
        // The loader of programs has an exit code and words of its own.
        EXPECT_TRUE(run.code == 0 || run.code == 1 || run.code == 127 ||
                    (mayBeMute && run.code == -9))
            << run.code << run.err;
        EXPECT_TRUE(mayBeMute || run.code == 0 || !run.err.empty()) << "failed without a word";
        row.add(std::string(allNew ? "new file" : "old file") + (run.code == 0 ? ", done"
                                                                 : run.code < 0
                                                                     ? ""
                                                                     : ", failure told"));
    }

    /// What a killed program leaves does not hinder, and goes.
    void goOn(const Workplace& in) const {
        const TempFolder scratch;
        const auto again = execute(placed(save_.words, in.folder), scratch);
        EXPECT_EQ(again.code, 0) << again.err;
        for (const auto& [name, bytes] : in.files()) {
            EXPECT_TRUE(!isLeftOver(name)) << "still there: " << name;
            EXPECT_TRUE(!save_.repeatable || bytes == at(new_, name).value_or("")) << name;
        }
    }

    const Save& save_;
    TempFolder scratch_;
    Files old_;
    Files new_;
};

/// Whether strace can attach to a program here.
bool canInject() {
    const TempFolder scratch;
    return execute({"strace", "-o", "/dev/null", "true"}, scratch).code == 0;
}

/// The last save from shortly before its temporary file on. Where all is to be tried, every call,
/// but of equal ones only the first and the last.
std::vector<Call> ofInterest(const std::vector<Call>& calls) {
    constexpr std::ptrdiff_t margin = 4;
    const auto holds = [](const char* text) {
        return [text](const Call& call) { return call.line.find(text) != std::string::npos; };
    };
    if (exhaustive()) {
        std::map<std::string, int> first, last;
        for (const auto& call : calls) {
            first.try_emplace(call.line, call.number);
            last[call.line] = call.number;
        }
        std::vector<Call> kept;
        std::ranges::copy_if(calls, std::back_inserter(kept), [&](const Call& call) {
            return first[call.line] == call.number || last[call.line] == call.number;
        });
        return kept;
    }
    const auto made = std::find_if(calls.rbegin(), calls.rend(), holds(".tmp\", O_WRONLY")).base();
    const auto moved = std::find_if(calls.rbegin(), calls.rend(), holds("renameat")).base();
    if (moved <= made) {
        ADD_FAILURE() << "this saves nothing";
        return {};
    }
    return {made - std::min(margin, made - calls.begin()),
            moved + std::min(margin, calls.end() - moved)};
}

class Saves : public testing::TestWithParam<Save> {};

/// An ordinary test tries a part, campaign.sh all.
std::vector<Save> savesToTry() {
    auto all = saves();
    std::erase_if(all, [](const Save& save) { return !save.always && !exhaustive(); });
    return all;
}

TEST_P(Saves, AreWholeOrNotAtAllWhicheverCallFails) {
    if (!canInject()) {
        GTEST_SKIP() << "strace cannot attach to a program here, so no call can be made to fail";
    }
    const Trials trials(GetParam());
    std::vector<Fault> faults;
    const Words few{"error=ENOSPC", "signal=KILL"};
    const Words many{"error=ENOSPC+", "error=EIO+",   "error=ENOSPC", "error=EIO",
                     "error=EFBIG",   "error=EDQUOT", "error=EACCES", "error=EROFS",
                     "error=EINTR",   "error=ENOMEM", "signal=KILL"};
    for (const auto& call : ofInterest(trials.calls())) {
        for (const auto& what : exhaustive() ? many : few) {
            if (what == "signal=KILL" || isFileCall(call.name)) {
                faults.push_back({call, what});
            }
        }
    }
    Row errors(GetParam().name, "an error at the n-th system call, every n");
    Row kills(GetParam().name, "kill -9 at the n-th system call, every n");
    forEach(faults.size(), [&](std::size_t i) {
        trials.inject(faults[i], faults[i].what == "signal=KILL" ? kills : errors);
    });
}

TEST_P(Saves, AreWholeOrNotAtAllWhereverTheDiskGetsFull) {
    const Trials trials(GetParam());
    const std::size_t step = exhaustive() ? 64 : 4096;
    Row row(GetParam().name, "a file size limit of n bytes");
    forEach(trials.largest() / step + 2, [&](std::size_t i) { trials.limit(i * step, row); });
}

INSTANTIATE_TEST_SUITE_P(All, Saves, testing::ValuesIn(savesToTry()), [](const auto& instance) {
    std::string name = instance.param.name;
    std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
    return name;
});

}  // namespace
}  // namespace k520::faults
