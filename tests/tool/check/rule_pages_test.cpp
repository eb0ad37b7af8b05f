// Every rule has a page in docs/rules.md.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "tools/vsa/check/rules/rule.h"

namespace vsa_tests {

namespace {

TEST(RulePages, HaveAHeadingForEachRule) {
  std::ostringstream text;
  text << std::ifstream(VSA_TEST_DIR "/../docs/rules.md").rdbuf();
  for (const vsa_tools::Rule& rule : vsa_tools::allRules()) {
    const std::string heading = std::string("\n### ") + rule.id + "\n";
    EXPECT_NE(text.str().find(heading), std::string::npos) << rule.id;
  }
}

}  // namespace

}  // namespace vsa_tests
