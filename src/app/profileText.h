// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text format of profile (INI) files, as users of that format know it:
///  - section and key names match without regard to case; blanks and tabs around names and values
///    do not count; one pair of equal quotes (' or ") around a value is dropped;
///  - a line ends with LF, CR LF or CR; one without "=" does not count, nor one without a name;
///  - a line that starts with ";" is a comment;
///  - of two equal keys in a section, or two equal sections, the first wins;
///  - keys in front of the first section do not count;
///  - a section line's missing "]" is forgiven, and text after a "]" is ignored.
namespace k520 {

class ProfileText {
  public:
    ProfileText() = default;
    /// Takes the file's bytes as they are: any content is a profile, perhaps one without keys. A
    /// UTF-8 byte order mark is kept and skipped.
    explicit ProfileText(std::string bytes);

    /// The file's bytes.
    [[nodiscard]] const std::string& bytes() const noexcept { return bytes_; }

    /// The value of a key, or nothing where the section or the key is missing.
    [[nodiscard]] std::optional<std::string> value(std::string_view section,
                                                   std::string_view key) const;

    /// Sets a key's value. Changes the one line that holds the key, or adds one line at the end of
    /// the section (after its last line that is not blank), or adds the section at the end of the
    /// file. Every other byte stays; a new line ends as the file's lines do. A value that is in
    /// force already changes nothing. Raises 5 for names or a value that the format cannot hold: a
    /// line break or a NUL byte anywhere, an empty name, a "]" in a section name, a "=" in a key,
    /// a key that starts with ";" or "[".
    void setValue(std::string_view section, std::string_view key, std::string_view value);

  private:
    /// A section, or a key in one. All positions are offsets in the text.
    struct Entry {
        std::uint64_t hash;      ///< of parent and name
        std::size_t parent;      ///< where the key's section has its name; 0 for a section
        std::size_t nameBegin;   ///< first byte of the name, never 0
        std::size_t nameEnd;     ///< after the name
        std::size_t end;         ///< after a key's value, or after a section's last line that is
                                 ///< not blank
        std::size_t valueBegin;  ///< after a key's "="; a section has none
    };

    void parse();
    /// Adds a name that its parent does not have yet; tells whether it did.
    bool addEntry(std::size_t parent, std::string_view name, std::size_t end,
                  std::size_t valueBegin = {});
    void growIndex();
    [[nodiscard]] std::size_t slotOf(std::uint64_t hash, std::size_t parent,
                                     std::string_view name) const;
    [[nodiscard]] const Entry* find(std::size_t parent, std::string_view name) const;
    [[nodiscard]] std::string_view nameOf(const Entry& entry) const;
    [[nodiscard]] std::string_view valueOf(const Entry& key) const;
    void insertLines(std::size_t offset, const std::string& lines);

    std::string bytes_;
    std::vector<Entry> entries_;        ///< what counts, in the order of the text
    std::vector<std::uint32_t> index_;  ///< places in `entries_` by hash, at least half of it free
};

/// The pattern in which the program reads every setting: a buffer of `length` blanks is handed to
/// the profile call with `size` as its size. The call writes at most `size` - 1 characters and a
/// NUL; the buffer is then trimmed of blanks and its last character dropped. So a value is cut to
/// min(length, size) - 1 characters; a character is one of UTF-8, never a part of one.
struct SettingBuffer {
    int length;
    int size;
};

/// What the program gets to see of `value` through a buffer.
[[nodiscard]] std::string throughBuffer(std::string_view value, SettingBuffer buffer);

}  // namespace k520
