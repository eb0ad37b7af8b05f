// The command vsa: reads VSA texts and prints their diagnostics or their scenes.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "tools/vsa/command.h"
#include "tools/vsa/common/did_you_mean.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"

namespace vsa_tools {

namespace {

/// The commands, and the parser of the command line.
class CommandLine {
 public:
  CommandLine() {
    app.require_subcommand(0, 1);  // 0, so that the error message names an unknown word
    app.set_version_flag("-V,--version", "vsa " VSA_VERSION, "Print the version and exit");
    app.footer(
        "Exit status:\n"
        "  0  every file was read completely\n"
        "  1  a file was not read completely, check found an error, or a text cannot carry a "
        "scene\n"
        "  2  wrong usage, a file that cannot be opened, or output that cannot be written\n"
        "  130  interrupted by Ctrl-C");
    for (const auto& command : commands_) {
      CommandOptions options(*app.add_subcommand(command->name(), command->purpose()));
      command->addTo(options);
    }
  }

  /// The command that the arguments name; null if they name none.
  Command* chosen() const {
    for (const auto& command : commands_) {
      if (app.got_subcommand(command->name())) return command.get();
    }
    return nullptr;
  }

  /// The names of the commands: "check, dump or convert".
  std::string names() const {
    std::string text;
    for (std::size_t i = 0; i < commands_.size(); ++i) {
      if (i > 0) text += i + 1 < commands_.size() ? ", " : " or ";
      text += commands_[i]->name();
    }
    return text;
  }

  CLI::App app{"Reads scenes in the VSA text format.", "vsa"};

 private:
  std::vector<std::unique_ptr<Command>> commands_ = allCommands();
};

// The arguments in reverse order, as CLI11 expects them. CLI11 would parse "[x]" as a list
// and "++" as the end of a command, so they become "./[x]" and "./++", which name the same files.
std::vector<std::string> argumentsForParser(int argumentCount, char** arguments) {
  std::vector<std::string> words(arguments + 1, arguments + argumentCount);
  for (std::string& word : words) {
    if (word.starts_with('[') || word == "++") word.insert(0, "./");
  }
  std::reverse(words.begin(), words.end());
  return words;
}

// "vsa help" is "vsa --help", and "vsa help check" is "vsa check --help". The words are reversed.
// Of "vsa help" with another word, that word remains, to be reported as unknown.
void replaceHelpCommand(const CLI::App& app, std::vector<std::string>& words) {
  if (words.empty() || words.back() != "help") return;
  words.pop_back();
  const std::vector<const CLI::App*> commands = app.get_subcommands({});
  const bool isKnown =
      words.empty() || std::any_of(commands.begin(), commands.end(), [&](const CLI::App* command) {
        return command->get_name() == words.back();
      });
  if (isKnown) words.insert(words.begin(), "--help");
}

// The names that could stand in place of an unknown argument: the options of the command that was
// chosen if it begins with "-", and else the commands.
std::vector<std::string> knownNames(const CLI::App& app, bool isOption) {
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  std::vector<std::string> names;
  if (isOption) {
    for (const CLI::Option* option : (chosen.empty() ? &app : chosen.front())->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  } else if (chosen.empty()) {
    for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
    names.emplace_back("help");
  }
  return names;
}

// The error message for a wrong command line. An unknown argument is reported before a missing one,
// because it is usually the cause.
std::string errorMessage(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (unknown.empty()) return error.what();
  const std::string& first = unknown.front();
  return CLI::ExtrasError(unknown).what() +
         didYouMean(first.substr(0, first.find('=')), knownNames(app, first.starts_with('-')));
}

// Prints the help or the version.
int printHelp(const CLI::App& app, const CLI::ParseError& request) {
  app.exit(request);
  if (std::cout.flush()) return EXIT_READ;
  printError(std::string("cannot write: ") + std::strerror(errno));
  return EXIT_USAGE;
}

int runCommand(int argumentCount, char** arguments) {
  CommandLine commandLine;
  try {
    std::vector<std::string> words = argumentsForParser(argumentCount, arguments);
    replaceHelpCommand(commandLine.app, words);
    commandLine.app.parse(words);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return printHelp(commandLine.app, error);
    printError(errorMessage(commandLine.app, error) + " (vsa --help shows the usage)");
    return EXIT_USAGE;
  }
  Command* const command = commandLine.chosen();
  if (command != nullptr) return command->run();
  printError("a command is needed: " + commandLine.names() + " (vsa --help shows the usage)");
  return EXIT_USAGE;
}

}  // namespace

}  // namespace vsa_tools

int main(int argumentCount, char** arguments) {
  vsa_tools::reserveStandardDescriptors();
  try {
    return vsa_tools::runCommand(argumentCount, arguments);
  } catch (const std::exception& error) {
    vsa_tools::printError(error.what());
    return vsa_tools::EXIT_USAGE;
  }
}
