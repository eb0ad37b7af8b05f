// The formats full, line, log and github: lines of text.
#pragma once

#include "tools/vsa/check/output/format.h"

namespace vsa_tools {

/// Prints findings as compilers do: a line with the message, the source line with carets, the hint,
/// and the notes with their source lines. A finding about the whole file has no source line.
class FullFormat final : public Format {
 public:
  explicit FullFormat(bool isColoured) : isColoured_(isColoured) {}
  std::string render(const Finding& finding, const FindingPlace& place) const override;
  bool isForPeople() const override { return true; }

 private:
  std::string coloured(const char* code, std::string_view text) const;
  std::string messageLine(const Finding& finding, const FindingPlace& place) const;
  std::string excerpt(const vsa::TextRange& range, const FindingPlace& place,
                      const char* colour) const;

  bool isColoured_;
};

/// Prints each finding as one line: FILE:LINE:COLUMN: LEVEL: MESSAGE (HINT) [ID]. The hint may be
/// missing. A finding about the whole file is at 1:1.
class LineFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
};

/// Prints the log line of each finding.
class LogFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
  bool isLog() const override { return true; }
};

/// Prints workflow commands, which GitHub shows as annotations.
class GithubFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
};

/// Returns "FILE:LINE:COLUMN: ", or "FILE: " if `range` is not set.
std::string placePrefix(const std::string& file, const std::optional<vsa::TextRange>& range);

}  // namespace vsa_tools
