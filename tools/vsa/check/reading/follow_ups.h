// FollowUps: recognises the findings of rules that only follow from a problem which the reader has
// reported. A mistake is then reported once.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <vsa/reading/read_diagnostic.h>
#include "tools/vsa/check/finding.h"

namespace vsa_tools {

class FollowUps {
 public:
  /// Records a diagnostic of the reader if findings of rules may follow from it.
  void add(const vsa::Diagnostic& diagnostic);
  /// Sorts the recorded diagnostics. Call it after the last add().
  void finish();
  /// Returns whether the finding of a rule only follows from a recorded diagnostic. `text` is the
  /// text of the file. It is needed for findings about a path: without it, the result for them is
  /// false.
  bool contains(const Finding& finding, std::string_view text) const;

 private:
  /// What a problem means for the value of its statement.
  enum class Effect : std::uint8_t {
    Refused,    ///< The reader refuses the value, because it does not fit its input.
    Converted,  ///< The reader converts it with a loss.
    Other,      ///< The literal is wrong as a whole, or the reading ends.
  };

  /// A problem for which a rule may have a finding in the same statement.
  struct Problem {
    std::uint64_t begin = 0, end = 0;
    Effect effect = Effect::Other;
  };

  Effect effectInStatement(std::uint64_t begin, std::string_view text) const;
  bool isInside(const vsa::TextRange& range, std::string_view text) const;

  std::vector<Problem> problems_;  // sorted by their beginnings after finish()
};

}  // namespace vsa_tools
