// vsa extract: writes some nodes of a text, and all nodes that they need, as a separate text.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/common/writing/write_arguments.h"

namespace vsa_tools {

class ExtractCommand final : public Command {
 public:
  ExtractCommand() : Command("extract", "Write some nodes and all that they need as a text") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::string file_;
  std::vector<std::string> names_, without_;
  ReadArguments reading_;
  WriteArguments writing_;
};

}  // namespace vsa_tools
