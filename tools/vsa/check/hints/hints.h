// Hints: finds out how to correct the problems that the reader reports.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>
#include <vsa/types.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

class HintText;

/// Finds the hints for one file. The text is searched only when a diagnostic requires it.
class Hints {
 public:
  /// `text` is the text without a byte order mark, and `types` are the types of --types. Both must
  /// outlive this object.
  explicit Hints(std::string_view text, std::span<const vsa::TypeDescription> types = {});
  ~Hints();

  /// Adds the hint for a diagnostic to its finding, with edits that do what the hint says, and
  /// notes. Each of them may be missing. May replace the range of the finding.
  void addTo(const vsa::Diagnostic& diagnostic, Finding& finding);

 private:
  void add(const vsa::Diagnostic& diagnostic, Finding& finding);

  std::unique_ptr<HintText> text_;
};

}  // namespace vsa_tools
