#include "tools/vsa/common/command_options.h"

#include <CLI/CLI.hpp>

namespace vsa_tools {

namespace {

template <typename Target>
CommandOption addOption(CLI::App& app, const char* names, Target& target, const char* purpose) {
  CLI::Option* const option = app.add_option(names, target, purpose);
  if (names[0] != '-') option->type_name("");
  return CommandOption(*option);
}

}  // namespace

CommandOption CommandOption::required() const {
  option_->required();
  return *this;
}

CommandOption CommandOption::valueName(const char* name) const {
  option_->type_name(name);
  return *this;
}

CommandOption CommandOption::showDefault() const {
  option_->capture_default_str();
  return *this;
}

CommandOption CommandOption::excludes(CommandOption other) const {
  option_->excludes(other.option_);
  return *this;
}

CommandOption CommandOption::range(unsigned least, unsigned greatest) const {
  option_->check(CLI::Range(least, greatest));
  return *this;
}

// CLI11 itself would convert -1 to the greatest number, and "nan" to NaN.
CommandOption CommandOption::notNegative() const {
  option_->check(CLI::Validator(
      [](std::string& text) {
        if (text.starts_with('-')) return "a negative number";
        return CLI::detail::to_lower(text).find("nan") == std::string::npos ? "" : "not a number";
      },
      ""));
  return *this;
}

CommandOption CommandOption::sizeInBytes() const {
  CLI::AsSizeValue validator(false);
  validator.description("");
  option_->transform(validator);
  return notNegative();
}

CommandOption CommandOption::oneOf(const std::vector<std::string>& words) const {
  option_->check(CLI::IsMember(words).description(""));
  return *this;
}

CommandOption CommandOption::repeatable() const {
  option_->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  return *this;
}

CommandOption CommandOption::repeatableList() const {
  option_->delimiter(',')->allow_extra_args(false);
  return *this;
}

CommandOption CommandOptions::add(const char* names, std::string& target, const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::add(const char* names, std::vector<std::string>& target,
                                  const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::add(const char* names, unsigned& target, const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::add(const char* names, std::uint64_t& target, const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::add(const char* names, std::optional<std::uint64_t>& target,
                                  const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::add(const char* names, std::optional<double>& target,
                                  const char* purpose) {
  return addOption(app_, names, target, purpose);
}

CommandOption CommandOptions::addFlag(const char* names, bool& target, const char* purpose) {
  return CommandOption(*app_.add_flag(names, target, purpose));
}

void CommandOptions::footer(const char* text) {
  app_.footer(text);
}

}  // namespace vsa_tools
