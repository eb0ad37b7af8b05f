// The formats full, line, log and github: lines of text.
#pragma once

#include "tools/vsa/check/output/format.h"

namespace vsa_tools {

/// Prints findings as compilers do: the message in one line, the source line, carets, notes, and
/// the hint.
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

/// FILE:LINE:COLUMN: LEVEL: MESSAGE [ID], one line a finding.
class LineFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
};

/// The lines of the reader's log.
class LogFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
  bool isLog() const override { return true; }
};

/// Workflow commands, which GitHub shows as annotations.
class GithubFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
};

/// "FILE:LINE:COLUMN: ", or "FILE: " if `range` is not set.
std::string placePrefix(const std::string& file, const std::optional<vsa::TextRange>& range);

}  // namespace vsa_tools
