#include "tools/vsa/check/selection/comment_ignores.h"

#include <algorithm>
#include <iterator>

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

}  // namespace

IgnoreComment::IgnoreComment(std::string_view words) : rest_(words) {
  command_ = nextWord(rest_);
}

std::string_view IgnoreComment::nextName() {
  const std::string_view name = nextWord(rest_);
  if (name != "--") return name;
  rest_ = {};
  return {};
}

std::optional<std::string_view> wordsForCheck(std::string_view comment) {
  comment.remove_prefix(std::min(comment.find_first_not_of(" \t", 1), comment.size()));
  if (!comment.starts_with(MARK)) return std::nullopt;
  return comment.substr(MARK.size());
}

// MARK has an effect only after "#", with or without blanks between them. Comments are not
// distinguished from strings.
CommentIgnores::CommentIgnores(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find(MARK, at)) != std::string_view::npos) {
    std::size_t sign = at;
    while (sign > 0 && (text[sign - 1] == ' ' || text[sign - 1] == '\t')) --sign;
    at += MARK.size();
    if (sign == 0 || text[sign - 1] != '#') continue;
    const std::size_t lineEnd = std::min(text.find('\n', at), text.size());
    addComment(text, text.rfind('\n', sign - 1) + 1, sign - 1, text.substr(at, lineEnd - at));
    at = lineEnd;
  }
}

// Adds the ids of the comment that begins at `sign`. `words` is its text after MARK, up to the end
// of the line.
void CommentIgnores::addComment(std::string_view text, std::size_t lineBegin, std::size_t sign,
                                std::string_view words) {
  const auto lineEnd = static_cast<std::size_t>(words.data() + words.size() - text.data());
  IgnoreComment comment(words);
  if (!comment.isValid()) return;
  Part part{lineBegin, lineEnd};
  const bool hasOnlyComment = skipBlanks(text, lineBegin) == sign;
  if (!comment.isForFile() && hasOnlyComment) part.end = endOfNextStatement(text, lineEnd);
  for (std::string_view word = comment.nextName(); !word.empty(); word = comment.nextName()) {
    if (comment.isForFile()) {
      inFile_.emplace(word);
    } else {
      addPart(word, part);
    }
  }
}

// Adds a part. It must not begin before the last one of the same name.
void CommentIgnores::addPart(std::string_view name, const Part& part) {
  const auto found = parts_.find(name);
  std::vector<Part>& parts = found == parts_.end() ? parts_[std::string(name)] : found->second;
  if (!parts.empty() && part.begin <= parts.back().end) {
    parts.back().end = std::max(parts.back().end, part.end);
  } else {
    parts.push_back(part);
  }
}

// Returns the end of the first statement that begins at `from` or later and is no comment. Does not
// search again if the last result is still the next statement, as after several lines of comments.
std::uint64_t CommentIgnores::endOfNextStatement(std::string_view text, std::size_t from) {
  if (from > nextBegin_ || nextEnd_ == 0) {
    Statement next = nextStatement(text, from);
    while (next.isComment) next = nextStatement(text, next.end);
    nextBegin_ = next.begin;
    nextEnd_ = next.end;
  }
  return nextEnd_;
}

bool CommentIgnores::isIgnored(std::string_view name, const Finding& finding) const {
  if (inFile_.contains(name)) return true;
  const auto found = parts_.find(name);
  if (found == parts_.end() || !finding.range) return false;
  const std::uint64_t at = finding.range->begin.offset;
  const auto after =
      std::upper_bound(found->second.begin(), found->second.end(), at,
                       [](std::uint64_t offset, const Part& part) { return offset < part.begin; });
  return after != found->second.begin() && at <= std::prev(after)->end;
}

bool CommentIgnores::isIgnored(const Finding& finding) const {
  if (isIgnored("all", finding) || isIgnored(finding.id, finding)) return true;
  const FindingKind* const kind = kindOf(finding.id);
  return kind != nullptr && isIgnored(kind->group, finding);
}

}  // namespace vsa_tools
