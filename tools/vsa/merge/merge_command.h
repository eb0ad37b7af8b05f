// vsa merge: merges several texts into one.
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <vsa/write.h>
#include "tools/vsa/command.h"
#include "tools/vsa/common/files/file_arguments.h"
#include "tools/vsa/common/files/files_progress.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/merge/definitions.h"
#include "tools/vsa/merge/node_names.h"
#include "tools/vsa/merge/node_renamer.h"

namespace vsa_tools {

class MergeCommand final : public Command {
 public:
  MergeCommand() : Command("merge", "Write several texts as one") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  /// A text and the new names of its nodes.
  struct Part {
    std::string name;
    TextFile file;
    Renames renames;
    std::uint64_t bytesRead = 0;
  };

  int readAll(const std::vector<std::string>& names);
  int read(std::size_t index);
  int addNames(Part& part, const NodeNames& names, const Definitions& definitions,
               bool hasBrokenLinks);
  void addClash(Part& part, const std::string& name, const std::set<std::string>& used);
  void addOwner(const Part& part, const NodeNames& names, bool hasBrokenLinks);
  void addDefinitions(const Part& part, const NodeNames& names, const Definitions& definitions);
  std::string otherName(const std::string& name, const std::set<std::string>& used);
  TextFileSource sourceOf(std::size_t index);
  int writeAll();
  bool writeTo(vsa::Sink& sink);

  FileArguments files_;
  std::string output_ = "-";
  bool renames_ = false;
  ReadArguments reading_;
  std::deque<Part> parts_;
  std::string readError_;  // why a text could not be read when it was to be written
  std::optional<FilesProgress> progress_;
  std::map<std::string, const Part*> owners_;  // the first text in which a node has the name
  Definitions definitions_;                    // those of nodes that later texts may share
  std::set<std::string> reserved_;  // all names in the texts, also of removed and missing nodes
  std::map<std::string, int> nextNumbers_;  // where otherName() continues for a name
};

}  // namespace vsa_tools
