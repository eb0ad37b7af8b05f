// vsa graph: draws the nodes of a file and their links.
#pragma once

#include <cstddef>
#include <string>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

class GraphCommand final : public Command {
 public:
  GraphCommand() : Command("graph", "Draw the nodes of a file and their links") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::size_t limitFor(std::size_t nodes) const;
  int write(const std::string& text) const;

  std::string file_;
  std::string output_ = "-";
  ReadArguments reading_;
  bool svg_ = false, png_ = false;
  std::size_t limit_ = 0;  // the value of --limit, or 0 without it
};

}  // namespace vsa_tools
