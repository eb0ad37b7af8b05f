// vsa dump: prints the scene of a file as JSON.
#pragma once

#include <string>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Writes the scene of one file as JSON to standard output.
class DumpCommand final : public Command {
 public:
  DumpCommand() : Command("dump", "Print the scene of a file as JSON") {}
  void addTo(CLI::App& app) override;
  int run() override;

 private:
  std::string file_;
  ReadArguments reading_;
};

}  // namespace vsa_tools
