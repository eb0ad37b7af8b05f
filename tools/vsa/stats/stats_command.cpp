#include "tools/vsa/stats/stats_command.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include "tools/vsa/common/files/file_list.h"
#include "tools/vsa/common/files/ordered_workers.h"
#include "tools/vsa/common/files/progress.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/stats/report_page.h"

namespace vsa_tools {

namespace {

/// What is kept of a file that was read: its scene is not.
struct CountedFile {
  FileStatistics statistics;
  std::string messages;
  int exitStatus = EXIT_READ;
};

std::string statusOf(const SceneFile& file) {
  if (file.exitStatus == EXIT_USAGE) return vsa::name(vsa::ReadStatus::Unreadable);
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
  options
      .add("FILES", files_,
           "Files to read; a folder: all *.vsa in it; @LIST: the files that LIST names; -: "
           "standard input")
      .required();
  const CommandOption json = options.addFlag("--json", json_, "Print JSON");
  options.addFlag("--html", html_, "Print a page with plots").excludes(json);
  options.add("-j,--jobs", workers_, "Files to read at the same time; 0: one for each core")
      .valueName("N")
      .range(0, 1024);
  options.addFlag("-0,--null", nul_, "The names in a LIST end with a NUL, not with a line end");
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa stats scene.vsa\n"
      "  vsa stats --json scene.vsa | jq '.total.nodesByType'\n"
      "  vsa stats -j 0 --html scenes >scenes.html\n"
      "  git ls-files -z '*.vsa' | vsa stats -0 @-");
}

int StatsCommand::countAll(const std::vector<std::string>& files, StatisticsReport& report) const {
  const unsigned workers =
      workers_ != 0 ? workers_ : std::max(std::thread::hardware_concurrency(), 1U);
  Progress progress("counting");
  // Of several files, those that are done are shown.
  ReadingProgress inFile;
  if (files.size() == 1) {
    inFile = [&](std::uint64_t done, std::uint64_t total) { progress.update(done, total); };
  }
  int status = EXIT_READ;
  workInOrder(
      files.size(), workers,
      [&](std::size_t i, Turn&) { return countFile(files[i], reading_, inFile); },
      [&](std::size_t i, CountedFile file) {
        if (!file.messages.empty()) progress.hide();
        std::fputs(file.messages.c_str(), stderr);
        status = std::max(status, file.exitStatus);
        addCounts(report.total, file.statistics.counts);
        report.files.push_back(std::move(file.statistics));
        progress.update(i + 1, files.size());
        return !isInterrupted();
      });
  return status;
}

int StatsCommand::run() {
  const InterruptScope interrupts;
  const FileList list = listFiles(files_, nul_ ? NameSeparator::Nul : NameSeparator::LineEnd);
  for (const FileListProblem& problem : list.problems) {
    printError(problem.name + ": " + problem.text);
  }
  StatisticsReport report;
  const int status = countAll(list.files, report);
  report.peakMemoryBytes = peakMemoryBytes();
  const int written = printText(json_   ? reportJson(report)
                                : html_ ? reportPage(report)
                                        : reportText(report));
  return std::max(
      {status, written, static_cast<int>(list.problems.empty() ? EXIT_READ : EXIT_USAGE)});
}

}  // namespace vsa_tools
