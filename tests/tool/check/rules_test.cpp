// Tests of the rules of vsa check. Each rule except those about types has a text with a finding,
// whose source range is between « and », and a text without a finding of that rule.
#include "tools/vsa/check/rules/rule.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include <vsa/read.h>
#include "tests/support/text.h"
#include "tests/tool/check/rows/marked_text.h"
#include "tests/tool/check/rows/rule_rows.h"
#include "tools/vsa/check/fix/apply_edits.h"

namespace vsa_tests {

namespace {

using vsa_tools::Finding;
using vsa_tools::Rule;
using vsa_tools::RuleSet;

std::vector<Finding> findingsOf(std::string_view text, const RuleSet& rules) {
  const vsa::ReadResult read = vsa::readText(text);
  std::vector<Finding> findings;
  vsa_tools::runRules({.text = text, .scene = read.scene}, rules,
                      [&](Finding&& finding) { findings.push_back(std::move(finding)); });
  return findings;
}

std::vector<Finding> findingsOf(std::string_view text, const std::string& rule) {
  return findingsOf(text, RuleSet([&](const Rule& row) { return row.id == rule; }));
}

TEST(Rules, FireWhereTheyShould) {
  for (const RuleRow& row : RULE_ROWS) {
    const MarkedText marked(row.fires);
    const std::vector<Finding> findings = findingsOf(marked.text, row.id);
    ASSERT_EQ(findings.size(), 1U) << row.id << "\n" << row.fires;
    const Finding& finding = findings.front();
    EXPECT_EQ(finding.id, row.id);
    EXPECT_FALSE(finding.message.empty());
    EXPECT_FALSE(finding.message.ends_with('.'));
    ASSERT_TRUE(finding.range.has_value()) << row.fires;
    EXPECT_EQ(finding.range->begin.offset, marked.begin) << row.id << "\n" << row.fires;
    EXPECT_EQ(finding.range->end.offset, marked.end) << row.id << "\n" << row.fires;
    EXPECT_GE(finding.range->begin.line, 1U);
    EXPECT_GE(finding.range->begin.column, 1U);
  }
}

TEST(Rules, AreSilentWhereTheyShould) {
  for (const RuleRow& row : RULE_ROWS) {
    EXPECT_TRUE(findingsOf(row.isSilent, row.id).empty()) << row.id << "\n" << row.isSilent;
  }
}

/// A text with a finding, and the text after its edits. `fixed` is empty if there are no edits.
struct RuleEditRow {
  const char* id;
  std::string_view text;
  std::string_view fixed = "";
};

constexpr RuleEditRow RULE_EDIT_ROWS[] = {
    {"decimal-comma", "a b: .x = vec2(1,5 2,5);", "a b: .x = vec2(1.5 2.5);"},
    {"decimal-comma", "a b: .x = vec2(1,5 ,2,5);", "a b: .x = vec2(1.5 ,2.5);"},
    {"decimal-comma", "a b: .x = vec2(1,5, 2,5);", "a b: .x = vec2(1.5, 2.5);"},
    {"dropped-components", "a b: .x = vec2(1.5,2 3.5,4);"},
    {"keyword-as-type", "define a: .x = 1;", "define a; with a: .x = 1;"},
    {"keyword-as-type", "wiht a: .x = 1;", "with a: .x = 1;"},
    {"with-unknown-node", "lamp hall; with Hall: .x = 1;", "lamp hall; with hall: .x = 1;"},
    {"with-unknown-node", "with a: .x = 1; lamp a;"},
    {"near-version", "# Version 3", "# version: 3"},
    {"near-version", "# version 2 of the scene"},
    {"near-version", "# Version 2.1"},
    {"near-time", "# Time = 2024-05-14 09:30", "# time: 2024-05-14 09:30"},
    {"near-time", "# Time 12:30", "# time: 12:30"},
    {"near-time", "# Time 3 minutes to render"},
};

TEST(Rules, HaveEditsOnlyWhereTheyAreSafe) {
  for (const RuleEditRow& row : RULE_EDIT_ROWS) {
    const std::vector<Finding> findings = findingsOf(row.text, row.id);
    ASSERT_EQ(findings.size(), 1U) << row.text;
    const auto edited = vsa_tools::withEdits(row.text, {findings.front().edits});
    EXPECT_EQ(edited.fixed == 0 ? "" : edited.text, row.fixed) << row.text;
  }
}

TEST(Rules, AreAllTested) {
  std::set<std::string> tested;
  for (const RuleRow& row : RULE_ROWS) tested.insert(row.id);
  for (const Rule& rule : vsa_tools::allRules()) {
    const bool isOfTypes = std::string(rule.group) == "types";  // type_rules_test.cpp tests these
    EXPECT_EQ(tested.count(rule.id), isOfTypes ? 0U : 1U) << rule.id;
  }
}

void expectQuiet(const std::filesystem::path& file) {
  std::string text = contentOf(file);
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  const vsa::ReadResult read = vsa::readText(text);
  std::vector<Finding> findings;
  vsa_tools::runRules({.text = text, .scene = read.scene},
                      RuleSet([](const Rule& rule) { return rule.isDefault; }),
                      [&](Finding&& finding) { findings.push_back(std::move(finding)); });
  for (const Finding& finding : findings) {
    ADD_FAILURE() << file << ':' << (finding.range ? finding.range->begin.line : 0) << ": "
                  << finding.message << " [" << finding.id << "]\n  " << finding.hint;
  }
}

TEST(Rules, NameTheEscapeSequenceThatMayBeMeant) {
  const auto findingOf = [](const std::string& value) {
    return findingsOf("lamp a: .x = \"" + value + "\";", "unknown-escape").at(0);
  };
  EXPECT_EQ("did you mean `\\n`?", findingOf("one\\Ntwo").hint);
  EXPECT_EQ("did you mean `\\u`?", findingOf("\\U00e9").hint);
  EXPECT_EQ("did you mean `\\x1b`?", findingOf("\\e[0m").hint);
  EXPECT_EQ("`\\x` takes two hexadecimal digits that are not both 0", findingOf("\\x4").hint);
  EXPECT_EQ("`\\u` takes four hexadecimal digits that are not all 0", findingOf("\\u0000").hint);
  EXPECT_TRUE(findingOf("one\\Ntwo").edits.empty());
  EXPECT_EQ("write two backslashes", findingOf("50\\% off").hint);
  EXPECT_EQ("write two backslashes", findingOf("50\\q off").hint);
  EXPECT_EQ(1U, findingOf("50\\% off").edits.size());
  EXPECT_EQ("write forward slashes, or two backslashes", findingOf("D:\\Novel").hint);
}

TEST(Rules, ShortenMessagesOfMoreThan400Bytes) {
  const std::string text(400, 'a');
  EXPECT_EQ(vsa_tools::withoutLongQuotes(text), text);
  EXPECT_EQ(vsa_tools::withoutLongQuotes(text + 'a'),
            text.substr(0, 120) + "[... 221 bytes ...]" + text.substr(0, 60));
}

TEST(Rules, FindAnElementThatIsAppendedAfterAnIndex) {
  const std::string_view text = "a b: .k[0] = 1.0; .k[*] = -inf;";
  const std::vector<Finding> findings = findingsOf(text, "not-finite");
  ASSERT_EQ(findings.size(), 1U);
  ASSERT_TRUE(findings[0].range.has_value());
  EXPECT_EQ(findings[0].range->begin.offset, text.find("-inf"));
}

TEST(Rules, FindALoneInvalidByteAtTheBeginningOfALongText) {
  const std::string text = "\xE9 sun; #" + std::string(100, '-');
  const std::vector<Finding> findings = findingsOf(text, "not-utf-8");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].range->begin.offset, 0U);
}

TEST(Rules, NameTheKeywordThatMayBeMeant) {
  const auto findingOf = [](const std::string& statement) {
    return findingsOf("lamp sun;\n" + statement, "redeclared-type").at(0);
  };
  EXPECT_EQ("did you mean `with`?", findingOf("wiht sun: .power = 1.0;").hint);
  EXPECT_EQ("did you mean `remove`?", findingOf("remoev sun;").hint);
  EXPECT_EQ("did you mean `remove`?", findingOf("delete sun;").hint);
  EXPECT_EQ("did you mean `remove`?", findingOf("erase sun;").hint);
  EXPECT_EQ("did you mean `remove`?", findingOf("destroy sun;").hint);
  EXPECT_EQ("did you mean `define`?", findingOf("defin sun;").hint);
  EXPECT_EQ("give the second node a name of its own", findingOf("with_ sun;").hint);
  EXPECT_EQ("give the second node a name of its own", findingOf("camera sun:").hint);
  const auto edits = findingOf("wiht sun: .power = 1.0;").edits;
  ASSERT_EQ(1U, edits.size());
  EXPECT_EQ(10U, edits[0].begin);
  EXPECT_EQ(14U, edits[0].end);
  EXPECT_EQ("with", edits[0].text);
}

TEST(Rules, NameATupleThatTakesAllNumbers) {
  const auto hintFor = [](const std::string& tuple) {
    return findingsOf("lamp a: .x = " + tuple + ';', "dropped-components").at(0).hint;
  };
  EXPECT_EQ("a type for them all is `vec4`", hintFor("vec2(1 2 3 4)"));
  EXPECT_EQ("a type for them all is `pos3`", hintFor("pos2(1 2 3)"));
  EXPECT_EQ("a type for them all is `mat4`", hintFor("mat3(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1)"));
  EXPECT_EQ("remove the numbers that are too many", hintFor("pos3(1 2 3 4)"));
  EXPECT_EQ("remove the numbers that are too many", hintFor("rgba(1 2 3 4 5)"));
}

TEST(Rules, ReportAWithThatEndsInASemicolonOnce) {
  const RuleSet defaults([](const Rule& row) { return row.isDefault; });
  const auto idsOf = [&](std::string_view text) {
    std::string ids;
    for (const Finding& finding : findingsOf(text, defaults)) ids += std::string(finding.id) + ' ';
    return ids;
  };
  EXPECT_EQ(idsOf("lamp a: .p = 1;\nlamp b: .q = 1;\nwith a;\n.x = 2;\n.y = 3;\n"),
            "redeclared-type ");
  EXPECT_EQ(idsOf("lamp a: .p = 1;\nlamp c;\n.x = 2;\n.y = 3;\n"), "period-behind-semicolon ");
}

TEST(Rules, CountTheMissingElementsOfAnArray) {
  const auto messageOf = [](const std::string& text) {
    return findingsOf(text, "array-gap").at(0).message;
  };
  EXPECT_EQ("the element a.k[0] before this one gets no value", messageOf("t a: .k[1] = 1;"));
  EXPECT_EQ("the element a.k[0] and 4 more before this one get no value",
            messageOf("t a: .k[9] = 1; .k[3] = 1; .k[5] = 1; .k[8] = 1; .k[4] = 1;"));
  EXPECT_EQ("the element a.k[0] and 59999 more before this one get no value",
            messageOf("t a: .k[60000] = 1;"));
}

// The folder of large scenes is missing in a release, so it need not exist.
TEST(Rules, OnByDefaultFindNothingInRealScenes) {
  const std::filesystem::path root = std::filesystem::path(VSA_TEST_DIR).parent_path();
  for (const std::filesystem::path& folder :
       {root / "examples", root.parent_path() / "shared/scenes"}) {
    if (!std::filesystem::exists(folder)) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const std::string name = entry.path().stem();
      const bool isMistake = name == "mistakes" || name == "broken_links";
      if (entry.path().extension() == ".vsa" && !isMistake) expectQuiet(entry.path());
    }
  }
}

TEST(Rules, FindNothingWithoutATextAndAScene) {
  const vsa::ReadResult read = vsa::readText("");
  std::vector<Finding> findings;
  vsa_tools::runRules({.text = "", .isTextKept = false, .scene = read.scene},
                      RuleSet([](const Rule&) { return true; }),
                      [&](Finding&& finding) { findings.push_back(std::move(finding)); });
  EXPECT_TRUE(findings.empty());
}

}  // namespace

}  // namespace vsa_tests
