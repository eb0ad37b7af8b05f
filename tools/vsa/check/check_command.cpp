#include "tools/vsa/check/check_command.h"

#include "tools/vsa/common/exit_status.h"
#include "tools/vsa/common/file_diagnostics.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

class Check {
 public:
  Check(bool strict, const ReadArguments& reading) : strict_(strict), reading_(reading) {}

  void checkFile(const std::string& name) {
    const InputFile input = openInput(name);
    if (!input.problem.empty()) {
      printError(name + ": " + input.problem);
      ++unopened_;
      return;
    }
    vsa::Scene scene;
    FileDiagnostics diagnostics(shownName(name), reading_);
    const FileOutcome outcome = readScene(scene, input, diagnostics.options());
    diagnostics.add(outcome);
    warnings_ += diagnostics.warnings();
    errors_ += diagnostics.errors();
    ++(outcome.isComplete() ? read_ : notRead_);
  }

  void printSummary() const {
    const size_t files = read_ + notRead_ + unopened_;
    std::string line = count(files, "file") + " checked, " + std::to_string(read_) + " read";
    if (notRead_ > 0) line += ", " + std::to_string(notRead_) + " not read";
    if (unopened_ > 0) line += ", " + std::to_string(unopened_) + " not opened";
    line += ": " + count(warnings_, "warning") + ", " + count(errors_, "error");
    printLine(line);
  }

  int exitStatus() const {
    if (isInterrupted()) return EXIT_INTERRUPTED;
    if (unopened_ > 0 || !isErrorOutputWritten()) return EXIT_USAGE;
    const bool hasMessages = warnings_ + errors_ > 0;
    return notRead_ > 0 || (strict_ && hasMessages) ? EXIT_NOT_READ : EXIT_READ;
  }

 private:
  static std::string count(std::uint64_t number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
  }

  bool strict_;
  const ReadArguments& reading_;
  size_t read_ = 0, notRead_ = 0, unopened_ = 0;
  std::uint64_t warnings_ = 0, errors_ = 0;
};

}  // namespace

void CheckCommand::addTo(CLI::App& app) {
  app.add_option("FILE", files_, "Files to read; - is standard input")->required()->type_name("");
  app.add_flag("--strict", strict_, "Exit with status 1 if any file has a diagnostic");
  reading_.addTo(app);
}

int CheckCommand::run() {
  const InterruptScope interrupts;
  Check check(strict_, reading_);
  for (const std::string& file : files_) {
    if (!isInterrupted()) check.checkFile(file);
  }
  check.printSummary();
  return check.exitStatus();
}

}  // namespace vsa_tools
