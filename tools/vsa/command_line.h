// The parser of the command line: the commands, their options, the help, and the errors.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/vsa/command.h"

namespace vsa_tools {

/// What the arguments request. Exactly one of the members is set.
struct Request {
  Command* command = nullptr;  ///< the command to run, with its options and arguments filled in
  std::string help;            ///< the help or the version, to be printed
  std::string error;           ///< why the arguments are wrong, without an end of line
};

/// The command line of a program with these commands.
class CommandLine {
 public:
  /// `version` is what --version prints. The commands must not be null.
  CommandLine(std::vector<std::unique_ptr<Command>> commands, const std::string& version);
  ~CommandLine();

  /// Parses the arguments of the program, without its own name. Call it only once: a command keeps
  /// the values of its first parsing.
  Request parse(std::vector<std::string> arguments);

 private:
  struct Parser;

  Command* chosen() const;
  std::string names() const;

  std::vector<std::unique_ptr<Command>> commands_;
  std::unique_ptr<Parser> parser_;
};

}  // namespace vsa_tools
