// The statistics of files, which the tables, the JSON and the page of `vsa stats` show.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/stats/scene_statistics.h"

namespace vsa_tools {

struct FileStatistics {
  std::string name;
  /// The name of the ReadStatus, such as "complete". It is "damaged" if parts are lost without a
  /// diagnostic of the reader, and that of Unreadable if the file cannot be opened.
  std::string status;
  SceneStatistics counts;
};

/// The statistics of all files of one run.
struct StatisticsReport {
  std::vector<FileStatistics> files;
  SceneStatistics total;
  std::uint64_t peakMemoryBytes = 0;
};

/// Returns the report as tables for a terminal.
std::string reportText(const StatisticsReport& report);

/// Returns the report as one JSON object: {"files": [FILE], "total": COUNTS, "peakMemoryBytes": n}.
/// COUNTS has the counts of SceneStatistics, and FILE has these, "name" and "status". Bytes that
/// are not valid UTF-8 become U+FFFD.
std::string reportJson(const StatisticsReport& report);

}  // namespace vsa_tools
