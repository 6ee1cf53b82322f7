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
    const Text* inWords;
    const Text* remedy;  ///< what to do about it; may be null
};

constexpr Meaning meanings[] = {
    {std::errc::no_such_file_or_directory, errNum::fileNotFound, &texts::notThere,
     &texts::checkPath},
    {std::errc::not_a_directory, errNum::pathNotFound, &texts::partNotAFolder, &texts::checkPath},
    {std::errc::is_a_directory, errNum::pathAccess, &texts::pathIsAFolder, &texts::nameAFile},
    {std::errc::permission_denied, errNum::pathAccess, &texts::accessDenied, &texts::checkRights},
    {std::errc::operation_not_permitted, errNum::permissionDenied, &texts::notAllowed,
     &texts::checkRights},
    {std::errc::read_only_file_system, errNum::pathAccess, &texts::readOnlyDisk,
     &texts::otherPlace},
    {std::errc::file_exists, errNum::pathAccess, &texts::alreadyThere, nullptr},
    {std::errc::too_many_symbolic_link_levels, errNum::pathAccess, &texts::linksInACircle,
     &texts::checkLinks},
    {std::errc::filename_too_long, errNum::badFileName, &texts::nameTooLong, &texts::shorterName},
    {std::errc::no_space_on_device, errNum::diskFull, &texts::noSpace, &texts::freeSpace},
    {std::errc::file_too_large, errNum::diskFull, &texts::tooLargeForDisk, &texts::freeSpace},
    {std::errc::too_many_files_open, errNum::tooManyFiles, &texts::tooManyOpen,
     &texts::closeOthers},
    {std::errc::too_many_files_open_in_system, errNum::tooManyFiles, &texts::tooManyOpen,
     &texts::closeOthers},
    {std::errc::device_or_resource_busy, errNum::alreadyOpen, &texts::inUse, &texts::closeOthers},
    {std::errc::no_such_device_or_address, errNum::deviceUnavailable, &texts::deviceNotThere,
     nullptr},
    {std::errc::no_such_device, errNum::deviceUnavailable, &texts::deviceNotThere, nullptr},
    {std::errc::not_enough_memory, errNum::outOfMemory, &texts::noMemory, nullptr},
    {std::errc::invalid_argument, errNum::invalidCall, &texts::notPossible, nullptr},
    {std::errc::io_error, errNum::deviceIo, &texts::deviceFails, nullptr},
};

/// Nothing for an error without a row.
const Meaning* meaningOf(const std::error_code& error) {
    const auto* row = std::ranges::find(meanings, systemError::kind(error), &Meaning::error);
    return row == std::end(meanings) ? nullptr : row;
}

bool isEnglish(std::string_view words) noexcept {
    return std::ranges::all_of(words, [](unsigned char c) { return c < 0x80; });
}

}  // namespace

RuntimeError::RuntimeError(std::int16_t number, std::string_view subject, std::string_view words)
    : std::runtime_error(about(subject, words)), number_(number), subject_(subject) {}

std::string systemWords(const std::error_code& error) {
    const auto words = systemError::words(error);
    const auto* meaning = meaningOf(error);
    const bool understood = isEnglish(words) == (textLanguage() == TextLanguage::english);
    return meaning == nullptr || understood
               ? words
               : say(texts::withMeaning, say(*meaning->inWords), words);
}

void throwSystemError(const std::error_code& error, const std::string& subject) {
    const auto words = systemWords(error);
    const auto* meaning = meaningOf(error);
    if (meaning == nullptr) {
        throw RuntimeError(errNum::deviceIo, subject, words);
    }
    throw RuntimeError(
        meaning->number, subject,
        meaning->remedy == nullptr ? words : say(texts::withRemedy, words, say(*meaning->remedy)));
}

void throwSystemError(std::errc error, const std::string& subject) {
    throwSystemError(std::make_error_code(error), subject);
}

}  // namespace k520
