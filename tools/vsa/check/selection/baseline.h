// A baseline: the findings that are already known, so that only new ones are reported. A finding is
// identified by its file, its id, its message and the text of its line, up to 100 bytes before and
// after its place. A finding about the whole file has no line. A finding is still known after it
// moves to another line.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/text/checked_text.h"

namespace vsa_tools {

/// The number of known findings of one file, by the key of the finding.
using KnownFindings = std::map<std::tuple<std::string, std::string, std::string>, std::uint64_t>;

class Baseline {
 public:
  /// Reads a baseline file. Throws std::runtime_error if it cannot be read or is no baseline.
  static Baseline read(const std::string& path);
  /// Writes a baseline file, or replaces an old one. If that fails, leaves the old one unchanged
  /// and throws std::runtime_error.
  void write(const std::string& path) const;

  /// Returns the known findings of a file. The caller removes a finding from them when it occurs
  /// again.
  KnownFindings of(const std::string& file) const;
  void add(const std::string& file, const KnownFindings& findings);

  static std::tuple<std::string, std::string, std::string> keyOf(const Finding& finding,
                                                                 const CheckedText& text);

 private:
  std::map<std::string, KnownFindings> files_;
};

/// Removes one occurrence of the finding from `known`. Returns false if `known` does not contain
/// it.
bool takeKnown(KnownFindings& known, const Finding& finding, const CheckedText& text);

}  // namespace vsa_tools
