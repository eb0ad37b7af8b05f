// The page of `vsa stats --html`.
#pragma once

#include <string>

#include "tools/vsa/stats/file_statistics.h"

namespace vsa_tools {

/// One HTML page with plots of the report. It contains all that it needs: it loads nothing.
std::string reportPage(const StatisticsReport& report);

}  // namespace vsa_tools
