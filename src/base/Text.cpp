// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "base/Text.h"

namespace k520 {

namespace {

TextLanguage& languageInForce() noexcept {
    static TextLanguage language = TextLanguage::english;
    return language;
}

constexpr Text ofSubject{"{}：{}", "{}: {}"};

}  // namespace

TextLanguage textLanguage() noexcept {
    return languageInForce();
}

void setTextLanguage(TextLanguage language) noexcept {
    languageInForce() = language;
}

std::string say(const Text& text) {
    return std::string(text.in(textLanguage()));
}

std::string about(std::string_view subject, std::string_view words) {
    return say(ofSubject, subject, words);
}

}  // namespace k520
