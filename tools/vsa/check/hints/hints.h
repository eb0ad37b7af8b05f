// Hints: what to do about the diagnostics of the reader, derived from the text.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include <vsa/reading/read_diagnostic.h>
#include <vsa/types.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

class HintText;

/// The hints about one file. The text is read only when a diagnostic needs it.
class Hints {
 public:
  /// The text without a byte order mark, and the types of --types. Both must live as long as this
  /// object.
  explicit Hints(std::string_view text, std::span<const vsa::TypeDescription> types = {});
  ~Hints();

  /// Completes the finding of a diagnostic: adds its hint, the edits that do what the hint says,
  /// and notes. Does not change the finding if there is no hint.
  void addTo(const vsa::Diagnostic& diagnostic, Finding& finding);

 private:
  void add(const vsa::Diagnostic& diagnostic, Finding& finding);

  std::unique_ptr<HintText> text_;
};

}  // namespace vsa_tools
