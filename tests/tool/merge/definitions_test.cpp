// Tests of what vsa merge finds out about the nodes of `define` statements.
#include "tools/vsa/merge/definitions.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vsa_tools {

namespace {

/// Returns the names of the definitions of a text, each with a blank after it.
std::string definedIn(std::string_view text) {
  vsa::SyntaxReader reader(text);
  DefinitionReader definitions;
  vsa::SyntaxToken token;
  do {
    token = reader.next();
    definitions.add(token);
  } while (token.kind != vsa::SyntaxKind::EndOfText);
  std::string names;
  for (const auto& [name, definition] : definitions.definitions()) names += name + ' ';
  return names;
}

TEST(DefinitionReaderTest, FindsOnlyTheNodesOfDefineStatements) {
  EXPECT_EQ(definedIn("define units; DEFINE scale; units.length = 1;"), "scale units ");
  EXPECT_EQ(definedIn("sphere ball; ball.radius = 1; remove ball; lamp sun: .power = 2;"), "");
}

}  // namespace

}  // namespace vsa_tools
