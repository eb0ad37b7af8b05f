#include "tools/vsa/stats/stats_command.h"

#include <algorithm>

#include "tools/vsa/common/exit_status.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/common/standard_output.h"
#include "tools/vsa/stats/file_statistics.h"

namespace vsa_tools {

namespace {

std::string statusOf(const SceneFile& file) {
  if (file.exitStatus == EXIT_USAGE) return vsa::name(vsa::ReadStatus::Unreadable);
  const bool isDamaged = file.result.isComplete() && file.exitStatus != EXIT_READ;
  return isDamaged ? "damaged" : vsa::name(file.result.status);
}

}  // namespace

void StatsCommand::addTo(CLI::App& app) {
  app.add_option("FILE", files_, "Files to read; - is standard input")->required()->type_name("");
  app.add_flag("--json", json_, "Print JSON");
  reading_.addTo(app);
  app.footer(
      "Examples:\n"
      "  vsa stats scene.vsa\n"
      "  vsa stats --json scene.vsa | jq '.total.nodesByType'");
}

int StatsCommand::run() {
  StatisticsReport report;
  int status = EXIT_READ;
  for (const std::string& name : files_) {
    const SceneFile file = readAndReport(name, reading_);
    status = std::max(status, file.exitStatus);
    report.files.push_back({file.name, statusOf(file), statisticsOf(file)});
    addCounts(report.total, report.files.back().counts);
  }
  report.peakMemoryBytes = peakMemoryBytes();
  return std::max(status, printText(json_ ? reportJson(report) : reportText(report)));
}

}  // namespace vsa_tools
