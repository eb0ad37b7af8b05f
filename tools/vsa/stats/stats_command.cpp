#include "tools/vsa/stats/stats_command.h"

#include <algorithm>
#include <cstdio>

#include "tools/vsa/common/files/files_progress.h"
#include "tools/vsa/common/files/ordered_workers.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/stats/report_page.h"

namespace vsa_tools {

namespace {

/// The result for a file, without its scene.
struct CountedFile {
  FileStatistics statistics;
  std::string messages;
  int exitStatus = EXIT_READ;
};

std::string statusOf(const SceneFile& file) {
  const bool isDamaged = file.result.isComplete() && file.exitStatus != EXIT_READ;
  return isDamaged ? "damaged" : vsa::name(file.result.status);
}

CountedFile countFile(const std::string& name, const ReadArguments& reading,
                      const ReadingProgress& onProgress) {
  SceneFile file = readSceneFile(name, reading, onProgress);
  return {
      {file.name, statusOf(file), statisticsOf(file)}, std::move(file.messages), file.exitStatus};
}

}  // namespace

void StatsCommand::addTo(CommandOptions& options) {
  files_.addTo(options, "Files to read").required();
  const CommandOption json = options.addFlag("--json", json_, "Print JSON");
  options.addFlag("--html", html_, "Print a page with plots").excludes(json);
  files_.addJobsTo(options);
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa stats scene.vsa\n"
      "  vsa stats --json scene.vsa | jq '.total.nodesByType'\n"
      "  vsa stats -j 0 --html scenes >scenes.html\n"
      "  git ls-files -z '*.vsa' | vsa stats -0 @-\n\n"
      "Exit status:\n"
      "  0  every file was read\n"
      "  1  a file was not read completely; what was read is counted\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

int StatsCommand::countAll(const std::vector<std::string>& files, StatisticsReport& report) const {
  FilesProgress progress("counting", files);
  int status = EXIT_READ;
  workInOrder(
      files.size(), files_.workers(),
      [&](std::size_t i, Turn&) {
        return countFile(files[i], reading_, [&, i](std::uint64_t done, std::uint64_t total) {
          progress.update(i, done, total);
        });
      },
      [&](std::size_t i, CountedFile file) {
        if (!file.messages.empty()) progress.hide();
        std::fputs(file.messages.c_str(), stderr);
        status = std::max(status, file.exitStatus);
        addCounts(report.total, file.statistics.counts);
        report.files.push_back(std::move(file.statistics));
        progress.finish(i);
        return !isInterrupted();
      });
  return isInterrupted() ? EXIT_INTERRUPTED : status;
}

int StatsCommand::run() {
  const InterruptScope interrupts;
  const auto [files, listed] = files_.list();
  StatisticsReport report;
  const int status = countAll(files, report);
  report.peakMemoryBytes = peakMemoryBytes();
  const int written = printText(json_   ? reportJson(report)
                                : html_ ? reportPage(report)
                                        : reportText(report));
  return std::max({status, written, listed});
}

}  // namespace vsa_tools
