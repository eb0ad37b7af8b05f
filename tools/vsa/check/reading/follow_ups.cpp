#include "tools/vsa/check/reading/follow_ups.h"

#include <algorithm>
#include <array>

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

// The diagnostics about a value that the reader refuses, because it does not fit its input or
// the array does not allow its index.
constexpr std::array REFUSALS = {DiagnosticId::WrongType, DiagnosticId::CannotAssignType,
                                 DiagnosticId::CannotAssignNode,
                                 DiagnosticId::TooManyEmptyElements};
// The diagnostics about a literal that is wrong as a whole, or at which the reading ends.
constexpr std::array LITERALS = {DiagnosticId::BadToken, DiagnosticId::TooFewElements,
                                 DiagnosticId::OverLimit, DiagnosticId::EndMark};

// The rules whose findings are about a path. If the value in the same statement does not fit, such
// a finding only follows from that.
constexpr std::array<std::string_view, 2> PATH_RULES = {"assigned-twice", "array-gap"};
// The rules whose findings are about a part of a value. If the reader reports a text that contains
// that part, such a finding only follows from that.
constexpr std::array<std::string_view, 6> VALUE_RULES = {"not-utf-8",
                                                         "glued-elements",
                                                         "string-for-reference",
                                                         "large-declared-count",
                                                         "compressed-data-as-number",
                                                         "wrong-input-type"};

template <class List, class Element>
bool has(const List& list, const Element& element) {
  return std::find(list.begin(), list.end(), element) != list.end();
}

}  // namespace

void FollowUps::add(const vsa::Diagnostic& diagnostic) {
  Effect effect = Effect::Other;
  if (has(REFUSALS, diagnostic.id)) {
    effect = Effect::Refused;
  } else if (diagnostic.id == DiagnosticId::Narrowing) {
    effect = Effect::Converted;
  } else if (!has(LITERALS, diagnostic.id)) {
    return;
  }
  problems_.push_back({diagnostic.range.begin.offset, diagnostic.range.end.offset, effect});
}

void FollowUps::finish() {
  std::sort(problems_.begin(), problems_.end(),
            [](const Problem& a, const Problem& b) { return a.begin < b.begin; });
}

bool FollowUps::contains(const Finding& finding, std::string_view text) const {
  if (problems_.empty() || !finding.range) return false;
  if (has(PATH_RULES, finding.id)) {
    const Effect effect = effectInStatement(finding.range->begin.offset, text);
    // A narrowed value is assigned, so the element of an array gets it.
    const bool isClash = effect == Effect::Converted && finding.id == "assigned-twice";
    return effect == Effect::Refused || isClash;
  }
  return has(VALUE_RULES, finding.id) && isInside(*finding.range, text);
}

// Returns the effect of the first problem from `begin` on in the statement that contains `begin`:
// the problem is at most MAX_PATH_BYTES away, and no semicolon is between `begin` and it. Returns
// Other if there is none.
FollowUps::Effect FollowUps::effectInStatement(std::uint64_t begin, std::string_view text) const {
  const auto next = std::lower_bound(
      problems_.begin(), problems_.end(), begin,
      [](const Problem& problem, std::uint64_t offset) { return problem.begin < offset; });
  if (next == problems_.end() || next->begin > text.size()) return Effect::Other;
  constexpr std::uint64_t MAX_PATH_BYTES = 1 << 16;
  if (next->begin - begin > MAX_PATH_BYTES) return Effect::Other;
  const bool isSame = text.substr(begin, next->begin - begin).find(';') == std::string_view::npos;
  return isSame ? next->effect : Effect::Other;
}

// Whether `range` is inside the last problem that begins at or before the beginning of `range`. If
// this problem begins with a quote, `range` must also end in its first line: a string that was not
// closed extends over other statements.
bool FollowUps::isInside(const vsa::TextRange& range, std::string_view text) const {
  auto next = std::upper_bound(
      problems_.begin(), problems_.end(), range.begin.offset,
      [](std::uint64_t offset, const Problem& problem) { return offset < problem.begin; });
  if (next == problems_.begin()) return false;
  const Problem& problem = *--next;
  if (range.end.offset > problem.end) return false;
  const bool isString = problem.begin < text.size() && text[problem.begin] == '"';
  const std::uint64_t size = range.end.offset - problem.begin;
  return !isString || text.substr(problem.begin, size).find('\n') == std::string_view::npos;
}

}  // namespace vsa_tools
