// Tests of StatementTokens: it lexes no more of a statement than the place of a problem needs.
#include "api/reading/source_range/statement_tokens.h"

#include <gtest/gtest.h>

#include <string>

#include "api/reading/text/text_index.h"
#include "api/reading/text/text_store.h"

namespace {

using vsa::StatementTokens;

std::size_t tokensOf(const std::string& text, StatementTokens::Extent extent) {
  vsa::MemoryText store(text);
  vsa::TextIndex index(store);
  index.setEnd(text.size());
  return StatementTokens(store, index, 0, 0, extent).size();
}

std::string colons(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += ": ";
  return text;
}

// Each colon may be a mistake. If the whole rest were lexed for each, the time would be
// proportional to the square of their number.
TEST(StatementTokensTest, LexesOnlyTheBeginningForATokenThatBeginsNoStatement) {
  constexpr std::size_t COUNT = 1000;
  EXPECT_EQ(tokensOf(colons(COUNT), StatementTokens::Extent::Statement), COUNT + 1);
  EXPECT_EQ(tokensOf(colons(COUNT), StatementTokens::Extent::Beginning), 4U);
  EXPECT_EQ(tokensOf(": ;", StatementTokens::Extent::Beginning), 2U);
}

TEST(StatementTokensTest, LexesNoStatementOfMoreThan65536Tokens) {
  EXPECT_EQ(tokensOf(colons(65535), StatementTokens::Extent::Statement), 65536U);
  EXPECT_EQ(tokensOf(colons(65536), StatementTokens::Extent::Statement), 0U);
  EXPECT_EQ(tokensOf(colons(65536), StatementTokens::Extent::Beginning), 4U);
}

// A file would have to be read into memory for a longer statement.
TEST(StatementTokensTest, LexesNoStatementOfMoreThan64Mebibytes) {
  const std::string text = std::string(std::size_t{64} << 20, ' ') + ": ;";
  EXPECT_EQ(tokensOf(text, StatementTokens::Extent::Beginning), 0U);
}

}  // namespace
