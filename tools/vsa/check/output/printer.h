// Printer: writes rendered findings to standard output and counts them. It prints no more findings
// after --max-diagnostics.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vsa/check/output/format.h"
#include "tools/vsa/common/files/progress.h"

namespace vsa_tools {

struct RenderedFinding {
  Level level;
  std::string text;
};

/// Prints the findings of all files. Several threads may call isFull(). The other functions must be
/// called by one thread at a time.
class Printer {
 public:
  Printer(Format& format, std::uint64_t maxFindings, Progress& progress)
      : format_(format), maxFindings_(maxFindings), progress_(progress) {}

  void begin() { write(format_.begin()); }
  /// Prints findings of one file, until --max-diagnostics findings of all files are printed.
  void print(const std::vector<RenderedFinding>& findings);
  void printClean(const std::string& file) { write(format_.addClean(file)); }
  /// Prints the end of the output to standard output. Then prints the summary if it is not empty.
  /// The summary goes to standard output if the format is for people, otherwise to standard error.
  /// Returns whether everything for standard output was written.
  bool end(const Totals& totals, const std::string& summary);

  /// Whether a finding was left out because of --max-diagnostics, or a write to standard output has
  /// failed.
  bool isFull() const { return isFull_; }
  /// Returns how many findings of that level were printed.
  std::uint64_t count(Level level) const { return counts_[static_cast<int>(level)]; }

 private:
  void write(std::string_view text);

  Format& format_;
  std::uint64_t maxFindings_;
  Progress& progress_;
  std::uint64_t counts_[3] = {};
  std::uint64_t printed_ = 0;
  std::atomic<bool> isFull_ = false;
  bool isFailed_ = false;
};

}  // namespace vsa_tools
