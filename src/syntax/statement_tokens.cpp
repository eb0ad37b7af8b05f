#include "syntax/statement_tokens.h"

#include <vsa/foundation/char_class.h>
#include "syntax/token_scan_state.h"
#include "vsa/lex/byte_scan.h"
#include "vsa/lex/token_scan.h"
#include "vsa/lex/token_text_pool.h"

namespace vsa::impl {

namespace {

namespace char_class = zn::char_class;
namespace lex = zn::korvo_sdk::impl;
using Type = lex::Token::Type;

constexpr std::ptrdiff_t MAX_PLAIN_LIST_BYTES = 256;

}  // namespace

SyntaxKind kindOfLiteral(std::string_view word) noexcept {
  switch (lex::typeOfWord(word)) {
    case Type::True:
      return SyntaxKind::True;
    case Type::False:
      return SyntaxKind::False;
    case Type::Null:
      return SyntaxKind::Null;
    default:
      return SyntaxKind::Word;
  }
}

PlainList plainList(const char* at, const char* end, char close) noexcept {
  const char* const limit = end - at > MAX_PLAIN_LIST_BYTES ? at + MAX_PLAIN_LIST_BYTES : end;
  const char* const listEnd = lex::endOfPlainList(at + 1, limit);
  const bool isPlain =
      listEnd != limit && *listEnd == close && listEnd[-1] != ' ' && listEnd != at + 1;
  return isPlain ? PlainList{listEnd + 1, 1 + lex::countOf(at + 1, listEnd, ' ')} : PlainList{};
}

void StatementTokens::advance() noexcept {
  ++count_;
  while (at_ < end_ && char_class::is(*at_, char_class::WHITE)) ++at_;
  begin_ = at_;
  plainElements = 0;
  if (at_ == end_) {
    kind = SyntaxKind::EndOfText;
    return;
  }
  const Type first = lex::firstOf(*at_);
  if (lex::isOneCharacter(first)) {
    ++at_;
    kind = SyntaxKind::Punctuation;
  } else if (first == Type::Id) {
    at_ = lex::endOfName(at_ + 1, end_);
    kind = kindOfWord(text());
  } else {
    advanceOther(first);
  }
}

void StatementTokens::advanceOther(Type first) noexcept {
  if (first == Type::Parens || first == Type::Braces) {
    const PlainList list = plainList(at_, end_, first == Type::Parens ? ')' : '}');
    if (list.end != nullptr) {
      kind = first == Type::Parens ? SyntaxKind::Parens : SyntaxKind::Braces;
      plainElements = list.elements;
      at_ = list.end;
      return;
    }
  }
  TokenScanState state;
  state.begin(*at_++);
  if (!state.isOver()) at_ = state.advance(at_, end_);
  if (at_ == end_) state.endText();
  kind = state.kind();
}

}  // namespace vsa::impl
