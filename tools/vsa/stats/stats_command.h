// vsa stats: counts the nodes, inputs and values in files.
#pragma once

#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/files/file_arguments.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/stats/file_statistics.h"

namespace vsa_tools {

/// Reads the files, prints their diagnostics to standard error, and then prints one report about
/// all of them to standard output.
class StatsCommand final : public Command {
 public:
  StatsCommand() : Command("stats", "Count nodes, inputs, links and bytes of each file") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  /// Reads the files and adds their statistics in the order of the files. Returns the exit status.
  int countAll(const std::vector<std::string>& files, StatisticsReport& report) const;

  FileArguments files_;
  ReadArguments reading_;
  bool json_ = false, html_ = false;
};

}  // namespace vsa_tools
