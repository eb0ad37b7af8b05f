// The tokens and statements of a text: each token with its bytes, unchanged, and its position. For
// programs that check, format or edit a text. vsa::readText and the like read its scene.
//
//   vsa::StatementReader statements("sphere ball: .radius = 1.0;");
//   vsa::SyntaxStatement statement;
//   while (statements.next(statement)) use(statement.kind, statement.tokens);
//
// The tokens are those of the reader, with the same boundaries. A text need not be valid: bytes
// that the reader rejects are a token of the kind Invalid or Unterminated. Only white space, and
// characters that the format skips like white space, are between two tokens.
//
// A text is in memory, or comes from a Source and needs memory for one token only, 256 KiB at most:
// a longer token is delivered in pieces. The functions throw std::bad_alloc and what the source
// throws, and nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/read.h>
#include <vsa/reading/text_position.h>

namespace vsa {

/// The kind of a token.
enum class SyntaxKind : std::uint8_t {
  /// A token without bytes: the source has ended, or a byte 0xFF ends the text.
  EndOfText,
  /// A byte that begins no token; or a list up to and including the first byte that a list may not
  /// contain. The reader stops there; a SyntaxReader continues after it.
  Invalid,
  /// A string or list that the end of the text cuts off.
  Unterminated,
  /// A name, a type or a keyword.
  Word,
  True,   ///< `true` in any letter case.
  False,  ///< `false` in any letter case.
  Null,   ///< `null` in any letter case.
  Integer,
  Real,
  String,       ///< A string with its quotes and backslashes.
  Comment,      ///< A comment, from "#" to the end of the line, without the line end.
  Parens,       ///< `(...)`
  Braces,       ///< `{...}`
  Brackets,     ///< `[...]`
  Punctuation,  ///< One of . , : ; ' / \ = + * and the vertical bar.
};

/// The name of a kind in kebab case, such as "end-of-text". Never null; "unknown" for a value that
/// is not in the enumeration.
VSA_API const char* name(SyntaxKind kind) noexcept;

/// A token, or a piece of a long one.
struct SyntaxToken {
  /// The kind. For a piece that is not the last one, the kind of the token so far: an integer may
  /// become a real, and a list or string may become Invalid or Unterminated.
  SyntaxKind kind = SyntaxKind::EndOfText;
  /// Whether this piece begins a token, and whether it ends one. Both are true for a token in one
  /// piece. If a token has several pieces, the last one may have no bytes.
  bool isFirst = true;
  bool isLast = true;
  /// The bytes of the token or piece, as in the source.
  std::string_view text;
  /// The range of `text` in the source.
  TextRange range;
  /// The number of line feeds between the previous token and this one; 0 for a piece that is not
  /// the first.
  std::uint64_t lineFeedsBefore = 0;

  /// Whether the token is this punctuation character.
  bool is(char c) const noexcept {
    return kind == SyntaxKind::Punctuation && text.size() == 1 && text.front() == c;
  }
};

/// Reads a text token by token.
class VSA_API SyntaxReader {
 public:
  /// Reads a text in memory, which must not change. Each token is one piece, and its text refers to
  /// the text.
  explicit SyntaxReader(std::string_view text);
  /// Reads a source from its current position. The source must outlive the last call of `next`. The
  /// text of a token is valid until the next call.
  explicit SyntaxReader(Source& source);
  /// A reader that was moved from may only be assigned to or destroyed.
  SyntaxReader(SyntaxReader&&) noexcept;
  SyntaxReader& operator=(SyntaxReader&&) noexcept;
  ~SyntaxReader();

  /// The next token or piece; EndOfText at the end, also in all later calls.
  SyntaxToken next();
  /// Whether a byte 0xFF ended the text. Known after EndOfText.
  bool endedAtMark() const noexcept;
  /// Whether the texts of tokens stay valid after the next call.
  bool keepsText() const noexcept;

 private:
  friend class StatementReader;
  class VSA_LOCAL State;

  // Appends the tokens of a statement of a text in memory.
  VSA_LOCAL bool appendStatement(std::vector<SyntaxToken>& tokens, std::size_t maxTokens);

  std::unique_ptr<State> state_;
};

/// A part of a list element: consecutive characters of it.
struct ListPart {
  std::string_view text;
  /// Whether this part continues the element of the previous part: in "((1)(2))", 1 and 2 are one
  /// element, 12. An element can also be split between two pieces of a token.
  bool continues = false;
};

/// Splits a list token, `(...)` or `{...}`, into the elements that the reader converts. White
/// space, commas and brackets of other kinds separate elements; brackets of the list's own kind do
/// not. Accepts the pieces of a token one after another.
///
///   vsa::ListReader list(token.text);
///   while (list.next(part)) use(part);
class VSA_API ListReader {
 public:
  ListReader() = default;
  /// Begins with the first piece of a list.
  explicit ListReader(std::string_view first) noexcept { add(first); }

  /// Continues with another piece, after `next` returned false. The piece must not change until
  /// `next` returns false again.
  void add(std::string_view piece) noexcept;
  /// Stores the next part. Returns false at the end of the piece and at the end of the list.
  bool next(ListPart& out) noexcept;

  /// Whether the normalized list of the reader ends in a blank after the last element. This is true
  /// for "(1 , )" and false for "(1 )". Valid at the end of the list.
  bool endsInBlank() const noexcept { return last_ == Last::Blank; }

 private:
  enum class Last : std::uint8_t { Nothing, Open, Blank, Number };
  enum class Pending : std::uint8_t { No, AfterWhite, AfterSeparator };
  void skipOther(char c) noexcept;

  const char* at_ = nullptr;
  const char* end_ = nullptr;
  Last last_ = Last::Nothing;
  Pending pending_ = Pending::No;
  char open_ = 0;
  char close_ = 0;
};

/// The kind of a statement.
enum class StatementKind : std::uint8_t {
  Comment,      ///< `# text`
  Declaration,  ///< `sphere ball;`
  Block,        ///< `sphere ball:`; the statements after it may begin with a dot.
  Remove,       ///< `remove ball;`
  Define,       ///< `define settings;`
  Assignment,   ///< `ball.radius = 1.0;`, `.material = clay;`
  Connection,   ///< `ball.color |= dusk.outColor;`
  Malformed,    ///< None of these. The reader stops at such a statement.
};

/// The name of a kind in kebab case, such as "assignment". Never null; "unknown" for a value that
/// is not in the enumeration.
VSA_API const char* name(StatementKind kind) noexcept;

/// A statement: the tokens up to the semicolon or colon, or a comment before a statement. A comment
/// inside a statement is one of its tokens and makes the statement Malformed. The end of the text
/// inside a statement also makes it Malformed. A statement of more than 65536 tokens, or of 16 MiB
/// of names, is delivered in parts, which are Malformed. This limits the memory that a text can
/// use.
struct SyntaxStatement {
  StatementKind kind = StatementKind::Malformed;
  /// The tokens. A long token is represented by its first piece only.
  std::vector<SyntaxToken> tokens;
  /// The range from the first token to the last one.
  TextRange range;
  /// For Assignment and Connection: the index of the first token after the "=".
  std::size_t valueIndex = 0;
};

/// Reads a text statement by statement. Needs memory for the tokens of one statement; for a long
/// token, only for its first piece.
class VSA_API StatementReader {
 public:
  /// See SyntaxReader.
  explicit StatementReader(std::string_view text) : reader_(text) {}
  explicit StatementReader(Source& source) : reader_(source) {}

  /// Stores the next statement. Returns false at the end of the text. If the text is in memory, the
  /// tokens refer to it; otherwise they are valid until the next call.
  bool next(SyntaxStatement& out);
  /// See SyntaxReader.
  bool endedAtMark() const noexcept { return reader_.endedAtMark(); }

 private:
  bool readTokens(std::vector<SyntaxToken>& tokens);
  void keepTexts(SyntaxStatement& out);

  SyntaxReader reader_;
  bool isInside_ = false;  // the last statement was a part of a longer one that continues
  std::string kept_;       // the texts of the tokens, if the text is not in memory
};

}  // namespace vsa
