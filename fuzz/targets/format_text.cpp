// Formats a text, as vsa fmt does. The formatted text must be the same from memory and from a
// source. If the reader accepts the text, the formatted text must have the same tokens and the same
// scene, formatting it again must not change it, and the reading of vsa fmt must give the same
// result for both texts.
#include <string>

#include <vsa/read.h>
#include "fuzz/support/check.h"
#include "fuzz/support/fuzz_scene.h"
#include "fuzz/targets.h"
#include "tests/syntax/syntax_source.h"
#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/comparison/same_tokens.h"
#include "tools/vsa/fmt/layout/text_layout.h"
#include "tools/vsa/fmt/reading/reading_check.h"

namespace vsa_fuzz {

namespace {

using vsa_tests::StepSource;

constexpr std::uint64_t ONE_PART = 1 << 20;

std::string formatted(vsa::SyntaxReader reader) {
  vsa_tools::StringSink sink;
  vsa_tools::formatText(reader, sink);
  return sink.text;
}

std::string sceneOf(const vsa::ReadResult& read) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpJson(vsa_tools::ReadOutcome(), *read.scene.view().plain(), out);
  return out.text();
}

vsa_tools::ReadingCheck readingOf(std::string_view text, std::uint64_t partBytes) {
  StepSource source(text, 1 << 16);
  return vsa_tools::checkReading(source, {}, partBytes);
}

void checkSameTokens(std::string_view a, std::string_view b) {
  vsa::SyntaxReader left(a), right(b);
  if (!vsa_tools::haveSameTokens(left, right)) {
    fail("a formatted text has other tokens: " + vsa_tests::visible(a));
  }
}

}  // namespace

void formatAndRead(std::string_view input) {
  const auto [text, settings] = splitSettings(input);
  const FuzzScene literals;  // Its destructor frees the memory that the reads leak.
  const std::string once = formatted(vsa::SyntaxReader(text));
  StepSource source(text, settings % 64 + 1);
  checkSame(once, formatted(vsa::SyntaxReader(source)), "a text that was formatted from a source");
  const vsa::ReadResult before = vsa::readText(text);
  if (!before.isComplete()) return;
  checkSameTokens(text, once);
  checkSame(once, formatted(vsa::SyntaxReader(once)), "a text that was formatted again");
  const vsa::ReadResult after = vsa::readText(once);
  if (!after.isComplete()) fail("a formatted text is not read: " + vsa_tests::visible(once));
  checkSame(sceneOf(before), sceneOf(after), "the scene of a formatted text");
  if (!readingOf(text, ONE_PART).isComplete) {
    fail("vsa fmt does not read the text: " + vsa_tests::visible(text));
  }
  for (const std::uint64_t partBytes : {ONE_PART, std::uint64_t{settings} + 1}) {
    if (readingOf(text, partBytes) != readingOf(once, partBytes)) {
      fail("vsa fmt reads the formatted text in another way: " + vsa_tests::visible(text));
    }
  }
}

}  // namespace vsa_fuzz
