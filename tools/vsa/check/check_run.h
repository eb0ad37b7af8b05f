// CheckRun: one run of vsa check over all files.
//
// Workers check the files: they select, sort and render the findings of FileCheck. CheckRun prints
// the results in the order of the files. If a worker has too many findings to keep, it waits until
// all earlier files are printed, and then prints its findings itself. With one worker or one file,
// all this happens on the calling thread, except that the rules about a large text may run on a
// second one.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <vsa/types.h>
#include "tools/vsa/check/check_options.h"
#include "tools/vsa/check/file_check.h"
#include "tools/vsa/check/file_findings.h"
#include "tools/vsa/check/output/format.h"
#include "tools/vsa/check/output/printer.h"
#include "tools/vsa/check/selection/baseline.h"
#include "tools/vsa/check/selection/config.h"
#include "tools/vsa/common/files/file_list.h"
#include "tools/vsa/common/files/ordered_workers.h"
#include "tools/vsa/common/files/progress.h"

namespace vsa_tools {

/// The findings of one file that are not printed yet, and the counts of that file.
struct FileResult {
  std::vector<RenderedFinding> findings;
  bool isChecked = false;  ///< Whether the file was checked, and Ctrl-C did not end that early.
  bool hasFindings = false;
  bool isUnreadable = false;
  bool isTextTooLarge = false;  ///< Whether the text is too large for the rules about texts.
  std::uint64_t inBaseline = 0;
  std::uint64_t fixed = 0;
  KnownFindings found;  ///< The findings for a new baseline.
};

/// What --fix did to one file.
struct FixOutcome {
  std::uint64_t fixed = 0;  ///< The number of findings whose edits are in the file.
  std::string problem;      ///< Why the file could not be replaced. Empty without such a failure.
};

class CheckRun {
 public:
  explicit CheckRun(const CheckOptions& options);

  /// Checks all files and prints their findings. Returns the exit status. Throws std::runtime_error
  /// if the configuration, the node types or the baseline cannot be read or is wrong, if an option
  /// names an unknown id or group, if the new baseline cannot be written, if --fix is used with
  /// standard input, and if standard input is both checked and the file of --types.
  int run();

 private:
  struct Item {
    std::string file;
    std::string shownName;
    std::shared_ptr<const LevelTable> levels;
  };

  std::vector<Item> items(const FileList& list);
  FileResult check(const Item& item, Turn& turn);
  FileResult checkFile(const Item& item, Turn& turn);
  void runFileCheck(CheckedText& text, const FileCheckOptions& checkOptions, const RuleSet& rules,
                    FileFindings& findings);
  FileResult outOfMemory(const Item& item);
  FixOutcome fix(const Item& item);
  void add(const Item& item, const FileResult& result);
  void printProblems(const FileList& list);
  std::string summary() const;
  int exitStatus(bool isWritten) const;

  const CheckOptions& options_;
  std::uint64_t maxKeptBytes_;
  std::unique_ptr<Format> format_;
  Progress progress_{"checking"};
  Printer printer_;
  std::vector<vsa::TypeDescription> types_;
  Baseline known_, found_;
  Totals totals_;
  // Whether a second thread may check a part of a file. It is determined once, because the C
  // library opens a file of the system each time.
  bool hasIdleProcessor_ = false;
};

}  // namespace vsa_tools
