// vsa stats: counts what the scenes of files hold.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"

namespace vsa_tools {

/// Reads each file, and prints what it holds to standard output and its diagnostics to standard
/// error.
class StatsCommand final : public Command {
 public:
  StatsCommand() : Command("stats", "Count nodes, inputs, links and bytes of each file") {}
  void addTo(CLI::App& app) override;
  int run() override;

 private:
  std::vector<std::string> files_;
  ReadArguments reading_;
  bool json_ = false;
};

}  // namespace vsa_tools
