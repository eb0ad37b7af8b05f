// Finds where statements begin and end, in texts that may be wrong. The functions recognise less
// than the reader: strings, lists, comments, and the characters that end a statement.
#pragma once

#include <cstddef>
#include <string_view>

namespace vsa_tools {

/// The bytes from `begin` up to and without `end`.
struct Statement {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool isComment = false;
  /// The character that ends the statement: ';', or ':' after a declaration or `with`. 0 if the
  /// text ends first, and for a comment.
  char terminator = 0;
};

/// The first statement that begins at `from` or later. Empty, at the end of the text, if there is
/// none. A `;` ends a statement even if a list was not closed before it.
Statement nextStatement(std::string_view text, std::size_t from);

/// Whether a statement is likely to begin at `at`, the first byte of a line: a declaration or an
/// assignment.
bool looksLikeStatement(std::string_view text, std::size_t at);

/// Where to continue after a mistake in `statement`. A string, a list or the statement may have no
/// end, so this is the next line that looks like the beginning of a statement; without one, the end
/// of `statement`.
std::size_t resumePoint(std::string_view text, const Statement& statement);

/// The end of the name that begins at `at`; `at` if no name begins there.
std::size_t endOfName(std::string_view text, std::size_t at);
/// The name before `end`, with or without white space between them; empty if there is none.
std::string_view nameBefore(std::string_view text, std::size_t end);
/// The first byte from `at` on that is no white space.
std::size_t skipBlanks(std::string_view text, std::size_t at);

}  // namespace vsa_tools
