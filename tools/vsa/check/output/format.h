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

struct FindingPlace {
  const std::string& file;  ///< The file name to show.
  const CheckedText& text;
  /// The line at which the reader stops. Set only for the first finding with isAfterStop, so that
  /// the line is shown once for each file.
  std::optional<std::uint64_t> stopLine;
};

struct Totals {
  std::uint64_t files = 0;
  /// Files that were checked to their end or have findings, and problems of the arguments. There
  /// are fewer than `files` if the check ended early or after Ctrl-C.
  std::uint64_t checkedFiles = 0;
  std::uint64_t filesWithFindings = 0;
  std::uint64_t unreadable = 0;
  std::uint64_t tooLarge = 0;    ///< Files too large for the rules about texts.
  std::uint64_t inBaseline = 0;  ///< Findings that are in the baseline.
  std::uint64_t fixed = 0;       ///< Findings whose edits were applied.
  bool isEndedEarly = false;     ///< Whether Printer::isFull() is true.
  bool isInterrupted = false;    ///< Whether Ctrl-C ended the check.
};

/// One output format. Several threads may call the const functions at the same time. The other
/// functions must be called by one thread at a time.
class Format {
 public:
  virtual ~Format() = default;
  /// Returns the finding in this format.
  virtual std::string render(const Finding& finding, const FindingPlace& place) const = 0;
  /// Returns the text to print before all findings.
  virtual std::string begin() { return {}; }
  /// Returns the text to print for a finding, from the result of render().
  virtual std::string add(std::string rendered) { return rendered; }
  /// Returns the text to print for a file without findings.
  virtual std::string addClean(const std::string& /*file*/) { return {}; }
  /// Returns the text to print after all findings.
  virtual std::string end(const Totals& /*totals*/) { return {}; }
  /// Whether the output is for people. The summary is then a part of it. Otherwise the summary is
  /// printed to standard error.
  virtual bool isForPeople() const { return false; }
  /// Whether only findings with a log line are printed.
  virtual bool isLog() const { return false; }
};

enum class FormatName : std::uint8_t { Full, Line, Log, Json, Sarif, Github, Junit };

/// Returns the format of that name. `isColoured` affects only Full. `isStrict` affects only Junit:
/// warnings are then failures.
std::unique_ptr<Format> makeFormat(FormatName name, bool isColoured, bool isStrict);

}  // namespace vsa_tools
