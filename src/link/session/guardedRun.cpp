// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/session/guardedRun.h"

#include "link/session/waysBack.h"

namespace k520::safeguards {

Paths beforeOf(const std::vector<Note>& notes) {
    Paths before;
    for (const Note& note : notes) {
        before.insert(before.end(), note.before.begin(), note.before.end());
    }
    waysBack::sortNewestFirst(before);
    return before;
}

bool isWritten(const Note& note) {
    return note.state == unfinishedWrite::State::written;
}

}  // namespace k520::safeguards
