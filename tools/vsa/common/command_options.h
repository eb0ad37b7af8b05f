// The options and arguments of a command. Of the sources of vsa, only those of these classes and of
// CommandLine include CLI11, the parser of command lines, because it takes 3 s to compile in each
// source.
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

/// A handle of an option that was added, with functions that set its properties. Cheap to copy.
class CommandOption {
 public:
  explicit CommandOption(CLI::Option& option) : option_(&option) {}

  /// Makes the option required: a command line without it is wrong.
  CommandOption required() const;
  /// Sets the placeholder for the value in the help, such as "FILE".
  CommandOption valueName(const char* name) const;
  /// Shows the current value of the target in the help.
  CommandOption showDefault() const;
  /// Makes a command line wrong if it contains this option and the other one.
  CommandOption excludes(CommandOption other) const;
  /// Accepts only numbers from `least` to `greatest`, both inclusive.
  CommandOption range(unsigned least, unsigned greatest) const;
  /// Accepts no value that begins with "-", and no NaN.
  CommandOption notNegative() const;
  /// Accepts a number of bytes, such as 100, 12k or 8G, but no value that begins with "-". 1k is
  /// 1024 bytes.
  CommandOption sizeInBytes() const;
  /// Accepts only these words.
  CommandOption oneOf(const std::vector<std::string>& words) const;
  /// Allows the option to be repeated, with one value each time.
  CommandOption repeatable() const;
  /// Allows the option to be repeated. Each value is a list with commas between its items.
  CommandOption repeatableList() const;

 private:
  CLI::Option* option_;
};

/// The options and arguments of one command. Command::addTo() adds them, each with its target: the
/// variable that receives the value. The command line is parsed later, so the targets must not move
/// until then. A target keeps its value if the command line does not contain its option.
class CommandOptions {
 public:
  explicit CommandOptions(CLI::App& app) : app_(app) {}

  /// Adds an option if `names` begins with a dash ("-j,--jobs"), otherwise an argument ("FILE").
  CommandOption add(const char* names, std::string& target, const char* purpose);
  /// Adds an option or argument that may have several values, and stores all of them.
  CommandOption add(const char* names, std::vector<std::string>& target, const char* purpose);
  CommandOption add(const char* names, unsigned& target, const char* purpose);
  CommandOption add(const char* names, std::uint64_t& target, const char* purpose);
  CommandOption add(const char* names, std::optional<std::uint64_t>& target, const char* purpose);
  CommandOption add(const char* names, std::optional<double>& target, const char* purpose);
  /// Adds an option without a value.
  CommandOption addFlag(const char* names, bool& target, const char* purpose);

  /// Sets the text below the help, such as examples and exit statuses.
  void footer(const char* text);

 private:
  CLI::App& app_;
};

}  // namespace vsa_tools
