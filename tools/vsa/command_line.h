// CommandLine: the parser of the command line, with the commands, the help and the errors.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/vsa/command.h"

namespace vsa_tools {

/// The result of parsing the arguments. Exactly one of the members is set: the other pointer or
/// texts are null or empty.
struct Request {
  Command* command = nullptr;  ///< The command to run, with the values of its options.
  std::string help;            ///< The help or the version to print.
  std::string error;           ///< Why the arguments are wrong. It contains arguments unescaped.
};

/// Parses the command line of a program with these commands.
class CommandLine {
 public:
  /// `version` is what --version prints. The commands must not be null.
  CommandLine(std::vector<std::unique_ptr<Command>> commands, const std::string& version);
  ~CommandLine();

  /// Parses the arguments of the program, without its own name. Must be called only once, because a
  /// command keeps the values of its first parsing.
  Request parse(std::vector<std::string> arguments);

 private:
  struct Parser;

  Command* chosen() const;
  std::string names() const;

  std::vector<std::unique_ptr<Command>> commands_;
  std::unique_ptr<Parser> parser_;
};

}  // namespace vsa_tools
