#include "tools/vsa/check/rules/text/text_walk.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

using vsa::StatementKind;
using vsa::SyntaxToken;

namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

struct ElementKeyword {
  std::string text;  // in lower case
  vsa::ElementType type;
};

std::vector<ElementKeyword> elementKeywords() {
  std::vector<ElementKeyword> keywords;
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<vsa::ElementType>(i);
    if (!zn::korvo_sdk::isBufferElement(type)) continue;
    std::string text(vsa::typeName(type));
    std::transform(text.begin(), text.end(), text.begin(), lower);
    keywords.push_back({std::move(text), type});
  }
  return keywords;
}

}  // namespace

std::string_view StatementView::inputPath() const {
  const std::string_view first = token(firstInput).text;
  const std::string_view last = token(pathEnd - 1).text;
  return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

std::string StatementView::shownPath() const {
  return shortened(node) + '.' + shortened(inputPath());
}

bool isWord(const SyntaxToken& token, std::string_view word) {
  return std::equal(token.text.begin(), token.text.end(), word.begin(), word.end(),
                    [](char a, char b) { return lower(a) == b; });
}

vsa::ElementType elementTypeOf(const SyntaxToken& keyword) {
  static const std::vector<ElementKeyword> KEYWORDS = elementKeywords();
  const auto found = std::find_if(KEYWORDS.begin(), KEYWORDS.end(), [&](const ElementKeyword& one) {
    return one.text.size() == keyword.text.size() && isWord(keyword, one.text);
  });
  return found == KEYWORDS.end() ? vsa::ElementType::Null : found->type;
}

vsa::TextRange rangeIn(const SyntaxToken& token, std::string_view bytes) {
  const auto positionOf = [&](const char* end) {
    vsa::TextPosition position = token.range.begin;
    for (const char* c = token.text.data(); c != end; ++c) {
      ++position.offset;
      ++position.column;
      if (*c != '\n') continue;
      ++position.line;
      position.column = 1;
    }
    return position;
  };
  return {positionOf(bytes.data()), positionOf(bytes.data() + bytes.size())};
}

std::optional<StatementView> TextWalk::next() {
  do {
    if (!reader_.next(statement_)) return std::nullopt;
  } while (statement_.kind == StatementKind::Malformed);
  StatementView view{statement_, {}};
  if (statement_.kind == StatementKind::Comment) return view;
  if (!view.hasPath()) {
    view.node = statement_.tokens[1].text;
    view.nodeKey = keyOfNode(view.node);
    if (statement_.kind == StatementKind::Block) {
      withNode_ = view.node;
      withKey_ = view.nodeKey;
    }
    return view;
  }
  const bool isOfWithNode = statement_.tokens[0].is('.');
  view.node = isOfWithNode ? withNode_ : statement_.tokens[0].text;
  view.nodeKey = isOfWithNode ? withKey_ : keyOfNode(view.node);
  view.firstInput = isOfWithNode ? 1 : 2;
  view.pathEnd = statement_.valueIndex - (view.isLink() ? 2 : 1);
  return view;
}

}  // namespace vsa_tools
