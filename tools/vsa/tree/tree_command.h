// vsa tree: prints the scene of a file as a tree of references and connections.
#pragma once

#include <string>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/tree/scene_tree.h"

namespace vsa_tools {

class TreeCommand final : public Command {
 public:
  TreeCommand() : Command("tree", "Print the scene of a file as a tree of links") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::string file_;
  TreeOptions options_;
  ReadArguments reading_;
};

}  // namespace vsa_tools
