#include "tools/vsa/diff/diff_command.h"

#include <algorithm>
#include <cstdio>
#include <future>

#include "tools/vsa/common/exit_status.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/common/standard_output.h"
#include "tools/vsa/diff/difference_output.h"

namespace vsa_tools {

namespace {

enum DiffStatus { DIFF_SAME = 0, DIFF_DIFFERENT = 1, DIFF_TROUBLE = 2 };

std::uint64_t printDifferences(const SceneFile& a, const SceneFile& b, const DiffOptions& options,
                               bool asJson, TextOutput& out) {
  if (!asJson) {
    DifferenceText text(out);
    return compareScenes(a.result.scene, b.result.scene, options, text);
  }
  DifferenceJson json(a.name, b.name, out);
  const std::uint64_t count = compareScenes(a.result.scene, b.result.scene, options, json);
  json.end();
  return count;
}

}  // namespace

void DiffCommand::addTo(CLI::App& app) {
  app.add_option("A", fileA_, "The one file; - is standard input")->required()->type_name("");
  app.add_option("B", fileB_, "The other file")->required()->type_name("");
  app.add_option("--tolerance", options_.tolerance.absolute,
                 "Numbers that are at most this far apart are the same")
      ->type_name("ABS")
      ->check(CLI::NonNegativeNumber);
  app.add_option("--relative", options_.tolerance.relative,
                 "And so are those at most this part of the larger one apart")
      ->type_name("REL")
      ->check(CLI::NonNegativeNumber);
  app.add_option("--ignore", options_.ignored, "Leave out these nodes, or inputs as NODE.INPUT")
      ->type_name("PATTERN")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.add_flag("--json", json_, "Print JSON");
  reading_.addTo(app);
  app.footer(
      "Exit status: 0 the scenes are the same, 1 they differ, 2 a file was not read completely.\n"
      "Without a tolerance, numbers are the same if all their bits are.\n"
      "Examples:\n"
      "  vsa diff old.vsa new.vsa\n"
      "  vsa diff --tolerance 1e-6 --ignore '*.time' old.vsa new.vsa");
}

int DiffCommand::run() {
  const InterruptScope interrupts;
  auto readingA =
      std::async(std::launch::async, [this] { return readSceneFile(fileA_, reading_); });
  const SceneFile b = readSceneFile(fileB_, reading_), a = readingA.get();
  std::fputs((a.messages + b.messages).c_str(), stderr);
  if (a.exitStatus != EXIT_READ || b.exitStatus != EXIT_READ) {
    printError("nothing was compared, because a file was not read completely");
    return std::max({static_cast<int>(DIFF_TROUBLE), a.exitStatus, b.exitStatus});
  }
  TextOutput out(stdout);
  const std::uint64_t count = printDifferences(a, b, options_, json_, out);
  if (finish(out) != EXIT_READ) return DIFF_TROUBLE;
  return count == 0 ? DIFF_SAME : DIFF_DIFFERENT;
}

}  // namespace vsa_tools
