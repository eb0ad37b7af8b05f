#include "tools/vsa/check/check_command.h"

#include <map>

#include "tools/vsa/check/check_run.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

namespace {

constexpr char FOOTER[] =
    "Exit status:\n"
    "  0  nothing of level error was found; with --strict, no warning either\n"
    "  1  an error was found (with --strict: or a warning), or there are too many findings\n"
    "  2  wrong usage, a file that cannot be read, or output that cannot be written\n"
    "\n"
    "Examples:\n"
    "  vsa check scene.vsa                  what is wrong, where, and what to do about it\n"
    "  vsa check --strict -j 4 scenes       all *.vsa in a folder, warnings count, too\n"
    "  vsa check --format sarif . >out.json for tools that show results\n"
    "  git ls-files -z '*.vsa' | vsa check -0 @-\n"
    "  vsa check --ignore narrowing --error too-few-elements scene.vsa\n"
    "  vsa check --fix scene.vsa            apply the hints that are safe\n"
    "  vsa explain too-few-elements         what a message means\n"
    "docs/checking.md says more about configuration and continuous integration.";

std::map<std::string, FormatName> formats() {
  return {
      {"full", FormatName::Full},   {"line", FormatName::Line},   {"log", FormatName::Log},
      {"json", FormatName::Json},   {"sarif", FormatName::Sarif}, {"github", FormatName::Github},
      {"junit", FormatName::Junit},
  };
}

std::vector<std::string> namesOfFormats() {
  std::vector<std::string> names;
  for (const auto& [name, format] : formats()) names.push_back(name);
  return names;
}

void addList(CommandOptions& options, const char* name, std::vector<std::string>& to,
             const char* purpose) {
  options.add(name, to, purpose).valueName("ID").repeatableList();
}

}  // namespace

void CheckCommand::addTo(CommandOptions& options) {
  addInputOptions(options);
  addOutputOptions(options);
  addSelectionOptions(options);
  options_.reading.addTo(options);
  options.footer(FOOTER);
}

void CheckCommand::addInputOptions(CommandOptions& options) {
  files_.addTo(options, "Files to check").required();
  options.add("--stdin-filename", options_.stdinName, "The name of standard input in messages")
      .valueName("NAME");
  files_.addJobsTo(options);
  options.addFlag("--first", options_.isFirstOnly, "Stop where the reader does");
  options.addFlag("--fix", options_.isFixing,
                  "Change the files as the hints say, where that is safe");
}

void CheckCommand::addOutputOptions(CommandOptions& options) {
  options
      .add("--format", format_,
           "full: with source lines; line: one line each, for editors; log: the lines of the "
           "reader's log; json, sarif, github, junit: for tools")
      .oneOf(namesOfFormats())
      .valueName("FORMAT");
  options.add("--color", options_.colour, "auto (without NO_COLOR, on a terminal), always, never")
      .oneOf({"auto", "always", "never"})
      .valueName("WHEN");
  options.addFlag("-q,--quiet", options_.isQuiet, "Print no summary");
  options.addFlag("--strict", options_.isStrict, "Exit with status 1 if there is a warning");
}

void CheckCommand::addSelectionOptions(CommandOptions& options) {
  addList(options, "--error", options_.levels.errors, "Report the rule or group as an error");
  addList(options, "--warn", options_.levels.warnings, "Report the rule or group as a warning");
  addList(options, "--ignore", options_.levels.ignored, "Do not report the rule or group");
  const CommandOption config =
      options
          .add("--config", options_.configFile,
               "Configuration; without it .vsa-check.json in the folder of a file or above")
          .valueName("FILE");
  options.addFlag("--no-config", options_.isConfigIgnored, "Use no configuration file")
      .excludes(config);
  options.add("--types", options_.typesFile, "Node types as JSON, to compare the texts with")
      .valueName("FILE");
  options.add("--baseline", options_.baseline, "Do not report what this file lists")
      .valueName("FILE");
  options.add("--write-baseline", options_.newBaseline, "Write what is found to this file")
      .valueName("FILE");
}

int CheckCommand::run() {
  options_.format = formats().at(format_);
  options_.files = files_.arguments();
  options_.separator = files_.separator();
  options_.workers = files_.workers();
  const InterruptScope interrupts;
  return CheckRun(options_).run();
}

}  // namespace vsa_tools
