// Comments of a text that name findings to ignore:
//
//   # vsa-check: ignore narrowing              in the next statement
//   lamp1.count = 2.7;  # vsa-check: ignore narrowing, wrong-type -- a reason
//   # vsa-check: ignore-file too-few-elements  in the whole file
//
// A comment after a statement, as in the second example, applies to its own line. The text after
// "--" is for people only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/finding.h"

namespace vsa_tools {

class CommentIgnores {
 public:
  explicit CommentIgnores(std::string_view text);

  /// Returns whether a comment ignores the finding. A finding about the whole file has no position,
  /// so only `ignore-file` applies to it.
  bool isIgnored(const Finding& finding) const;

 private:
  /// An id or group that is ignored from the offset `begin` to `end`, both inclusive.
  struct Ignore {
    std::uint64_t begin, end;
    std::string name;
  };

  void addComment(std::string_view text, std::size_t at);

  std::vector<Ignore> ignores_;
};

}  // namespace vsa_tools
