#include "tools/vsa/check/rules/text/keyword_types.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "tools/vsa/check/rules/walk/text_walk.h"

namespace vsa_tools {

namespace {

using vsa::StatementKind;

constexpr std::array<std::string_view, 3> KEYWORDS = {"with", "remove", "define"};
constexpr std::array<std::string_view, 3> REMOVALS = {"delete", "erase", "destroy"};

bool isSwapped(std::string word, std::string_view keyword) {
  for (std::size_t i = 1; i < word.size(); ++i) {
    std::swap(word[i - 1], word[i]);
    if (word == keyword) return true;
    std::swap(word[i - 1], word[i]);
  }
  return false;
}

bool lacksLetter(std::string_view word, std::string_view keyword) {
  const auto [inWord, inKeyword] =
      std::mismatch(word.begin(), word.end(), keyword.begin(), keyword.end());
  return std::equal(inWord, word.end(), inKeyword + 1, keyword.end());
}

bool doublesLetter(std::string_view word, std::string_view keyword) {
  const auto at = std::mismatch(word.begin(), word.end(), keyword.begin(), keyword.end()).first;
  return at != word.begin() && *at == at[-1] && lacksLetter(keyword, word);
}

bool isMisspelt(std::string_view word, std::string_view keyword) {
  if (word.size() == keyword.size()) return isSwapped(std::string(word), keyword);
  if (word.size() + 1 == keyword.size()) return lacksLetter(word, keyword);
  return word.size() == keyword.size() + 1 && doublesLetter(word, keyword);
}

}  // namespace

bool isKeyword(std::string_view word) {
  return std::any_of(KEYWORDS.begin(), KEYWORDS.end(),
                     [&](std::string_view keyword) { return isWord(word, keyword); });
}

std::optional<Suggestion> keywordForKnownNode(const StatementView& view) {
  NearestName nearest(view.statement.type);
  if (view.kind() == StatementKind::Block) {
    nearest.consider("with");
    return nearest.found();
  }
  for (const std::string_view removal : REMOVALS) {
    if (isWord(view.statement.type, removal)) return Suggestion{"remove", true};
  }
  nearest.consider("remove");
  nearest.consider("define");
  return nearest.found();
}

std::string_view keywordForNewNode(std::string_view type) {
  constexpr std::size_t MAX_BYTES = 7;
  if (type.size() > MAX_BYTES) return {};
  const std::string word = loweredName(type);
  const auto* const found =
      std::find_if(KEYWORDS.begin(), KEYWORDS.end(),
                   [&](std::string_view keyword) { return isMisspelt(word, keyword); });
  return found == KEYWORDS.end() ? std::string_view() : *found;
}

}  // namespace vsa_tools
