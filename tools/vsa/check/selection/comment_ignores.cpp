#include "tools/vsa/check/selection/comment_ignores.h"

#include <algorithm>
#include <limits>

#include "tools/vsa/check/kinds.h"
#include "tools/vsa/check/text/statement_scan.h"

namespace vsa_tools {

namespace {

constexpr std::string_view MARK = "vsa-check:";
constexpr std::string_view SEPARATORS = " \t\r,";

/// Removes the next word from `text` and returns it.
std::string_view nextWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(SEPARATORS), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(SEPARATORS));
  text.remove_prefix(word.size());
  return word;
}

bool isName(std::string_view name, const Finding& finding) {
  if (name == finding.id || name == "all") return true;
  const FindingKind* const kind = kindOf(finding.id);
  return kind != nullptr && name == kind->group;
}

}  // namespace

CommentIgnores::CommentIgnores(std::string_view text) {
  for (std::size_t at = 0; (at = text.find(MARK, at)) != std::string_view::npos; ++at) {
    addComment(text, at);
  }
}

// Adds the ids of a comment whose text contains MARK at `at`. MARK has an effect only at the
// beginning of a comment.
void CommentIgnores::addComment(std::string_view text, std::size_t at) {
  const std::size_t lineBegin = text.rfind('\n', at) + 1;
  const std::size_t lineEnd = std::min(text.find('\n', at), text.size());
  std::size_t sign = at;
  while (sign > lineBegin && (text[sign - 1] == ' ' || text[sign - 1] == '\t')) --sign;
  if (sign == lineBegin || text[sign - 1] != '#') return;
  std::string_view words = text.substr(at + MARK.size(), lineEnd - at - MARK.size());
  const std::string_view command = nextWord(words);
  Ignore ignore{lineBegin, lineEnd, {}};
  if (command == "ignore-file") {
    ignore = {0, std::numeric_limits<std::uint64_t>::max(), {}};
  } else if (command != "ignore") {
    return;
  } else if (skipBlanks(text, lineBegin) == sign - 1) {  // the line contains only the comment
    Statement next = nextStatement(text, lineEnd);
    while (next.isComment) next = nextStatement(text, next.end);
    ignore.end = next.end;
  }
  for (std::string_view word = nextWord(words); !word.empty() && word != "--";
       word = nextWord(words)) {
    ignore.name = word;
    ignores_.push_back(ignore);
  }
}

bool CommentIgnores::isIgnored(const Finding& finding) const {
  return std::any_of(ignores_.begin(), ignores_.end(), [&](const Ignore& ignore) {
    const bool isWholeFile = ignore.end == std::numeric_limits<std::uint64_t>::max();
    const bool isInside = finding.range && finding.range->begin.offset >= ignore.begin &&
                          finding.range->begin.offset <= ignore.end;
    return (isWholeFile || isInside) && isName(ignore.name, finding);
  });
}

}  // namespace vsa_tools
