// Reads a text, writes its scene and reads the written text. The last byte selects the options of
// the writer.
#include <algorithm>
#include <array>

#include "fuzz/support/check.h"
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/support/written_scene.h"
#include "fuzz/targets.h"
#include "write/walk/reasons.h"

namespace vsa_fuzz {

namespace {

// The problems that the writer may report for a scene that was read from a text. Refused
// statements and errors cause them.
constexpr std::array<std::string_view, 4> LEFT_BY_TEXTS = {
    vsa::impl::reasons::TYPED_EMPTY_ARRAY,
    vsa::impl::reasons::MIXED_ELEMENT,
    vsa::impl::reasons::LATE_UNTYPED_BUFFER,
    // The array of the buffer could not grow because of the limit of empty elements.
    vsa::impl::reasons::UNTYPED_BUFFER,
};

bool isLeftBy(std::string_view text, const vsa::WriteProblem& problem) {
  // The name of an output ends at a NUL byte, which can stand between its brackets.
  if (problem.reason == vsa::impl::reasons::OUTPUT_NAME) {
    return text.find('\0') != std::string_view::npos;
  }
  return std::find(LEFT_BY_TEXTS.begin(), LEFT_BY_TEXTS.end(), problem.reason) !=
         LEFT_BY_TEXTS.end();
}

}  // namespace

void writeReadText(std::string_view input) {
  const auto [text, settings] = splitSettings(input);
  FuzzScene scene;
  readFromString(*scene, text);
  const vsa::TextResult written = checkWritten(*scene, writeOptions(settings));
  for (const vsa::WriteProblem& problem : written.problems) {
    if (!isLeftBy(text, problem))
      fail("a text that made a scene cannot carry it: " + problem.reason);
  }
}

}  // namespace vsa_fuzz
