// The command vsa: runs one of its subcommands, such as check, dump or fmt. Each subcommand is in
// the folder of its name.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tools/vsa/command_line.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"

namespace vsa_tools {

namespace {

int printHelp(const std::string& text) {
  std::cout << text;
  if (std::cout.flush()) return EXIT_READ;
  printError(std::string("cannot write: ") + std::strerror(errno));
  return EXIT_USAGE;
}

/// Runs a command and returns its exit status. Messages that cannot be written are an error, too.
int runCommand(Command& command) {
  const int status = command.run();
  return isErrorOutputWritten() ? status : std::max<int>(status, EXIT_USAGE);
}

int run(std::vector<std::string> arguments) {
  CommandLine commandLine(allCommands(), "vsa " VSA_VERSION);
  const Request request = commandLine.parse(std::move(arguments));
  if (request.command != nullptr) return runCommand(*request.command);
  if (request.error.empty()) return printHelp(request.help);
  printError(request.error + " (vsa --help shows the usage)");
  return EXIT_USAGE;
}

}  // namespace

}  // namespace vsa_tools

int main(int argumentCount, char** arguments) {
  vsa_tools::reserveStandardDescriptors();
  try {
    return vsa_tools::run({arguments + 1, arguments + argumentCount});
  } catch (const std::exception& error) {
    vsa_tools::printError(error.what());
    return vsa_tools::EXIT_USAGE;
  }
}
