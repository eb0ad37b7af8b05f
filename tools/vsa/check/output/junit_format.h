// The format junit: one XML document of test cases. Each printed finding is a test case, and each
// file without findings is one, too. The number of cases is at the beginning of the document. The
// whole document is therefore printed at the end, when this number is known.
#pragma once

#include "tools/vsa/check/output/format.h"

namespace vsa_tools {

class JunitFormat final : public Format {
 public:
  /// `isStrict` makes warnings failures, too.
  explicit JunitFormat(bool isStrict) : isStrict_(isStrict) {}
  std::string render(const Finding& finding, const FindingPlace& place) const override;
  std::string add(std::string rendered) override;
  std::string addClean(const std::string& file) override;
  std::string end(const Totals& totals) override;

 private:
  bool isFailure(Level level) const {
    return level == Level::Error || (isStrict_ && level == Level::Warning);
  }

  bool isStrict_;
  std::string cases_;
  std::uint64_t count_ = 0, failures_ = 0;
};

}  // namespace vsa_tools
