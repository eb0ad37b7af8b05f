#include "tools/vsa/check/hints/hint_text.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "tools/vsa/check/rules/walk/path_steps.h"
#include "tools/vsa/check/rules/walk/resolved_paths.h"
#include "tools/vsa/check/rules/walk/text_walk.h"
#include "tools/vsa/check/text/digits.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

constexpr std::string_view WHITE = " \t\r\n\v\f";

// Returns whether the whole text is a number of the type `Number`. A period must have digits on
// both of its sides.
template <class Number>
bool isNumberFor(std::string_view text) {
  Number number{};
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  const std::size_t point = text.find('.');
  const bool hasDigits =
      point == std::string_view::npos || (point > 0 && point + 1 < text.size() &&
                                          isDigit(text[point - 1]) && isDigit(text[point + 1]));
  return error == std::errc() && end == last && hasDigits;
}

}  // namespace

std::string_view HintText::bytesOf(const vsa::TextRange& range) const {
  const std::size_t begin = std::min<std::size_t>(range.begin.offset, text().size());
  return text().substr(begin, range.end.offset - range.begin.offset);
}

std::uint64_t HintText::endBefore(std::uint64_t offset) const {
  const std::size_t last = text().substr(0, offset).find_last_not_of(WHITE);
  return last == std::string_view::npos ? 0 : last + 1;
}

std::uint64_t HintText::beginBehind(std::uint64_t offset) const {
  return std::min(text().find_first_not_of(WHITE, offset), text().size());
}

void HintText::collect() {
  if (std::exchange(isCollected_, true)) return;
  TextWalk walk(text());
  ResolvedPaths paths;
  for (StatementView view; walk.next(view);) {
    if (view.kind() == vsa::StatementKind::Comment) continue;
    if (view.kind() == vsa::StatementKind::Remove) generations_.remove(view.nodeKey);
    if (!view.hasPath()) {
      nodes_.insert(view.node());
      continue;
    }
    const vsa::StatementOutline& statement = view.statement;
    PathSteps steps(statement.path);
    for (std::string_view step; steps.next(step);) {
      if (!isIndex(step)) inputs_.insert(step);
    }
    if (view.isLink()) outputs_.insert(lastName(statement.value));
    const FirstAssignment first{statement.value, statement.valueKind, view.isLink()};
    view.nodeKey = generations_.keyOf(view.nodeKey);
    const PathKey input = paths.keyOf(view, [&](PathKey parent) {
      // An object or array gets its type from the first statement about one of its members or
      // elements, so this statement counts as its first assignment.
      assignments_.try_emplace(parent, FirstAssignment{view.wholePath()});
    });
    assignments_.try_emplace(input, first);
  }
}

std::optional<Suggestion> HintText::nearest(const Names& names, std::string_view written) {
  if (names.size() > comparisonsLeft_) return std::nullopt;
  comparisonsLeft_ -= names.size();
  NearestName nearest(written);
  for (const std::string_view name : names) nearest.consider(name);
  return nearest.found();
}

std::optional<Suggestion> HintText::nearestNode(std::string_view written) {
  collect();
  return nearest(nodes_, written);
}

std::optional<Suggestion> HintText::nearestInput(std::string_view written) {
  collect();
  return nearest(inputs_, written);
}

std::optional<Suggestion> HintText::nearestOutput(std::string_view written) {
  collect();
  return nearest(outputs_, written);
}

std::optional<vsa::TextRange> HintText::declarationOf(std::string_view node) {
  collect();
  const auto found = nodes_.find(node);
  return found == nodes_.end() ? std::nullopt : std::optional(rangeOf(*found));
}

const FirstAssignment* HintText::firstAssignment(const std::string& path) {
  collect();
  const auto found = assignments_.find(keyOfPath(path, generations_));
  return found == assignments_.end() ? nullptr : &found->second;
}

bool HintText::hasWithNodeBefore(std::uint64_t offset) {
  if (!firstBlock_) {
    Statement statement;
    while (statement.terminator != ':' && statement.end < text().size()) {
      statement = nextStatement(text(), statement.end);
    }
    firstBlock_ = statement.end;
  }
  return *firstBlock_ <= offset && *firstBlock_ > 0 && text()[*firstBlock_ - 1] == ':';
}

void replace(Finding& finding, const vsa::TextRange& range, std::string to) {
  finding.hint = "write `" + to + '`';
  finding.edits = {{range.begin.offset, range.end.offset, std::move(to)}};
}

void insertAt(Finding& finding, std::uint64_t offset, std::string text) {
  finding.edits = {{offset, offset, std::move(text)}};
}

bool suggest(Finding& finding, const vsa::TextRange& range,
             const std::optional<Suggestion>& suggestion) {
  if (!suggestion) return false;
  finding.hint = "did you mean `" + suggestion->name + "`?";
  if (suggestion->isSure) {
    finding.edits = {{range.begin.offset, range.end.offset, suggestion->name}};
  }
  return true;
}

std::optional<std::string> decimalOfHexadecimal(std::string_view digits) {
  std::uint64_t number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
  return isWhole && !digits.empty() ? std::optional(std::to_string(number)) : std::nullopt;
}

std::string_view bufferTypeFor(std::string_view list) {
  std::string_view type = "int32";
  vsa::ListPart part;
  for (vsa::ListReader reader(list); reader.next(part);) {
    if (part.continues) return {};
    const bool isReal = part.text.find_first_of(".eE") != std::string_view::npos;
    if (isReal && isNumberFor<float>(part.text)) {
      type = "float";
    } else if (isReal || !isNumberFor<std::int64_t>(part.text)) {
      return {};
    } else if (type == "int32" && !isNumberFor<std::int32_t>(part.text)) {
      type = "int64";
    }
  }
  return type;
}

bool isWordText(std::string_view text) {
  const auto isLetter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
  };
  if (text.empty() || !isLetter(text.front())) return false;
  return std::all_of(text.begin(), text.end(),
                     [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

}  // namespace vsa_tools
