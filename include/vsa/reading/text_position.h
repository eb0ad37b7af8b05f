// Positions in a text. Offsets and columns count bytes. Two functions convert a column to the units
// of editors: characters or UTF-16 code units.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/api.h>

namespace vsa {

/// A place in a text. The offset counts bytes from 0. The line counts from 1. The column counts
/// bytes from 1. Only a line feed ends a line: a carriage return and a tab are one column each. The
/// byte order mark of a file is not part of the text.
struct TextPosition {
  std::uint64_t offset = 0;
  std::uint64_t line = 1;
  std::uint64_t column = 1;

  friend bool operator==(const TextPosition&, const TextPosition&) = default;
};

/// The bytes from `begin` up to, but not including, `end`. An empty range marks a place. In
/// most cases, something is missing there. `end.offset` is at most the length of the text.
struct TextRange {
  TextPosition begin;
  TextPosition end;

  friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// Converts a column in bytes to a column in characters (Unicode code points). Both count from 1.
/// `line` is the text of the line, without its line feed. The result is the column of the character
/// that contains the byte at `column`. A byte that is not part of valid UTF-8 counts as one
/// character. After the end of the line, each byte counts as one column. A column of 0 counts as 1.
VSA_API std::uint64_t columnInCharacters(std::string_view line, std::uint64_t column) noexcept;

/// Converts a column in bytes to a column in UTF-16 code units. Both count from 1. A character
/// above U+FFFF counts as two units. The other rules are those of columnInCharacters. The language
/// server protocol counts the same units from 0 by default.
VSA_API std::uint64_t columnInUtf16(std::string_view line, std::uint64_t column) noexcept;

}  // namespace vsa
