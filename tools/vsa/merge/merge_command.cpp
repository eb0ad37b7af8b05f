#include "tools/vsa/merge/merge_command.h"

#include <algorithm>
#include <utility>

#include <vsa/file_replacement.h>
#include <vsa/syntax.h>
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/common/scene/broken_link.h"
#include "tools/vsa/common/writing/output_sink.h"
#include "tools/vsa/fmt/reading/nul_search.h"
#include "tools/vsa/fmt/reading/reading_check.h"
#include "tools/vsa/fmt/reading/short_list_source.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

void MergeCommand::addTo(CommandOptions& options) {
  files_.addTo(options, "Files to merge, in this order").required();
  options.add("-o,--output", output_, "File to write or replace; - is standard output")
      .valueName("FILE");
  options.addFlag("--rename", renames_,
                  "Give other names to nodes of a file whose names an earlier file has: lamp_2");
  reading_.addTo(options);
  options.footer(
      "Examples:\n"
      "  vsa merge room.vsa lamps.vsa -o all.vsa\n"
      "  vsa merge --rename left.vsa right.vsa >both.vsa\n"
      "  find parts -name '*.vsa' -print0 | sort -z | vsa merge -0 @- -o all.vsa\n"
      "\n"
      "Exit status:\n"
      "  0  the text was written\n"
      "  1  a file was not read completely or, without --rename, two files have a node of the "
      "same\n"
      "     name: nothing is written\n"
      "  2  wrong usage, a file that cannot be opened, or output that cannot be written");
}

// Compares the names of a text with the names of the nodes that remain after the earlier texts. If
// a name is used twice, chooses another name for it with --rename, and otherwise reports an error.
// Exception: the texts share a node that both of them define alike.
int MergeCommand::addNames(Part& part, const NodeNames& names, const Definitions& definitions,
                           bool hasBrokenLinks) {
  std::set<std::string> clashes, shared;
  for (const std::string& name : names.used()) {
    if (!owners_.contains(name)) continue;
    const auto before = definitions_.find(name);
    const bool isShared = before != definitions_.end() && names.isDefined(name) &&
                          canShare(before->second, definitions.at(name));
    (isShared ? shared : clashes).insert(name);
  }
  if (renames_) moveLinked(definitions, shared, clashes);
  // New names must not be among them: a broken link must remain broken.
  reserved_.merge(names.missing());
  for (const std::string& name : clashes) addClash(part, name, names.used());
  addOwner(part, names, hasBrokenLinks);
  addDefinitions(part, names, definitions);
  return clashes.empty() || renames_ ? EXIT_READ : EXIT_NOT_READ;
}

void MergeCommand::addClash(Part& part, const std::string& name,
                            const std::set<std::string>& used) {
  if (!renames_) {
    printError(part.name + ": the node " + name + " is in " + owners_.at(name)->name +
               ", too; --rename gives it another name");
    return;
  }
  std::string other = otherName(name, used);
  printError(part.name + ": the node " + name + " is renamed to " + other);
  owners_.emplace(other, &part);
  part.renames.emplace(name, std::move(other));
}

// Adds the names of the nodes that remain after the text. The name of a node that the text has
// removed may be used again. Exception: if the text has a broken link, the name may not be used
// again, because the link may refer to it.
void MergeCommand::addOwner(const Part& part, const NodeNames& names, bool hasBrokenLinks) {
  for (const std::string& name : names.used()) {
    if (hasBrokenLinks || names.has(name)) owners_.try_emplace(name, &part);
    reserved_.insert(name);
  }
}

// Adds the definitions that later texts may share. The texts share an empty definition with a
// definition that is not empty: the latter then counts for the texts after them. No text shares a
// definition that links to a node with a new name, because its words name another node there.
void MergeCommand::addDefinitions(const Part& part, const NodeNames& names,
                                  const Definitions& definitions) {
  const auto isRenamed = [&](const std::string& word) { return part.renames.contains(word); };
  for (const auto& [name, definition] : definitions) {
    if (!names.isDefined(name) || isRenamed(name)) continue;
    const auto& words = definition.firstWords;
    const auto owner = owners_.find(name);
    const auto before = definitions_.find(name);
    if (before != definitions_.end()) {
      if (!before->second.isEmpty || definition.isEmpty) continue;
      before->second = definition;
      owner->second = &part;
    } else if (owner->second == &part && std::none_of(words.begin(), words.end(), isRenamed)) {
      definitions_.emplace(name, definition);
    }
  }
}

// Returns a new name for `name`, such as "lamp_2": a name that is not in `used`, that no earlier
// text has, and that no broken link refers to. The search begins at the number at which the last
// search for `name` ended, because names that are taken remain so.
std::string MergeCommand::otherName(const std::string& name, const std::set<std::string>& used) {
  for (int& number = nextNumbers_.try_emplace(name, 2).first->second;; ++number) {
    std::string other = name + '_' + std::to_string(number);
    if (!owners_.contains(other) && !reserved_.contains(other) && !used.contains(other)) {
      return other;
    }
  }
}

int MergeCommand::read(std::size_t index) {
  Part& part = parts_[index];
  vsa::ReadOptions options = reading_.options();
  const std::uint64_t maxBytes = std::exchange(options.limits.textBytes, vsa::UNLIMITED);
  if (!part.file.open(part.name, maxBytes)) {
    progress_->hide();
    if (isInterrupted()) return EXIT_INTERRUPTED;
    printError(shownName(part.name) + ": " + part.file.problem());
    return EXIT_USAGE;
  }
  part.name = shownName(part.name);
  NodeNames names;
  TextFileSource text = sourceOf(index);
  NulSearch bytes(text);
  DefinitionReader definitions;
  ShortListSource source(bytes, vsa::UNLIMITED,
                         [&](const vsa::SyntaxToken& token) { definitions.add(token); });
  options.keptDiagnostics = 0;
  bool hasBrokenLinks = false;
  options.wantsDiagnostic = [&](vsa::DiagnosticId id) {
    hasBrokenLinks = hasBrokenLinks || isBrokenLink(id);
    return false;
  };
  // The limit is tested here, because the reader receives a changed text. An unknown size is less
  // than any limit.
  const bool isTooLong = text.size() > maxBytes;
  const bool isComplete =
      !isTooLong && vsa::readSourceInto(names, source, options).isComplete() && !bytes.hasNul();
  progress_->hide();
  if (isComplete) {
    part.file.close();
    return addNames(part, names, definitions.definitions(), hasBrokenLinks);
  }
  if (isInterrupted()) return EXIT_INTERRUPTED;
  TextFileSource again(part.file);
  for (const std::string& line : endingDiagnostics(part.name, again, reading_)) printLine(line);
  printError(part.name + ": nothing was written, because the file was not read completely");
  return EXIT_NOT_READ;
}

// Returns the source of a text. Each text is read twice: first to be checked, then to be written.
// In between, its file is closed, because a merge may have more files than a process may open.
TextFileSource MergeCommand::sourceOf(std::size_t index) {
  Part& part = parts_[index];
  const std::uint64_t total = 2 * TextFileSource(part.file).size().value_or(0);
  return TextFileSource(part.file, [this, &part, index, total](std::size_t count) {
    progress_->update(index, part.bytesRead += count, total);
  });
}

int MergeCommand::readAll(const std::vector<std::string>& names) {
  int status = EXIT_READ;
  for (const std::string& name : names) {
    parts_.emplace_back().name = name;
    status = std::max(status, read(parts_.size() - 1));
  }
  return status;
}

bool MergeCommand::writeTo(vsa::Sink& sink) {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    TextFile& file = parts_[i].file;
    if (!file.reopen()) {
      readError_ = parts_[i].name + ": " + file.problem();
      return false;
    }
    TextFileSource source = sourceOf(i);
    vsa::SyntaxReader reader(source);
    if (!writeRenamed(reader, parts_[i].renames, sink)) return false;
    if (!source.error().empty()) {
      readError_ = parts_[i].name + ": " + source.error();
      return false;
    }
    file.close();
  }
  return true;
}

int MergeCommand::writeAll() {
  OutputSink out;
  vsa::FileReplacement file;
  const bool isFile = output_ != "-";
  const bool isWritten =
      isFile ? file.open(output_) && writeTo(file) && file.replace() : writeTo(out) && out.flush();
  progress_->hide();
  if (isInterrupted()) return EXIT_INTERRUPTED;
  if (!isWritten) {
    printError(!readError_.empty() ? readError_ : isFile ? file.error() : out.error());
  }
  return isWritten ? EXIT_READ : EXIT_USAGE;
}

int MergeCommand::run() {
  const InterruptScope interrupts;
  const auto [names, listed] = files_.list();
  progress_.emplace("merging", names);
  const int status = std::max(readAll(names), listed);
  return status == EXIT_READ ? writeAll() : status;
}

}  // namespace vsa_tools
