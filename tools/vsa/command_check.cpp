// vsa check: is this text in order, and if not, where.
#include <algorithm>
#include <cstdio>

#include "tools/support/safe_text.h"
#include "tools/vsa/commands.h"
#include "tools/vsa/diagnostic.h"
#include "tools/vsa/input_file.h"
#include "tools/vsa/read_scene.h"

namespace vsa_tools {

namespace {

class Check {
 public:
  explicit Check(bool strict) : strict_(strict) {}

  void checkFile(const std::string& name) {
    std::string problem;
    const zn::File file = openInput(name, problem);
    if (!problem.empty()) {
      complain(name + ": " + problem);
      ++unopened_;
      return;
    }
    zn::korvo_sdk::Scene scene;
    judge(shownName(name), readScene(scene, file));
  }

  void summarise() const {
    const size_t files = read_ + notRead_ + unopened_;
    std::string line = count(files, "file") + " checked, " + std::to_string(read_) + " read";
    if (notRead_ > 0) line += ", " + std::to_string(notRead_) + " not read";
    if (unopened_ > 0) line += ", " + std::to_string(unopened_) + " not opened";
    line += ": " + count(warnings_, "warning") + ", " + count(errors_, "error");
    std::fprintf(stderr, "%s\n", line.c_str());
  }

  int exitStatus() const {
    if (unopened_ > 0) return EXIT_USAGE;
    const bool noisy = warnings_ + errors_ > 0;
    return notRead_ > 0 || (strict_ && noisy) ? EXIT_NOT_READ : EXIT_READ;
  }

 private:
  static std::string count(size_t number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
  }

  void judge(const std::string& name, const FileReading& reading) {
    for (const LogEntry& entry : reading.log)
      report(name, positionIn(entry.text), entry.level, entry.text);
    if (reading.escaped)
      report(name, positionIn(*reading.escaped), zn::LogLevel::Error, *reading.escaped);
    for (const Loss& loss : reading.losses)
      report(name, loss.position, zn::LogLevel::Error, loss.text);
    ++(reading.complete() ? read_ : notRead_);
  }

  void report(const std::string& name, const std::optional<Position>& position, zn::LogLevel level,
              const std::string& text) {
    const bool warning = level == zn::LogLevel::Warning;
    ++(warning ? warnings_ : errors_);
    std::fprintf(stderr, "%s\n",
                 diagnosticLine(name, position, warning ? "warning" : "error", text).c_str());
  }

  bool strict_;
  size_t read_ = 0, notRead_ = 0, unopened_ = 0;
  size_t warnings_ = 0, errors_ = 0;
};

}  // namespace

int commandCheck(const std::vector<std::string>& files, bool strict) {
  Check check(strict);
  for (const std::string& file : files) check.checkFile(file);
  check.summarise();
  return check.exitStatus();
}

}  // namespace vsa_tools
