#include "tools/vsa/fmt/layout/text_layout.h"

#include "tools/vsa/fmt/layout/plain_numbers.h"
#include "tools/vsa/fmt/layout/token_spacing.h"

namespace vsa_tools {

namespace {

using vsa::SyntaxKind;
using vsa::SyntaxToken;

constexpr std::size_t BLOCK_INDENT = 2;
// The maximum size of a keyword. Longer words are no keywords.
constexpr std::size_t MAX_KEYWORD_BYTES = 16;

/// Returns whether a complete list has numbers that are separated by single blanks, and nothing
/// else between its brackets.
bool isPlainList(std::string_view list) {
  if (list.size() < 3) return false;
  bool isAfterNumber = false;
  for (const char c : list.substr(1, list.size() - 2)) {
    const bool isNumber = isInNumber(c);
    if (!isNumber && (c != ' ' || !isAfterNumber)) return false;
    isAfterNumber = isNumber;
  }
  return isAfterNumber;
}

}  // namespace

void TextLayout::put(const SyntaxToken& token) {
  if (token.kind == SyntaxKind::EndOfText) {
    if (!isEmpty_) out_.newLine(0);
    return;
  }
  if (token.isFirst) beginToken(token);
  if (isList(last_)) {
    putList(token);
  } else {
    putText(token);
  }
  if (token.isLast) endToken(token);
}

void TextLayout::beginToken(const SyntaxToken& token) {
  if (!isInStatement_) {
    beginStatement(token);
  } else if (needsBlank(last_, lastChar_, token)) {
    out_.put(' ');
  }
  last_ = token.kind;
  lastChar_ = token.kind == SyntaxKind::Punctuation ? token.text.front() : '\0';
  isEmpty_ = false;
  isInStatement_ = true;
}

// Begins the line of a statement or a comment. A statement that begins with a period is indented. A
// comment in the line of a statement stays there. A comment on a line of its own is indented if two
// conditions are true: it is indented in the original text, and the statement before it ends with a
// colon or is indented in the layout. Several blank lines before a statement or comment become one.
void TextLayout::beginStatement(const SyntaxToken& token) {
  const bool isComment = token.kind == SyntaxKind::Comment;
  if (isComment && !isEmpty_ && token.lineFeedsBefore == 0 && last_ != SyntaxKind::Comment) {
    out_.put("  ");
    return;
  }
  const bool isIndented =
      token.is('.') || (isComment && isInBlock_ && token.range.begin.column > 1);
  indent_ = isIndented ? BLOCK_INDENT : 0;
  if (!isComment) isInBlock_ = isIndented;
  if (!isEmpty_) {
    if (token.lineFeedsBefore > 1) out_.newLine(0);
    out_.newLine(indent_);
  } else if (isIndented) {
    out_.put("  ");
  }
}

void TextLayout::putText(const SyntaxToken& token) {
  if (token.kind == SyntaxKind::String || token.kind == SyntaxKind::Unterminated) {
    out_.putLines(token.text);
  } else {
    out_.put(token.text);
  }
}

ListShape TextLayout::shape(SyntaxKind kind) const {
  if (kind == SyntaxKind::Parens) return hasIndex_ ? ListShape() : shapeOfTuple(word_);
  return hasIndex_ ? shapeOfBuffer(word_) : ListShape();
}

// Writes a list that is laid out already and stays on its line. Returns false for any other list,
// also for each list that may have matrices. The layout of 19 MB of small nodes takes 1090 million
// instructions, and 1270 million without this function (benchmark format/layout/nodes).
bool TextLayout::putPlainList(const SyntaxToken& token) {
  const bool mayBeMatrix = !word_.empty() && (word_.front() == 'm' || word_.front() == 'M');
  const bool fits = out_.column() + token.text.size() + 1 <= FORMATTED_WIDTH;
  if (!token.isFirst || !token.isLast || mayBeMatrix || !fits) return false;
  if (!isPlainList(token.text)) return false;
  out_.put(token.text);
  return true;
}

void TextLayout::putList(const SyntaxToken& token) {
  if (putPlainList(token)) return;
  if (token.isFirst) {
    list_.begin(token.text.front(), shape(token.kind), indent_);
    elements_ = vsa::ListReader();
  }
  const char close = last_ == SyntaxKind::Parens ? ')' : '}';
  const std::string_view plain =
      plainNumbers(token.text, last_ == SyntaxKind::Parens ? '(' : '{', close);
  if (plain.empty()) {
    putElements(token.text);
  } else {
    const auto begin = static_cast<std::size_t>(plain.data() - token.text.data());
    putElements(token.text.substr(0, begin));
    list_.addNumbers(plain);
    putElements(token.text.substr(begin + plain.size()));
  }
  if (token.isLast) list_.end(close, elements_.endsInBlank());
}

void TextLayout::putElements(std::string_view text) {
  elements_.add(text);
  for (vsa::ListPart part; elements_.next(part);) list_.add(part.text, part.continues);
}

void TextLayout::endToken(const SyntaxToken& token) {
  hasIndex_ = token.kind == SyntaxKind::Brackets;
  if (token.kind == SyntaxKind::Word && token.text.size() <= MAX_KEYWORD_BYTES) {
    word_ = token.text;
  } else if (!hasIndex_) {
    word_.clear();
  }
  if (token.is(':')) isInBlock_ = true;
  if (last_ == SyntaxKind::Comment || token.is(';') || token.is(':')) isInStatement_ = false;
}

bool formatText(vsa::SyntaxReader& reader, vsa::Sink& sink) {
  TextLayout layout(sink);
  while (true) {
    const SyntaxToken token = reader.next();
    layout.put(token);
    if (token.kind == SyntaxKind::EndOfText) return layout.flush();
  }
}

}  // namespace vsa_tools
