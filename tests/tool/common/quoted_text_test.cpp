#include "tools/vsa/common/output/quoted_text.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(QuotedText, EachPartOfAMessageIsShortened) {
  const std::pair<DiagnosticId, std::pair<std::string, std::string>> rows[] = {
      {DiagnosticId::Narrowing,
       {"narrowing Real to Int @ " + LONG, "narrowing Real to Int @ " + SHORT}},
      {DiagnosticId::NoNodeToConnect,
       {"Cannot connect nonexistent node " + LONG + " to " + LONG + ".",
        "Cannot connect nonexistent node " + SHORT + " to " + SHORT + "."}},
      {DiagnosticId::CannotAssignType,
       {"cannot assign Array of Real to Int @ " + LONG,
        "cannot assign Array of Real to Int @ " + SHORT}},
      {DiagnosticId::CannotAllocate,
       {"cannot allocate byte[" + LONG, "cannot allocate " + shortened("byte[" + LONG)}},
      {DiagnosticId::NodeNotFound,
       {"node '" + LONG + "' not found ", "node '" + SHORT + "' not found "}},
      {DiagnosticId::UnrecognizedToken,
       {"unrecognized token '" + LONG + "'.", "unrecognized token '" + SHORT + "'."}},
      {DiagnosticId::TooFewElements,
       {"Too few elements (1) for byte[2] buffer, remainder set to zero.",
        "Too few elements (1) for byte[2] buffer, remainder set to zero."}},
      {DiagnosticId::HostMessage, {LONG, SHORT}},
      {DiagnosticId::OverLimit, {LONG, SHORT}},
  };
  for (const auto& [id, texts] : rows) {
    EXPECT_EQ(withShortQuotes(id, texts.first), texts.second) << vsa::name(id);
  }
}

// What a message quotes may contain the words of the message.
TEST(QuotedText, APartWithTheWordsOfTheMessageIsShortened) {
  std::string name;
  for (int i = 0; i < 500; ++i) name += " to ";
  const std::string message = "Cannot connect nonexistent node " + name + " to " + name + ".";
  const std::string printed = withShortQuotes(DiagnosticId::NoNodeToConnect, message);
  EXPECT_LT(printed.size(), 2 * MAX_QUOTED_BYTES + 100);
  EXPECT_TRUE(printed.starts_with("Cannot connect nonexistent node  to "));
  const std::string other = withShortQuotes(DiagnosticId::NodeNotFound, LONG);  // another message
  EXPECT_EQ(other, SHORT);
}

}  // namespace

}  // namespace vsa_tools
