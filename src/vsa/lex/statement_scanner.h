// StatementScanner: recognises common statements in one pass over the lexer's window. Internal.
//
// Most statements are short and have one of a few forms. The scanner creates no tokens for these
// statements, which saves 63 % of the time of the benchmark nodes 100k and 53 % of links 100k. It
// finds their names and values in the window and interns most names. It recognises a statement only
// if the whole statement and the three tokens after it are buffered, and if these tokens are words,
// single characters or comments. Otherwise the lexer stays at its position, and the parser reads
// the statement token by token. All messages about malformed text therefore come from the parser.
//
// When the scene is called, the source is at the same position as if the parser had read the
// statement: at the end of the third token after the statement.
//
// The scanner classifies nearly every byte only once. It stores the places of the three tokens
// after a statement, because they are the first tokens of the next statement. This and the
// comparison in `name` save 10 % of the instructions of the benchmark nodes 100k.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <vsa/foundation/string.h>
#include "vsa/lex/lexer.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// A scalar literal. Its views point into the text or, for `true` and `false`, to constants.
struct ScalarLiteral {
  Token::Type type = Token::Type::Eof;  ///< The type of the first token: Id for a typed tuple.
  /// The first token as written, but `true` and `false` in lower case.
  std::string_view text;
  /// For a typed tuple: the numbers, separated by single blanks. The byte after the numbers is
  /// readable, as parseTuple requires.
  std::string_view list;
  bool hasBackslash = true;    ///< For a string: whether it may contain a backslash.
  std::size_t bytesAfter = 0;  ///< At least this many bytes after the literal are readable.
};

/// A statement of a common form. Its views point into the window or, for the words `true`, `false`
/// and `null`, to constants.
struct SimpleStatement {
  enum class Kind {
    Comment,      ///< `# text`
    Declaration,  ///< `type name;`, `type name:`
    Value,        ///< `node.input = literal;`, `.input = keyword(numbers);`
    Reference,    ///< `node.input = name;`, `.input = null;`
    Connection,   ///< `node.input |= name.output;`, `.input |= null;`
  };

  Kind kind = Kind::Comment;
  const char* end = nullptr;  ///< One past the last character.
  std::int32_t line = 0;      ///< Line of the last character.
  std::int32_t column = 0;

  String text;  ///< For a comment: the text. For a declaration: the type.
  String name;  ///< For a declaration: the name.
  /// For an assignment: node "." input, without positions.
  Token pathTokens[3] = {
      {Token::Type::Id, {}}, {Token::Type::Dot, String('.')}, {Token::Type::Id, {}}};
  /// For a declaration: whether it ends in ":". For an assignment: whether the path begins with
  /// ".".
  bool isWith = false;
  ScalarLiteral literal;  ///< For a value.
  /// For a reference: the node, or empty for `null`. For a connection: the node, or "null".
  std::string_view source;
  String output;  ///< For a connection: the output. Empty for `null`.

  bool isAssignment() const noexcept { return kind >= Kind::Value; }
  /// The tokens of the path. If the path begins with ".", the first token is the ".".
  std::span<const Token> path() const noexcept { return std::span(pathTokens).subspan(isWith); }
};

class StatementScanner {
 public:
  /// Starts after `consumed`, the last token of a statement. `lexer` must have read the three
  /// tokens after `consumed`.
  StatementScanner(Lexer& lexer, const Token& consumed) noexcept;

  /// Recognises the next statement. Returns false if the statement has no common form, or if the
  /// three tokens after it are not as described above. `out` may then be changed.
  bool scan(SimpleStatement& out);

  /// Moves the window of the lexer to the end of the third token after `statement`, which must be
  /// from `scan`. Changes nothing else in the lexer, such as its line and its lookahead.
  void accept(const SimpleStatement& statement) noexcept;

  /// Whether a statement was accepted.
  bool hasAccepted() const noexcept { return ahead_ != nullptr; }

  /// Whether the window is the same as after `accept`. The window changes if the scene itself reads
  /// from the file.
  bool isWindowKept() const noexcept { return lexer_.windowBegin == ahead_; }

  /// Moves the lexer back to the end of the last accepted statement. Then reads the tokens after
  /// that statement into the elements of `tokens`, of which there are at most three. The bytes of
  /// these tokens are buffered, so the function does not read from the source.
  void readLookahead(ds::Vector<Token>& tokens);

  /// Moves the lexer, including its line and column, to the end of the third token after the last
  /// accepted statement.
  void skipLookahead() noexcept;

 private:
  // The place of a token in the window.
  struct Place {
    const char* begin = nullptr;
    const char* end = nullptr;
    Token::Type type = Token::Type::Eof;

    std::string_view text() const noexcept {
      return {begin, static_cast<std::size_t>(end - begin)};
    }
  };

  // Each function returns the end of what it recognised or skipped. It returns null if the text has
  // another form, if the character after the form is not buffered, or if its argument is null.

  const char* statement(SimpleStatement& out);
  const char* comment(SimpleStatement& out);
  const char* named(SimpleStatement& out);
  const char* declaration(SimpleStatement& out);
  const char* assignment(const Place& input, const char* sign, SimpleStatement& out);
  const char* value(const char* at, SimpleStatement& out);
  const char* word(const char* at, SimpleStatement& out);
  const char* connection(const char* at, SimpleStatement& out);
  const char* output(const char* at, String& out);
  const char* endOfWord(const char* at) const noexcept;
  const char* skip(const char* at, char c) noexcept;
  const char* skipWhite(const char* at) noexcept;

  bool name(const Place& place, String& out);
  bool readNext(const char* at) noexcept;
  void pass(const LineFeeds& feeds) noexcept;
  void moveToEnd() noexcept;
  void moveBack() noexcept;

  Lexer& lexer_;
  // The last byte of the window.
  const char* last_ = nullptr;
  // The end of the last accepted statement.
  const char* end_ = nullptr;
  // The end of the third token after `end_`.
  const char* ahead_ = nullptr;
  // The position where the scanner started.
  const char* first_ = nullptr;
  // The value of `Lexer::index` at `first_`.
  std::int32_t firstIndex_ = 0;
  // The line and column of the character before `end_`.
  std::int32_t endLine_ = 0;
  std::int32_t endColumn_ = 0;
  // The line at the scanned position.
  std::int32_t line_ = 0;
  // The address of the first character of that line. It is a number and not a pointer, because this
  // character may be before the buffered bytes.
  std::uintptr_t lineBegin_ = 0;
  // The three tokens after the last recognised statement.
  Place next_[3];
  // False if one of these tokens is not buffered, or is not a word, a single character or a
  // comment.
  bool hasNext_ = false;
};

}  // namespace zn::korvo_sdk::impl
