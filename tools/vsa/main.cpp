// The command vsa: reads VSA texts, says what is wrong with them, shows what they build.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tools/vsa/commands.h"

namespace vsa_tools {

namespace {

/// The command line, and what it asked for.
struct CommandLine {
  CLI::App app{"Reads scenes in the VSA text format.", "vsa"};
  CLI::App* check = app.add_subcommand("check", "Read each file and print its diagnostics");
  CLI::App* dump = app.add_subcommand("dump", "Print the scene of a file as JSON");
  std::vector<std::string> checkFiles;
  std::string dumpFile;
  bool strict = false;

  CommandLine() {
    app.require_subcommand(0, 1);  // so that an unknown word is what the complaint names
    app.set_version_flag("--version", "vsa " VSA_VERSION, "Print the version and exit");
    app.footer(
        "Exit status: 0 all was read, 1 a text was not read, 2 wrong usage, a file that cannot be "
        "opened, or output that cannot be written.");
    check->add_option("FILE", checkFiles, "Files to read; - is standard input")->required();
    check->add_flag("--strict", strict, "Exit 1 when a file logged anything");
    dump->add_option("FILE", dumpFile, "File to read; - is standard input")->required();
  }

  int run() const { return *check ? commandCheck(checkFiles, strict) : commandDump(dumpFile); }
};

// The arguments, last one first, as the parser takes them. It would read "[x]" as a list; "./[x]"
// is the file of that name.
std::vector<std::string> wordsOf(int argumentCount, char** arguments) {
  std::vector<std::string> words(arguments + 1, arguments + argumentCount);
  for (std::string& word : words) {
    if (word.starts_with('[')) word.insert(0, "./");
  }
  std::reverse(words.begin(), words.end());
  return words;
}

// What is wrong with the command line. An unknown word goes before what is missing: it is mostly
// the reason.
std::string complaintOf(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  return unknown.empty() ? error.what() : CLI::ExtrasError(unknown).what();
}

// Prints the help or the version, whichever was asked for.
int printHelp(const CLI::App& app, const CLI::ParseError& request) {
  app.exit(request);
  if (std::cout.flush()) return EXIT_READ;
  printError(std::string("cannot write: ") + std::strerror(errno));
  return EXIT_USAGE;
}

int runCommand(int argumentCount, char** arguments) {
  CommandLine commandLine;
  try {
    commandLine.app.parse(wordsOf(argumentCount, arguments));
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return printHelp(commandLine.app, error);
    printError(complaintOf(commandLine.app, error) + " (vsa --help shows the usage)");
    return EXIT_USAGE;
  }
  if (commandLine.app.get_subcommands().empty()) {
    printError("a command is needed: check or dump (vsa --help shows the usage)");
    return EXIT_USAGE;
  }
  return commandLine.run();
}

}  // namespace

}  // namespace vsa_tools

int main(int argumentCount, char** arguments) {
  try {
    return vsa_tools::runCommand(argumentCount, arguments);
  } catch (const std::exception& error) {
    vsa_tools::printError(error.what());
    return vsa_tools::EXIT_USAGE;
  }
}
