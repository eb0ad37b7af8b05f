#include "tools/vsa/check/rules/walk/text_walk.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tools/vsa/common/output/quoted_text.h"

namespace vsa_tools {

using vsa::StatementKind;

namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

struct ElementKeyword {
  std::string text;  // the keyword in lower case
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

std::string StatementView::shownPath() const {
  return shortened(node()) + '.' + shortened(statement.path);
}

std::string_view StatementView::wholePath() const {
  const char* const end = statement.path.data() + statement.path.size();
  return {statement.text.data(), static_cast<std::size_t>(end - statement.text.data())};
}

bool isWord(std::string_view word, std::string_view lowered) {
  return std::equal(word.begin(), word.end(), lowered.begin(), lowered.end(),
                    [](char a, char b) { return lower(a) == b; });
}

vsa::ElementType elementTypeOf(std::string_view keyword) {
  static const std::vector<ElementKeyword> KEYWORDS = elementKeywords();
  const auto found = std::find_if(KEYWORDS.begin(), KEYWORDS.end(), [&](const ElementKeyword& one) {
    return one.text.size() == keyword.size() && isWord(keyword, one.text);
  });
  return found == KEYWORDS.end() ? vsa::ElementType::Null : found->type;
}

bool TextWalk::next(StatementView& view) {
  if (view.kind() == StatementKind::Declaration) {
    view.declarationBefore = view.statement.text;
  } else if (view.kind() != StatementKind::Comment) {
    view.declarationBefore = {};
  }
  do {
    if (!reader_.next(view.statement)) return false;
  } while (view.kind() == StatementKind::Malformed);
  view.index = count_++;
  if (view.isOfWithNode() || view.kind() == StatementKind::Comment) {
    view.nodeKey = view.hasPath() ? withKey_ : 0;
    return true;
  }
  view.nodeKey = keyOfNode(view.statement.node);
  if (view.kind() == StatementKind::Block) {
    view.withNode = view.statement.node;
    withKey_ = view.nodeKey;
  }
  return true;
}

}  // namespace vsa_tools
