// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace k520 {

/// The two languages in which this program says everything of its own. Interface language 1 is
/// Chinese, 2 and 3 are English here: Traditional Chinese has no texts.
enum class TextLanguage : std::uint8_t { chinese, english };

/// One text in both languages. "&" marks a mnemonic of a caption, "{}" or "{0}" a place for an
/// argument.
///
/// All texts that a person can meet are constants of this type in namespace k520::texts, each in
/// the header ...Texts.h of the folder that says it, but for those of the numbered table
/// (modSoftFace). A text without one of its languages, or with other places in one of them, does
/// not compile.
class Text {
  public:
    consteval Text(std::string_view chinese, std::string_view english)
        : chinese_(chinese), english_(english) {
        if (chinese.empty() || english.empty()) {
            throw "a text is missing in one language";
        }
        if (placesOf(chinese) != placesOf(english)) {
            throw "the two languages do not take the same arguments";
        }
        if ((chinese.find('&') == chinese.npos) != (english.find('&') == english.npos)) {
            throw "only one of the languages has a mnemonic";
        }
    }

    [[nodiscard]] constexpr std::string_view in(TextLanguage language) const noexcept {
        return language == TextLanguage::chinese ? chinese_ : english_;
    }

  private:
    /// A bit for each argument that a text has a place for.
    static consteval std::uint32_t placesOf(std::string_view text) {
        std::uint32_t places = 0;
        std::uint32_t next = 0;
        for (std::size_t i = 0; i + 1 < text.size(); ++i) {
            if (text[i] != '{') {
                continue;
            }
            const char follows = text[++i];
            if (follows != '{') {
                const bool numbered = follows >= '0' && follows <= '9';
                places |= 1U << (numbered ? static_cast<std::uint32_t>(follows - '0') : next++);
            }
        }
        return places;
    }

    std::string_view chinese_;
    std::string_view english_;
};

/// The language of all texts from here on; English until one is set.
[[nodiscard]] TextLanguage textLanguage() noexcept;
void setTextLanguage(TextLanguage language) noexcept;

/// The text in the language in force.
[[nodiscard]] std::string say(const Text& text);

/// The text in the language in force, its places filled in.
template <class First, class... Others>
[[nodiscard]] std::string say(const Text& text, const First& first, const Others&... others) {
    return fmt::format(fmt::runtime(text.in(textLanguage())), first, others...);
}

/// "fleet.dat: No space left on device", with the colon of the language in force.
[[nodiscard]] std::string about(std::string_view subject, std::string_view words);

/// As long as one lives, texts are said in another language: what programs read does not change
/// with the language of the user.
class SpeakingIn {
  public:
    explicit SpeakingIn(TextLanguage language) noexcept : before_(textLanguage()) {
        setTextLanguage(language);
    }
    ~SpeakingIn() { setTextLanguage(before_); }
    SpeakingIn(const SpeakingIn&) = delete;
    SpeakingIn& operator=(const SpeakingIn&) = delete;

  private:
    TextLanguage before_;
};

}  // namespace k520
