// Formats every case, regression, example and shared scene, and random texts. If the text is read
// completely, the scene and the messages must stay the same, and formatting the formatted text
// again must not change it. Positions and the order of messages are not compared.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tests/support/text.h"
#include "tests/support/text_files.h"
#include "tests/syntax/syntax_source.h"
#include "tools/scene_text/scene_dump.h"
#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/comparison/same_tokens.h"
#include "tools/vsa/fmt/layout/text_layout.h"
#include "tools/vsa/fmt/reading/reading_check.h"

namespace vsa_tools {

namespace {

using vsa_tests::StepSource;

std::string formatted(std::string_view text) {
  vsa::SyntaxReader reader(text);
  StringSink sink;
  EXPECT_TRUE(formatText(reader, sink));
  return sink.text;
}

std::string formattedFromSource(std::string_view text) {
  StepSource source(text, 1000);
  vsa::SyntaxReader reader(source);
  StringSink sink;
  EXPECT_TRUE(formatText(reader, sink));
  return sink.text;
}

bool sameTokens(std::string_view a, std::string_view b) {
  vsa::SyntaxReader left(a), right(b);
  return haveSameTokens(left, right);
}

/// The result of a reading: the scene, and the messages without their positions. The messages are
/// sorted, because links are resolved in the order of the memory addresses of their inputs.
struct Reading {
  explicit Reading(std::string_view text) : result(vsa::readText(text)) {
    for (const vsa::Diagnostic& found : result.diagnostics) {
      messages.push_back(found.kind + found.message + '@' + found.inputPath);
    }
    std::sort(messages.begin(), messages.end());
    TextOutput out;
    dumpJson(ReadOutcome(), *result.scene.view().plain(), out);
    dump = out.text();
  }

  vsa::ReadResult result;
  std::vector<std::string> messages;
  std::string dump;
};

ReadingCheck readingOf(std::string_view text) {
  StepSource source(text, 1 << 16);
  const ReadingCheck check = checkReading(source);
  EXPECT_TRUE(check.isComplete);
  return check;
}

void expectFormatted(const std::string& text) {
  const std::string once = formatted(text);
  EXPECT_EQ(once, formattedFromSource(text));
  const Reading before(text);
  if (!before.result.isComplete()) {
    StepSource source(text, 1 << 16);
    EXPECT_FALSE(checkReading(source).isComplete);
    return;
  }
  EXPECT_TRUE(sameTokens(text, once));
  EXPECT_EQ(once, formatted(once));
  const Reading after(once);
  EXPECT_EQ(before.dump, after.dump);
  EXPECT_EQ(before.messages, after.messages);
  EXPECT_TRUE(readingOf(text) == readingOf(once));
  EXPECT_TRUE(once.empty() || once.ends_with('\n'));
}

TEST(FormatEveryTextTest, KeepsSceneAndLog) {
  const auto texts =
      vsa_tests::textFiles({"tests/cases", "tests/regressions", "examples", "../shared/scenes"});
  for (const auto& text : texts) {
    SCOPED_TRACE(text.string());
    std::string content = vsa_tests::contentOf(text);
    if (content.starts_with("\xEF\xBB\xBF")) content.erase(0, 3);
    expectFormatted(content);
  }
  EXPECT_GT(texts.size(), 200);
}

TEST(FormatEveryTextTest, RandomLayouts) {
  constexpr std::string_view STATEMENTS[] = {"t n ;",
                                             "t n :",
                                             ". a = 1 ;",
                                             "n . b = vec3 ( 1 , 2 ( 3 ) ) ;",
                                             "# c  ",
                                             "n.l |= null ;",
                                             ".f = float [3] { 1 2 3 } ;",
                                             "n.m=mat3(1 2 3 4 5 6 7 8 9);",
                                             ".s = \"a\n b\" ;",
                                             ".q = float[2]{((1)(2)) 3 , };",
                                             ".o = { } ;",
                                             "n.x.y [2] = -1.5e-3 ;",
                                             "define d ;"};
  constexpr std::string_view GAPS[] = {"", " ", "\n", "\n\n\n", "\t", "\r\n", "\n  ", "\r", "\x01"};
  std::mt19937 random(6);
  for (int i = 0; i < 3000; ++i) {
    std::string text = "t n:";
    for (int statements = 0; statements < 8; ++statements) {
      text += GAPS[random() % std::size(GAPS)];
      const std::string_view statement = STATEMENTS[random() % std::size(STATEMENTS)];
      text += statement;
      if (statement[0] == '#') text += random() % 2 == 0 ? '\n' : '\r';
    }
    SCOPED_TRACE(text);
    expectFormatted(text);
    if (HasFailure()) return;
  }
}

TEST(FormatEveryTextTest, RandomBytes) {
  constexpr char BYTES[] = "ab .:;=|(){}[]\"\\#1-,\n\r\x80\x01!";
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (auto length = random() % 24; length > 0; --length) {
      text += BYTES[random() % (sizeof BYTES - 1)];
    }
    EXPECT_EQ(formatted(text), formattedFromSource(text)) << text;
  }
}

}  // namespace

}  // namespace vsa_tools
