#include "tools/vsa/fmt/fmt_command.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <utility>

#include "tools/vsa/common/files/files_progress.h"
#include "tools/vsa/common/files/ordered_workers.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/writing/output_sink.h"

namespace vsa_tools {

namespace {

/// Prints the messages and the output for a file. Returns false if the output cannot be written.
bool print(const FormatOutcome& outcome) {
  for (const std::string& line : outcome.messages) std::fprintf(stderr, "%s\n", line.c_str());
  if (outcome.output.empty()) return true;
  OutputSink sink;
  const bool isWritten = sink.write(outcome.output) && sink.flush();
  if (!isWritten) printError(sink.error());
  return isWritten;
}

/// Returns the files without those that were named before, also by a link. Two workers must not
/// replace the same file.
std::vector<std::string> withoutRepeated(const std::vector<std::string>& files) {
  std::set<std::pair<dev_t, ino_t>> found;
  std::vector<std::string> different;
  for (const std::string& file : files) {
    struct stat status {};
    const bool exists = ::stat(file.c_str(), &status) == 0;
    if (!exists || found.emplace(status.st_dev, status.st_ino).second) different.push_back(file);
  }
  return different;
}

}  // namespace

void FmtCommand::addTo(CommandOptions& options) {
  files_.addTo(options, "Files to format");
  const CommandOption replaces = options.addFlag("-i,--in-place", replaces_, "Replace the files");
  const CommandOption checks =
      options.addFlag("--check", checks_, "Only name the files that are not formatted");
  const CommandOption diffs = options.addFlag("--diff", diffs_, "Print what would change");
  replaces.excludes(checks).excludes(diffs);
  checks.excludes(diffs);
  files_.addJobsTo(options);
  arguments_.addTo(options);
  options.footer(
      "Without FILES, standard input is formatted.\n\n"
      "Examples:\n"
      "  vsa fmt scene.vsa >formatted.vsa\n"
      "  vsa fmt -i -j 0 scenes\n"
      "  vsa fmt --check scenes || echo some are not formatted\n"
      "  git ls-files -z '*.vsa' | vsa fmt --diff -0 @-\n"
      "\n"
      "Exit status:\n"
      "  0  every file was formatted; with --check and --diff: and none would change\n"
      "  1  a file would change, or was not read completely and is left alone\n"
      "  2  wrong usage, a file that cannot be opened or changes meanwhile, or output that cannot "
      "be\n"
      "     written");
}

FormatMode FmtCommand::mode() const {
  if (replaces_) return FormatMode::Replace;
  if (checks_) return FormatMode::Check;
  return diffs_ ? FormatMode::Diff : FormatMode::Print;
}

int FmtCommand::formatAll(const std::vector<std::string>& files) const {
  const FormatMode how = mode();
  const unsigned workers =
      // In mode Print, one worker formats the files, so that two texts are not printed at once.
      how == FormatMode::Print ? 1 : files_.workers();
  FilesProgress progress("formatting", files);
  int status = EXIT_READ;
  workInOrder(
      files.size(), workers,
      [&](std::size_t i, Turn&) {
        return formatFile(files[i], how, arguments_, [&](std::uint64_t done, std::uint64_t total) {
          progress.update(i, done, total);
        });
      },
      [&](std::size_t i, const FormatOutcome& outcome) {
        if (!outcome.messages.empty() || !outcome.output.empty()) progress.hide();
        status = std::max(status, outcome.status);
        const bool isPrinted = print(outcome);
        if (!isPrinted) status = EXIT_USAGE;
        progress.finish(i);
        return isPrinted && !isInterrupted();
      });
  return isInterrupted() ? EXIT_INTERRUPTED : status;
}

int FmtCommand::run() {
  const InterruptScope interrupt;
  const auto [files, listed] = files_.list({"-"});
  if (replaces_ && std::find(files.begin(), files.end(), "-") != files.end()) {
    printError("-i needs files; standard input cannot be replaced");
    return EXIT_USAGE;
  }
  return std::max(formatAll(replaces_ ? withoutRepeated(files) : files), listed);
}

}  // namespace vsa_tools
