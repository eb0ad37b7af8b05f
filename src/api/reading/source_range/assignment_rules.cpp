// The source ranges of problems in the path or the value of an assignment.
#include <algorithm>
#include <string>

#include "api/reading/source_range/range_rules.h"
#include "api/reading/source_range/value_words.h"

namespace vsa {

namespace {

using Item = StatementTokens::Item;
using Type = StatementTokens::Type;
using Found = RangeRules::Found;

}  // namespace

// The token of the path that follows the part which names an input.
std::size_t RangeRules::pathTokenAfter(std::string_view inputPath) const {
  const auto inputs = static_cast<std::size_t>(std::count_if(
      inputPath.begin(), inputPath.end(), [](char c) { return c == '.' || c == '['; }));
  std::size_t seen = 0;
  for (std::size_t i = firstInput(); i < parts_.pathEnd; ++i) {
    if (tokens_[i].type == Type::Dot) continue;
    if (++seen > inputs) return i;
  }
  return parts_.pathEnd;
}

// The value, if its type is what does not fit; otherwise the part of the path that does not.
Found RangeRules::typeClash() const {
  const std::size_t part = pathTokenAfter(problem_.inputPath);
  const bool isValue = part + 1 >= parts_.pathEnd && part < parts_.pathEnd &&
                       tokens_[part].type == Type::Brackets &&
                       problem_.message.find(" to Array @ ") != std::string_view::npos;
  if (isValue) return value();
  const Found rest = tokens(part, parts_.pathEnd);
  return rest ? rest : path();
}

Found RangeRules::badIndex() const {
  for (std::size_t i = firstInput(); i < parts_.pathEnd; ++i) {
    const Item& token = tokens_[i];
    const bool isNamed = token.type == Type::Brackets &&
                         problem_.message.ends_with(": " + std::string(token.text.view()));
    if (isNamed) return whole(i);
  }
  return path();
}

// "Cannot add NUMBER @ index INDEX of TYPE[COUNT]."
Found RangeRules::surplusNumber() const {
  constexpr std::string_view BEFORE = " @ index ";
  const std::size_t list = parts_.value + 2;
  const std::size_t at = problem_.message.find(BEFORE);
  if (at == std::string_view::npos) return whole(list);
  const std::size_t wanted = std::stoull(std::string(problem_.message.substr(at + BEFORE.size())));
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return one.index == wanted; });
  return field ? number(list, *field) : whole(list);
}

Found RangeRules::unreadableNumber() const {
  const std::size_t list = parts_.value + 2;
  ComponentReader numbers(bufferTypeOf(tokens_[parts_.value].text.view()));
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return !numbers.accepts(one.text); });
  return field ? number(list, *field) : whole(list);
}

// What of a statement goes over a limit: a count, an index, a path or a name.
Found RangeRules::overLimit() const {
  const std::string_view message = problem_.message;
  if (message.starts_with("the buffer ")) return whole(parts_.value + 1);
  if (message.ends_with(" nodes")) return whole(1);
  if (message.ends_with(" array elements")) return tokens(firstInput() + 1, parts_.pathEnd);
  if (message.ends_with(" inputs")) return path();
  return std::nullopt;
}

}  // namespace vsa
