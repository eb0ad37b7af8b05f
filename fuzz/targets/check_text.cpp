// Checks a text as vsa check does, but with all rules. Renders each finding in every format.
// Positions and edits must be inside the text, lines and columns must not be 0, and it must be
// possible to apply the edits. The last byte of the input selects whether the text after the place
// where the reader stops is checked, too, and whether the rules run on a second thread.
#include <memory>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/targets.h"
#include "tools/vsa/check/file_check.h"
#include "tools/vsa/check/fix/apply_edits.h"
#include "tools/vsa/check/output/format.h"
#include "tools/vsa/check/selection/comment_ignores.h"

namespace vsa_fuzz {

namespace {

using vsa_tools::CheckedText;
using vsa_tools::FileCheck;
using vsa_tools::Finding;
using vsa_tools::Format;
using vsa_tools::FormatName;

void checkRange(const vsa::TextRange& range, std::string_view text) {
  const bool isInside = range.begin.offset <= range.end.offset && range.end.offset <= text.size();
  if (!isInside) fail("a finding lies outside the text");
  if (range.begin.line == 0 || range.begin.column == 0) fail("a line or a column is 0");
}

class Findings {
 public:
  explicit Findings(const CheckedText& text) : text_(text), ignores_(text.text()) {
    for (const FormatName name :
         {FormatName::Full, FormatName::Line, FormatName::Log, FormatName::Json, FormatName::Sarif,
          FormatName::Github, FormatName::Junit}) {
      formats_.push_back(makeFormat(name, true, true));
    }
  }

  void add(const Finding& finding) {
    if (finding.range) checkRange(*finding.range, text_.text());
    for (const vsa_tools::FindingNote& note : finding.notes) checkRange(note.range, text_.text());
    for (const vsa_tools::TextEdit& edit : finding.edits) {
      const bool isInside = edit.begin <= edit.end && edit.end <= text_.text().size();
      if (!isInside) fail("an edit lies outside the text");
    }
    if (!finding.edits.empty() && !ignores_.isIgnored(finding)) edits_.push_back(finding.edits);
    for (const std::unique_ptr<Format>& format : formats_) {
      if (format->render(finding, {"a.vsa", text_, 1}).empty()) fail("a finding is rendered empty");
    }
  }

  void applyEdits() const {
    const vsa_tools::EditedText edited = withEdits(text_.text(), edits_);
    if (edited.fixed > edits_.size()) fail("more edits were applied than there are");
  }

 private:
  const CheckedText& text_;
  const vsa_tools::CommentIgnores ignores_;
  std::vector<std::unique_ptr<Format>> formats_;
  std::vector<std::vector<vsa_tools::TextEdit>> edits_;
};

}  // namespace

void checkText(std::string_view input) {
  const InputWithSettings split = splitSettings(input);
  const MemoryFile file(split.text);
  CheckedText text(file.name());
  Findings findings(text);
  const vsa_tools::ReadArguments reading;
  const vsa_tools::RuleSet rules([](const vsa_tools::Rule&) { return true; });
  vsa_tools::FileCheckOptions options{reading, (split.settings & 1) != 0};
  // The rules then run on a second thread while the text is read.
  if ((split.settings & 2) != 0) options.minConcurrentBytes = 0;
  const FileCheck::Consumer consumer = [&](Finding&& finding) {
    findings.add(finding);
    return true;
  };
  FileCheck(text, options, rules, consumer).run();
  findings.applyEdits();
}

}  // namespace vsa_fuzz
