#include "tools/vsa/check/file_findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "tools/vsa/check/kinds.h"

namespace vsa_tools {

namespace {

// The maximum number of findings of one file that are kept in memory to be sorted. A finding is
// made from texts that may be far longer, and that are freed again. Kept findings lie between these
// freed texts and fragment the memory, so the limit is small: with names of 20 KB, 4096 findings
// took 50 MB.
constexpr std::size_t MAX_KEPT = 1024;

// Returns the sort key of a finding. Findings about the whole file come first, and diagnostics that
// only reading on has found (see Finding::isAfterStop) come last.
auto orderOf(const Finding& finding) {
  return std::tuple(finding.isAfterStop, finding.range.has_value(),
                    finding.range ? finding.range->begin.offset : 0);
}

}  // namespace

FileFindings::FileFindings(const std::string& file, const CheckedText& text,
                           const LevelTable& levels, const Format& format, KnownFindings known,
                           Flush flush)
    : file_(file),
      text_(text),
      levels_(levels),
      format_(format),
      known_(std::move(known)),
      flush_(std::move(flush)) {
}

void FileFindings::add(Finding&& finding, std::uint64_t stopLine) {
  stopLine_ = stopLine;
  if (!isSelected(finding)) return;
  ++count_;
  findings_.push_back(std::move(finding));
  if (findings_.size() == MAX_KEPT) flush_(take());
}

bool FileFindings::isSelected(Finding& finding) {
  isUnreadable_ = isUnreadable_ || finding.id == UNREADABLE_FILE;
  if (format_.isLog()) return !finding.logLine.empty();
  const std::optional<Level> level = levels_.levelOf(finding.id, finding.level);
  if (!level) return false;
  if (!ignores_) ignores_.emplace(text_.text());
  if (ignores_->isIgnored(finding)) return false;
  finding.level = *level;
  if (isRecording_) ++found_[Baseline::keyOf(finding, text_)];
  if (!isRecording_ && !takeKnown(known_, finding, text_)) return true;
  ++inBaseline_;
  return false;
}

std::vector<RenderedFinding> FileFindings::take() {
  std::vector<Finding> findings = std::exchange(findings_, {});
  if (!format_.isLog()) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return orderOf(a) < orderOf(b); });
  }
  std::vector<RenderedFinding> rendered;
  for (Finding& finding : findings) {
    FindingPlace place{file_, text_, {}};
    if (finding.isAfterStop && !std::exchange(isStopShown_, true)) place.stopLine = stopLine_;
    rendered.push_back({finding.level, format_.render(finding, place)});
    // The finding and its rendered text together would take twice the memory, so the finding is
    // freed.
    finding = {};
  }
  return rendered;
}

}  // namespace vsa_tools
