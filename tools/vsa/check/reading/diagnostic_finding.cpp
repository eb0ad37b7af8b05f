#include "tools/vsa/check/reading/diagnostic_finding.h"

#include <string>
#include <utility>

namespace vsa_tools {

namespace {

// Removes the periods at the end of a message, and then the blanks, because the message of a
// finding has no final period. Exception: three or more periods become three, because "..." is the
// end of a shortened text.
std::string withoutPeriod(std::string text) {
  const std::size_t length = text.find_last_not_of('.') + 1;
  const std::size_t periods = text.size() - length;
  text.resize(length + (periods > 2 ? 3 : 0));
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

}  // namespace

Finding findingOf(const vsa::Diagnostic& diagnostic, const ReadArguments& reading) {
  Finding finding;
  finding.level = diagnostic.severity == vsa::Severity::Warning ? Level::Warning : Level::Error;
  finding.id = vsa::name(diagnostic.id);
  finding.message = withoutPeriod(reading.messageOf(diagnostic));
  finding.range = diagnostic.range;
  finding.logLine = reading.lineOf(diagnostic);
  return finding;
}

}  // namespace vsa_tools
