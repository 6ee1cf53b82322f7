// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "image/MemoryImage.h"
#include "image/modIicDat.h"
#include "link/modSession.h"

/// Sessions with a radio as the commands run them.
namespace k520::cli {

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

    /// Reads `range` into the image and decodes it; what lies outside the range stays. Raises
    /// Failure 1 with `afterFailure` (where things then stand), the likely cause and the next step.
    void read(const std::string& stage, modIicDat::AddressRange range,
              const std::string& afterFailure);
    /// Encodes and stamps the image and writes the write range. Raises Failure 1 likewise, with the
    /// state that the radio is left in.
    void write();

  private:
    /// How a session went, and the most progress that any of its attempts made, in percent.
    struct Run {
        modSession::Result result;
        std::int16_t furthest;
        std::size_t mark;  ///< where its failures begin in the error list
    };
    Run run(Direction direction, const std::string& stage);
    void printTrace(const std::string& line);
    /// What a session that succeeded has left in the error list.
    static void lookBehind(std::size_t mark);
    [[nodiscard]] std::string causeOf(const modSession::Result& result, std::size_t mark) const;
    void choosePort() const;
    void collectTrace();

    std::string port_;
    std::optional<std::string> trace_;
    std::string traceText_;
    bool traceBroken_ = false;
};

}  // namespace k520::cli
