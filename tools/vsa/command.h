// A command of vsa, and the list of all of them.
#pragma once

#include <memory>
#include <vector>

#include "tools/vsa/common/command_options.h"

namespace vsa_tools {

/// One command of vsa: its name, its purpose, its options, and the function that runs it.
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
  /// Runs the command with the values of its options, and returns the exit status. If it throws a
  /// std::exception, main() prints the message and exits with EXIT_USAGE.
  virtual int run() = 0;

 private:
  const char* name_;
  const char* purpose_;
};

/// Returns all commands in the order in which the help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

}  // namespace vsa_tools
