#include "tools/vsa/fmt/fmt_command.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include "tools/vsa/common/files/file_list.h"
#include "tools/vsa/common/files/ordered_workers.h"
#include "tools/vsa/common/files/progress.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/writing/output_sink.h"

namespace vsa_tools {

namespace {

/// Prints what a file's formatting has to say.
bool print(const FormatOutcome& outcome) {
  for (const std::string& line : outcome.messages) std::fprintf(stderr, "%s\n", line.c_str());
  if (outcome.output.empty()) return true;
  OutputSink sink;
  const bool isWritten = sink.write(outcome.output) && sink.flush();
  if (!isWritten) printError(sink.error());
  return isWritten;
}

}  // namespace

void FmtCommand::addTo(CommandOptions& options) {
  options.add("FILES", files_,
              "Files to format; a folder: all *.vsa in it; @LIST: the files that LIST names; -: "
              "standard input, as without files");
  const CommandOption replaces = options.addFlag("-i,--in-place", replaces_, "Replace the files");
  const CommandOption checks =
      options.addFlag("--check", checks_, "Only name the files that are not formatted");
  const CommandOption diffs = options.addFlag("--diff", diffs_, "Print what would change");
  replaces.excludes(checks).excludes(diffs);
  checks.excludes(diffs);
  options.add("-j,--jobs", workers_, "Files to format at the same time; 0: one for each core")
      .valueName("N")
      .range(0, 1024);
  options.addFlag("-0,--null", nul_, "The names in a LIST end with a NUL, not with a line end");
  arguments_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa fmt scene.vsa >formatted.vsa\n"
      "  vsa fmt -i -j 0 scenes\n"
      "  vsa fmt --check scenes || echo some are not formatted\n"
      "  git ls-files -z '*.vsa' | vsa fmt --diff -0 @-\n"
      "\n"
      "Exit status:\n"
      "  0  every file was formatted; with --check and --diff: and none would change\n"
      "  1  a file would change, or was not read completely and is left alone\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

FormatMode FmtCommand::mode() const {
  if (replaces_) return FormatMode::Replace;
  if (checks_) return FormatMode::Check;
  return diffs_ ? FormatMode::Diff : FormatMode::Print;
}

int FmtCommand::formatAll(const std::vector<std::string>& files) const {
  const FormatMode how = mode();
  unsigned workers = workers_ != 0 ? workers_ : std::max(std::thread::hardware_concurrency(), 1U);
  if (how == FormatMode::Print) workers = 1;  // it writes while it reads
  Progress progress("formatting");
  int status = EXIT_READ;
  workInOrder(
      files.size(), workers,
      [&](std::size_t i, Turn&) { return formatFile(files[i], how, arguments_); },
      [&](std::size_t i, const FormatOutcome& outcome) {
        if (!outcome.messages.empty() || !outcome.output.empty()) progress.hide();
        status = std::max(status, outcome.status);
        const bool isPrinted = print(outcome);
        if (!isPrinted) status = EXIT_USAGE;
        progress.update(i + 1, files.size());
        return isPrinted && !isInterrupted();
      });
  return status;
}

int FmtCommand::run() {
  const InterruptScope interrupt;
  if (files_.empty()) files_.emplace_back("-");
  const FileList list = listFiles(files_, nul_ ? NameSeparator::Nul : NameSeparator::LineEnd);
  for (const FileListProblem& problem : list.problems) {
    printError(problem.name + ": " + problem.text);
  }
  if (replaces_ && std::find(list.files.begin(), list.files.end(), "-") != list.files.end()) {
    printError("-i needs files; standard input cannot be replaced");
    return EXIT_USAGE;
  }
  const int status = formatAll(list.files);
  return list.problems.empty() ? status : EXIT_USAGE;
}

}  // namespace vsa_tools
