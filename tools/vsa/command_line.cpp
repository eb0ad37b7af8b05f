#include "tools/vsa/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "tools/vsa/common/did_you_mean.h"

namespace vsa_tools {

namespace {

// Returns the arguments in reverse order, as CLI11 requires. CLI11 would parse "[x]" as a list and
// "++" as the end of a command. They become "./[x]" and "./++", which name the same files. Patterns
// change, too, but none that begins with "[" or is "++" matches a name.
std::vector<std::string> wordsForParser(std::vector<std::string> words) {
  for (std::string& word : words) {
    if (word.starts_with('[') || word == "++") word.insert(0, "./");
  }
  std::reverse(words.begin(), words.end());
  return words;
}

// Replaces "vsa help" by "vsa --help", and "vsa help check" by "vsa check --help". The words are in
// reverse order. If the word after "help" is not the name of a command, only "help" is removed, and
// that word is reported as unknown.
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

// Returns the names that may be suggested for an unknown argument. If the argument begins with "-",
// they are the long options of the command, or those of vsa if no command was named. Otherwise they
// are the commands and "help", or none after a command.
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

// Returns the error message for a wrong command line. If there are unknown arguments, the message
// is about them and not about the error that was found, for example a missing argument, because the
// unknown argument is usually its cause.
std::string errorMessage(const CLI::App& app, const CLI::ParseError& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  if (unknown.empty()) return error.what();
  const std::string& first = unknown.front();
  return CLI::ExtrasError(unknown).what() +
         didYouMean(first.substr(0, first.find('=')), knownNames(app, first.starts_with('-')));
}

// Returns the text of the help or of the version, as the arguments request.
std::string helpText(const CLI::App& app, const CLI::ParseError& request) {
  std::ostringstream text;
  app.exit(request, text, text);
  return text.str();
}

}  // namespace

struct CommandLine::Parser {
  CLI::App app{"Reads scenes in the VSA text format.", "vsa"};
};

CommandLine::CommandLine(std::vector<std::unique_ptr<Command>> commands, const std::string& version)
    : commands_(std::move(commands)), parser_(std::make_unique<Parser>()) {
  CLI::App& app = parser_->app;
  // CLI11 is told to accept a command line without a command; parse() reports the missing command
  // instead. If CLI11 required a command, its error message would not name an unknown word.
  app.require_subcommand(0, 1);
  app.set_version_flag("-V,--version", version, "Print the version and exit");
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

CommandLine::~CommandLine() = default;

Request CommandLine::parse(std::vector<std::string> arguments) {
  CLI::App& app = parser_->app;
  Request request;
  try {
    std::vector<std::string> words = wordsForParser(std::move(arguments));
    replaceHelpCommand(app, words);
    app.parse(words);
    request.command = chosen();
    if (request.command == nullptr) request.error = "a command is needed: " + names();
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {
      request.help = helpText(app, error);
    } else {
      request.error = errorMessage(app, error);
    }
  }
  return request;
}

// Returns the command that the arguments name, or null if they name none.
Command* CommandLine::chosen() const {
  for (const auto& command : commands_) {
    if (parser_->app.got_subcommand(command->name())) return command.get();
  }
  return nullptr;
}

// Returns the names of the commands as a list: "check, dump or convert".
std::string CommandLine::names() const {
  std::string text;
  for (std::size_t i = 0; i < commands_.size(); ++i) {
    if (i > 0) text += i + 1 < commands_.size() ? ", " : " or ";
    text += commands_[i]->name();
  }
  return text;
}

}  // namespace vsa_tools
