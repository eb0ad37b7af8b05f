#include "tools/vsa/check/check_command.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "tools/vsa/check/check_run.h"
#include "tools/vsa/common/interrupt.h"
#include "tools/vsa/common/output/exit_status.h"

namespace vsa_tools {

namespace {

constexpr char FOOTER[] =
    "Exit status:\n"
    "  0  nothing of level error was found; with --strict, no warning either\n"
    "  1  something was found\n"
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

// Each use of the option takes one word, which may be a list with commas.
void addList(CLI::App& app, const char* name, std::vector<std::string>& to, const char* purpose) {
  app.add_option(name, to, purpose)->type_name("ID")->delimiter(',')->allow_extra_args(false);
}

}  // namespace

void CheckCommand::addTo(CLI::App& app) {
  addInputOptions(app);
  addOutputOptions(app);
  addSelectionOptions(app);
  options_.reading.addTo(app);
  app.footer(FOOTER);
}

void CheckCommand::addInputOptions(CLI::App& app) {
  app.add_option("FILE", options_.files,
                 "Files; folders, of which all *.vsa are checked; @LIST, a file with names of "
                 "files; - is standard input")
      ->required()
      ->type_name("");
  app.add_flag("-0", options_.isNulSeparated, "The names in lists end with NUL, not with the line");
  app.add_option("--stdin-filename", options_.stdinName, "The name of standard input in messages")
      ->type_name("NAME");
  app.add_option("-j,--jobs", options_.workers, "Files to check at the same time")
      ->type_name("N")
      ->check(CLI::Range(1u, 256u));
  app.add_flag("--first", options_.isFirstOnly, "Stop where the reader does");
  app.add_flag("--fix", options_.isFixing, "Change the files as the hints say, where that is safe");
}

void CheckCommand::addOutputOptions(CLI::App& app) {
  app.add_option("--format", options_.format,
                 "full: with source lines; line: one line each, for editors; log: the lines of the "
                 "reader's log; json, sarif, github, junit: for tools")
      ->transform(CLI::Transformer(formats()).description(""))
      ->type_name("FORMAT");
  app.add_option("--color", options_.colour,
                 "auto (without NO_COLOR, on a terminal), always, never")
      ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
      ->type_name("WHEN");
  app.add_flag("-q,--quiet", options_.isQuiet, "Print no summary");
  app.add_flag("--strict", options_.isStrict, "Exit with status 1 if there is a warning");
}

void CheckCommand::addSelectionOptions(CLI::App& app) {
  addList(app, "--error", options_.levels.errors, "Report the rule or group as an error");
  addList(app, "--warn", options_.levels.warnings, "Report the rule or group as a warning");
  addList(app, "--ignore", options_.levels.ignored, "Do not report the rule or group");
  app.add_option("--config", options_.configFile,
                 "Configuration; without it .vsa-check.json in the folder of a file or above")
      ->type_name("FILE");
  app.add_flag("--no-config", options_.isConfigIgnored, "Use no configuration file");
  app.add_option("--types", options_.typesFile, "Node types as JSON, to compare the texts with")
      ->type_name("FILE");
  app.add_option("--baseline", options_.baseline, "Do not report what this file lists")
      ->type_name("FILE");
  app.add_option("--write-baseline", options_.newBaseline, "Write what is found to this file")
      ->type_name("FILE");
}

int CheckCommand::run() {
  const InterruptScope interrupts;
  const bool readsInput =
      std::find(options_.files.begin(), options_.files.end(), "-") != options_.files.end();
  if (options_.isFixing && readsInput) {
    throw std::runtime_error("--fix cannot change standard input");
  }
  return CheckRun(options_).run();
}

}  // namespace vsa_tools
