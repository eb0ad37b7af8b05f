// Reads a text from a String and from a File. The reads of the File return from 1 to 255 bytes, so
// that tokens are split between reads, or all bytes at once.
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/scene_bytes.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

constexpr std::size_t BYTES_PER_READ[] = {1, 2, 3, 5, 7, 13, 16, 31, 64, 100, 255, 0};

// Returns the report as text. `withPosition` must be false for an empty text: the lexer of an empty
// String skips one NUL, so the positions differ.
std::string reportText(const zn::korvo_sdk::impl::ReadReport& report, bool withPosition) {
  std::string text = report.endedAtMark ? "ended at a mark, " : "";
  text += vsa_tests::text(report.cutOff);
  if (withPosition)
    text += " at " + std::to_string(report.line) + ',' + std::to_string(report.column);
  return text;
}

}  // namespace

void stringAgainstFile(std::string_view input) {
  const auto [text, settings] = splitSettings(input);
  FuzzScene first;
  const FuzzRead fromString = readFromString(*first, text);

  FuzzScene second;
  const FuzzRead fromFile =
      readFromFile(*second, text, BYTES_PER_READ[settings % std::size(BYTES_PER_READ)]);
  checkSameScene({fromString, *first}, {fromFile, *second}, "scene read from a file");
  if (fromString.outcome.escaped) return;
  checkSame(reportText(fromString.report, !text.empty()),
            reportText(fromFile.report, !text.empty()), "report of a read from a file");
}

}  // namespace vsa_fuzz
