#include "tools/vsa/common/read_scene.h"

#include <utility>

#include "tools/vsa/common/files/progress.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

void addTo(std::vector<Loss>& losses, std::optional<Loss> loss) {
  if (loss) losses.push_back(*std::move(loss));
}

FileOutcome readOpen(vsa::Scene& scene, const InputFile& input, vsa::ReadOptions options) {
  FileOutcome outcome;
  std::vector<Loss> cuts;
  ReadingEnd end;
  Progress progress("reading");
  options.keptDiagnostics = 0;
  options.onProgress = [&, next = std::move(options.onProgress)](const vsa::ReadProgress& at) {
    if (at.bytesTotal) progress.update(at.bytesRead, *at.bytesTotal);
    return !next || next(at);
  };
  options.onDiagnostic = [&, next = std::move(options.onDiagnostic)](const vsa::Diagnostic& found) {
    end.isToldBy(found);
    if (std::optional<Loss> loss = lossOf(found)) {
      cuts.push_back(*std::move(loss));
    } else if (next) {
      progress.hide();
      next(found);
    }
  };
  outcome.read = vsa::readSourceInto(scene, *input.source, options);
  addTo(outcome.losses, byteLoss(*input.source));
  outcome.losses.insert(outcome.losses.end(), cuts.begin(), cuts.end());
  addTo(outcome.losses, end.loss(outcome.read));
  return outcome;
}

}  // namespace

std::optional<FileOutcome> readScene(vsa::Scene& scene, const std::string& name,
                                     const vsa::ReadOptions& options) {
  const InterruptScope interrupts;
  const InputFile input = openInput(name);
  if (input.problem.empty()) return readOpen(scene, input, options);
  printError(shownName(name) + ": " + input.problem);
  return std::nullopt;
}

}  // namespace vsa_tools
