// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <string>

namespace k520 {

namespace modSession {
struct Result;
}

/// Which way a session moves the memory image.
enum class Direction : std::uint8_t { read, write };

/// What a run of the radio link consists of: a plain session is one stage.
enum class Stage : std::uint8_t { read, backUp, write, restore, compare };

/// What a session drives in the communication dialog, or in whatever stands in its place. The
/// session calls it on its own thread, in a fixed order; the waits of the session serve the
/// interface, so that the stop box can be ticked meanwhile.
class CommunView {
  public:
    virtual ~CommunView() = default;

    /// A stage begins; everything that follows belongs to it. A session by itself announces none.
    virtual void beginStage(Stage /*stage*/) {}

    /// lblComStatus.
    virtual void setStatus(const std::string& text) = 0;
    /// lblComPercent; a session only empties it, its percents are status texts.
    virtual void setPercentText(const std::string& text) = 0;
    /// prgCommunicate, 0 to 100.
    virtual void setProgress(std::int16_t percent) = 0;
    /// The start button of a direction: cmdRead or cmdWrite.
    virtual void enableStart(Direction direction, bool enabled) = 0;
    /// The busy mark has changed. While it is set the dialog must not be closed.
    virtual void setBusy(bool busy) = 0;

    /// chkStopCom: unticked and disabled, so that it cannot be ticked.
    virtual void resetStopBox() = 0;
    virtual void enableStopBox() = 0;
    [[nodiscard]] virtual bool stopTicked() = 0;

    /// tmrLigGrint, which blinks the light imgGreen; off hides the light, too.
    virtual void setBlinking(bool on) = 0;
    /// chkShowMemDat: refill the memory data grid after a session.
    [[nodiscard]] virtual bool showMemDatTicked() = 0;

    /// The last attempt has failed; the box that says so follows, and the port is still open. What
    /// `result` tells is final, but for the duration.
    virtual void gaveUp(const modSession::Result& /*result*/) {}

    /// True ends the session at once as stopped, whatever the stop box allows: the command line's
    /// interrupt key. Once true it stays true. Asked between steps and during waits for a reply.
    [[nodiscard]] virtual bool abandoned() { return false; }
};

/// A view that shows nothing and stops nothing.
class NullView : public CommunView {
  public:
    void setStatus(const std::string& /*text*/) override {}
    void setPercentText(const std::string& /*text*/) override {}
    void setProgress(std::int16_t /*percent*/) override {}
    void enableStart(Direction /*direction*/, bool /*enabled*/) override {}
    void setBusy(bool /*busy*/) override {}
    void resetStopBox() override {}
    void enableStopBox() override {}
    [[nodiscard]] bool stopTicked() override { return false; }
    void setBlinking(bool /*on*/) override {}
    [[nodiscard]] bool showMemDatTicked() override { return false; }
};

}  // namespace k520
