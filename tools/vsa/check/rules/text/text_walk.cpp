#include "tools/vsa/check/rules/text/text_walk.h"

#include <algorithm>

namespace vsa_tools {

using vsa::StatementKind;
using vsa::SyntaxToken;

namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

}  // namespace

std::string_view StatementView::inputPath() const {
  const std::string_view first = token(firstInput).text;
  const std::string_view last = token(pathEnd - 1).text;
  return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

bool isWord(const SyntaxToken& token, std::string_view word) {
  return std::equal(token.text.begin(), token.text.end(), word.begin(), word.end(),
                    [](char a, char b) { return lower(a) == b; });
}

vsa::ElementType elementTypeOf(const SyntaxToken& keyword) {
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<vsa::ElementType>(i);
    const std::string_view name = vsa::typeName(type);
    if (name.size() != keyword.text.size() || !zn::korvo_sdk::isBufferElement(type)) continue;
    const bool isSame = std::equal(name.begin(), name.end(), keyword.text.begin(),
                                   [](char a, char b) { return lower(a) == lower(b); });
    if (isSame) return type;
  }
  return vsa::ElementType::Null;
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
    if (statement_.kind == StatementKind::Block) withNode_ = view.node;
    return view;
  }
  const bool isOfWithNode = statement_.tokens[0].is('.');
  view.node = isOfWithNode ? withNode_ : statement_.tokens[0].text;
  view.firstInput = isOfWithNode ? 1 : 2;
  view.pathEnd = statement_.valueIndex - (view.isLink() ? 2 : 1);
  return view;
}

}  // namespace vsa_tools
