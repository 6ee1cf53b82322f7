// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "base/Text.h"
#include "base/causeTexts.h"

namespace k520 {

namespace {

constexpr std::array<std::pair<int, std::int16_t>, 19> systemErrors{{
    {ENOENT, errNum::fileNotFound},      {ENOTDIR, errNum::pathNotFound},
    {EISDIR, errNum::pathAccess},        {EACCES, errNum::pathAccess},
    {EPERM, errNum::permissionDenied},   {EROFS, errNum::pathAccess},
    {EEXIST, errNum::pathAccess},        {ELOOP, errNum::pathAccess},
    {ENAMETOOLONG, errNum::badFileName}, {ENOSPC, errNum::diskFull},
    {EDQUOT, errNum::diskFull},          {EFBIG, errNum::diskFull},
    {EMFILE, errNum::tooManyFiles},      {ENFILE, errNum::tooManyFiles},
    {EBUSY, errNum::alreadyOpen},        {ENXIO, errNum::deviceUnavailable},
    {ENODEV, errNum::deviceUnavailable}, {ENOMEM, errNum::outOfMemory},
    {EINVAL, errNum::invalidCall},
}};

struct Remedy {
    int systemError;
    Text text;
};

/// What to do about a failure that the system names.
constexpr std::array remedies{
    Remedy{ENOENT, texts::checkPath},   Remedy{ENOTDIR, texts::checkPath},
    Remedy{EACCES, texts::checkRights}, Remedy{EPERM, texts::checkRights},
    Remedy{EROFS, texts::otherPlace},   Remedy{EISDIR, texts::nameAFile},
    Remedy{ENOSPC, texts::freeSpace},   Remedy{EDQUOT, texts::freeSpace},
    Remedy{EFBIG, texts::freeSpace},    Remedy{ENAMETOOLONG, texts::shorterName},
    Remedy{ELOOP, texts::checkLinks},   Remedy{EMFILE, texts::closeOthers},
    Remedy{ENFILE, texts::closeOthers}, Remedy{EBUSY, texts::closeOthers},
};

}  // namespace

RuntimeError::RuntimeError(std::int16_t number, std::string_view subject, std::string_view words)
    : std::runtime_error(about(subject, words)), number_(number), subject_(subject) {}

std::int16_t numberOfSystemError(int systemError) noexcept {
    const auto* row = std::find_if(systemErrors.begin(), systemErrors.end(),
                                   [&](const auto& entry) { return entry.first == systemError; });
    return row == systemErrors.end() ? errNum::deviceIo : row->second;
}

void throwSystemError(int systemError, const std::string& subject) {
    const auto words = std::generic_category().message(systemError);
    const auto* row = std::ranges::find(remedies, systemError, &Remedy::systemError);
    throw RuntimeError(
        numberOfSystemError(systemError), subject,
        row == remedies.end() ? words : say(texts::withRemedy, words, say(row->text)));
}

}  // namespace k520
