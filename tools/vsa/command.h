// A command of vsa, and the list of all of them.
#pragma once

#include <memory>
#include <vector>

#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

/// One command: its name and its purpose, its options, and the function that runs it. The parser of
/// the command line fills the members that addTo() names, so a command must not move.
class Command {
 public:
  Command(const char* name, const char* purpose) : name_(name), purpose_(purpose) {}
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  const char* name() const { return name_; }
  const char* purpose() const { return purpose_; }

  /// Adds the options, the arguments, and examples as the footer.
  virtual void addTo(CommandOptions& options) = 0;
  /// Runs the command after the command line was parsed, and returns the exit status.
  virtual int run() = 0;

 private:
  const char* name_;
  const char* purpose_;
};

/// All commands, in the order in which the help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

}  // namespace vsa_tools
