// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "app/modShowErr.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <utility>

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

void show(Entry entry) {
    addTimeLine();
    VbErrNumDes(entry.number);
    state().entries.push_back(entry);
    addLine(fmt::format("         错误:  {}     出错号:  {}     出错点:  {}     出错描述:  {}",
                        entry.label, entry.number, entry.source, state().lastDescription));
}

}  // namespace

Entry::Entry(std::string who, std::int16_t what, std::string why, std::string whose)
    : label(std::move(who)), number(what), source(std::move(why)), subject(std::move(whose)) {}

Entry::Entry(const Procedure& who, std::int16_t what, std::string why, std::string whose)
    : Entry(std::string(who.label()), what, std::move(why), std::move(whose)) {
    procedure = &who;
}

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
    const State& s = state();
    show({std::string(label), s.pendingNumber, s.pendingSource, s.pendingSubject});
}

void ShowErrMsg(const Procedure& procedure) {
    const State& s = state();
    show({procedure, s.pendingNumber, s.pendingSource, s.pendingSubject});
}

void ShowOptErrMsg(std::string_view item) {
    addTimeLine();
    state().entries.emplace_back("option", std::int16_t{0}, std::string(item));
    addLine(fmt::format("        可选功能项:   {}", item));
}

void VbErrNumDes(std::int16_t number) {
    const auto rows = errTexts();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const ErrText& text) { return text.number == number; });
    state().lastDescription = row == rows.end() ? std::string() : std::string(row->text);
}

}  // namespace k520::modShowErr
