// Tests of DeclaredNodes: the nodes of earlier parts, more names than fit into its first table, and
// more than fit into its last one.
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

// The table has at most 64 MB, which 6.29 million names fill.
TEST(DeclaredNodesTest, AFullTableStoresNoMoreNames) {
  constexpr int COUNT = 6'300'000;
  DeclaredNodes nodes;
  for (int i = 0; i < COUNT; ++i) nodes.declare(std::to_string(i));
  EXPECT_TRUE(nodes.isDeclared("0"));
  nodes.declare("one more");
  EXPECT_FALSE(nodes.isDeclared("one more"));
}

}  // namespace

}  // namespace vsa_tools
