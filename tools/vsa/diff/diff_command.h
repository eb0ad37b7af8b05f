// vsa diff: compares the scenes of two files by node and input.
#pragma once

#include <string>

#include "tools/vsa/command.h"
#include "tools/vsa/common/read_arguments.h"
#include "tools/vsa/diff/scene_difference.h"

namespace vsa_tools {

/// Compares two files. The exit status is 0 if the scenes are the same, 1 if they differ, 2 if a
/// file was not read completely or the output cannot be written, and 130 if Ctrl-C ended the
/// reading.
class DiffCommand final : public Command {
 public:
  DiffCommand() : Command("diff", "Compare the scenes of two files") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::string fileA_, fileB_;
  DiffOptions options_;
  ReadArguments reading_;
  bool json_ = false;
};

}  // namespace vsa_tools
