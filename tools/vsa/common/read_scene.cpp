#include "tools/vsa/common/read_scene.h"

#include <utility>

#include "tools/vsa/common/files/progress.h"

namespace vsa_tools {

namespace {

/// Adds the reason why the reading is not complete, if no diagnostic contains that reason.
void addEnd(const vsa::ReadOutcome& read, bool hasReason, std::vector<Loss>& losses) {
  if (read.status == vsa::ReadStatus::Unreadable) {
    losses.push_back({"reading failed midway: " + read.message, std::nullopt});
  } else if (read.status == vsa::ReadStatus::Cancelled) {
    losses.push_back({"interrupted", std::nullopt});
  } else if (!read.isComplete() && !hasReason) {
    losses.push_back({read.message, std::nullopt});
  }
}

}  // namespace

FileOutcome readScene(vsa::Scene& scene, const InputFile& input, vsa::ReadOptions options) {
  FileOutcome outcome;
  std::vector<Loss> cuts;
  bool hasReason = false;
  Progress progress("reading");
  options.keptDiagnostics = 0;
  options.onProgress = [&, next = std::move(options.onProgress)](const vsa::ReadProgress& at) {
    if (at.bytesTotal) progress.update(at.bytesRead, *at.bytesTotal);
    return !next || next(at);
  };
  options.onDiagnostic = [&, next = std::move(options.onDiagnostic)](const vsa::Diagnostic& found) {
    hasReason |= found.endedReading || found.id == vsa::DiagnosticId::OverLimit;
    if (std::optional<Loss> loss = lossOf(found)) {
      cuts.push_back(*std::move(loss));
    } else if (next) {
      progress.hide();
      next(found);
    }
  };
  outcome.read = vsa::readSourceInto(scene, *input.source, options);
  if (std::optional<Loss> loss = byteLoss(*input.source))
    outcome.losses.push_back(*std::move(loss));
  outcome.losses.insert(outcome.losses.end(), cuts.begin(), cuts.end());
  addEnd(outcome.read, hasReason, outcome.losses);
  return outcome;
}

}  // namespace vsa_tools
