#include "tools/vsa/common/output/quoted_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vsa_tools {

namespace {

using vsa::DiagnosticId;

const std::string AT_LIMIT(MAX_QUOTED_BYTES, 'a');
const std::string LONG(1000, 'a');
const std::string SHORT = LONG.substr(0, 120) + "[... 820 bytes ...]" + LONG.substr(0, 60);

TEST(QuotedText, IsShortenedOnlyBeyondTheLimit) {
  EXPECT_EQ(shortened(""), "");
  EXPECT_EQ(shortened(AT_LIMIT), AT_LIMIT);
  EXPECT_EQ(shortened(AT_LIMIT + 'a'),
            LONG.substr(0, 120) + "[... 21 bytes ...]" + LONG.substr(0, 60));
  EXPECT_EQ(shortened(LONG), SHORT);
}

TEST(QuotedText, KeepsCharactersWhole) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "\xE2\x82\xAC";
  std::string expected = text.substr(0, 120) + "[... 120 bytes ...]" + text.substr(240);
  EXPECT_EQ(shortened(text), expected);
  EXPECT_EQ(shortened("x" + text),
            "x" + text.substr(0, 117) + "[... 123 bytes ...]" + text.substr(240));
}

// Byte 120 and the byte that is the 60th from the end are the last bytes of their characters.
TEST(QuotedText, KeepsCharactersOfFourBytesWhole) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "\xF0\x9F\x98\x80";
  EXPECT_EQ(shortened("x" + text + "yyy"),
            "x" + text.substr(0, 116) + "[... 224 bytes ...]" + text.substr(340) + "yyy");
}

struct Row {
  DiagnosticId id;
  std::vector<std::string> arguments;
  std::string message;
  std::string printed;
};

std::string printedFrom(const Row& row) {
  vsa::Diagnostic diagnostic;
  diagnostic.id = row.id;
  diagnostic.message = row.message;
  diagnostic.arguments = row.arguments;
  return withShortQuotes(diagnostic);
}

TEST(QuotedText, EachArgumentOfAMessageIsShortened) {
  const Row rows[] = {
      {DiagnosticId::Narrowing,
       {"Real", "Int", LONG},
       "narrowing Real to Int @ " + LONG,
       "narrowing Real to Int @ " + SHORT},
      {DiagnosticId::NoNodeToConnect,
       {LONG, LONG},
       "Cannot connect nonexistent node " + LONG + " to " + LONG + ".",
       "Cannot connect nonexistent node " + SHORT + " to " + SHORT + "."},
      {DiagnosticId::CannotAssignType,
       {"Real", "[]", "Int", LONG},
       "cannot assign Real[] to Int @ " + LONG,
       "cannot assign Real[] to Int @ " + SHORT},
      {DiagnosticId::CannotAllocate,
       {"byte", LONG},
       "cannot allocate byte" + LONG,
       "cannot allocate byte" + SHORT},
      {DiagnosticId::NodeNotFound,
       {LONG},
       "node '" + LONG + "' not found ",
       "node '" + SHORT + "' not found "},
      {DiagnosticId::UnrecognizedToken,
       {LONG},
       "unrecognized token '" + LONG + "'.",
       "unrecognized token '" + SHORT + "'."},
      {DiagnosticId::TooManyElements,
       {LONG, "3", "byte", "2"},
       "Cannot add " + LONG + " @ index 3 of byte[2].",
       "Cannot add " + SHORT + " @ index 3 of byte[2]."},
      {DiagnosticId::TooFewElements,
       {"1", "byte", "2"},
       "Too few elements (1) for byte[2] buffer, remainder set to zero.",
       "Too few elements (1) for byte[2] buffer, remainder set to zero."},
      {DiagnosticId::NodeNotFound, {}, LONG, SHORT},
      {DiagnosticId::HostMessage, {LONG}, LONG, SHORT},
      {DiagnosticId::OverLimit, {"2"}, LONG, SHORT},
  };
  for (const Row& row : rows) EXPECT_EQ(printedFrom(row), row.printed) << vsa::name(row.id);
}

TEST(QuotedText, AMessageAboutALimitIsWhole) {
  const std::string message =
      "the buffer byte[9] of " + std::string(200, 'n') + std::string(278, 'x');
  EXPECT_EQ(printedFrom({DiagnosticId::OverLimit, {}, message, ""}), message);
  EXPECT_NE(printedFrom({DiagnosticId::OverLimit, {}, message + 'x', ""}), message + 'x');
}

// An argument may contain words that are also in the format of its message, and characters that
// look like a conversion of printf.
TEST(QuotedText, AnArgumentWithTheWordsOfTheMessageIsShortened) {
  std::string name;
  for (int i = 0; i < 500; ++i) name += " to %s";
  const Row row{DiagnosticId::NoNodeToConnect,
                {name, "a.b"},
                "Cannot connect nonexistent node " + name + " to a.b.",
                ""};
  EXPECT_EQ(printedFrom(row), "Cannot connect nonexistent node " + shortened(name) + " to a.b.");
}

}  // namespace

}  // namespace vsa_tools
