// vsa dump: prints the scene of a file as JSON.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/commands.h"
#include "tools/vsa/diagnostic.h"
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/log_spool.h"
#include "tools/vsa/read_scene.h"

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

int commandDump(const std::string& name) {
  const InputFile input = openInput(name);
  if (!input.problem.empty()) {
    printError(name + ": " + input.problem);
    return EXIT_USAGE;
  }
  Scene scene;
  LogSpool log;
  const FileOutcome outcome = readScene(scene, input, log);
  const std::string problem = writeDump(outcome, log, scene);
  for (const Loss& loss : outcome.losses) {
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(shownName(name), loss.position, "error", loss.text).c_str());
  }
  if (!problem.empty()) {
    printError(problem);
    return EXIT_USAGE;
  }
  return outcome.isComplete() ? EXIT_READ : EXIT_NOT_READ;
}

}  // namespace vsa_tools
