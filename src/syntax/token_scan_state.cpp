#include "syntax/token_scan_state.h"

#include <vsa/foundation/char_class.h>
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/token_scan.h"

namespace vsa::impl {

namespace {

namespace char_class = zn::char_class;
namespace lex = zn::korvo_sdk::impl;
using Type = lex::Token::Type;

SyntaxKind kindOf(Type first) {
  switch (first) {
    case Type::Str:
      return SyntaxKind::String;
    case Type::Comment:
      return SyntaxKind::Comment;
    case Type::Parens:
      return SyntaxKind::Parens;
    case Type::Braces:
      return SyntaxKind::Braces;
    case Type::Brackets:
      return SyntaxKind::Brackets;
    case Type::Int:
      return SyntaxKind::Integer;
    case Type::Id:
      return SyntaxKind::Word;
    case Type::Invalid:
      return SyntaxKind::Invalid;
    default:
      return SyntaxKind::Punctuation;
  }
}

#if defined(__SSE2__)
/// Whether all 16 bytes are of decimal numbers, blanks, line feeds and commas. Returns false for
/// other numbers, such as 1f. A list of 100 MB takes 0.011 s, and 0.019 s without this test, which
/// has fewer instructions than isPlain() (benchmark format/tokens/floats).
bool isDecimal(__m128i bytes) {
  namespace detail = lex::detail;
  const __m128i inRange = detail::within(bytes, '+', '9');  // + , - . / and the digits
  const __m128i number = _mm_andnot_si128(detail::equal(bytes, '/'), inRange);
  const __m128i blanks = _mm_or_si128(detail::equal(bytes, ' '), detail::equal(bytes, '\n'));
  const __m128i plain = _mm_or_si128(_mm_or_si128(number, blanks), detail::equal(bytes, 'e'));
  return detail::maskOf(plain) == 0xFFFF;
}

/// Whether all 16 bytes are of numbers, blanks, line feeds and commas.
bool isPlain(__m128i bytes) {
  namespace detail = lex::detail;
  if (isDecimal(bytes)) return true;
  const std::uint32_t plain = detail::numberMask(bytes, detail::realMarkers(bytes)) |
                              detail::equalMask(bytes, ' ') | detail::equalMask(bytes, '\n') |
                              detail::equalMask(bytes, ',');
  return (plain & 0xFFFF) == 0xFFFF;
}
#endif

}  // namespace

void TokenScanState::begin(char first) noexcept {
  kind_ = kindOf(lex::firstOf(first));
  isOver_ = kind_ == SyntaxKind::Punctuation || kind_ == SyntaxKind::Invalid;
  isLine_ = kind_ == SyntaxKind::Comment || kind_ == SyntaxKind::Integer || isOver_;
  isAfterBackslash_ = false;
  depth_ = 0;
  open_ = first;
  close_ = first == '(' ? ')' : '}';
}

const char* TokenScanState::advance(const char* at, const char* end) noexcept {
  switch (kind_) {
    case SyntaxKind::Word:
      at = lex::endOfName(at, end);
      return at == end ? end : over(at);
    case SyntaxKind::Integer:
    case SyntaxKind::Real:
      return number(at, end);
    case SyntaxKind::Comment:
      at = lex::findStop(at, end, '\n', '\r');
      return at == end ? end : over(at);
    case SyntaxKind::String:
      return string(at, end);
    case SyntaxKind::Parens:
    case SyntaxKind::Braces:
      return list(at, end);
    case SyntaxKind::Brackets:
      return brackets(at, end);
    default:
      return at;  // the token is a single character
  }
}

void TokenScanState::endText() noexcept {
  const bool needsEnd = kind_ == SyntaxKind::String || kind_ == SyntaxKind::Parens ||
                        kind_ == SyntaxKind::Braces || kind_ == SyntaxKind::Brackets;
  if (needsEnd && !isOver_) kind_ = SyntaxKind::Unterminated;
  isOver_ = true;
}

const char* TokenScanState::number(const char* at, const char* end) noexcept {
  const lex::NumberEnd found = lex::endOfNumber(at, end);
  if (found.isReal) kind_ = SyntaxKind::Real;
  return found.at == end ? end : over(found.at);
}

// Finds the end of a string. A backslash and the backslash or quote after it are one escape
// sequence.
const char* TokenScanState::string(const char* at, const char* end) noexcept {
  if (isAfterBackslash_ && at < end) {
    isAfterBackslash_ = false;
    if (*at == '\\' || *at == '"') ++at;
  }
  while (true) {
    at = lex::findStop(at, end, '"', '\\');
    if (at == end) return end;
    if (*at == '"') return over(at + 1);
    if (++at == end) {
      isAfterBackslash_ = true;
      return end;
    }
    if (*at == '\\' || *at == '"') ++at;
  }
}

const char* TokenScanState::list(const char* at, const char* end) noexcept {
  while (true) {
#if defined(__SSE2__)
    // Without these steps, a list of 100 MB takes 0.10 s (benchmark format/tokens/floats).
    while (end - at >= 16 && isPlain(lex::detail::load16(at))) at += 16;
#endif
    for (const char* const stop = end - at > 16 ? at + 16 : end; at < stop; ++at) {
      const char c = *at;
      if (char_class::is(c, char_class::NUMBER)) continue;
      if (c == open_) {
        ++depth_;
      } else if (c == close_) {
        if (depth_ == 0) return over(at + 1);
        --depth_;
      } else if (!lex::mayBeInList(c)) {
        kind_ = SyntaxKind::Invalid;
        return over(at + 1);
      }
    }
    if (at == end) return end;
  }
}

const char* TokenScanState::brackets(const char* at, const char* end) noexcept {
  for (; at < end; ++at) {
    if (*at == ']') return over(at + 1);
    if (lex::mayBeInBrackets(*at)) continue;
    kind_ = SyntaxKind::Invalid;
    return over(at + 1);
  }
  return end;
}

}  // namespace vsa::impl
