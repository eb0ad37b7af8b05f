// Positions in a text: offsets and columns in bytes, and their conversion to characters and UTF-16
// code units, as editors count them.
#pragma once

#include <cstdint>
#include <string_view>

#include <vsa/foundation/api.h>

namespace vsa {

/// A place in a text. Offsets count bytes from 0. Lines count from 1. Columns count bytes from 1.
/// Only the line feed ends a line: a carriage return and a tab are one column each. The byte order
/// mark of a file is not part of the text.
struct TextPosition {
  std::uint64_t offset = 0;
  std::uint64_t line = 1;
  std::uint64_t column = 1;

  friend bool operator==(const TextPosition&, const TextPosition&) = default;
};

/// The bytes from `begin` up to, but not including, `end`. An empty range is a place where
/// something is missing. The range is inside the text: `end.offset` is at most the length of the
/// text.
struct TextRange {
  TextPosition begin;
  TextPosition end;

  friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// The column, counted in characters (Unicode code points) from 1, of the character that contains
/// the byte in `column`. `line` is the text of the line, without its line feed. A byte that is not
/// part of valid UTF-8 counts as one character. After the end of the line, each byte counts as one
/// column. A column of 0 counts as 1.
VSA_API std::uint64_t columnInCharacters(std::string_view line, std::uint64_t column) noexcept;

/// The same column in UTF-16 code units, counted from 1 (the language server protocol counts these
/// units by default, from 0): a character above U+FFFF counts as two.
VSA_API std::uint64_t columnInUtf16(std::string_view line, std::uint64_t column) noexcept;

}  // namespace vsa
