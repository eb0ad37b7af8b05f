// The format json: one record a line, as docs/check_finding.schema.json describes it.
#pragma once

#include "tools/vsa/check/output/format.h"

namespace vsa_tools {

class JsonFormat final : public Format {
 public:
  std::string render(const Finding& finding, const FindingPlace& place) const override;
};

}  // namespace vsa_tools
