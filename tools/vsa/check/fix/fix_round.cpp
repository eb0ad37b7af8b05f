#include "tools/vsa/check/fix/fix_round.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tools/vsa/check/selection/comment_ignores.h"
#include "tools/vsa/common/interrupt.h"

namespace vsa_tools {

namespace {

/// What --fix needs of the findings of a text.
struct Fixable {
  std::vector<std::vector<TextEdit>> edits;  // those to apply, of each finding
  std::uint64_t withEdits = 0;               // the number of findings with edits, applied or not
  std::uint64_t errors = 0;
};

/// Recognises findings with isAfterStop that are on the same line as the finding before. They may
/// only follow from that finding, as those about the words of "// comment; with two parts" do.
class SameLine {
 public:
  bool hasEarlier(const Finding& finding) {
    const std::uint64_t line = finding.range ? finding.range->begin.line : 0;
    const std::uint64_t before = std::exchange(last_, line);
    return finding.isAfterStop && line != 0 && line == before;
  }

 private:
  std::uint64_t last_ = 0;  // the line of the finding before
};

// Checks the whole text even if only the findings up to the stop are wanted. Otherwise, a text
// without the first mistake would seem worse, because its second mistake is found.
Fixable fixableIn(CheckedText& text, const FileCheckOptions& options, const LevelTable& levels) {
  Fixable found;
  const CommentIgnores ignores(text.text());
  SameLine sameLine;
  const FileCheck* check = nullptr;
  const FileCheck::Consumer consumer = [&](Finding&& finding) {
    found.errors += finding.level == Level::Error ? 1 : 0;
    const bool isFollowUp = sameLine.hasEarlier(finding);
    const bool isWanted =
        levels.levelOf(finding.id, finding.level).has_value() && !ignores.isIgnored(finding);
    if (!isWanted || finding.edits.empty()) return true;
    ++found.withEdits;
    const bool isBehindStop =
        finding.isAfterStop || (finding.range && finding.range->begin.offset > check->stopOffset());
    const bool isLeftOut = options.isFirstOnly && isBehindStop;
    if (!isLeftOut && !isFollowUp) found.edits.push_back(std::move(finding.edits));
    return true;
  };
  FileCheckOptions whole = options;
  whole.isFirstOnly = false;
  FileCheck wholeCheck(text, whole, levels.rules(), consumer);
  check = &wholeCheck;
  wholeCheck.run();
  return found;
}

}  // namespace

EditedText fixedOnce(CheckedText& text, const FileCheckOptions& options, const LevelTable& levels) {
  const Fixable before = fixableIn(text, options, levels);
  EditedText edited = withEdits(text.text(), before.edits);
  if (edited.fixed == 0) return {};
  CheckedText after(CheckedText::InMemory{edited.text});
  const Fixable remaining = fixableIn(after, options, levels);
  const bool isBetter = remaining.errors <= before.errors && remaining.withEdits < before.withEdits;
  return isBetter && !isInterrupted() ? std::move(edited) : EditedText();
}

}  // namespace vsa_tools
