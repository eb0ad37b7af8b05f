#include "tools/vsa/fmt/reading/reading_check.h"

#include <optional>

#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/input/loss.h"

namespace vsa_tools {

namespace {

// A type that no node has. A reading that keeps only nodes of this type checks the whole text but
// stores no values.
constexpr char NO_TYPE[] = "?";

/// Inspects the bytes of another source, which must outlive the object.
class InspectedText final : public InspectedSource {
 public:
  explicit InspectedText(vsa::Source& text) : text_(text) {}
  std::optional<std::uint64_t> size() const override { return text_.size(); }

 private:
  std::size_t readRaw(char* to, std::size_t capacity) override {
    return text_.read({to, capacity});
  }
  std::string rawError() const override { return text_.error(); }

  vsa::Source& text_;
};

}  // namespace

ReadingCheck checkReading(vsa::Source& text, const ReadArguments& arguments,
                          std::uint64_t partBytes) {
  vsa::ReadOptions options = arguments.options();
  options.keptDiagnostics = 0;
  // The limit is tested here, because it is about the original text and the reader receives a
  // changed text. An unknown size is less than any limit.
  if (text.size() > options.limits.textBytes) return {};
  options.limits.textBytes = vsa::UNLIMITED;
  ShortListSource source(text, partBytes);
  ReadingCheck all;
  do {
    const vsa::ReadResult read = vsa::readSource(source, options);
    all.isComplete = read.isComplete() && !source.endedEarly();
    all.nodes += read.applied.nodes;
    all.elements += read.applied.elements;
    all.values += read.applied.values;
    all.links += read.applied.links;
    all.errors += read.errorCount;
    all.warnings += read.warningCount;
  } while (all.isComplete && source.nextPart());
  return all;
}

std::vector<std::string> endingDiagnostics(const std::string& name, vsa::Source& text,
                                           const ReadArguments& arguments) {
  vsa::ReadOptions options = arguments.options();
  options.wantedTypes = {NO_TYPE};
  InspectedText source(text);
  const vsa::ReadResult outcome = vsa::readSource(source, options);
  std::vector<std::string> lines;
  for (const vsa::Diagnostic& found : outcome.diagnostics) {
    if (!found.endedReading) continue;
    const Position position{static_cast<long>(found.range.begin.line),
                            static_cast<long>(found.range.begin.column)};
    const std::optional<Loss> loss = lossOf(found);
    lines.push_back(
        diagnosticLine(name, position, "error", loss ? loss->text : arguments.messageOf(found)));
  }
  if (lines.empty() && !outcome.isComplete())
    lines.push_back(diagnosticLine(name, std::nullopt, "error", outcome.message));
  if (const std::optional<Loss> loss = byteLoss(source))
    lines.push_back(diagnosticLine(name, loss->position, "error", loss->text));
  return lines;
}

}  // namespace vsa_tools
