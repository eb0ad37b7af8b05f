#include "tools/vsa/check/check_run.h"

#include <unistd.h>
#include <utf8.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <thread>

#include "tools/vsa/check/fix/apply_edits.h"
#include "tools/vsa/check/fix/fix_round.h"
#include "tools/vsa/check/kinds.h"
#include "tools/vsa/common/freed_memory.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/counted.h"
#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

namespace {

// The maximum number of rounds in which a file is fixed. An edit may reveal the next mistake, so
// one round is not always enough.
constexpr int MAX_FIX_ROUNDS = 10;

bool isColoured(const std::string& colour) {
  if (colour != "auto") return colour == "always";
  const char* const noColour = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  const bool isDumb = terminal == nullptr || std::strcmp(terminal, "dumb") == 0;
  return ::isatty(STDOUT_FILENO) && !isDumb && (noColour == nullptr || *noColour == '\0');
}

// The maximum size in bytes of the freed blocks of a scene that are kept for the next file. By
// default, the C library returns large blocks to the system after each file. In a check of 2,000
// files, that took 0.06 s of 0.2 s.
constexpr std::size_t KEPT_BLOCK_BYTES = std::size_t{1} << 21;

// The minimum size in bytes of a text whose rules run on a second thread while it is read. A thread
// takes 0.05 ms to start, and a text of this size takes about 1 ms to read.
constexpr std::size_t MIN_CONCURRENT_BYTES = std::size_t{1} << 20;

// Returns the maximum size in bytes of a file that is kept in memory. A text that is longer than
// --max-text is not kept, because only its finding about that limit is reported. Its byte order
// mark does not count.
std::uint64_t maxKeptBytes(const ReadArguments& reading) {
  const std::uint64_t limit = reading.options().limits.textBytes;
  const bool isLow = limit < CheckedText::MAX_KEPT_BYTES - sizeof utf8::bom;
  return isLow ? limit + sizeof utf8::bom : CheckedText::MAX_KEPT_BYTES;
}

constexpr char OUT_OF_MEMORY[] = "checking it needs more memory than there is";

// Returns the result of a check whose findings these are.
FileResult resultOf(FileFindings& findings) {
  FileResult result;
  result.findings = findings.take();
  result.isChecked = !isInterrupted();
  result.hasFindings = findings.hasFound();
  result.isUnreadable = findings.isUnreadable();
  result.inBaseline = findings.inBaseline();
  result.found = findings.found();
  return result;
}

/// Reads the node types of --types. Throws std::runtime_error if the file cannot be read, is too
/// large, or is not a valid description of types. After Ctrl-C, which may have ended the reading
/// early, returns no types.
std::vector<vsa::TypeDescription> readTypesFile(const std::string& path) {
  const CheckedText text(path);
  if (isInterrupted()) return {};
  if (!text.problem().empty()) throw std::runtime_error(path + ": " + text.problem());
  // The file may be a device that does not end.
  if (!text.isKept()) throw std::runtime_error(path + ": larger than 64 MiB");
  vsa::TypesResult result = vsa::readTypes(text.text());
  if (!result.isValid()) {
    throw std::runtime_error(path + ':' + std::to_string(result.place.line) + ':' +
                             std::to_string(result.place.column) + ": " + result.problem);
  }
  return std::move(result.types);
}

}  // namespace

CheckRun::CheckRun(const CheckOptions& options)
    : options_(options),
      maxKeptBytes_(maxKeptBytes(options.reading)),
      format_(makeFormat(options.format, isColoured(options.colour), options.isStrict)),
      printer_(*format_, options.reading.maxDiagnostics(), progress_) {
}

int CheckRun::run() {
  if (!options_.typesFile.empty()) types_ = readTypesFile(options_.typesFile);
  if (isInterrupted()) return EXIT_INTERRUPTED;
  if (!options_.baseline.empty()) known_ = Baseline::read(options_.baseline);
  const FileList list = listFiles(options_.files, options_.separator);
  const bool readsInput = std::ranges::find(list.files, "-") != list.files.end();
  if (readsInput && options_.isFixing) {
    throw std::runtime_error("--fix cannot change standard input");
  }
  if (readsInput && options_.typesFile == "-") {
    throw std::runtime_error("standard input can be read only once");
  }
  const std::vector<Item> all = items(list);
  if (all.size() > 1) keepFreedMemory(KEPT_BLOCK_BYTES);
  totals_.files = all.size();
  // With several workers, the other processors check other files.
  const bool isAlone = options_.workers <= 1 || totals_.files == 1;
  hasIdleProcessor_ = isAlone && std::thread::hardware_concurrency() > 1;
  printer_.begin();
  printProblems(list);
  workInOrder(
      all.size(), options_.workers, [&](std::size_t i, Turn& turn) { return check(all[i], turn); },
      [&](std::size_t i, const FileResult& result) {
        add(all[i], result);
        if (all.size() > 1) progress_.update(i + 1, all.size());
        return !printer_.isFull() && !isInterrupted();
      });
  totals_.isEndedEarly = printer_.isFull();
  totals_.isInterrupted = isInterrupted();
  const bool isWritten = printer_.end(totals_, options_.isQuiet ? "" : summary());
  if (!isWritten) printError(std::string("cannot write: ") + std::strerror(errno));
  // After Ctrl-C, the findings of some files are missing.
  if (!options_.newBaseline.empty() && !isInterrupted()) found_.write(options_.newBaseline);
  return exitStatus(isWritten);
}

std::vector<CheckRun::Item> CheckRun::items(const FileList& list) {
  LevelTables tables(options_.levels, !options_.isConfigIgnored, options_.configFile);
  std::vector<Item> all;
  for (const std::string& file : list.files) {
    const bool isInput = file == "-";
    const std::string& path = isInput ? options_.stdinName : file;
    all.push_back({file, isInput && path.empty() ? "<stdin>" : path, tables.of(path)});
  }
  return all;
}

// Prints the problems of the arguments, each like a file that cannot be read.
void CheckRun::printProblems(const FileList& list) {
  const CheckedText none("");
  for (const FileListProblem& problem : list.problems) {
    const Finding finding = unreadable(problem.text);
    printer_.print({{finding.level, format_->render(finding, {problem.name, none, {}})}});
    ++totals_.unreadable;
    ++totals_.files;
    ++totals_.checkedFiles;
    ++totals_.filesWithFindings;
  }
}

// Checks a file. If there is not enough memory for that, the memory that the check has taken is
// freed, and the other files are still checked.
FileResult CheckRun::check(const Item& item, Turn& turn) {
  if (printer_.isFull() || isInterrupted()) return {};
  try {
    return checkFile(item, turn);
  } catch (const std::bad_alloc&) {
    return outOfMemory(item);
  }
}

FileResult CheckRun::outOfMemory(const Item& item) {
  const CheckedText none(CheckedText::InMemory{});
  FileFindings findings(item.shownName, none, *item.levels, *format_, known_.of(item.shownName),
                        {});
  if (!options_.newBaseline.empty()) findings.recordFound();
  findings.add(unreadable(OUT_OF_MEMORY), 0);
  return resultOf(findings);
}

FileResult CheckRun::checkFile(const Item& item, Turn& turn) {
  const FixOutcome fixing = options_.isFixing ? fix(item) : FixOutcome();
  CheckedText text(item.file, maxKeptBytes_);
  FileFindings findings(item.shownName, text, *item.levels, *format_, known_.of(item.shownName),
                        [&](const std::vector<RenderedFinding>& rendered) {
                          if (turn.await()) printer_.print(rendered);
                        });
  if (!options_.newBaseline.empty()) findings.recordFound();
  if (!fixing.problem.empty()) findings.add(unreadable("cannot be changed: " + fixing.problem), 0);
  FileCheckOptions checkOptions{options_.reading, options_.isFirstOnly || format_->isLog(),
                                format_->isLog(), types_};
  if (totals_.files == 1) {
    checkOptions.onProgress = [this](const vsa::ReadProgress& progress) {
      if (progress.bytesTotal) progress_.update(progress.bytesRead, *progress.bytesTotal);
    };
  }
  if (hasIdleProcessor_) checkOptions.minConcurrentBytes = MIN_CONCURRENT_BYTES;
  runFileCheck(text, checkOptions, item.levels->rules(), findings);
  FileResult result = resultOf(findings);
  result.fixed = fixing.fixed;
  const bool isTooLarge = text.isOpen() && !text.isKept();
  const bool isOfAnySize = maxKeptBytes_ == CheckedText::MAX_KEPT_BYTES;
  result.isTextTooLarge = isTooLarge && isOfAnySize && !format_->isLog();
  return result;
}

// Passes the findings of FileCheck on. If there is not enough memory for the check, the findings
// until then remain.
void CheckRun::runFileCheck(CheckedText& text, const FileCheckOptions& checkOptions,
                            const RuleSet& rules, FileFindings& findings) {
  FileCheck* running = nullptr;
  const FileCheck::Consumer consumer = [&](Finding&& finding) {
    findings.add(std::move(finding), running->stopLine());
    return findings.count() <= options_.reading.maxDiagnostics() && !printer_.isFull();
  };
  try {
    FileCheck fileCheck(text, checkOptions, rules, consumer);
    running = &fileCheck;
    fileCheck.run();
  } catch (const std::bad_alloc&) {
    if (!findings.isUnreadable()) findings.add(unreadable(OUT_OF_MEMORY), 0);
  }
}

// Applies the edits of findings in rounds, until fixedOnce() returns no edits, but not more than
// MAX_FIX_ROUNDS times. Ends earlier after Ctrl-C, or if the file cannot be read, is too large or
// cannot be replaced.
FixOutcome CheckRun::fix(const Item& item) {
  FixOutcome outcome;
  for (int round = 0; round < MAX_FIX_ROUNDS && !isInterrupted(); ++round) {
    CheckedText text(item.file, maxKeptBytes_);
    // After an error or Ctrl-C, the text is only a part of the file.
    if (!text.isKept() || !text.problem().empty() || isInterrupted()) break;
    const FileCheckOptions checkOptions{options_.reading, options_.isFirstOnly, false, types_};
    const EditedText edited = fixedOnce(text, checkOptions, *item.levels);
    if (edited.fixed == 0 || edited.text == text.text()) break;
    if (isInterrupted()) break;  // the findings may be incomplete
    const std::size_t markBytes = text.bytes().size() - text.text().size();
    outcome.problem =
        replaceFile(item.file, std::string(text.bytes().substr(0, markBytes)).append(edited.text));
    if (!outcome.problem.empty()) break;
    outcome.fixed += edited.fixed;
  }
  return outcome;
}

void CheckRun::add(const Item& item, const FileResult& result) {
  printer_.print(result.findings);
  if (result.isChecked && !result.hasFindings) printer_.printClean(item.shownName);
  totals_.checkedFiles += result.isChecked || result.hasFindings ? 1 : 0;
  totals_.filesWithFindings += result.hasFindings ? 1 : 0;
  totals_.unreadable += result.isUnreadable ? 1 : 0;
  totals_.tooLarge += result.isTextTooLarge ? 1 : 0;
  totals_.inBaseline += result.inBaseline;
  totals_.fixed += result.fixed;
  found_.add(item.shownName, result.found);
}

std::string CheckRun::summary() const {
  const std::uint64_t errors = printer_.count(Level::Error);
  const std::uint64_t warnings = printer_.count(Level::Warning);
  const std::uint64_t notes = printer_.count(Level::Note);
  std::string line = counted(totals_.checkedFiles, "file") + " checked: ";
  if (errors + warnings + notes == 0) {
    const bool isWhole = !totals_.isEndedEarly;
    line += isInterrupted() ? "interrupted" : isWhole ? "no problems found" : "nothing printed";
  } else {
    line += counted(errors, "error") + ", " + counted(warnings, "warning");
    if (notes > 0) line += ", " + counted(notes, "note");
    if (totals_.files > 1) line += " in " + counted(totals_.filesWithFindings, "file");
    if (isInterrupted()) line += "; interrupted";
  }
  if (totals_.fixed > 0) line += "; " + std::to_string(totals_.fixed) + " fixed";
  if (totals_.inBaseline > 0)
    line += "; " + std::to_string(totals_.inBaseline) + " in the baseline";
  if (totals_.tooLarge > 0) {
    line += "; " + counted(totals_.tooLarge, "file") +
            " of more than 64 MiB without the rules about texts";
  }
  if (totals_.isEndedEarly) line += "; ended early (--max-diagnostics)";
  return line;
}

int CheckRun::exitStatus(bool isWritten) const {
  if (isInterrupted()) return EXIT_INTERRUPTED;
  if (totals_.unreadable > 0 || !isWritten) return EXIT_USAGE;
  const bool hasErrors = printer_.count(Level::Error) > 0 || printer_.isFull();
  const bool hasWarnings = printer_.count(Level::Warning) > 0;
  return hasErrors || (options_.isStrict && hasWarnings) ? EXIT_NOT_READ : EXIT_READ;
}

}  // namespace vsa_tools
