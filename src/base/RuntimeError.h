// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace k520 {

/// The standard run-time error numbers that this program raises. Their descriptions, as the error
/// list shows them, are in errTexts.h.
namespace errNum {
inline constexpr std::int16_t invalidCall = 5;
inline constexpr std::int16_t overflow = 6;
inline constexpr std::int16_t outOfMemory = 7;
inline constexpr std::int16_t subscript = 9;
inline constexpr std::int16_t typeMismatch = 13;
inline constexpr std::int16_t internal = 51;
inline constexpr std::int16_t badFileName = 52;
inline constexpr std::int16_t fileNotFound = 53;
inline constexpr std::int16_t alreadyOpen = 55;
inline constexpr std::int16_t deviceIo = 57;
inline constexpr std::int16_t diskFull = 61;
inline constexpr std::int16_t pastEnd = 62;
inline constexpr std::int16_t tooManyFiles = 67;
inline constexpr std::int16_t deviceUnavailable = 68;
inline constexpr std::int16_t permissionDenied = 70;
inline constexpr std::int16_t pathAccess = 75;
inline constexpr std::int16_t pathNotFound = 76;
inline constexpr std::int16_t invalidProperty = 380;
}  // namespace errNum

/// A run-time failure: its standard number and its source, a short text that names what failed and,
/// where the system said why, the system's own words. The error list shows both.
class RuntimeError : public std::runtime_error {
  public:
    RuntimeError(std::int16_t number, const std::string& source)
        : std::runtime_error(source), number_(number) {}
    /// The source is the subject, a colon and the words.
    RuntimeError(std::int16_t number, std::string_view subject, std::string_view words);

    [[nodiscard]] std::int16_t number() const noexcept { return number_; }
    [[nodiscard]] std::string source() const { return what(); }
    /// The file or device that it is about, where that was named apart; else empty.
    [[nodiscard]] const std::string& subject() const noexcept { return subject_; }

  private:
    std::int16_t number_;
    std::string subject_;
};

/// Runs `body`; a RuntimeError that it raises gets `subject` and a colon in front of its source.
template <class Body>
decltype(auto) naming(const std::string& subject, Body&& body) {
    try {
        return body();
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.number(), subject, error.source());
    }
}

/// The system's own words for an error; where they are in another language than the texts in force,
/// after what they mean: "磁盘空间不足（No space left on device）".
[[nodiscard]] std::string systemWords(const std::error_code& error);

/// Raises the standard error nearest to what the system calls `error`; the source is `subject`, a
/// colon, the system's words, and what to do ("fleet.dat: No space left on device; free some
/// disk space").
[[noreturn]] void throwSystemError(const std::error_code& error, const std::string& subject);
[[noreturn]] void throwSystemError(std::errc error, const std::string& subject);

}  // namespace k520
