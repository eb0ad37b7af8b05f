// SyntaxReader: finds the tokens of a text in a window of bytes, with a TokenScanState.
#include <algorithm>
#include <cstring>
#include <span>

#include <vsa/foundation/char_class.h>
#include <vsa/syntax.h>
#include "foundation/base/block_size.h"
#include "syntax/statement_tokens.h"
#include "syntax/token_scan_state.h"
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/token_scan.h"

namespace vsa {

namespace {

namespace char_class = zn::char_class;
namespace lex = zn::korvo_sdk::impl;

constexpr std::size_t BUFFER_BYTES = zn::detail::blockBytes(256 << 10);
constexpr int END_MARK = 0xFF;  // an int, because std::memchr takes one

/// Whether a token of this kind continues if the byte `c` follows it. Strings, lists and single
/// characters end with their last byte.
bool continues(SyntaxKind kind, char c) {
  if (kind == SyntaxKind::Comment) return c != '\n' && c != '\r';
  if (kind == SyntaxKind::Integer || kind == SyntaxKind::Real) {
    return char_class::is(c, char_class::NUMBER);
  }
  return kind < SyntaxKind::Integer && char_class::is(c, char_class::NAME);
}

}  // namespace

class SyntaxReader::State {
 public:
  explicit State(std::string_view text) { extend(text.data(), text.size()); }
  explicit State(Source& source)
      : source_(&source), buffer_(std::make_unique<char[]>(BUFFER_BYTES)) {
    window_ = begin_ = at_ = end_ = buffer_.get();
  }

  /// Reads the next token or piece, and sets all members of `out`.
  void next(SyntaxToken& out);
  bool skipIf(const SyntaxToken& token) noexcept;
  bool appendStatement(std::vector<SyntaxToken>& tokens, std::size_t maxTokens);
  bool endedAtMark() const noexcept { return endedAtMark_; }
  bool keepsText() const noexcept { return source_ == nullptr; }

 private:
  void nextPiece(SyntaxToken& out, bool isFirst);
  void endOfText(SyntaxToken& out) const noexcept;
  std::uint64_t skipBufferedWhite() noexcept;
  std::uint64_t skipWhite();
  bool refill();
  void extend(const char* bytes, std::size_t count) noexcept;
  std::uint64_t offsetOf(const char* at) const noexcept {
    return windowOffset_ + static_cast<std::uint64_t>(at - window_);
  }
  // The position of a byte in the line of `begin_`.
  TextPosition positionOf(const char* at) const noexcept {
    const std::uint64_t offset = offsetOf(at);
    return {offset, line_, offset - lineBegin_ + 1};
  }
  bool shortToken(SyntaxToken& out) noexcept;
  void piece(SyntaxToken& out, bool isFirst);
  void moveTo(const char* to, const lex::LineFeeds& feeds) noexcept;

  Source* source_ = nullptr;  // the source of the text; null for a text in memory
  std::unique_ptr<char[]> buffer_;
  // Whether the source has ended, or a byte 0xFF has ended the text. Always true for a text in
  // memory.
  bool isEnded_ = false;
  bool endedAtMark_ = false;

  // The window: [begin_, end_). The bytes before `begin_` were returned in tokens or skipped. The
  // bytes before `at_` were scanned.
  const char* begin_ = nullptr;
  const char* at_ = nullptr;
  const char* end_ = nullptr;

  // A byte of the text, and its offset in the text. All offsets are computed from it.
  const char* window_ = nullptr;
  std::uint64_t windowOffset_ = 0;
  // The line of `begin_`, and the offset of its beginning.
  std::uint64_t line_ = 1;
  std::uint64_t lineBegin_ = 0;

  impl::TokenScanState token_;
  bool isInside_ = false;  // whether more pieces of the current token follow
};

SyntaxReader::SyntaxReader(std::string_view text) : state_(std::make_unique<State>(text)) {
}
SyntaxReader::SyntaxReader(Source& source) : state_(std::make_unique<State>(source)) {
}
SyntaxReader::SyntaxReader(SyntaxReader&&) noexcept = default;
SyntaxReader& SyntaxReader::operator=(SyntaxReader&&) noexcept = default;
SyntaxReader::~SyntaxReader() = default;

SyntaxToken SyntaxReader::next() {
  SyntaxToken token;
  state_->next(token);
  return token;
}

bool SyntaxReader::skipIf(const SyntaxToken& token) noexcept {
  return state_->skipIf(token);
}

bool SyntaxReader::appendStatement(std::vector<SyntaxToken>& tokens, std::size_t maxTokens) {
  return state_->appendStatement(tokens, maxTokens);
}

bool SyntaxReader::endedAtMark() const noexcept {
  return state_->endedAtMark();
}

bool SyntaxReader::keepsText() const noexcept {
  return state_->keepsText();
}

// Adds the bytes after the window to the window, up to a byte 0xFF.
void SyntaxReader::State::extend(const char* bytes, std::size_t count) noexcept {
  const void* const mark = count != 0 ? std::memchr(bytes, END_MARK, count) : nullptr;
  if (window_ == nullptr) window_ = begin_ = at_ = end_ = bytes;
  end_ = mark != nullptr ? static_cast<const char*>(mark) : bytes + count;
  endedAtMark_ = mark != nullptr;
  isEnded_ = source_ == nullptr || mark != nullptr || count == 0;
}

// Reads bytes of the source and adds them to the window. Returns false without reading if the text
// has ended (see isEnded_) or the buffer is full.
bool SyntaxReader::State::refill() {
  if (isEnded_) return false;
  const auto kept = static_cast<std::size_t>(end_ - begin_);
  if (kept == BUFFER_BYTES) return false;
  char* const buffer = buffer_.get();
  if (kept != 0 && begin_ != buffer) std::memmove(buffer, begin_, kept);
  windowOffset_ = offsetOf(begin_);
  at_ = buffer + (at_ - begin_);
  begin_ = buffer;
  end_ = buffer + kept;
  const std::size_t capacity = BUFFER_BYTES - kept;
  extend(end_, std::min(source_->read(std::span(buffer + kept, capacity)), capacity));
  return true;
}

// Moves `begin_` to `to`, and updates its line. `feeds` contains the line feeds before `to`.
void SyntaxReader::State::moveTo(const char* to, const lex::LineFeeds& feeds) noexcept {
  if (feeds.count != 0) {
    line_ += feeds.count;
    lineBegin_ = offsetOf(feeds.last + 1);
  }
  begin_ = to;
}

// Skips the white space in the window, and returns the number of line feeds in it. skipWhite() does
// the same, but also refills the window.
inline std::uint64_t SyntaxReader::State::skipBufferedWhite() noexcept {
  lex::LineFeeds skipped{0, nullptr};
  for (; at_ < end_ && char_class::is(*at_, char_class::WHITE); ++at_) {
    if (*at_ != '\n') continue;
    ++skipped.count;
    skipped.last = at_;
  }
  moveTo(at_, skipped);
  return skipped.count;
}

inline std::uint64_t SyntaxReader::State::skipWhite() {
  std::uint64_t feeds = skipBufferedWhite();
  while (at_ == end_ && refill()) feeds += skipBufferedWhite();
  return feeds;
}

// Reads a word, a number or a single character whose end is in the window. Returns false for any
// other token.
//
// Most tokens of a scene are of these kinds. Reading the tokens of 19 MB of small nodes from a
// source takes 480 million instructions, and 740 million without this function (benchmark
// format/tokens/nodes). Reading the statements of 100 scenes of 7 KB in memory takes 21 million. It
// takes 36 million without this function and appendStatement(), and 49 million with vsa::readText.
inline bool SyntaxReader::State::shortToken(SyntaxToken& out) noexcept {
  const lex::Token::Type first = lex::firstOf(*at_);
  const char* end = at_ + 1;
  if (lex::isOneCharacter(first)) {
    out.kind = SyntaxKind::Punctuation;
  } else {
    if (first == lex::Token::Type::Id) {
      end = lex::endOfName(end, end_);
      out.kind = impl::kindOfWord({begin_, static_cast<std::size_t>(end - begin_)});
    } else if (first == lex::Token::Type::Int) {
      const lex::NumberEnd number = lex::endOfNumber(end, end_);
      end = number.at;
      out.kind = number.isReal ? SyntaxKind::Real : SyntaxKind::Integer;
    } else {
      return false;
    }
    if (end == end_ && !isEnded_) return false;
  }
  const auto size = static_cast<std::size_t>(end - begin_);
  const TextPosition begin = positionOf(begin_);
  out.isFirst = out.isLast = true;
  out.text = {begin_, size};
  out.range = {begin, {begin.offset + size, begin.line, begin.column + size}};
  begin_ = at_ = end;
  return true;
}

void SyntaxReader::State::piece(SyntaxToken& out, bool isFirst) {
  out.kind = token_.kind();
  out.isFirst = isFirst;
  out.isLast = token_.isOver();
  out.text = {begin_, static_cast<std::size_t>(at_ - begin_)};
  out.range.begin = positionOf(begin_);
  const bool mayHaveFeeds = token_.mayHaveLineFeeds();
  moveTo(at_, mayHaveFeeds ? lex::countLineFeeds(begin_, at_) : lex::LineFeeds{0, nullptr});
  out.range.end = positionOf(begin_);
  if (out.kind == SyntaxKind::Word && isFirst && out.isLast) out.kind = impl::kindOfWord(out.text);
}

void SyntaxReader::State::endOfText(SyntaxToken& out) const noexcept {
  out.kind = SyntaxKind::EndOfText;
  out.isFirst = out.isLast = true;
  out.text = {};
  out.range = {positionOf(begin_), positionOf(begin_)};
}

// Sets `out` to the next token, or to the next piece of a token. A token of a text in memory always
// has one piece.
inline void SyntaxReader::State::next(SyntaxToken& out) {
  if (isInside_) {
    out.lineFeedsBefore = 0;
    nextPiece(out, false);
    return;
  }
  out.lineFeedsBefore = skipWhite();
  if (at_ == end_) {
    endOfText(out);
  } else if (!shortToken(out)) {
    token_.begin(*at_++);
    nextPiece(out, true);
  }
}

// Compares bytes, and scans nothing but white space. The same bytes are the same token if the byte
// after them does not continue it. With this function instead of next(), `vsa fmt -i` of 250 MB of
// small nodes takes 1.78 s instead of 1.92 s. The benchmark is the row "fmt -i changed, nodes" of
// `./dev bench --format`.
inline bool SyntaxReader::State::skipIf(const SyntaxToken& token) noexcept {
  if (isInside_ || !token.isFirst || !token.isLast || token.text.empty()) return false;
  if (token.kind <= SyntaxKind::Unterminated) return false;
  const char* at = at_;
  while (at < end_ && char_class::is(*at, char_class::WHITE)) ++at;
  const std::size_t size = token.text.size();
  if (static_cast<std::size_t>(end_ - at) <= size) return false;
  if (std::memcmp(at, token.text.data(), size) != 0) return false;
  at += size;
  if (continues(token.kind, *at)) return false;
  moveTo(at, lex::countLineFeeds(begin_, at));
  at_ = at;
  return true;
}

void SyntaxReader::State::nextPiece(SyntaxToken& out, bool isFirst) {
  do {
    if (!token_.isOver()) at_ = token_.advance(at_, end_);
  } while (!token_.isOver() && refill());
  if (isEnded_ && at_ == end_) token_.endText();
  isInside_ = !token_.isOver();
  piece(out, isFirst);
}

// Appends the tokens of a statement of a text in memory. Returns whether it has reached the end of
// the statement or of the text.
bool SyntaxReader::State::appendStatement(std::vector<SyntaxToken>& tokens, std::size_t maxTokens) {
  do {
    SyntaxToken& token = tokens.emplace_back();
    next(token);
    if (token.kind == SyntaxKind::EndOfText) {
      tokens.pop_back();
      return true;
    }
    const bool isComment = tokens.front().kind == SyntaxKind::Comment;
    if (isComment || token.is(';') || token.is(':')) return true;
  } while (tokens.size() < maxTokens);
  return false;
}

}  // namespace vsa
