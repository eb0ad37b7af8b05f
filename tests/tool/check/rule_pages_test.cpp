// Tests of docs/rules.md: each rule has a section, and the rule reports a finding for the example
// in its section. The examples of rules about the encoding are not tested.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include <vsa/read.h>
#include <vsa/types.h>
#include "tests/support/text.h"
#include "tools/vsa/check/rules/rule.h"

namespace vsa_tests {

namespace {

using vsa_tools::Finding;
using vsa_tools::Rule;
using vsa_tools::RuleSet;

/// Returns the types in the program of docs/types.md.
std::vector<vsa::TypeDescription> exampleTypes() {
  const std::string page = contentOf(VSA_TEST_DIR "/../docs/types.md");
  const std::size_t begin = page.find("R\"(") + 3;
  const vsa::TypesResult types =
      vsa::readTypes(page.substr(begin, page.find(")\"", begin) - begin));
  EXPECT_EQ(types.problem, "");
  return types.types;
}

/// Returns the section of a rule, from the line after its heading to the next heading. Returns an
/// empty text if there is none.
std::string pageOf(const std::string& id) {
  const std::string all = contentOf(VSA_TEST_DIR "/../docs/rules.md");
  const std::string heading = "\n### " + id + "\n";
  const std::size_t begin = all.find(heading);
  if (begin == std::string::npos) return {};
  const std::size_t end = all.find("\n##", begin + heading.size());
  return all.substr(begin + heading.size(), end - begin - heading.size());
}

/// Returns the first block of VSA text in a section, or an empty text if there is none.
std::string exampleOf(const std::string& page) {
  const std::string open = "```vsa\n";
  const std::size_t begin = page.find(open);
  if (begin == std::string::npos) return {};
  return page.substr(begin + open.size(),
                     page.find("```", begin + open.size()) - begin - open.size());
}

TEST(RulePages, SayWhatARuleIsAboutAndWhatToDo) {
  for (const Rule& rule : vsa_tools::allRules()) {
    const std::string page = pageOf(rule.id);
    EXPECT_NE(page.find("\n*What to do:*"), std::string::npos) << rule.id;
    const bool isMarkedOff = page.find("*Off by default.*") != std::string::npos;
    EXPECT_EQ(isMarkedOff, !rule.isDefault) << rule.id;
  }
}

TEST(RulePages, HaveExamplesThatTheRuleFinds) {
  const std::vector<vsa::TypeDescription> types = exampleTypes();
  for (const Rule& rule : vsa_tools::allRules()) {
    const std::string example = exampleOf(pageOf(rule.id));
    if (std::string(rule.group) == "encoding") continue;
    const vsa::ReadResult read = vsa::readText(example);
    std::vector<Finding> findings;
    vsa_tools::runRules({.text = example, .scene = read.scene, .types = types},
                        RuleSet([](const Rule&) { return true; }),
                        [&](Finding&& finding) { findings.push_back(std::move(finding)); });
    const bool isFound = std::any_of(findings.begin(), findings.end(),
                                     [&](const auto& finding) { return finding.id == rule.id; });
    EXPECT_TRUE(isFound) << rule.id << "\n" << example;
  }
}

}  // namespace

}  // namespace vsa_tests
