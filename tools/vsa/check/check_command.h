// vsa check: prints the diagnostics of each file and a summary.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Reads each file and writes its diagnostics, one per line, then a summary, to standard error.
class CheckCommand final : public Command {
 public:
  CheckCommand() : Command("check", "Read each file and print its diagnostics") {}
  void addTo(CLI::App& app) override;
  int run() override;

 private:
  std::vector<std::string> files_;
  ReadArguments reading_;
  bool strict_ = false;  // any diagnostic is an EXIT_NOT_READ
};

}  // namespace vsa_tools
