#include "tools/vsa/common/writing/write_arguments.h"

#include <optional>

#include <vsa/file_replacement.h>
#include <vsa/write.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

/// Passes a text on to another sink until Ctrl-C is pressed.
class InterruptibleSink final : public vsa::Sink {
 public:
  explicit InterruptibleSink(vsa::Sink& out) : out_(out) {}
  bool write(std::string_view text) override { return !isInterrupted() && out_.write(text); }
  std::string error() const override { return out_.error(); }

 private:
  vsa::Sink& out_;
};

vsa::WriteResult writeToOutput(const vsa::Scene& scene, const vsa::WriteOptions& options) {
  OutputSink out;
  InterruptibleSink sink(out);
  vsa::WriteResult result = vsa::writeTo(scene, sink, options);
  if (result.isWritten() && !out.flush()) {
    result.status = vsa::WriteStatus::Unwritable;
    result.message = out.error();
  }
  return result;
}

/// Writes the file as vsa::writeFile() does. After Ctrl-C or a failure an old file remains.
vsa::WriteResult writeToFile(const vsa::Scene& scene, const std::string& path,
                             const vsa::WriteOptions& options) {
  vsa::FileReplacement file;
  InterruptibleSink sink(file);
  vsa::WriteResult result;
  bool isReplaced = file.open(path);
  if (isReplaced) {
    result = vsa::writeTo(scene, sink, options);
    if (!result.isWritten()) return result;
    isReplaced = file.replace();
  }
  if (!isReplaced) {
    result.status = vsa::WriteStatus::Unwritable;
    result.message = file.error();
  }
  return result;
}

/// Prints which parts of the scene the text cannot represent, one problem a line, and how many
/// further problems there are.
void printProblems(const std::string& name, const vsa::WriteResult& result) {
  const char* const level = result.isWritten() ? "warning" : "error";
  for (const vsa::WriteProblem& problem : result.problems) {
    const std::string place = problem.node + problem.input;
    const std::string text = (place.empty() ? "the header" : place) + ": " + problem.reason;
    printLine(diagnosticLine(shownName(name), std::nullopt, level, text));
  }
  const std::uint64_t others = result.problemCount - result.problems.size();
  if (others > 0) printError("and " + std::to_string(others) + " more");
}

int exitStatusOf(const vsa::WriteResult& result) {
  if (result.isWritten()) return EXIT_READ;
  return result.status == vsa::WriteStatus::NotCarried ? EXIT_NOT_READ : EXIT_USAGE;
}

}  // namespace

void WriteArguments::addTo(CommandOptions& options) {
  options.add("-o,--output", output_, "File to write or replace; - is standard output")
      .valueName("FILE");
  const CommandOption compress =
      options.addFlag("--compress", compress_, "Write buffers of bytes as compressed blocks");
  options.addFlag("--expand", expand_, "Write buffers of bytes as numbers, as without it")
      .excludes(compress);
  options.addFlag("--full-paths", fullPaths_, "Write the node's name in every statement");
  options.addFlag("--by-name", byName_, "Sort the nodes by name");
  options.addFlag("--links-last", linksLast_, "Write references and connections last");
  options.add("--width", options_.lineWidth, "Columns of a line of numbers; 0: no limit")
      .valueName("N")
      .notNegative();
  options
      .add("--numbers", options_.numbersPerLine, "Numbers in a line of a list; 0: as many as fit")
      .valueName("N")
      .notNegative();
  options.addFlag("--no-header", noHeader_, "Leave out comments, version and time");
  options.addFlag("--lossy", options_.lossy, "Leave out what a text cannot carry");
}

vsa::WriteOptions WriteArguments::options() const {
  vsa::WriteOptions options = options_;
  if (compress_) options.buffers = vsa::BufferForm::Compressed;
  if (fullPaths_) options.paths = vsa::PathForm::Full;
  if (byName_) options.order = vsa::NodeOrder::Name;
  if (linksLast_) options.links = vsa::LinkPlace::Last;
  if (noHeader_) options.header = vsa::HeaderForm::None;
  return options;
}

int WriteArguments::write(const vsa::Scene& scene, const std::string& name) const {
  const InterruptScope interrupts;
  const vsa::WriteResult result =
      output_ == "-" ? writeToOutput(scene, options()) : writeToFile(scene, output_, options());
  if (isInterrupted() && !result.isWritten()) return EXIT_INTERRUPTED;
  printProblems(name, result);
  if (!result.isWritten() && result.problems.empty()) printError(result.message);
  return exitStatusOf(result);
}

}  // namespace vsa_tools
