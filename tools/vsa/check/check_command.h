// vsa check: reports the mistakes in texts.
#pragma once

#include <string>

#include "tools/vsa/check/check_options.h"
#include "tools/vsa/command.h"
#include "tools/vsa/common/files/file_arguments.h"

namespace vsa_tools {

class CheckCommand final : public Command {
 public:
  CheckCommand() : Command("check", "Show the mistakes of texts, where they are and what to do") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  void addInputOptions(CommandOptions& options);
  void addOutputOptions(CommandOptions& options);
  void addSelectionOptions(CommandOptions& options);

  FileArguments files_;
  std::string format_ = "full";
  CheckOptions options_;
};

}  // namespace vsa_tools
