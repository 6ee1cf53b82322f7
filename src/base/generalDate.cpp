// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/generalDate.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace k520::generalDate {

namespace {

std::tm calendarTime(const DateTime& when) {
    std::tm time{};
    time.tm_year = when.year - 1900;
    time.tm_mon = when.month - 1;
    time.tm_mday = when.day;
    time.tm_hour = when.hour;
    time.tm_min = when.minute;
    time.tm_sec = when.second;
    time.tm_isdst = -1;
    // Some forms name the day of the week.
    std::tm complete = time;
    if (std::mktime(&complete) != -1) {
        time.tm_wday = complete.tm_wday;
        time.tm_yday = complete.tm_yday;
    }
    return time;
}

/// Date, a blank, time, as the locale writes them.
std::string localText(const std::tm& time, const std::locale& locale) {
    constexpr std::string_view dateAndTime = "%x %X";
    std::ostringstream out;
    out.imbue(locale);
    std::use_facet<std::time_put<char>>(locale).put(std::ostreambuf_iterator<char>(out), out, ' ',
                                                    &time, dateAndTime.data(),
                                                    dateAndTime.data() + dateAndTime.size());
    return out.str();
}

/// How many bytes a character of UTF-8 has that begins with `lead`; 0 where none begins so.
std::size_t lengthAfter(unsigned char lead) {
    return lead < 0x80   ? 1
           : lead < 0xC2 ? 0
           : lead < 0xE0 ? 2
           : lead < 0xF0 ? 3
           : lead < 0xF5 ? 4
                         : 0;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = lengthAfter(static_cast<unsigned char>(text.front()));
        if (length == 0 || length > text.size() ||
            !std::ranges::all_of(text.substr(1, length - 1),
                                 [](char byte) { return (byte & 0xC0) == 0x80; })) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace

std::locale systemLocale() {
    try {
        return std::locale("");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

std::string text(const DateTime& when, const std::locale& locale) {
    const std::tm time = calendarTime(when);
    std::string local = localText(time, locale);
    if (local != localText(time, std::locale::classic()) && isUtf8(local)) {
        return local;
    }
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", when.year, when.month, when.day,
                       when.hour, when.minute, when.second);
}

}  // namespace k520::generalDate
