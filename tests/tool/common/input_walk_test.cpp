// Tests of the traversal of the inputs of a node.
#include <gtest/gtest.h>

#include <vsa/read.h>
#include "tools/vsa/common/scene/input_walk.h"

namespace {

using vsa_tools::InputPlace;
using vsa_tools::walkInputs;

std::string pathsOf(vsa::NodeView node, std::string_view skipped = "") {
  std::string paths;
  walkInputs(node, [&](const InputPlace& place) {
    paths += std::to_string(place.depth) + ':' + std::string(place.path) + ' ';
    EXPECT_EQ(place.input.path(), std::string(node.name()) + '.' + std::string(place.path));
    return place.path != skipped;
  });
  return paths;
}

TEST(InputWalkTest, VisitsInputsElementsAndMembersInOrder) {
  const auto result = vsa::readText(
      "thing n: .a = 1; .b[*].c = 2; .b[*].d[*] = 3; .b[1].e = 4; .f.g.h = 5; .i = 6;");
  ASSERT_TRUE(result.isComplete());
  EXPECT_EQ("0:a 0:b 1:b[0] 2:b[0].c 1:b[1] 2:b[1].d 3:b[1].d[0] 2:b[1].e 0:f 1:f.g 2:f.g.h 0:i ",
            pathsOf(result.scene["n"]));
  EXPECT_EQ("0:a 0:b 0:f 1:f.g 2:f.g.h 0:i ", pathsOf(result.scene["n"], "b"));
  EXPECT_EQ("", pathsOf(vsa::NodeView()));
}

}  // namespace
