#include "tools/vsa/dump/dump_command.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/exit_status.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/dump/log_spool.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::Scene;

/// Writes the dump to standard output. Returns the error message, empty on success.
std::string writeDump(const ReadStatus& status, LogSpool& log, const Scene& scene) {
  if (log.problem().empty()) {
    TextOutput out(stdout);
    dumpJson(
        status, [&log](TextOutput& to) { log.moveTo(to); }, scene, out);
    if (!out.flush()) return std::string("cannot write the dump: ") + std::strerror(errno);
  }
  return log.problem().empty() ? "" : "cannot keep the log for the dump: " + log.problem();
}

}  // namespace

void DumpCommand::addTo(CLI::App& app) {
  app.add_option("FILE", file_, "File to read; - is standard input")->required()->type_name("");
}

int DumpCommand::run() {
  const InputFile input = openInput(file_);
  if (!input.problem.empty()) {
    printError(file_ + ": " + input.problem);
    return EXIT_USAGE;
  }
  Scene scene;
  LogSpool log;
  const FileOutcome outcome = readScene(scene, input, log);
  const std::string problem = writeDump(outcome, log, scene);
  for (const Loss& loss : outcome.losses) {
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(shownName(file_), loss.position, "error", loss.text).c_str());
  }
  if (!problem.empty()) {
    printError(problem);
    return EXIT_USAGE;
  }
  return outcome.isComplete() ? EXIT_READ : EXIT_NOT_READ;
}

}  // namespace vsa_tools
