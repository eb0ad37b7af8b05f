#include "tools/vsa/dump/dump_command.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/exit_status.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/dump/dump_log.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

/// Writes the dump to standard output. Returns the error message, empty on success.
std::string writeDump(const FileOutcome& outcome, DumpLog& log, const vsa::Scene& scene) {
  const ReadStatus status = log.end(outcome.read);
  TextOutput out(stdout);
  dumpJson(
      status, [&log](TextOutput& to) { to.put(log.json()); }, scene.plain(), out);
  return out.flush() ? "" : std::string("cannot write the dump: ") + std::strerror(errno);
}

FileOutcome read(const InputFile& input, vsa::Scene& scene, DumpLog& log) {
  const InterruptScope interrupts;
  return readScene(scene, input, log.options());
}

int exitStatusOf(const FileOutcome& outcome) {
  if (!isErrorOutputWritten()) return EXIT_USAGE;
  return outcome.isComplete() ? EXIT_READ : EXIT_NOT_READ;
}

}  // namespace

void DumpCommand::addTo(CLI::App& app) {
  app.add_option("FILE", file_, "File to read; - is standard input")->required()->type_name("");
  reading_.addTo(app);
}

int DumpCommand::run() {
  const InputFile input = openInput(file_);
  if (!input.problem.empty()) {
    printError(file_ + ": " + input.problem);
    return EXIT_USAGE;
  }
  vsa::Scene scene;
  DumpLog log(reading_);
  const FileOutcome outcome = read(input, scene, log);
  const std::string problem = writeDump(outcome, log, scene);
  const std::string name = shownName(file_);
  for (const Loss& loss : outcome.losses) {
    printLine(diagnosticLine(name, loss.position, "error", loss.text));
  }
  if (log.notKept() > 0) printNotPrinted(name, log.notKept());
  if (!problem.empty()) {
    printError(problem);
    return EXIT_USAGE;
  }
  return isInterrupted() ? EXIT_INTERRUPTED : exitStatusOf(outcome);
}

}  // namespace vsa_tools
