// DeclaredNodes, with more names than its first table has room for.
#include <gtest/gtest.h>

#include <string>

#include "tools/vsa/fmt/reading/declared_nodes.h"

namespace vsa_tools {

namespace {

TEST(DeclaredNodesTest, DefinesOnceInEachPart) {
  DeclaredNodes nodes;
  nodes.declare("a");
  EXPECT_FALSE(nodes.mustDefine("a"));
  nodes.beginPart();
  EXPECT_TRUE(nodes.mustDefine("a"));
  EXPECT_FALSE(nodes.mustDefine("a"));
  EXPECT_FALSE(nodes.mustDefine("b"));
  nodes.declare("b");
  nodes.beginPart();
  nodes.remove("a");
  nodes.remove("never");
  EXPECT_FALSE(nodes.mustDefine("a"));
  EXPECT_TRUE(nodes.mustDefine("b"));
}

TEST(DeclaredNodesTest, RemembersManyNames) {
  constexpr int COUNT = 20000;
  DeclaredNodes nodes;
  for (int i = 0; i < COUNT; ++i) nodes.declare("node" + std::to_string(i));
  nodes.beginPart();
  for (int i = 0; i < COUNT; ++i) {
    EXPECT_TRUE(nodes.mustDefine("node" + std::to_string(i)));
    EXPECT_FALSE(nodes.mustDefine("nod" + std::to_string(i)));
  }
}

}  // namespace

}  // namespace vsa_tools
