#include "tools/vsa/diagnostic.h"

#include <gtest/gtest.h>

namespace vsa_tools {

namespace {

struct Row {
  std::string_view text, line;
};

std::string lineOf(std::string_view level, std::string_view text) {
  return diagnosticLine("a.vsa", positionIn(text), level, text);
}

TEST(DiagnosticLineTest, PutsThePositionBeforeTheUnchangedText) {
  const Row rows[] = {
      {"PARSE ERROR (4,9): x..", "a.vsa:4:9: error: PARSE ERROR (4,9): x.."},
      {"BUFFER ERROR (1,2): x.", "a.vsa:1:2: error: BUFFER ERROR (1,2): x."},
      {"TYPE ERROR (1,2): x.", "a.vsa:1:2: error: TYPE ERROR (1,2): x."},
      {"TYPE WARNING (1,2): x.", "a.vsa:1:2: error: TYPE WARNING (1,2): x."},
      {"ENUM WARNING (1,2): x.", "a.vsa:1:2: error: ENUM WARNING (1,2): x."},
      {"BAD TOKEN (1,2): x.", "a.vsa:1:2: error: BAD TOKEN (1,2): x."},
      {"INVALID TOKEN (1,0): '}'", "a.vsa:1:0: error: INVALID TOKEN (1,0): '}'"},
      {"INVALID PAREN LIST TOKEN (1,2): 'x'",
       "a.vsa:1:2: error: INVALID PAREN LIST TOKEN (1,2): 'x'"},
      {"INVALID BRACKET LIST TOKEN (1,2): 'x'",
       "a.vsa:1:2: error: INVALID BRACKET LIST TOKEN (1,2): 'x'"},
      {"INVALID BRACE LIST TOKEN (1,2): 'x'",
       "a.vsa:1:2: error: INVALID BRACE LIST TOKEN (1,2): 'x'"},
      {"PARSE ERROR (-5,7): x", "a.vsa:-5:7: error: PARSE ERROR (-5,7): x"},
  };
  for (const Row& row : rows) EXPECT_EQ(row.line, lineOf("error", row.text));
}

// Names in the scene file can look like a position.
TEST(DiagnosticLineTest, IgnoresPositionsElsewhere) {
  const Row rows[] = {
      {"Invalid output: a.b", "a.vsa: warning: Invalid output: a.b"},
      {"Invalid output: PARSE ERROR (1,2): x",
       "a.vsa: warning: Invalid output: PARSE ERROR (1,2): x"},
      {"NODE ERROR (1,2): x", "a.vsa: warning: NODE ERROR (1,2): x"},
      {"PARSE ERROR (1,2) x", "a.vsa: warning: PARSE ERROR (1,2) x"},
      {"PARSE ERROR (1;2): x", "a.vsa: warning: PARSE ERROR (1;2): x"},
      {"PARSE ERROR (,2): x", "a.vsa: warning: PARSE ERROR (,2): x"},
      {" PARSE ERROR (1,2): x", "a.vsa: warning:  PARSE ERROR (1,2): x"},
      {"", "a.vsa: warning: "},
  };
  for (const Row& row : rows) EXPECT_EQ(row.line, lineOf("warning", row.text));
}

TEST(DiagnosticLineTest, EscapesLineEnds) {
  EXPECT_EQ("a\\nb.vsa: error: \\x1b[31m",
            diagnosticLine("a\nb.vsa", std::nullopt, "error", "\x1B[31m"));
}

}  // namespace

}  // namespace vsa_tools
