// StatementScanner: recognises common statements in one pass over the lexer's window. Internal.
//
// Most statements are short and have one of a few forms. The scanner creates no tokens for them: it
// finds names and values as places in the window, and interns the names. It recognises a statement
// only if the whole statement and the three tokens after it are buffered and valid. For any other
// statement it changes nothing, and the parser reads it token by token. So only the parser creates
// the messages about malformed text. Whenever the reader calls the scene, the source has been read
// as far as the parser would have read it: up to the end of the third token after the statement.
//
// Each byte is classified once: the three tokens after a statement are the first ones of the next
// statement, so their places are kept. This and the comparison in `name` save 10 % of the
// instructions of the benchmark nodes 100k.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include <vsa/foundation/string.h>
#include "vsa/lex/lexer.h"
#include "vsa/lex/token.h"

namespace zn::korvo_sdk::impl {

/// A statement of a common form. The views point into the window.
struct SimpleStatement {
  enum class Kind {
    Comment,      ///< `# text`
    Declaration,  ///< `type name;`, `type name:`
    Value,        ///< `node.input = literal;`, `.input = keyword(numbers);`
    Reference,    ///< `node.input = name;`, `.input = null;`
    Connection,   ///< `node.input |= name.output;`, `.input |= null;`
  };

  Kind kind = Kind::Comment;
  const char* begin = nullptr;  ///< The first character.
  const char* end = nullptr;    ///< One past the last character.
  std::size_t bytesAfter = 0;   ///< Buffered bytes after it.
  std::int32_t line = 0;        ///< Line of the last character.
  std::int32_t column = 0;

  String text;          ///< Comment: the text. Declaration: the type.
  String name;          ///< Declaration: the name.
  Token pathTokens[3];  ///< An assignment: node "." input. Without positions.
  bool isWith = false;  ///< The declaration ends in ":", or the path begins with ".".
  Token::Type valueType = Token::Type::Eof;  ///< Value: the type of its first token.
  std::string_view value;                    ///< Value: its first token as written.
  bool hasBackslash = false;                 ///< A string: whether it contains a backslash.
  /// Of a value `keyword(numbers)`: the numbers, separated by single blanks. The byte after them
  /// may be read.
  std::string_view list;
  std::string_view source;  ///< Reference: the node; empty for `null`. Connection: node or `null`.
  String output;            ///< Connection: the output; empty for `null`.

  SimpleStatement();
  bool isAssignment() const noexcept { return kind >= Kind::Value; }
  /// The tokens of the path: without the node if the path begins with ".".
  std::span<const Token> path() const noexcept { return std::span(pathTokens).subspan(isWith); }
};

class StatementScanner {
 public:
  /// Starts after `consumed`, the last token of a statement. `lexer` must have read three tokens
  /// after it.
  StatementScanner(Lexer& lexer, const Token& consumed) noexcept;

  /// Recognises the next statement. Returns false if it has no common form.
  bool scan(SimpleStatement& out);

  /// Moves the lexer to the end of the third token after a statement from `scan`.
  void accept(const SimpleStatement& statement) noexcept;

  /// Whether a statement was accepted.
  bool hasAccepted() const noexcept { return ahead_ != nullptr; }

  /// Whether the window is the same as after `accept`. It differs if the scene itself has read from
  /// the file.
  bool isWindowKept() const noexcept { return lexer_.windowBegin == ahead_; }

  /// Moves the lexer back to the end of the last accepted statement, and reads the next token into
  /// each of `tokens`. At most three: their bytes are buffered, so this calls no source.
  void readLookahead(ds::Vector<Token>& tokens);

  /// Moves line and column of the lexer to the end of the third token, too. `accept` leaves them.
  void skipLookahead() noexcept;

 private:
  // A token as a place in the window.
  struct Place {
    const char* begin = nullptr;
    const char* end = nullptr;
    Token::Type type = Token::Type::Eof;

    std::string_view text() const noexcept {
      return {begin, static_cast<std::size_t>(end - begin)};
    }
  };

  // Each function returns the end of what it read. It returns null if the text has another form, if
  // no buffered character follows, or if its argument is null.

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
  const char* last_ = nullptr;   // the last byte of the window
  const char* end_ = nullptr;    // the end of the last accepted statement
  const char* ahead_ = nullptr;  // the end of the third token after `end_`
  const char* first_ = nullptr;  // where the scanner started
  std::int32_t firstIndex_ = 0;  // `Lexer::index` at `first_`
  std::int32_t endLine_ = 0;     // position of the character before `end_`
  std::int32_t endColumn_ = 0;
  std::int32_t line_ = 0;         // the line that is scanned
  std::uintptr_t lineBegin_ = 0;  // the address of its first character
  Place next_[3];                 // the tokens after the last statement
  bool hasNext_ = false;          // false if one of them cannot be in a simple statement
};

}  // namespace zn::korvo_sdk::impl
