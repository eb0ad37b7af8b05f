// Comments of a text that name findings to ignore:
//
//   # vsa-check: ignore narrowing              in the next statement
//   lamp1.count = 2.7;  # vsa-check: ignore narrowing, wrong-type -- a reason
//   # vsa-check: ignore-file too-few-elements  in the whole file
//
// A comment after a statement, as in the second example, applies to its own line. A name is an id,
// a group, or "all". The text after "--" is for people only.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/finding.h"

namespace vsa_tools {

/// The words of a comment that ignores findings: a command and the names after it, up to "--".
class IgnoreComment {
 public:
  /// `words` is the text of the comment after "vsa-check:".
  explicit IgnoreComment(std::string_view words);

  /// Whether the command is one of the two that exist.
  bool isValid() const { return command_ == "ignore" || isForFile(); }
  bool isForFile() const { return command_ == "ignore-file"; }
  /// Returns the next name, or an empty text after the last one.
  std::string_view nextName();

 private:
  std::string_view rest_;
  std::string_view command_;
};

/// Returns the text after "vsa-check:" of a comment that begins with it, or nothing for any other
/// comment. `comment` begins with "#".
std::optional<std::string_view> wordsForCheck(std::string_view comment);

class CommentIgnores {
 public:
  explicit CommentIgnores(std::string_view text);

  /// Returns whether a comment ignores the finding. A finding about the whole file has no position,
  /// so only `ignore-file` applies to it.
  bool isIgnored(const Finding& finding) const;

 private:
  /// A part of the text from the offset `begin` to `end`, both inclusive.
  struct Part {
    std::uint64_t begin, end;
  };

  void addComment(std::string_view text, std::size_t lineBegin, std::size_t sign,
                  std::string_view words);
  void addPart(std::string_view name, const Part& part);
  std::uint64_t endOfNextStatement(std::string_view text, std::size_t from);
  bool isIgnored(std::string_view name, const Finding& finding) const;

  // The ids and groups that are ignored in the whole file.
  std::set<std::string, std::less<>> inFile_;
  // The parts of the text in which an id or group is ignored, in their order. No two overlap.
  std::map<std::string, std::vector<Part>, std::less<>> parts_;
  // The next statement after the last comment that asked for it.
  std::uint64_t nextBegin_ = 0, nextEnd_ = 0;
};

}  // namespace vsa_tools
