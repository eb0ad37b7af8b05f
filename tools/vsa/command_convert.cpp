// vsa convert: reads a file and writes its scene as a text again.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <vsa/model/scene.h>
#include <vsa/write.h>
#include "tools/vsa/commands.h"
#include "tools/vsa/file_diagnostics.h"
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/read_scene.h"

namespace vsa_tools {

namespace {

using zn::korvo_sdk::Scene;

/// Standard output.
class OutputSink final : public vsa::Sink {
 public:
  bool write(std::string_view text) override {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!isWritten) problem_ = std::strerror(errno);
    return isWritten;
  }
  bool flush() {
    const bool isFlushed = std::fflush(stdout) == 0;
    if (!isFlushed) problem_ = std::strerror(errno);
    return isFlushed;
  }
  std::string error() const override { return "cannot write the text: " + problem_; }

 private:
  std::string problem_;
};

vsa::WriteResult writeToOutput(const Scene& scene, const vsa::WriteOptions& options) {
  OutputSink out;
  vsa::WriteResult result = vsa::writeTo(scene, out, options);
  if (result.isWritten() && !out.flush()) {
    result.status = vsa::WriteStatus::Unwritable;
    result.message = out.error();
  }
  return result;
}

/// Prints what the text cannot carry, one a line.
void printProblems(const std::string& name, const vsa::WriteResult& result) {
  const char* const level = result.isWritten() ? "warning" : "error";
  for (const vsa::WriteProblem& problem : result.problems) {
    const std::string place = problem.node + problem.input;
    const std::string text = (place.empty() ? "the header" : place) + ": " + problem.reason;
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(shownName(name), std::nullopt, level, text).c_str());
  }
  const std::uint64_t others = result.problemCount - result.problems.size();
  if (others > 0) printError("and " + std::to_string(others) + " more");
}

int exitStatusOf(const vsa::WriteResult& result) {
  if (result.isWritten()) return EXIT_READ;
  return result.status == vsa::WriteStatus::NotCarried ? EXIT_NOT_READ : EXIT_USAGE;
}

}  // namespace

int commandConvert(const std::string& name, const std::string& output,
                   const vsa::WriteOptions& options) {
  const InputFile input = openInput(name);
  if (!input.problem.empty()) {
    printError(name + ": " + input.problem);
    return EXIT_USAGE;
  }
  Scene scene;
  FileDiagnostics diagnostics(shownName(name));
  {
    const zn::korvo_sdk::ScopedDiagnosticSink scope(&diagnostics);
    const FileOutcome outcome = readScene(scene, input, diagnostics);
    diagnostics.add(outcome);
    if (!outcome.isComplete()) {
      printError(name + ": nothing was written, because the file was not read completely");
      return EXIT_NOT_READ;
    }
  }
  const vsa::WriteResult result =
      output == "-" ? writeToOutput(scene, options) : vsa::writeFile(scene, output, options);
  printProblems(name, result);
  if (!result.isWritten() && result.problems.empty()) printError(result.message);
  return exitStatusOf(result);
}

}  // namespace vsa_tools
