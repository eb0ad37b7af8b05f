#include "tools/vsa/fmt/comparison/reading_check.h"

#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/fmt/comparison/scene_digest.h"
#include "tools/vsa/fmt/layout/short_list_source.h"

namespace vsa_tools {

ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments) {
  SceneDigest digest;
  ShortListSource source(text);
  vsa::ReadOptions options = arguments.options();
  options.keptDiagnostics = 0;
  const vsa::ReadOutcome outcome = vsa::readSourceInto(digest, source, options);
  return {outcome.isComplete(), digest.value()};
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
