// The options and arguments of a command. The parser of command lines, CLI11, is included by the
// sources of these classes and of CommandLine only: it takes 3 s to compile in each source.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace vsa_tools {

/// An option that was added, with functions to set its properties. Cheap to copy.
class CommandOption {
 public:
  explicit CommandOption(CLI::Option& option) : option_(&option) {}

  /// The command line is wrong without this option.
  CommandOption required() const;
  /// The placeholder of the value in the help: "FILE". Positional arguments have none.
  CommandOption valueName(const char* name) const;
  /// Shows the current value of the target in the help.
  CommandOption showDefault() const;
  /// The command line is wrong if it contains both options.
  CommandOption excludes(CommandOption other) const;
  /// Accepts only numbers from `least` to `greatest`.
  CommandOption range(unsigned least, unsigned greatest) const;
  /// Accepts no number below zero.
  CommandOption notNegative() const;
  /// Accepts a number of bytes: 100, 12k, 8G; 1k is 1024.
  CommandOption sizeInBytes() const;
  /// Accepts only these words.
  CommandOption oneOf(const std::vector<std::string>& words) const;
  /// The option can be repeated, and takes one value each time.
  CommandOption repeatable() const;
  /// The option can be repeated. Each value is a list, separated by commas.
  CommandOption repeatableList() const;

 private:
  CLI::Option* option_;
};

/// The options and arguments of one command, for Command::addTo() to fill in. The command line is
/// parsed later: the targets must not move until then. If the command line does not contain an
/// option, its target keeps its value.
class CommandOptions {
 public:
  explicit CommandOptions(CLI::App& app) : app_(app) {}

  /// An option if `names` begins with a dash ("-j,--jobs"), and an argument otherwise ("FILE").
  CommandOption add(const char* names, std::string& target, const char* purpose);
  /// An option or argument that stores all its values.
  CommandOption add(const char* names, std::vector<std::string>& target, const char* purpose);
  CommandOption add(const char* names, unsigned& target, const char* purpose);
  CommandOption add(const char* names, std::uint64_t& target, const char* purpose);
  CommandOption add(const char* names, std::optional<std::uint64_t>& target, const char* purpose);
  CommandOption add(const char* names, std::optional<double>& target, const char* purpose);
  /// An option without a value.
  CommandOption addFlag(const char* names, bool& target, const char* purpose);

  /// Sets the text below the help, such as examples and exit statuses.
  void footer(const char* text);

 private:
  CLI::App& app_;
};

}  // namespace vsa_tools
