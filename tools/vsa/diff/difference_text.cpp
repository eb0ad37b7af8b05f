#include "tools/vsa/diff/difference_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/vsa/common/scene/short_value.h"

namespace vsa_tools {

namespace {

constexpr std::size_t PATH_CHARACTERS = 120, CONTEXT_BYTES = 20;

std::string connectionOr(vsa::InputView input, const char* none) {
  const std::string connection = shortConnection(input);
  return connection.empty() ? none : connection;
}

/// Returns the parts of both strings that begin a few bytes before the first difference.
DifferenceSides stringSides(std::string_view a, std::string_view b) {
  const auto at = static_cast<std::size_t>(
      std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
  std::size_t start = at > CONTEXT_BYTES ? at - CONTEXT_BYTES : 0;
  while (start > 0 && (a[start] & 0xC0) == 0x80) --start;  // begin at a whole character
  const std::string head = start > 0 ? fmt::format("byte {}: ...", start) : "";
  const auto side = [&](std::string_view text) {
    return fmt::format("{}\"{}\"", head, shortText(text.substr(start)));
  };
  return {side(a), side(b)};
}

std::string elementAt(vsa::InputView input, std::uint64_t index) {
  if (input.type() == vsa::ValueType::Buffer) return shortElement(input.buffer(), index);
  if (input.type() == vsa::ValueType::Array) return shortValue(input[index]);
  return fmt::format("{}", input.components()[index]);
}

}  // namespace

std::string pathOf(const Difference& difference) {
  const vsa::NodeView node = difference.nodeB ? difference.nodeB : difference.nodeA;
  return shortText(node.name()) + '.' + shortText(difference.path, PATH_CHARACTERS);
}

DifferenceSides sidesOf(const Difference& difference) {
  const vsa::InputView a = difference.a, b = difference.b;
  if (difference.kind == DifferenceKind::Connection) {
    return {connectionOr(a, "none"), connectionOr(b, "none")};
  }
  if (!a || !b) return {a ? shortValue(a) : "", b ? shortValue(b) : ""};
  if (a.type() == vsa::ValueType::String && b.type() == vsa::ValueType::String) {
    return stringSides(a.string(""), b.string(""));
  }
  DifferenceSides sides = {shortValue(a), shortValue(b)};
  if (a.type() != b.type()) {
    sides.a += fmt::format(" ({})", vsa::typeName(a.type()));
    sides.b += fmt::format(" ({})", vsa::typeName(b.type()));
  }
  return sides;
}

std::string listText(const Difference& difference) {
  if (!difference.list || difference.list->differing == 0) return {};
  const ListDifference& list = *difference.list;
  const bool isTuple = !difference.a.components().empty();
  std::string text = fmt::format(
      "{} {}{} {}, the first at {}: {} -> {}", list.differing, isTuple ? "number" : "element",
      list.differing == 1 ? "" : "s", list.differing == 1 ? "differs" : "differ", list.first,
      elementAt(difference.a, list.first), elementAt(difference.b, list.first));
  if (list.largestDeviation) {
    text += fmt::format(", largest deviation {} at {}", *list.largestDeviation, list.largestAt);
  }
  return text;
}

}  // namespace vsa_tools
