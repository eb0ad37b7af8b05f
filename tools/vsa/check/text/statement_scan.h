// Functions that find the beginning and the end of statements in texts that may be wrong. They do
// not create tokens.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vsa_tools {

/// A statement or a comment: the bytes from `begin` (inclusive) to `end` (exclusive).
struct Statement {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool isComment = false;
  /// The character that ends the statement: ';' or ':'. In a wrong text, the ':' may be inside what
  /// was meant as one statement, as in ".power: 2.5;". 0 for a comment, also one of another format,
  /// and if the text or the part to search ends without such a character.
  char terminator = 0;
};

/// Returns the first statement or comment that begins at `from` or later. If there is none, returns
/// an empty statement at the end of the text. A `;` ends a statement even in a list. A `:` or `;`
/// in a string or comment does not. A comment of another format, such as "// text", is a statement.
/// If a statement that begins before `limit` does not end before it, its end is there, and its
/// terminator is 0.
Statement nextStatement(std::string_view text, std::size_t from,
                        std::size_t limit = std::string_view::npos);

/// Returns whether a conflict marker begins at `at`: a line such as "<<<<<<< HEAD", which a merge
/// of two versions leaves in a file.
bool isConflictMarker(std::string_view text, std::size_t at);

/// Returns whether the line at `at` is likely to begin with a declaration or an assignment. `at` is
/// the offset of the first byte of the line. For an empty line, the result is that of the next line
/// with text.
bool looksLikeStatement(std::string_view text, std::size_t at);

/// Returns the offset at which to continue after a mistake in `statement`. That is the next line in
/// `statement` that probably begins another statement, or else the end of `statement`. Such a line
/// may be inside `statement` because a string or list is not closed, or a semicolon is missing.
std::size_t resumePoint(std::string_view text, const Statement& statement);

/// Returns the offset of the opening quote of the string before `offset` if that string was
/// probably not closed: it begins in an earlier line, one of its lines looks like a statement, and
/// its end is in the statement and the line that contain `offset`, at most 256 bytes before it. The
/// byte at `offset` must not be in a string.
std::optional<std::size_t> openStringBefore(std::string_view text, std::size_t offset);

/// Returns the offsets of the semicolons in the list in parentheses or braces that begins at
/// `open`, such as "(1 0; 0 1)". Returns nothing if the list has anything but numbers, separators,
/// brackets and semicolons, or if its end is missing or far from the first semicolon: the list was
/// then probably not closed before the semicolon.
std::vector<std::size_t> semicolonsInList(std::string_view text, std::size_t open);

/// Returns the offset after the name that begins at `at`, or `at` if no name begins there.
std::size_t endOfName(std::string_view text, std::size_t at);
/// Returns the offset after the string that begins at `at`, or the size of the text if it is not
/// closed.
std::size_t endOfString(std::string_view text, std::size_t at);
/// Returns the offset after the path that begins at `at`: names, periods and indices.
/// An index ends at its bracket or before a `;`. If it has no end in the next 4096 bytes, returns
/// the size of the text.
std::size_t endOfPath(std::string_view text, std::size_t at);
/// Returns the name before `end`, or an empty text if there is none. There may be white space
/// between the name and `end`. The result may begin with a digit.
std::string_view nameBefore(std::string_view text, std::size_t end);
/// Returns the offset of the first byte from `at` on that is neither white space nor a control
/// character, or the size of the text if there is none.
std::size_t skipBlanks(std::string_view text, std::size_t at);

}  // namespace vsa_tools
