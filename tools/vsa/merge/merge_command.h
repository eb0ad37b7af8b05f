// vsa merge: several texts as one.
#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include <vsa/write.h>
#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/merge/node_renamer.h"

namespace vsa_tools {

class MergeCommand final : public Command {
 public:
  MergeCommand() : Command("merge", "Write several texts as one") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  /// A text, and the names that its nodes get.
  struct Part {
    std::string name;
    TextFile file;
    Renames renames;
  };

  int readAll();
  int read(Part& part);
  int addNames(Part& part, const std::set<std::string>& made);
  int writeAll() const;
  bool writeTo(vsa::Sink& sink) const;

  std::vector<std::string> files_;
  std::string output_ = "-";
  bool renames_ = false;
  ReadArguments reading_;
  std::deque<Part> parts_;
  std::map<std::string, std::string> owners_;  // the names of nodes, and the first text of each
};

}  // namespace vsa_tools
