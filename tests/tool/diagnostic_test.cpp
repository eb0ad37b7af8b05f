// Tests of diagnostics as lines in the format that editors recognise.
#include "tools/vsa/common/diagnostic.h"

#include <gtest/gtest.h>

#include <vsa/read.h>

namespace vsa_tools {

namespace {

/// Returns the lines for the diagnostics of reading `text`.
std::vector<std::string> linesOf(const char* text) {
  const vsa::ReadResult result = vsa::readText(text);
  std::vector<std::string> lines;
  for (const vsa::Diagnostic& found : result.diagnostics) {
    lines.push_back(
        diagnosticLine("a.vsa", positionOf(found), vsa::name(found.id), found.logLine()));
  }
  return lines;
}

struct ExcerptRow {
  const char* text;
  const char* line;
};

TEST(DiagnosticLineTest, PutsThePositionBeforeTheUnchangedText) {
  const ExcerptRow rows[] = {
      {"42;", "a.vsa:0:0: unrecognized-token: PARSE ERROR (0,0): unrecognized token '42'.."},
      {"t n; n.a = ;",
       "a.vsa:1:12: bad-token: BAD TOKEN (1,12): expected '(scalar|buffer|reference)', found ';'."},
      {"}", "a.vsa:1:0: invalid-token: INVALID TOKEN (1,0): '}'"},
      {"t n; n.a = vec2(1 x);",
       "a.vsa:1:18: invalid-list-token: INVALID PAREN LIST TOKEN (1,18): 'x'"},
      {"t n; n.a = byte[1] {1 2};",
       "a.vsa:1:24: too-many-elements: BUFFER ERROR (1,24): Cannot add 2 @ index 1 of byte[1].."},
      {"t n; n.a = 1; n.a = 2.5;",
       "a.vsa:1:24: narrowing: TYPE WARNING (1,24): narrowing Real to Int @ n.a."},
  };
  for (const ExcerptRow& row : rows)
    EXPECT_EQ(linesOf(row.text), std::vector<std::string>{row.line});
}

// A message without a position may contain text that looks like a position. That text must not
// become the position of the line.
TEST(DiagnosticLineTest, MessagesWithoutAPositionShowNone) {
  const ExcerptRow rows[] = {
      {"t n; n.a |= n.b.c;", "a.vsa: invalid-output: Invalid output: n.b.c."},
      {"# version: (1,2): x",
       "a.vsa: bad-version: Failed to parse VSA version comment: # version: (1,2): x"},
      {"t n; n.a = byte[2] {1};",
       "a.vsa: too-few-elements: Too few elements (1) for byte[2] buffer, remainder set to zero."},
  };
  for (const ExcerptRow& row : rows)
    EXPECT_EQ(linesOf(row.text), std::vector<std::string>{row.line});
}

TEST(DiagnosticLineTest, KeepsALineOneLine) {
  EXPECT_EQ(diagnosticLine("a\n.vsa", std::nullopt, "warning", "x\ty"), "a\\n.vsa: warning: x\\ty");
}

}  // namespace

}  // namespace vsa_tools
