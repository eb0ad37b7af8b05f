// Tests of DeclaredNodes: the nodes of earlier parts, and more names than fit into its first table.
#include <gtest/gtest.h>

#include <string>

#include "tools/vsa/fmt/reading/declared_nodes.h"

namespace vsa_tools {

namespace {

TEST(DeclaredNodesTest, KnowsTheLastPart) {
  DeclaredNodes nodes;
  EXPECT_FALSE(nodes.declare("a"));
  EXPECT_FALSE(nodes.declare("a"));
  EXPECT_FALSE(nodes.declare("b"));
  EXPECT_FALSE(nodes.isOfEarlierPart("a"));
  nodes.beginPart();
  EXPECT_TRUE(nodes.isOfEarlierPart("a"));
  EXPECT_TRUE(nodes.isOfEarlierPart("b"));
  EXPECT_FALSE(nodes.isOfEarlierPart("c"));
  EXPECT_TRUE(nodes.declare("a"));
  EXPECT_FALSE(nodes.declare("a"));
  nodes.remove("b");
  nodes.remove("never");
  EXPECT_FALSE(nodes.isOfEarlierPart("a"));
  EXPECT_FALSE(nodes.isOfEarlierPart("b"));
}

TEST(DeclaredNodesTest, RemembersManyNames) {
  constexpr int COUNT = 20000;
  DeclaredNodes nodes;
  for (int i = 0; i < COUNT; ++i) nodes.declare("node" + std::to_string(i));
  nodes.beginPart();
  for (int i = 0; i < COUNT; ++i) {
    EXPECT_TRUE(nodes.isOfEarlierPart("node" + std::to_string(i)));
    EXPECT_FALSE(nodes.isOfEarlierPart("nod" + std::to_string(i)));
  }
}

}  // namespace

}  // namespace vsa_tools
