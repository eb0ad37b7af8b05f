// vsa check: prints the diagnostics of each file and a summary.
#include <cstdio>
#include <optional>
#include <utility>

#include "tools/vsa/commands.h"
#include "tools/vsa/diagnostic.h"
#include "tools/vsa/input/input_file.h"
#include "tools/vsa/read_scene.h"

namespace vsa_tools {

namespace {

/// Prints the diagnostics of one file while it is read, and counts them. It keeps none in memory: a
/// log can be far longer than its text.
class FileDiagnostics : public zn::LogSink, public zn::korvo_sdk::DiagnosticSink {
 public:
  explicit FileDiagnostics(std::string name) : name_(std::move(name)) {}

  void report(const zn::korvo_sdk::Diagnostic& diagnostic) override {
    position_ = positionOf(diagnostic);
  }

  /// The line of the record reported last, or a line without a record.
  void write(zn::LogLevel level, const zn::String& text) override {
    print(std::exchange(position_, std::nullopt), level, text.view());
  }

  /// Prints the errors that the log does not contain.
  void add(const FileOutcome& outcome) {
    const auto& diagnostic = outcome.escapedDiagnostic;
    const auto position = diagnostic ? positionOf(*diagnostic) : std::nullopt;
    if (outcome.escaped) print(position, zn::LogLevel::Error, *outcome.escaped);
    for (const Loss& loss : outcome.losses) print(loss.position, zn::LogLevel::Error, loss.text);
  }

  size_t warnings() const { return warnings_; }
  size_t errors() const { return errors_; }

 private:
  void print(const std::optional<Position>& position, zn::LogLevel level, std::string_view text) {
    const bool warning = level == zn::LogLevel::Warning;
    ++(warning ? warnings_ : errors_);
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(name_, position, warning ? "warning" : "error", text).c_str());
  }

  std::string name_;
  std::optional<Position> position_;  // of the record whose line comes next
  size_t warnings_ = 0, errors_ = 0;
};

class Check {
 public:
  explicit Check(bool strict) : strict_(strict) {}

  void checkFile(const std::string& name) {
    const InputFile input = openInput(name);
    if (!input.problem.empty()) {
      printError(name + ": " + input.problem);
      ++unopened_;
      return;
    }
    zn::korvo_sdk::Scene scene;
    FileDiagnostics diagnostics(shownName(name));
    const zn::korvo_sdk::ScopedDiagnosticSink scope(&diagnostics);
    const FileOutcome outcome = readScene(scene, input, diagnostics);
    diagnostics.add(outcome);
    warnings_ += diagnostics.warnings();
    errors_ += diagnostics.errors();
    ++(outcome.isComplete() ? read_ : notRead_);
  }

  void printSummary() const {
    const size_t files = read_ + notRead_ + unopened_;
    std::string line = count(files, "file") + " checked, " + std::to_string(read_) + " read";
    if (notRead_ > 0) line += ", " + std::to_string(notRead_) + " not read";
    if (unopened_ > 0) line += ", " + std::to_string(unopened_) + " not opened";
    line += ": " + count(warnings_, "warning") + ", " + count(errors_, "error");
    std::fprintf(stderr, "%s\n", line.c_str());
  }

  int exitStatus() const {
    if (unopened_ > 0) return EXIT_USAGE;
    const bool hasMessages = warnings_ + errors_ > 0;
    return notRead_ > 0 || (strict_ && hasMessages) ? EXIT_NOT_READ : EXIT_READ;
  }

 private:
  static std::string count(size_t number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
  }

  bool strict_;
  size_t read_ = 0, notRead_ = 0, unopened_ = 0;
  size_t warnings_ = 0, errors_ = 0;
};

}  // namespace

int commandCheck(const std::vector<std::string>& files, bool strict) {
  Check check(strict);
  for (const std::string& file : files) check.checkFile(file);
  check.printSummary();
  return check.exitStatus();
}

}  // namespace vsa_tools
