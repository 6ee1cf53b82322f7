// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modShowErr.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <new>

#include "app/errTexts.h"
#include "base/Clock.h"
#include "base/ModuleState.h"
#include "base/RuntimeError.h"
#include "base/causeTexts.h"
#include "base/generalDate.h"

namespace k520::modShowErr {

namespace {

void addLine(std::string line) {
    State& s = state();
    // The counter's place is the end, also of a list that has outgrown the counter.
    s.listShowErr.insertSelected(s.listShowErr.size(), std::move(line));
    if (s.lineCounter < std::numeric_limits<std::int16_t>::max()) {
        ++s.lineCounter;
    }
}

void addTimeLine() {
    addLine(fmt::format("---------{}--------", generalDate::text(theClock().dateTime())));
}

}  // namespace

State& state() {
    static ModuleState<State> instance;
    return *instance;
}

void notePendingFailure() noexcept {
    State& s = state();
    s.pendingSubject.clear();
    try {
        throw;
    } catch (const RuntimeError& error) {
        s.pendingNumber = error.number();
        s.pendingSource = error.source();
        s.pendingSubject = error.subject();
    } catch (const std::bad_alloc& error) {
        s.pendingNumber = errNum::outOfMemory;
        s.pendingSource = error.what();
    } catch (const std::exception& error) {
        s.pendingNumber = errNum::internal;
        s.pendingSource = error.what();
    } catch (...) {
        s.pendingNumber = errNum::internal;
        s.pendingSource = say(texts::unknownFailure);
    }
}

void ShowErrMsg(std::string_view label) {
    State& s = state();
    addTimeLine();
    VbErrNumDes(s.pendingNumber);
    s.entries.push_back({std::string(label), s.pendingNumber, s.pendingSource, s.pendingSubject});
    addLine(fmt::format("         错误:  {}     出错号:  {}     出错点:  {}     出错描述:  {}",
                        label, s.pendingNumber, s.pendingSource, s.lastDescription));
}

void ShowOptErrMsg(std::string_view item) {
    addTimeLine();
    state().entries.push_back({"option", 0, std::string(item)});
    addLine(fmt::format("        可选功能项:   {}", item));
}

void VbErrNumDes(std::int16_t number) {
    const auto rows = errTexts();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const ErrText& text) { return text.number == number; });
    state().lastDescription = row == rows.end() ? std::string() : std::string(row->text);
}

}  // namespace k520::modShowErr
