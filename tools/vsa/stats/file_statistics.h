// The statistics of one file, as the table, the JSON and the page show them.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/stats/scene_statistics.h"

namespace vsa_tools {

struct FileStatistics {
  std::string name;
  /// The name of the ReadStatus: "complete"; "damaged" if parts are lost without a diagnostic of
  /// the reader.
  std::string status;
  SceneStatistics counts;
};

/// All files of one run.
struct StatisticsReport {
  std::vector<FileStatistics> files;
  SceneStatistics total;
  std::uint64_t peakMemoryBytes = 0;
};

/// The report as tables for a terminal.
std::string reportText(const StatisticsReport& report);

/// The report as one JSON object: {"files": [FILE], "total": COUNTS, "peakMemoryBytes": n}. Bytes
/// that are not valid UTF-8 become U+FFFD.
std::string reportJson(const StatisticsReport& report);

}  // namespace vsa_tools
