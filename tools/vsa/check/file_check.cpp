#include "tools/vsa/check/file_check.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>

#include "tools/vsa/check/kinds.h"
#include "tools/vsa/check/reading/diagnostic_finding.h"
#include "tools/vsa/check/reading/read_on.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/input/encoding.h"

namespace vsa_tools {

namespace {

// This exception ends a reading or the rules when the consumer needs no more findings.
struct EnoughFindings {};

constexpr std::size_t HEAD_BYTES = 16;
// The minimum size in bytes of a text whose reading reports its progress. Shorter texts are read in
// a few milliseconds. The reports took 1 % of the time of vsa check for 2,000 files of 7 KB
// (`./dev bench --check`).
constexpr std::size_t MIN_PROGRESS_BYTES = std::size_t{1} << 16;

// Returns a hash that identifies a diagnostic of the reader. Two diagnostics with the same id,
// place and message are the same finding.
std::uint64_t keyOf(const vsa::Diagnostic& found) {
  return std::hash<std::string_view>()(found.message) * 31 + found.range.begin.offset * 64 +
         static_cast<std::uint64_t>(found.id);
}

// Returns whether a file that begins with `head` is compressed, or in another encoding.
bool isNoText(std::string_view head) {
  return foreignEncoding(head) != nullptr || compressorOf(head) != nullptr;
}

}  // namespace

void FileCheck::run() {
  try {
    if (!text_.isOpen()) {
      // Without a problem, Ctrl-C ended the opening.
      if (!text_.problem().empty()) consume(unreadable(text_.problem()));
    } else if (text_.isKept() && isNoText(text_.text().substr(0, HEAD_BYTES))) {
      // The file is not read, because all diagnostics would only follow from its wrong encoding or
      // its compression.
      applyRules(vsa::Scene());
    } else {
      read();
    }
  } catch (const EnoughFindings&) {
    // The consumer needs no more findings, so nothing remains to do.
  }
}

// Starts the rules about a large text. They take longer than the reading. Most of them need only
// the text, and the others wait for the scene when they need it.
void FileCheck::startTextRules() {
  if (options_.isReaderOnly || !text_.isKept()) return;
  if (text_.text().size() < options_.minConcurrentBytes) return;
  try {
    textRules_ = std::make_unique<ConcurrentTextRules>(text_.text(), rules_);
  } catch (const std::system_error&) {
    // Without another thread, the rules run after the reading.
  }
}

void FileCheck::read() {
  startTextRules();
  std::optional<vsa::Diagnostic> stop;
  vsa::ReadOptions options = readOptions();
  options.onDiagnostic = [&](const vsa::Diagnostic& found) {
    if (found.endedReading || found.id == vsa::DiagnosticId::UnexpectedEof) stop = found;
    seen_.push_back(keyOf(found));
    consume(findingOf(found));
  };
  const vsa::ReadOutcome outcome = text_.readInto(scene_, options);
  if (outcome.status == vsa::ReadStatus::HostException) {
    std::rethrow_exception(outcome.exception);
  }
  const bool cannotAllocate = stop && stop->id == vsa::DiagnosticId::CannotAllocate;
  if (outcome.status == vsa::ReadStatus::OutOfMemory && !cannotAllocate) {
    consume(unreadable("reading it needs more memory than there is"));
  }
  if (!text_.problem().empty()) {
    consume(unreadable("reading failed midway: " + text_.problem()));
  } else if (outcome.status == vsa::ReadStatus::Unreadable) {
    consume(unreadable(outcome.message));
  }
  // Nothing else reads a text that is too long either.
  if (outcome.limit == vsa::Limit::TextBytes) return;
  const bool isStopped = outcome.status == vsa::ReadStatus::StoppedByError ||
                         outcome.status == vsa::ReadStatus::CutOff || cannotAllocate;
  if (isStopped && stop) stopOffset_ = stop->range.end.offset;
  if (isStopped && stop && !options_.isFirstOnly && text_.keep()) {
    readOnAfter(*stop);
  } else {
    applyRules(scene_);
  }
}

void FileCheck::readOnAfter(const vsa::Diagnostic& stop) {
  stopLine_ = stop.range.begin.line;
  hints_.reset();  // if the text was not in memory before, it has been read into memory now
  std::sort(seen_.begin(), seen_.end());
  // readOn() may read the text several times. Each time, it may report a diagnostic again.
  std::set<std::uint64_t> reported;
  const ReadOnResult result =
      readOn(text_.text(), stop, readOptions(), [&](const vsa::Diagnostic& found) {
        if (reported.insert(keyOf(found)).second) consumeNew(found);
      });
  // Rules that are already running inspect the text with its wrong statements, so they run again.
  textRules_.reset();
  applyRules({.text = text_.text(),
              .scene = result.scene,
              .types = options_.types,
              .statements = result.statements,
              .lostInputs = &result.lostInputs});
}

void FileCheck::consumeNew(const vsa::Diagnostic& diagnostic) {
  if (std::binary_search(seen_.begin(), seen_.end(), keyOf(diagnostic))) return;
  Finding finding = findingOf(diagnostic);
  finding.isAfterStop = true;
  finding.logLine.clear();
  consume(std::move(finding));
}

void FileCheck::applyRules(const vsa::Scene& scene) {
  applyRules({.text = text_.isKept() ? text_.text() : std::string_view(),
              .isTextKept = text_.isKept(),
              .scene = scene,
              .types = options_.types});
}

void FileCheck::applyRules(const RuleInput& input) {
  if (options_.isReaderOnly) return;
  followUps_.finish();
  const FindingConsumer deliver = [this](Finding&& finding) {
    const bool isBehindStop = finding.range && finding.range->begin.offset > stopOffset_;
    if (options_.isFirstOnly && isBehindStop) return;
    if (!followUps_.contains(finding, text_.text())) consume(std::move(finding));
  };
  if (textRules_ != nullptr) {
    textRules_->deliver(input.scene, deliver);
    runSceneRules(input, rules_, deliver);
  } else {
    runRules(input, rules_, deliver);
  }
}

// Returns the options for reading the text. Ctrl-C during the reading of a text that reports its
// progress ends it, and the part that was read is checked. A reading that begins after Ctrl-C is
// not ended.
vsa::ReadOptions FileCheck::readOptions() const {
  vsa::ReadOptions options = options_.reading.options();
  options.keptDiagnostics = 0;  // the consumer receives all diagnostics
  options.onProgress = nullptr;
  if (text_.isKept() && text_.text().size() < MIN_PROGRESS_BYTES) return options;
  options.onProgress = [this, wasInterrupted = isInterrupted()](const vsa::ReadProgress& progress) {
    if (options_.onProgress) options_.onProgress(progress);
    return wasInterrupted || !isInterrupted();
  };
  return options;
}

// Returns the finding of a diagnostic. It has no hint if only the reader's diagnostics are
// findings, or if the text is not in memory, because it is large.
Finding FileCheck::findingOf(const vsa::Diagnostic& diagnostic) {
  Finding finding = vsa_tools::findingOf(diagnostic, options_.reading);
  followUps_.add(diagnostic);
  if (!text_.isKept() || options_.isReaderOnly) return finding;
  if (!hints_) hints_.emplace(text_.text(), options_.types);
  hints_->addTo(diagnostic, finding);
  return finding;
}

void FileCheck::consume(Finding&& finding) {
  if (!consumer_(std::move(finding))) throw EnoughFindings();
}

}  // namespace vsa_tools
