#include "tools/vsa/dump/dump_command.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>

#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/common/read_scene.h"
#include "tools/vsa/dump/dump_log.h"
#include "tools/vsa/dump/large_buffer.h"
#include "tools/vsa/dump/pretty_json.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

void DumpCommand::addTo(CommandOptions& options) {
  options.add("FILE", file_, "File to read; - is standard input").required();
  options.add("--select", selected_, "Print only these nodes or inputs: lamp, lamp.power, 'l*.*'")
      .valueName("NAME[.INPUT]")
      .repeatable();
  options.addFlag("--no-buffers", noBuffers_, "Print no elements of buffers, only their number");
  options.add("--max-elements", maxElements_, "Print at most N elements of each buffer")
      .valueName("N")
      .notNegative();
  options.addFlag("--large-buffers", largeBuffers_, "Print buffers of more than 1 GiB, too");
  const CommandOption lines =
      options.addFlag("--ndjson", lines_, "One JSON object a line: the header, then each node");
  options.addFlag("--pretty", pretty_, "Indent the JSON").excludes(lines);
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa dump scene.vsa\n"
      "  vsa dump --pretty --max-elements 4 scene.vsa | less\n"
      "  vsa dump --select 'lamp*.power' scene.vsa\n"
      "  vsa dump --ndjson --no-buffers scene.vsa | grep '\"type\":\"mesh\"'\n\n"
      "Exit status:\n"
      "  0  the file was read\n"
      "  1  it was not read completely, or nothing matches --select\n"
      "  2  wrong usage, a file that cannot be opened, output that cannot be written, or a buffer "
      "of\n"
      "     more than 1 GiB");
}

DumpOptions DumpCommand::options(const DumpSelection& selection) const {
  DumpOptions options;
  options.hasBuffers = !noBuffers_;
  options.maxElements = maxElements_.value_or(options.maxElements);
  options.hasLines = lines_;
  if (!selected_.empty()) {
    options.choose = [&selection](const zn::korvo_sdk::Node& node) {
      return selection.inputsOf(vsa::NodeView(const_cast<zn::korvo_sdk::Node*>(&node)));
    };
  }
  return options;
}

// Writes the dump to standard output. Returns the exit status, without regard to the reading.
int DumpCommand::write(const vsa::Scene& scene, const ReadStatus& status,
                       const DumpLog& log) const {
  const DumpSelection selection(selected_);
  const DumpOptions options = this->options(selection);
  if (options.hasBuffers && !largeBuffers_) {
    const std::string large = largeBufferOf(scene, selection, options.maxElements);
    if (!large.empty()) {
      printError(large +
                 ": a buffer of more than 1 GiB is printed with --large-buffers only; "
                 "--no-buffers and --max-elements N leave elements out");
      return EXIT_USAGE;
    }
  }
  TextOutput out(stdout);
  PrettyJson pretty(out);
  TextOutput indented([&pretty](std::string_view json) {
    pretty.put(json);
    return true;
  });
  TextOutput& to = pretty_ ? indented : out;
  dumpJson(
      status, [&log](TextOutput& log_out) { log_out.put(log.json()); }, scene.plain(), to, options);
  const bool isWritten = indented.flush() && out.flush();
  if (!isWritten) {
    printError(std::string("cannot write the dump: ") + std::strerror(errno));
    return EXIT_USAGE;
  }
  if (selection.matches(scene)) return EXIT_READ;
  printError(shownName(file_) + ": nothing in it matches --select");
  return EXIT_NOT_READ;
}

int DumpCommand::run() {
  vsa::Scene scene;
  DumpLog log(reading_);
  const std::optional<FileOutcome> outcome = readScene(scene, file_, log.options());
  if (!outcome) return isInterrupted() ? EXIT_INTERRUPTED : EXIT_USAGE;
  const ReadStatus status = log.end(outcome->read);
  const int written = write(scene, status, log);
  const std::string name = shownName(file_);
  for (const Loss& loss : outcome->losses) {
    printLine(diagnosticLine(name, loss.position, "error", loss.text));
  }
  if (log.notKept() > 0) printNotPrinted(name, log.notKept());
  if (written == EXIT_USAGE) return EXIT_USAGE;
  const int read = outcome->isComplete() ? EXIT_READ : EXIT_NOT_READ;
  return isInterrupted() ? EXIT_INTERRUPTED : std::max(written, read);
}

}  // namespace vsa_tools
