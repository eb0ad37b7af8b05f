// FileFindings: selects the findings of one file, sorts and renders them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/output/format.h"
#include "tools/vsa/check/output/printer.h"
#include "tools/vsa/check/selection/baseline.h"
#include "tools/vsa/check/selection/comment_ignores.h"
#include "tools/vsa/check/selection/level_table.h"

namespace vsa_tools {

class FileFindings {
 public:
  /// A function that receives rendered findings when there are too many to keep.
  using Flush = std::function<void(const std::vector<RenderedFinding>&)>;

  FileFindings(const std::string& file, const CheckedText& text, const LevelTable& levels,
               const Format& format, KnownFindings known, Flush flush);

  /// Adds a finding unless it is ignored or in the baseline. For the format log, adds it if it has
  /// a log line, even if it is ignored or in the baseline. `stopLine` is the line at which the
  /// reader stops, or 0.
  void add(Finding&& finding, std::uint64_t stopLine);
  /// Sorts and renders what has been added and not flushed since the last call. Does not sort for
  /// the format log.
  std::vector<RenderedFinding> take();

  bool hasFound() const { return count_ > 0; }
  std::uint64_t count() const { return count_; }
  bool isUnreadable() const { return isUnreadable_; }
  std::uint64_t inBaseline() const { return inBaseline_; }
  const KnownFindings& found() const { return found_; }
  /// Makes add() treat all later findings as known and collect them in found(). Ignored findings
  /// are not collected. Has no effect for the format log.
  void recordFound() { isRecording_ = true; }

 private:
  bool isSelected(Finding& finding);

  const std::string& file_;
  const CheckedText& text_;
  const LevelTable& levels_;
  const Format& format_;
  std::optional<CommentIgnores> ignores_;  // set by the first finding: most texts have none
  KnownFindings known_, found_;
  Flush flush_;
  std::vector<Finding> findings_;
  std::uint64_t stopLine_ = 0;
  bool isStopShown_ = false;
  bool isRecording_ = false;
  bool isUnreadable_ = false;
  std::uint64_t inBaseline_ = 0;
  std::uint64_t count_ = 0;
};

}  // namespace vsa_tools
