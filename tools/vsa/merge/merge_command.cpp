#include "tools/vsa/merge/merge_command.h"

#include <algorithm>

#include <vsa/file_replacement.h>
#include <vsa/syntax.h>
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/fmt/comparison/reading_check.h"
#include "tools/vsa/fmt/layout/short_list_source.h"
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/merge/node_names.h"

namespace vsa_tools {

void MergeCommand::addTo(CommandOptions& options) {
  options.add("FILES", files_, "Files to merge, in this order; - is standard input").required();
  options.add("-o,--output", output_, "File to write or replace; - is standard output")
      .valueName("FILE");
  options.addFlag("--rename", renames_,
                  "Give other names to nodes of a file whose names an earlier file has: lamp_2");
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa merge room.vsa lamps.vsa -o all.vsa\n"
      "  vsa merge --rename left.vsa right.vsa >both.vsa\n"
      "Nothing is written if a file was not read completely or, without --rename, if two files "
      "have "
      "a node of the same name: exit status 1.");
}

// Takes the names of the nodes that a text makes. Names those that an earlier text makes too, or
// finds other names for them.
int MergeCommand::addNames(Part& part, const std::set<std::string>& made) {
  int status = EXIT_READ;
  for (const std::string& name : made) {
    const auto owner = owners_.find(name);
    if (owner == owners_.end()) continue;
    if (!renames_) {
      printError(part.name + ": the node " + name + " is in " + owner->second +
                 ", too; --rename gives it another name");
      status = EXIT_NOT_READ;
      continue;
    }
    std::string other;
    for (int number = 2; other.empty() || owners_.contains(other) || made.contains(other);) {
      other = name + '_' + std::to_string(number++);
    }
    printError(part.name + ": the node " + name + " is renamed to " + other);
    owners_.emplace(other, part.name);
    part.renames.emplace(name, std::move(other));
  }
  for (const std::string& name : made) owners_.try_emplace(name, part.name);
  return status;
}

int MergeCommand::read(Part& part) {
  if (!part.file.open(part.name)) {
    printError(part.name + ": " + part.file.problem());
    return EXIT_USAGE;
  }
  part.name = shownName(part.name);
  NodeNames names;
  TextFileSource text(part.file);
  ShortListSource source(text);
  vsa::ReadOptions options = reading_.options();
  options.keptDiagnostics = 0;
  if (vsa::readSourceInto(names, source, options).isComplete()) return addNames(part, names.made());
  if (isInterrupted()) return EXIT_INTERRUPTED;
  TextFileSource again(part.file);
  for (const std::string& line : endingDiagnostics(part.name, again, reading_)) printLine(line);
  printError(part.name + ": nothing was written, because the file was not read completely");
  return EXIT_NOT_READ;
}

int MergeCommand::readAll() {
  int status = EXIT_READ;
  for (const std::string& name : files_) {
    parts_.emplace_back().name = name;
    status = std::max(status, read(parts_.back()));
  }
  return status;
}

bool MergeCommand::writeTo(vsa::Sink& sink) const {
  for (const Part& part : parts_) {
    TextFileSource source(part.file);
    vsa::SyntaxReader reader(source);
    TextLayout layout(sink);
    NodeRenamer renamer(part.renames, layout);
    vsa::SyntaxToken token;
    do {
      token = reader.next();
      renamer.put(token);
    } while (token.kind != vsa::SyntaxKind::EndOfText);
    layout.put(token);
    if (!layout.flush() || !source.error().empty()) return false;
  }
  return true;
}

int MergeCommand::writeAll() const {
  OutputSink out;
  vsa::FileReplacement file;
  const bool isFile = output_ != "-";
  const bool isWritten =
      isFile ? file.open(output_) && writeTo(file) && file.replace() : writeTo(out) && out.flush();
  if (isInterrupted()) return EXIT_INTERRUPTED;
  if (!isWritten) printError(isFile ? file.error() : out.error());
  return isWritten ? EXIT_READ : EXIT_USAGE;
}

int MergeCommand::run() {
  const InterruptScope interrupts;
  const int status = readAll();
  return status == EXIT_READ ? writeAll() : status;
}

}  // namespace vsa_tools
