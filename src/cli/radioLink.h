// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "base/Signal.h"
#include "cli/ConsoleView.h"
#include "link/session/safeguards.h"

/// Sessions with a radio as the commands run them.
namespace k520::cli {

/// Backups with their times, a line each.
[[nodiscard]] std::string backupLines(std::span<const std::filesystem::path> paths);

/// Raises Failure 1 for a radio whose backup is not known; the message names the latest ones.
[[noreturn]] void failForUnknownBackup(const std::string& reason);

/// A radio at a port, for one command.
class RadioLink {
  public:
    /// `port` is 1 to 16, "COM1" to "COM16", a device path or "virtual"; `trace` a file for the
    /// data list, "-" for stdout. Raises Failure 2 for a port number that does not exist, 1 for a
    /// trace file that cannot be written or an address range that cannot be read or written.
    RadioLink(std::string port, std::optional<std::string> trace);
    /// Keeps the trace, also that of a session that failed; what goes wrong there is a warning.
    ~RadioLink();
    RadioLink(const RadioLink&) = delete;
    RadioLink& operator=(const RadioLink&) = delete;

    /// Reads the read range into the image and decodes it; what lies outside the range stays.
    /// Raises Failure 1 with the state in which things are then, the likely cause and the next
    /// step.
    void read(const safeguards::Choices& choices);
    /// Encodes and stamps the image and writes the write range. A backup goes to `backUpTo` where
    /// that is given; a warning says where what stood there is kept. Raises the
    /// Failure that read does.
    void write(const safeguards::Choices& choices, const std::string& backUpTo = {});
    /// Puts a backup, or a data file, back into the radio. Raises the Failure that read does.
    void restore(const std::string& file, const safeguards::Choices& choices);
    /// Finds the backup that the radio needs, puts it back and returns its path. Raises the
    /// Failure that read does, and Failure 1 where none or several are possible, which it names.
    std::string takeBack(const safeguards::Choices& choices);

  private:
    void conclude(const safeguards::Ending& ending);
    [[noreturn]] void failFor(const safeguards::Ending& ending) const;
    /// The command that puts a backup back.
    [[nodiscard]] std::string restoreCommand(const std::filesystem::path& backup) const;
    [[nodiscard]] std::string wayBack(const safeguards::Ending& ending) const;
    void printTrace(const std::string& line);
    /// What stages that succeeded have left in the error list, before one that did not.
    static void warnBetween(std::size_t begin, std::size_t end);
    /// What a run that succeeded has left there.
    static void tellOfLateFailures(std::size_t mark);
    [[nodiscard]] std::string causeOf(const safeguards::Ending& ending) const;
    [[nodiscard]] std::string causeOfBreak(const safeguards::Ending& ending) const;
    void choosePort() const;
    void collectTrace();

    std::string port_;
    std::optional<std::string> trace_;
    ConsoleView view_;
    std::string traceText_;
    bool traceBroken_ = false;
    Subscription collecting_;
};

}  // namespace k520::cli
