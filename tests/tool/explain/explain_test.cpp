// Tests of vsa explain: every kind of finding has an explanation.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tools/vsa/check/kinds.h"
#include "tools/vsa/explain/explanation.h"

namespace vsa_tests {
namespace {

TEST(Explanation, EveryKindHasOne) {
  const std::vector<std::string> ids = vsa_tools::explainedIds();
  for (const vsa_tools::FindingKind& kind : vsa_tools::allKinds()) {
    EXPECT_NE(std::ranges::find(ids, kind.id), ids.end()) << kind.id;
    const std::string text = vsa_tools::explanationOf(kind.id);
    EXPECT_TRUE(text.starts_with(std::string(kind.id) + "\n\n")) << text;
    EXPECT_EQ(text.find("```"), std::string::npos) << text;
    EXPECT_EQ(text.find("\n#"), text.find("\n# version")) << text;
  }
}

TEST(Explanation, ShowsCodeIndented) {
  const std::string text = vsa_tools::explanationOf("bad-token");
  EXPECT_NE(text.find("\n    oak.scratchDepth = 1e-05;\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\n*What to do:* "), std::string::npos);
  EXPECT_EQ(text.find("unrecognized-token"), std::string::npos);
}

TEST(Explanation, ThereIsNoneOfAnUnknownId) {
  EXPECT_EQ(vsa_tools::explanationOf("bad-tokens"), "");
  EXPECT_EQ(vsa_tools::explanationOf(""), "");
  EXPECT_EQ(vsa_tools::explanationOf("The table"), "");
}

}  // namespace
}  // namespace vsa_tests
