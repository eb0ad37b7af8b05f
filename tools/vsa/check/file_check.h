// FileCheck: finds the problems of one file.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <vsa/types.h>
#include "tools/vsa/check/finding.h"
#include "tools/vsa/check/hints/hints.h"
#include "tools/vsa/check/reading/follow_ups.h"
#include "tools/vsa/check/rules/concurrent_text_rules.h"
#include "tools/vsa/check/rules/rule.h"
#include "tools/vsa/check/text/checked_text.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// The settings for checking a file.
struct FileCheckOptions {
  const ReadArguments& reading;
  /// Whether the text after the place where the reader stops is not read, and the findings of rules
  /// behind that place are left out.
  bool isFirstOnly = false;
  /// Whether only the reader's diagnostics are findings, without rules and hints.
  bool isReaderOnly = false;
  /// The node types of --types. They must outlive the check.
  std::span<const vsa::TypeDescription> types = {};
  /// A function that is called while a file is read. May be empty.
  std::function<void(const vsa::ReadProgress&)> onProgress = {};
  /// The minimum size in bytes of a text whose rules run on a second thread while it is read.
  std::size_t minConcurrentBytes = std::numeric_limits<std::size_t>::max();
};

class FileCheck {
 public:
  /// A function that receives a finding. It returns false if it needs no more findings.
  using Consumer = std::function<bool(Finding&&)>;

  /// All arguments must outlive this object.
  FileCheck(CheckedText& text, const FileCheckOptions& options, const RuleSet& rules,
            const Consumer& consumer)
      : text_(text), options_(options), rules_(rules), consumer_(consumer) {}

  /// Passes the findings to the consumer until it needs no more. First are the reader's diagnostics
  /// in the order of its log, and then the reason why the file could not be read to its end, if
  /// there is one. Next are the diagnostics that only reading on finds. The findings of the rules
  /// are last. A file that cannot be opened has one finding. A compressed file and a
  /// text in another encoding are not read (unless they are too large to be kept), so they only
  /// have findings of the rules. A text that is longer than ReadLimits::textBytes only has findings
  /// of the reader. Throws what the consumer throws.
  void run();

  /// Returns the line at which the reader stops. 0 until the findings after that line are searched
  /// for, and if they are not searched for.
  std::uint64_t stopLine() const { return stopLine_; }
  /// Returns the offset after the mistake at which the reader stops, or the maximum if it does not
  /// stop. It is known before the findings of rules are passed on.
  std::uint64_t stopOffset() const { return stopOffset_; }

 private:
  void read();
  void startTextRules();
  void readOnAfter(const vsa::Diagnostic& stop);
  void applyRules(const vsa::Scene& scene);
  void applyRules(const RuleInput& input);
  vsa::ReadOptions readOptions() const;
  Finding findingOf(const vsa::Diagnostic& diagnostic);
  void consume(Finding&& finding);
  void consumeNew(const vsa::Diagnostic& diagnostic);

  CheckedText& text_;
  const FileCheckOptions& options_;
  const RuleSet& rules_;
  const Consumer& consumer_;
  std::optional<Hints> hints_;  // set by the first diagnostic that needs it: most texts have none
  std::uint64_t stopLine_ = 0;
  std::uint64_t stopOffset_ = std::numeric_limits<std::uint64_t>::max();
  FollowUps followUps_;
  std::vector<std::uint64_t> seen_;  // the keys of the findings of the reader
  vsa::Scene scene_;
  // Null if the rules run after the reading. Its thread uses the scene, the bytes of `text_` and
  // the rules, so this member is destroyed first.
  std::unique_ptr<ConcurrentTextRules> textRules_;
};

}  // namespace vsa_tools
