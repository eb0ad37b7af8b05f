#include "tools/vsa/diff/diff_command.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <future>
#include <utility>

#include "tools/vsa/common/files/progress.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/standard_output.h"
#include "tools/vsa/common/scene/scene_file.h"
#include "tools/vsa/diff/difference_output.h"

namespace vsa_tools {

namespace {

/// Reads both files at the same time. Ctrl-C ends the reading.
class TwoReadings {
 public:
  explicit TwoReadings(const ReadArguments& arguments) : arguments_(arguments) {}

  std::pair<SceneFile, SceneFile> read(const std::string& nameA, const std::string& nameB) {
    auto readingA = std::async(std::launch::async, [&] { return readOne(nameA, 0); });
    SceneFile b = readOne(nameB, 1);
    return {readingA.get(), std::move(b)};
  }

 private:
  SceneFile readOne(const std::string& name, std::size_t which) {
    return readSceneFile(name, arguments_, [&, which](std::uint64_t done, std::uint64_t total) {
      done_[which] = done;
      total_[which] = total;
      progress_.update(done_[0] + done_[1], total_[0] + total_[1]);
    });
  }

  const InterruptScope interrupts_;
  const ReadArguments& arguments_;
  Progress progress_{"reading"};
  std::atomic<std::uint64_t> done_[2] = {0, 0}, total_[2] = {0, 0};
};

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

void DiffCommand::addTo(CommandOptions& options) {
  options.add("A", fileA_, "The one file; - is standard input").required();
  options.add("B", fileB_, "The other file").required();
  options
      .add("--tolerance", options_.tolerance.absolute,
           "Numbers that are at most this far apart are the same")
      .valueName("ABS")
      .notNegative();
  options
      .add("--relative", options_.tolerance.relative,
           "And so are those at most this part of the larger one apart")
      .valueName("REL")
      .notNegative();
  options.add("--ignore", options_.ignored, "Leave out these nodes, or inputs as NODE.INPUT")
      .valueName("PATTERN")
      .repeatable();
  options.addFlag("--json", json_, "Print JSON");
  reading_.addTo(options);
  options.footer(
      "Without a tolerance, numbers are the same if all their bits are.\n\n"
      "Examples:\n"
      "  vsa diff old.vsa new.vsa\n"
      "  vsa diff --tolerance 1e-6 --ignore '*.time' old.vsa new.vsa\n\n"
      "Exit status:\n"
      "  0  the scenes are the same\n"
      "  1  they differ\n"
      "  2  wrong usage, a file that was not read completely, or output that cannot be written");
}

int DiffCommand::run() {
  if (fileA_ == "-" && fileB_ == "-") {
    printError("standard input can be read only once");
    return DIFF_TROUBLE;
  }
  const auto [a, b] = TwoReadings(reading_).read(fileA_, fileB_);
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
