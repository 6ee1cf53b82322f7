// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/RuntimeError.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"
#include "base/causeTexts.h"
#include "base/systemError.h"

namespace k520 {

namespace {

struct Meaning {
    std::errc error;
    std::int16_t number;
    const Text* remedy;  ///< what to do about it; may be null
};

constexpr Meaning meanings[] = {
    {std::errc::no_such_file_or_directory, errNum::fileNotFound, &texts::checkPath},
    {std::errc::not_a_directory, errNum::pathNotFound, &texts::checkPath},
    {std::errc::is_a_directory, errNum::pathAccess, &texts::nameAFile},
    {std::errc::permission_denied, errNum::pathAccess, &texts::checkRights},
    {std::errc::operation_not_permitted, errNum::permissionDenied, &texts::checkRights},
    {std::errc::read_only_file_system, errNum::pathAccess, &texts::otherPlace},
    {std::errc::file_exists, errNum::pathAccess, nullptr},
    {std::errc::too_many_symbolic_link_levels, errNum::pathAccess, &texts::checkLinks},
    {std::errc::filename_too_long, errNum::badFileName, &texts::shorterName},
    {std::errc::no_space_on_device, errNum::diskFull, &texts::freeSpace},
    {std::errc::file_too_large, errNum::diskFull, &texts::freeSpace},
    {std::errc::too_many_files_open, errNum::tooManyFiles, &texts::closeOthers},
    {std::errc::too_many_files_open_in_system, errNum::tooManyFiles, &texts::closeOthers},
    {std::errc::device_or_resource_busy, errNum::alreadyOpen, &texts::closeOthers},
    {std::errc::no_such_device_or_address, errNum::deviceUnavailable, nullptr},
    {std::errc::no_such_device, errNum::deviceUnavailable, nullptr},
    {std::errc::not_enough_memory, errNum::outOfMemory, nullptr},
    {std::errc::invalid_argument, errNum::invalidCall, nullptr},
};

}  // namespace

RuntimeError::RuntimeError(std::int16_t number, std::string_view subject, std::string_view words)
    : std::runtime_error(about(subject, words)), number_(number), subject_(subject) {}

void throwSystemError(const std::error_code& error, const std::string& subject) {
    const auto words = systemError::words(error);
    const auto* row = std::ranges::find(meanings, systemError::kind(error), &Meaning::error);
    if (row == std::end(meanings)) {
        throw RuntimeError(errNum::deviceIo, subject, words);
    }
    throw RuntimeError(
        row->number, subject,
        row->remedy == nullptr ? words : say(texts::withRemedy, words, say(*row->remedy)));
}

void throwSystemError(std::errc error, const std::string& subject) {
    throwSystemError(std::make_error_code(error), subject);
}

}  // namespace k520
