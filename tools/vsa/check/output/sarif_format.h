// The format sarif: one document of the Static Analysis Results Interchange Format 2.1.0 (OASIS,
// 2020). Findings are printed while files are still checked, and the document ends with the
// description of the tool.
#pragma once

#include "tools/vsa/check/output/format.h"

namespace vsa_tools {

class SarifFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
  std::string begin() override;
  std::string add(std::string rendered) override;
  std::string end(const Totals& totals) override;

 private:
  bool isFirst_ = true;
};

}  // namespace vsa_tools
