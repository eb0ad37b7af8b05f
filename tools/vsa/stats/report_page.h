// The page of `vsa stats --html`.
#pragma once

#include <string>

#include "tools/vsa/stats/file_statistics.h"

namespace vsa_tools {

/// Returns the report as one HTML page with plots. The page loads no other files.
std::string reportPage(const StatisticsReport& report);

}  // namespace vsa_tools
