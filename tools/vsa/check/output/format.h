// The formats in which vsa check prints findings.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/text/checked_text.h"

namespace vsa_tools {

/// Where a finding is.
struct FindingPlace {
  const std::string& file;  ///< The name as it is shown.
  const CheckedText& text;
  /// Only for the first finding after the line at which the reader stops: that line.
  std::optional<std::uint64_t> stopLine;
};

/// The totals of all files.
struct Totals {
  std::uint64_t files = 0;
  std::uint64_t filesWithFindings = 0;
  std::uint64_t unreadable = 0;
  std::uint64_t tooLarge = 0;    ///< Files too large for the rules about texts.
  std::uint64_t inBaseline = 0;  ///< Findings that are in the baseline.
  std::uint64_t fixed = 0;       ///< Findings whose edits were applied.
  bool isEndedEarly = false;     ///< Whether --max-diagnostics was reached.
};

/// One output format. render() may be called by several threads, the other functions by one.
class Format {
 public:
  virtual ~Format() = default;
  /// The finding in this format, with its line end.
  virtual std::string render(const Finding& finding, const FindingPlace& place) const = 0;
  /// What is printed before all findings.
  virtual std::string begin() { return {}; }
  /// What is printed for a finding that was rendered.
  virtual std::string add(std::string rendered) { return rendered; }
  /// What is printed for a file without findings.
  virtual std::string addClean(const std::string& /*file*/) { return {}; }
  /// What is printed after all findings.
  virtual std::string end(const Totals& /*totals*/) { return {}; }
  /// Whether the output is for people, so that the summary is a part of it.
  virtual bool isForPeople() const { return false; }
  /// Whether only the reader's own log is printed.
  virtual bool isLog() const { return false; }
};

enum class FormatName : std::uint8_t { Full, Line, Log, Json, Sarif, Github, Junit };

/// `isColoured` affects only Full. `isStrict` affects only Junit: warnings are then failures.
std::unique_ptr<Format> makeFormat(FormatName name, bool isColoured, bool isStrict);

}  // namespace vsa_tools
