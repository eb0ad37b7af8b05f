// Two sources, one text. The file comes in blocks of a few bytes, so that each token is cut
// somewhere.
#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/reading.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

constexpr std::size_t BLOCKS[] = {1, 2, 3, 5, 7, 13, 16, 31, 64, 100, 255, 0};

// A text of no characters is the one case in which the place may differ: from a String, one NUL is
// skipped.
std::string shownReport(const zn::korvo_sdk::impl::ReadReport& report, bool withPlace) {
  std::string text = report.endedAtMark ? "ended at a mark, " : "";
  text += vsa_tests::text(report.cutOff);
  if (withPlace) text += " at " + std::to_string(report.line) + ',' + std::to_string(report.column);
  return text;
}

}  // namespace

void stringAgainstFile(std::string_view input) {
  const auto [text, settings] = splitSettings(input);
  FuzzScene first;
  const Reading fromString = readFromString(first.scene, text);
  const std::string expected = shown(fromString, first.scene);

  const std::size_t block = BLOCKS[settings % std::size(BLOCKS)];
  FuzzScene second;
  const Reading fromFile = readFromFile(second.scene, text, block);
  checkSame(expected, shown(fromFile, second.scene), "scene read from a file");
  if (fromString.outcome.escaped) return;
  checkSame(shownReport(fromString.report, !text.empty()),
            shownReport(fromFile.report, !text.empty()), "report of a read from a file");
}

}  // namespace vsa_fuzz
