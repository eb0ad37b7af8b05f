#include "tools/vsa/fmt/comparison/reading_check.h"

#include <vsa/host_scene.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/fmt/layout/short_list_source.h"

namespace vsa_tools {

ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments) {
  vsa::ReadOptions options = arguments.options();
  options.keptDiagnostics = 0;
  // The limit is one of the text, which is not what the reader gets.
  if (text.size().value_or(0) > options.limits.textBytes) return {};
  options.limits.textBytes = vsa::UNLIMITED;
  ShortListSource source(text);
  const vsa::ReadResult read = vsa::readSource(source, options);
  const vsa::AppliedCounts& applied = read.applied;
  return {read.isComplete(), applied.nodes,   applied.elements, applied.values,
          applied.links,     read.errorCount, read.warningCount};
}

std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments) {
  vsa::HostScene scene;
  const vsa::ReadOutcome outcome = vsa::readSourceInto(scene, text, arguments.options());
  std::vector<std::string> lines;
  for (const vsa::Diagnostic& found : outcome.diagnostics) {
    if (!found.endedReading) continue;
    const Position position{static_cast<long>(found.range.begin.line),
                            static_cast<long>(found.range.begin.column)};
    lines.push_back(diagnosticLine(name, position, "error", arguments.messageOf(found)));
  }
  if (lines.empty()) lines.push_back(diagnosticLine(name, std::nullopt, "error", outcome.message));
  return lines;
}

}  // namespace vsa_tools
