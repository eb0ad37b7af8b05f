#include "tools/vsa/common/scene/scene_file.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string_view>

#include "tools/scene_text/printable_text.h"
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/files/progress.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/scene/broken_link.h"
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/input/loss.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::interfaces::IScene;

constexpr std::size_t KEPT_MESSAGE_BYTES = std::size_t{1} << 20;

/// Reads one file and collects the messages about it.
class Reading {
 public:
  Reading(const std::string& name, const ReadArguments& arguments, const ReadingProgress& progress)
      : arguments_(arguments), progress_(progress) {
    file_.name = shownName(name);
  }

  SceneFile read(const InputFile& input, IScene* scene) {
    const auto start = std::chrono::steady_clock::now();
    if (scene == nullptr) {
      file_.result = vsa::readSource(*input.source, options());
    } else {
      static_cast<vsa::ReadOutcome&>(file_.result) =
          vsa::readSourceInto(*scene, *input.source, options());
    }
    file_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    addEnd();
    addByteLoss(*input.source);
    if (dropped_ > 0) {
      file_.messages += "vsa: " + printableLine(file_.name) + ": and " + std::to_string(dropped_) +
                        " more messages (--max-diagnostics N prints more)\n";
    }
    return std::move(file_);
  }

 private:
  vsa::ReadOptions options() {
    vsa::ReadOptions options = arguments_.options();
    options.keptDiagnostics = 0;
    if (progress_) {
      options.onProgress = [this, goesOn = options.onProgress](const vsa::ReadProgress& at) {
        if (at.bytesTotal) progress_(at.bytesRead, *at.bytesTotal);
        return goesOn(at);
      };
    }
    options.onDiagnostic = [this](const vsa::Diagnostic& found) { add(found); };
    options.wantsDiagnostic = [this](vsa::DiagnosticId id) { return wants(id); };
    return options;
  }

  // Counts a diagnostic for whose message there is no room, and returns false.
  bool wants(vsa::DiagnosticId id) {
    if (!isFull_ && kept_ < arguments_.maxDiagnostics()) return true;
    file_.brokenLinks += isBrokenLink(id);
    ++dropped_;
    return false;
  }

  // Adds or counts a message. The one that tells why the reading is not complete is added even
  // after --max-diagnostics.
  void add(const vsa::Diagnostic& found) {
    file_.brokenLinks += isBrokenLink(found.id);
    const bool tellsEnd = end_.isToldBy(found);
    if (const std::optional<Loss> loss = lossOf(found)) return add(loss);
    const bool hasPosition = !found.kind.empty();
    const Position position{found.logLineNumber, found.logColumn};
    const std::string text = arguments_.lineOf(found);
    const bool fits = !isFull_ && kept_ < arguments_.maxDiagnostics() &&
                      file_.messages.size() + text.size() <= KEPT_MESSAGE_BYTES;
    isFull_ = !fits;
    if (!fits && !tellsEnd) {
      ++dropped_;
      return;
    }
    ++kept_;
    add(hasPosition ? std::optional(position) : std::nullopt, vsa::name(found.severity), text);
  }

  void add(const std::optional<Position>& position, std::string_view level, std::string_view text) {
    file_.messages += diagnosticLine(file_.name, position, level, text) + '\n';
  }

  /// Sets the exit status of a reading that ended early, and adds the reason if no diagnostic
  /// contains it.
  void addEnd() {
    file_.result.diagnostics.clear();
    if (file_.result.isComplete()) return;
    file_.exitStatus = isInterrupted() ? EXIT_INTERRUPTED : EXIT_NOT_READ;
    add(end_.loss(file_.result));
  }

  void addByteLoss(const InspectedSource& source) {
    const std::optional<Loss> loss = byteLoss(source);
    if (loss) file_.exitStatus = std::max<int>(file_.exitStatus, EXIT_NOT_READ);
    add(loss);
  }

  void add(const std::optional<Loss>& loss) {
    if (loss) add(loss->position, "error", loss->text);
  }

  const ReadArguments& arguments_;
  const ReadingProgress& progress_;
  SceneFile file_;
  std::uint64_t kept_ = 0, dropped_ = 0;
  bool isFull_ = false;  // whether a message did not fit
  ReadingEnd end_;
};

}  // namespace

SceneFile readSceneFile(const std::string& name, const ReadArguments& arguments,
                        const ReadingProgress& onProgress, IScene* scene) {
  const InputFile input = openInput(name);
  if (input.problem.empty()) return Reading(name, arguments, onProgress).read(input, scene);
  SceneFile file;
  file.name = shownName(name);
  file.messages = "vsa: " + printableLine(file.name + ": " + input.problem) + '\n';
  file.result.status = vsa::ReadStatus::Unreadable;
  file.exitStatus = isInterrupted() ? EXIT_INTERRUPTED : EXIT_USAGE;
  return file;
}

SceneFile readAndReport(const std::string& name, const ReadArguments& arguments, IScene* scene) {
  const InterruptScope interrupts;
  Progress progress("reading");
  const ReadingProgress onProgress = [&](std::uint64_t done, std::uint64_t total) {
    progress.update(done, total);
  };
  SceneFile file = readSceneFile(name, arguments, onProgress, scene);
  progress.hide();
  std::fputs(file.messages.c_str(), stderr);
  return file;
}

}  // namespace vsa_tools
