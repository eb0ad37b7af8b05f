#include "tools/vsa/check/reading/follow_ups.h"

#include <algorithm>
#include <array>

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

// The diagnostics about a value that does not fit its input, or whose index the array does not
// allow. The reader refuses the value, or converts it with a loss (Narrowing).
constexpr std::array REFUSALS = {DiagnosticId::WrongType, DiagnosticId::Narrowing,
                                 DiagnosticId::CannotAssignType, DiagnosticId::CannotAssignNode,
                                 DiagnosticId::TooManyEmptyElements};
// The diagnostics about a literal that is wrong as a whole, or at which the reading ends.
constexpr std::array LITERALS = {DiagnosticId::BadToken, DiagnosticId::TooFewElements,
                                 DiagnosticId::OverLimit, DiagnosticId::EndMark};

// The rules whose findings are about a path. If the value in the same statement does not fit, such
// a finding only follows from that.
constexpr std::array<std::string_view, 2> PATH_RULES = {"assigned-twice", "array-gap"};
// The rules whose findings are about a part of a value. If the reader reports a text that contains
// that part, such a finding only follows from that.
constexpr std::array<std::string_view, 4> VALUE_RULES = {
    "not-utf-8", "glued-elements", "string-for-reference", "large-declared-count"};

template <class List, class Element>
bool has(const List& list, const Element& element) {
  return std::find(list.begin(), list.end(), element) != list.end();
}

}  // namespace

void FollowUps::add(const vsa::Diagnostic& diagnostic) {
  const bool isRefused = has(REFUSALS, diagnostic.id);
  if (!isRefused && !has(LITERALS, diagnostic.id)) return;
  problems_.push_back({diagnostic.range.begin.offset, diagnostic.range.end.offset, isRefused});
}

void FollowUps::finish() {
  std::sort(problems_.begin(), problems_.end(),
            [](const Problem& a, const Problem& b) { return a.begin < b.begin; });
}

bool FollowUps::contains(const Finding& finding, std::string_view text) const {
  if (problems_.empty() || !finding.range) return false;
  if (has(PATH_RULES, finding.id)) return isStatementRefused(finding.range->begin.offset, text);
  return has(VALUE_RULES, finding.id) && isInside(*finding.range);
}

// Whether the value of the statement that contains `begin` does not fit its input. This is so if
// the first problem from `begin` on is one of REFUSALS and at most MAX_PATH_BYTES away, and no
// semicolon is between `begin` and that problem.
bool FollowUps::isStatementRefused(std::uint64_t begin, std::string_view text) const {
  const auto next = std::lower_bound(
      problems_.begin(), problems_.end(), begin,
      [](const Problem& problem, std::uint64_t offset) { return problem.begin < offset; });
  if (next == problems_.end() || !next->isRefused || next->begin > text.size()) return false;
  constexpr std::uint64_t MAX_PATH_BYTES = 1 << 16;
  if (next->begin - begin > MAX_PATH_BYTES) return false;
  return text.substr(begin, next->begin - begin).find(';') == std::string_view::npos;
}

bool FollowUps::isInside(const vsa::TextRange& range) const {
  auto next = std::upper_bound(
      problems_.begin(), problems_.end(), range.begin.offset,
      [](std::uint64_t offset, const Problem& problem) { return offset < problem.begin; });
  return next != problems_.begin() && range.end.offset <= (--next)->end;
}

}  // namespace vsa_tools
