// vsa dump: what a text builds, as JSON.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/support/scene_dump.h"
#include "tools/vsa/commands.h"
#include "tools/vsa/diagnostic.h"
#include "tools/vsa/input_file.h"
#include "tools/vsa/read_scene.h"

namespace vsa_tools {

namespace {

bool writeDump(const ReadOutcome& outcome, const zn::korvo_sdk::Scene& scene) {
  TextOutput out(stdout);
  dumpJson(outcome, scene, out);
  return out.flush();
}

}  // namespace

int commandDump(const std::string& name) {
  std::string problem;
  const zn::File file = openInput(name, problem);
  if (!problem.empty()) {
    complain(name + ": " + problem);
    return EXIT_USAGE;
  }
  zn::korvo_sdk::Scene scene;
  const FileReading reading = readScene(scene, file);
  if (!writeDump(reading, scene)) {
    complain(std::string("cannot write the dump: ") + std::strerror(errno));
    return EXIT_USAGE;
  }
  for (const Loss& loss : reading.losses) {
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(shownName(name), loss.position, "error", loss.text).c_str());
  }
  return reading.complete() ? EXIT_READ : EXIT_NOT_READ;
}

}  // namespace vsa_tools
