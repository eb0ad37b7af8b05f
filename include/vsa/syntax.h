// SyntaxReader and StatementReader: read the tokens and the statements of a text. Each token has a
// position and its unchanged bytes. The classes are for programs that check, format or edit a text.
// To get the scene of a text, use vsa::readText and the like.
//
//   vsa::StatementReader statements("sphere ball: .radius = 1.0;");
//   vsa::SyntaxStatement statement;
//   while (statements.next(statement)) use(statement.kind, statement.tokens);
//
// The tokens have the same boundaries as the tokens of vsa::readText. The text may be invalid: a
// byte that cannot begin a token, a list with an invalid byte, and a string or list without an end
// become tokens of the kinds Invalid and Unterminated. Between two tokens there are only white
// space and characters that the format skips like white space.
//
// A text is in memory or comes from a Source. For a Source, a SyntaxReader needs a buffer of 256
// KiB only: it returns a longer token in pieces. It does not call Source::error: a read that fails
// is the end of the text. A byte order mark is not skipped: its bytes are letters of the first
// word. The functions throw std::bad_alloc and the exceptions of the source, and no others.
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
  /// The end of the text, a token without bytes. The source has ended, or the next byte is 0xFF.
  EndOfText,
  /// A byte that cannot begin a token, or a list up to and including an invalid byte. vsa::readText
  /// stops here, but a SyntaxReader continues after the token.
  Invalid,
  /// A string or list that the end of the text cuts off.
  Unterminated,
  /// A name, a type or a keyword.
  Word,
  True,   ///< `true` in any letter case.
  False,  ///< `false` in any letter case.
  Null,   ///< `null` in any letter case.
  /// A "-" or a digit, and all characters after it that occur in numbers, such as `12`, `-3u`,
  /// `1e5` or `1-2`.
  Integer,
  /// The same with a period or one of the letters a, f, i and n in any letter case, such as `1.5`,
  /// `2f` or `-inf`.
  Real,
  String,       ///< A string, including its quotes and backslashes.
  Comment,      ///< A comment, from "#" up to the line end, but without the line end.
  Parens,       ///< `(...)`
  Braces,       ///< `{...}`
  Brackets,     ///< `[...]`
  Punctuation,  ///< One of these characters: . , : ; ' / \ = + * |
};

/// Returns the name of a kind in kebab case, such as "end-of-text". Returns "unknown" for any other
/// number. The result is never null.
VSA_API const char* name(SyntaxKind kind) noexcept;

/// A token, or a piece of a long one.
struct SyntaxToken {
  /// The kind of the token. If the token has several pieces, the kind of each piece depends only on
  /// the bytes up to the end of that piece. So a later piece can have another kind: an Integer can
  /// become a Real, and a list or string can become Invalid or Unterminated.
  SyntaxKind kind = SyntaxKind::EndOfText;
  /// Whether this is the first piece of its token. A token in one piece is both first and last.
  bool isFirst = true;
  /// Whether this is the last piece of its token. The last piece of a token can be empty.
  bool isLast = true;
  /// The bytes of the token or piece, as in the source.
  std::string_view text;
  /// The range of `text` in the source.
  TextRange range;
  /// The number of line feeds between the previous token (or the beginning of the text) and this
  /// one. It is 0 for all pieces after the first.
  std::uint64_t lineFeedsBefore = 0;

  /// Whether the token is the punctuation character `c`.
  bool is(char c) const noexcept {
    return kind == SyntaxKind::Punctuation && text.size() == 1 && text.front() == c;
  }
};

/// Reads a text, token by token.
class VSA_API SyntaxReader {
 public:
  /// Reads a text in memory. Each token is one piece, and SyntaxToken::text is a view into the
  /// text. The characters must exist unchanged as long as the reader or one of its tokens is used.
  explicit SyntaxReader(std::string_view text);
  /// Reads a source from its current position. The source must exist until the last call of `next`.
  /// SyntaxToken::text is valid until the next call.
  explicit SyntaxReader(Source& source);
  /// Move construction and move assignment. Do not call functions of a reader that was moved from:
  /// assign to it or destroy it.
  SyntaxReader(SyntaxReader&&) noexcept;
  SyntaxReader& operator=(SyntaxReader&&) noexcept;
  ~SyntaxReader();

  /// Returns the next token or piece. At the end of the text and in all later calls, returns
  /// EndOfText.
  SyntaxToken next();
  /// Reads the next token and returns true if it has the kind and the bytes of `token`, which a
  /// SyntaxReader has returned. This is faster than comparing the result of `next`. Otherwise reads
  /// nothing and returns false. Also returns false for equal tokens if they have several pieces or
  /// are Invalid or Unterminated, and if the next token is not in the buffer with the byte after
  /// it.
  bool skipIf(const SyntaxToken& token) noexcept;
  /// Whether a byte 0xFF ended the text. The result is valid after EndOfText.
  bool endedAtMark() const noexcept;
  /// Whether SyntaxToken::text stays valid after the next call: true for a text in memory.
  bool keepsText() const noexcept;

 private:
  friend class StatementReader;
  class VSA_LOCAL State;

  // Appends the tokens of the next statement. The text is in memory.
  VSA_LOCAL bool appendStatement(std::vector<SyntaxToken>& tokens, std::size_t maxTokens);

  std::unique_ptr<State> state_;
};

/// Consecutive characters of one list element.
struct ListPart {
  /// The characters.
  std::string_view text;
  /// Whether this part belongs to the same element as the previous part. In "((1)(2))" the parts 1
  /// and 2 are one element, 12. The boundary of two pieces of a token can also split an element.
  bool continues = false;
};

/// Splits a list token, `(...)` or `{...}`, into its elements as the parser converts them. White
/// space, commas and brackets of other kinds separate elements. Brackets of the list's own kind do
/// not. Neither does a comma, a bracket of another kind or a run of white space if a closing
/// bracket of the list's own kind follows directly: "((1,)2)" has one element, 12. The pieces of a
/// long token can be added one after another. An object reads one list.
///
///   vsa::ListReader list(token.text);
///   while (list.next(part)) use(part);
class VSA_API ListReader {
 public:
  /// A reader without a list. Add the first piece of one.
  ListReader() = default;
  /// Reads a list whose first piece is `first`.
  explicit ListReader(std::string_view first) noexcept { add(first); }

  /// Adds the first or the next piece of the list. Call it for a next piece only after `next`
  /// returned false. The piece must not change until `next` returns false again.
  void add(std::string_view piece) noexcept;
  /// Stores the next part in `out`. Returns false at the end of each piece and at the end of the
  /// list.
  bool next(ListPart& out) noexcept;

  /// Whether the normalized list ends with a blank after its last element. The result is true for
  /// "(1 , )" and false for "(1 )". It is valid at the end of the list.
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
  Block,        ///< `sphere ball:` The statements after it may begin with a period.
  Remove,       ///< `remove ball;`
  Define,       ///< `define settings;`
  Assignment,   ///< `ball.radius = 1.0;`, `.material = clay;`
  Connection,   ///< `ball.color |= dusk.outColor;`
  /// Any other statement, or a part of a long statement. vsa::readText stops at such a statement,
  /// except in one case: a number or tuple that does not convert stands before a valid reference or
  /// buffer, as in `ball.radius = 1-2 clay;`.
  Malformed,
};

/// Returns the name of a kind in kebab case, such as "assignment". Returns "unknown" for any other
/// number. The result is never null.
VSA_API const char* name(StatementKind kind) noexcept;

/// A statement: all tokens up to a semicolon or a colon, or one comment that is not inside a
/// statement. A statement is Malformed if there is a comment inside it, or if the text ends inside
/// it. The reader splits a long statement, so that its memory is limited: after 65536 tokens, and
/// for a text from a Source also after 16 MiB of stored characters. Of a long token, only the first
/// piece is stored, so a long list does not split its statement. Each part is Malformed.
struct SyntaxStatement {
  /// The kind of the statement.
  StatementKind kind = StatementKind::Malformed;
  /// The tokens. Of a token in several pieces, only the text of the first piece is stored, with the
  /// kind and the range of the whole token.
  std::vector<SyntaxToken> tokens;
  /// The range from the first token to the last one, with all pieces of these tokens.
  TextRange range;
  /// The index of the first token after the "=" of an Assignment or Connection. It is 0 for any
  /// other kind.
  std::size_t valueIndex = 0;
};

/// Reads a text, statement by statement. It needs memory for the tokens of one statement. Of a long
/// token, it stores only the first piece.
class VSA_API StatementReader {
 public:
  /// Reads a text in memory, or a source. See SyntaxReader.
  explicit StatementReader(std::string_view text) : reader_(text) {}
  explicit StatementReader(Source& source) : reader_(source) {}

  /// Stores the next statement in `out`. Returns false at the end of the text. If the text is in
  /// memory, the tokens refer to the text. If the text is from a source, the tokens are valid until
  /// the next call.
  bool next(SyntaxStatement& out);
  /// Whether a byte 0xFF ended the text. See SyntaxReader.
  bool endedAtMark() const noexcept { return reader_.endedAtMark(); }

 private:
  bool readTokens(std::vector<SyntaxToken>& tokens);
  void keepTexts(SyntaxStatement& out);

  SyntaxReader reader_;
  bool isInside_ = false;  // whether the last statement was a part of a longer one that continues
  std::string kept_;       // the characters of the tokens, if the text is from a source
};

}  // namespace vsa
