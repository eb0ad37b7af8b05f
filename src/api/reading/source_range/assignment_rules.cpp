// Finds the source range of problems in the path or the value of an assignment.
#include <algorithm>
#include <charconv>
#include <system_error>

#include "api/reading/source_range/range_rules.h"
#include "api/reading/source_range/value_words.h"
#include "vsa/type_keywords.h"

namespace vsa {

namespace {

using zn::korvo_sdk::impl::bufferTypeOf;
using Item = StatementTokens::Item;
using Type = StatementTokens::Type;
using Found = RangeRules::Found;

}  // namespace

// Returns the index of the path token after the tokens of `inputPath`. For `inputPath` "sun.points"
// and the text "sun.points[3] = 1;", it is the index of "[3]".
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

// Returns the range of a part that has the wrong type. If the path ends in an index and the value
// has another type than the elements of the array, this is the value. Otherwise it is the part of
// the path after the input whose type is wrong, or the whole path if nothing follows that input.
Found RangeRules::typeClash() const {
  const std::size_t part = pathTokenAfter(problem_.diagnostic.inputPath);
  const bool isValue = part + 1 >= parts_.pathEnd && part < parts_.pathEnd &&
                       tokens_[part].type == Type::Brackets &&
                       problem_.diagnostic.argument("expected") == "Array";
  if (isValue) return value();
  const Found rest = tokens(part, parts_.pathEnd);
  return rest ? rest : path();
}

Found RangeRules::badIndex() const {
  for (std::size_t i = firstInput(); i < parts_.pathEnd; ++i) {
    const Item& token = tokens_[i];
    const bool isNamed =
        token.type == Type::Brackets && problem_.diagnostic.argument("index") == token.text.view();
    if (isNamed) return whole(i);
  }
  return path();
}

Found RangeRules::surplusNumber() const {
  const std::size_t list = parts_.value + 2;
  const std::string_view index = problem_.diagnostic.argument("index");
  std::size_t wanted = 0;
  const auto parsed = std::from_chars(index.data(), index.data() + index.size(), wanted);
  if (parsed.ec != std::errc()) return whole(list);  // a host created the record
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return one.index == wanted; });
  return field ? number(list, *field) : whole(list);
}

Found RangeRules::unreadableNumber() const {
  const std::size_t list = parts_.value + 2;
  ComponentReader numbers(bufferTypeOf(tokens_[parts_.value].text));
  const auto field = findNumber(tokens_.bytesOf(tokens_[list]),
                                [&](const NumberField& one) { return !numbers.accepts(one.text); });
  return field ? number(list, *field) : whole(list);
}

// Returns the range of the part of the statement that exceeds a limit: the count of a buffer, the
// name of a node, an index or a path. For the limit of diagnostics, returns the whole statement of
// a link. Returns std::nullopt in all other cases, because no single part exceeds the limit.
Found RangeRules::overLimit() const {
  const bool isBuffer = !problem_.diagnostic.endedReading;  // an omitted buffer is the only such
                                                            // problem that does not end the reading
  if (isBuffer) return whole(parts_.value + 1);
  switch (problem_.diagnostic.limit.value_or(Limit::Memory)) {
    case Limit::Nodes:
      return whole(1);
    case Limit::Elements:
      return tokens(firstInput() + 1, parts_.pathEnd);
    case Limit::Depth:
      return path();
    case Limit::Diagnostics:
      // The whole statement of a link, else the token that was read last.
      return isNoticedBeforeStatement() ? statement() : std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace vsa
