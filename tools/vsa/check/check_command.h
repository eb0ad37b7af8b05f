// vsa check: shows what is wrong with texts.
#pragma once

#include "tools/vsa/check/check_options.h"
#include "tools/vsa/command.h"

namespace vsa_tools {

class CheckCommand final : public Command {
 public:
  CheckCommand() : Command("check", "Show the mistakes of texts, where they are and what to do") {}
  void addTo(CLI::App& app) override;
  int run() override;

 private:
  void addInputOptions(CLI::App& app);
  void addOutputOptions(CLI::App& app);
  void addSelectionOptions(CLI::App& app);

  CheckOptions options_;
};

}  // namespace vsa_tools
