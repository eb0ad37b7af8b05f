// vsa explain: prints what a finding of vsa check means and what to do about it.
#pragma once

#include <string>

#include "tools/vsa/command.h"

namespace vsa_tools {

class ExplainCommand final : public Command {
 public:
  ExplainCommand() : Command("explain", "Print what a finding of vsa check means") {}
  void addTo(CommandOptions& options) override;
  int run() override;

 private:
  std::string id_;
};

}  // namespace vsa_tools
