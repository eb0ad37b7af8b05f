// Tests of the rules that compare a scene with described node types.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/read.h>
#include <vsa/types.h>
#include "tests/tool/check/rows/marked_text.h"
#include "tests/tool/check/rows/row_texts.h"
#include "tools/vsa/check/fix/apply_edits.h"
#include "tools/vsa/check/rules/rule.h"

namespace vsa_tests {

namespace {

using vsa_tools::Finding;
using vsa_tools::Rule;
using vsa_tools::RuleSet;

constexpr std::string_view TYPES = R"({"types": {
  "lamp": {
    "inputs": {
      "power": {"type": "Real", "min": 0, "max": 100, "required": true},
      "count": {"type": "Int"},
      "color": {"type": "Rgba", "max": 1},
      "shape": {"type": "String", "values": ["sphere", "disk"]},
      "ids": {"type": "Buffer", "elements": "Int32"},
      "keys": {"type": "Array", "elements": "Real"},
      "mask": {"linksOnly": true},
      "free": {}
    },
    "outputs": ["outColor"],
    "formerInputs": {"watts": "power"},
    "formerOutputs": {"color": "outColor"}
  },
  "camera": {}
}})";

struct TypeRow {
  const char* id;
  std::string_view fires;  // a text with a finding, whose range is between « and »
  std::string_view isSilent;
  std::string_view hint = "";
};

constexpr TypeRow TYPE_ROWS[] = {
    {"unknown-type", "«lmap» a;", "camera a; define b; with c:", "did you mean `lamp`?"},
    {"unknown-input", "lamp a: .«powr» = 1.0; .power = 1.0;", "lamp a: .watts = 1.0; .free = 2;",
     "did you mean `power`?"},
    {"unknown-output", "lamp a: .power = 1.0; .color |= «a.outColr»;",
     "lamp a: .power |= a.color; .color |= a.outColor;", "did you mean `outColor`?"},
    {"unknown-output", "lamp a: .power = 1.0; .keys[*] |= «a.x»;",
     "lamp a: .power = 1.0; .keys[*] |= a.color;"},
    {"unknown-enum-value", "lamp a: .power = 1.0; .shape = «\"disc\"»;",
     "lamp a: .power = 1.0; .shape = \"disk\";", "did you mean `disk`?"},
    {"unknown-enum-value", "lamp a: .power = 1.0; .shape = «\"cone\"»;",
     "lamp a: .power = 1.0; .shape = \"sphere\";", "the values are `sphere`, `disk`"},
    {"wrong-input-type", "lamp a: .power = «\"1\"»;", "lamp a: .power = 1;"},
    {"wrong-input-type", "lamp a: .power = 1; .count = «2.5»;", "lamp a: .power = 1; .count = 2u;"},
    {"wrong-input-type", "lamp a: .power = 1; .color = «mat3(1 0 0 0 1 0 0 0 1)»;",
     "lamp a: .power = 1; .color = vec3(1 0 0);"},
    {"wrong-input-type", "lamp a: .power = «mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1)»;",
     "lamp a: .power = 1; .color = vec4(1 0 0 1);"},
    {"wrong-input-type", "lamp a: .power = 1; .ids = «float[1] {1}»;",
     "lamp a: .power = 1; .ids = int32[1] {1};"},
    {"wrong-input-type", "lamp a: .power = 1; .keys[*] = «1»;",
     "lamp a: .power = 1; .keys[*] = 1.0;"},
    {"wrong-input-type", "lamp a: .power = 1; .keys[1] = «1»; .keys[0] = 2; .keys = 3;",
     "lamp a: .power = 1; .keys[1] = 1.0;"},
    {"wrong-input-type", "lamp a: .power = 1; .«keys[*].time» = 1; .keys[*].time = 2;",
     "lamp a: .power = 1; .free[*].time = 1.0;"},
    {"wrong-input-type", "lamp a: .power = 1; .«color.r» = 1.0;",
     "lamp a: .power = 1; .free.r = 1.0;"},
    {"unknown-input", "lamp a: .power = 1; .«lens».f[0] = 1.0;", "lamp a: .free.f[0] = 1.0;"},
    {"wrong-input-type", "lamp a: .power = 1; .mask = «1»;", "lamp a: .power = 1; .mask = a;"},
    {"out-of-range", "lamp a: .power = «101»;", "lamp a: .power = 100;"},
    {"out-of-range", "lamp a: .power = «-0.5»;", "lamp a: .power = 0;"},
    {"out-of-range", "lamp a: .power = 1; .color = «rgba(1 1.5 1)»;",
     "lamp a: .power = 1; .color = rgba(1 -1 1);"},
    {"missing-input", "lamp «a»: .count = 1;", "lamp a: .power |= a.outColor;"},
    {"missing-input", "lamp «a»: .zoom = 1;", "lamp a: .powr = 1.0;"},
};

std::vector<Finding> typeFindings(std::string_view text, std::string_view id) {
  const std::vector<vsa::TypeDescription> types = ruleTypes();
  const vsa::ReadResult read = vsa::readText(text);
  std::vector<Finding> findings;
  vsa_tools::runRules({.text = text, .scene = read.scene, .types = types},
                      RuleSet([&](const Rule& rule) { return rule.id == id; }),
                      [&](Finding&& finding) { findings.push_back(std::move(finding)); });
  return findings;
}

TEST(TypeRules, FireWhereTheyShould) {
  for (const TypeRow& row : TYPE_ROWS) {
    const MarkedText marked(row.fires);
    const std::vector<Finding> findings = typeFindings(marked.text, row.id);
    ASSERT_EQ(findings.size(), 1U) << row.id << ": " << row.fires;
    ASSERT_TRUE(findings[0].range) << row.fires;
    EXPECT_EQ(findings[0].range->begin.offset, marked.begin) << row.fires;
    EXPECT_EQ(findings[0].range->end.offset, marked.end) << row.fires;
    EXPECT_NE(findings[0].hint.find(row.hint), std::string::npos) << findings[0].hint;
  }
}

TEST(TypeRules, AreSilentWhereTheyShould) {
  for (const TypeRow& row : TYPE_ROWS) {
    for (const Finding& finding : typeFindings(row.isSilent, row.id)) {
      ADD_FAILURE() << row.id << ": " << row.isSilent << "\n" << finding.message;
    }
  }
}

TEST(TypeRules, HaveEditsForNamesThatAreSure) {
  const auto fixed = [](std::string_view text, std::string_view id) {
    const std::vector<Finding> findings = typeFindings(text, id);
    return vsa_tools::withEdits(text, {findings.at(0).edits}).text;
  };
  EXPECT_EQ(fixed("lmap a: .power = 1.0;", "unknown-type"), "lamp a: .power = 1.0;");
  EXPECT_EQ(fixed("lamp a: .powr = 1.0;", "unknown-input"), "lamp a: .power = 1.0;");
  EXPECT_EQ(fixed("lamp a: .color |= a.outColr;", "unknown-output"),
            "lamp a: .color |= a.outColor;");
  EXPECT_EQ(fixed("lamp a: .shape = \"Disk\";", "unknown-enum-value"),
            "lamp a: .shape = \"disk\";");
  EXPECT_EQ(fixed("lamp a: .shape = \"cone\";", "unknown-enum-value"),
            "lamp a: .shape = \"cone\";");
}

TEST(TypeRules, AreAllTested) {
  std::set<std::string_view> tested;
  for (const TypeRow& row : TYPE_ROWS) tested.insert(row.id);
  for (const Rule& rule : vsa_tools::allRules()) {
    const bool isOfTypes = std::string_view(rule.group) == "types";
    EXPECT_EQ(tested.count(rule.id), isOfTypes ? 1U : 0U) << rule.id;
  }
}

}  // namespace

std::vector<vsa::TypeDescription> ruleTypes() {
  const vsa::TypesResult types = vsa::readTypes(TYPES);
  EXPECT_EQ(types.problem, "");
  return types.types;
}

std::vector<RuleText> typeRuleTexts() {
  std::vector<RuleText> texts;
  for (const TypeRow& row : TYPE_ROWS) texts.push_back({row.id, MarkedText(row.fires).text});
  return texts;
}

}  // namespace vsa_tests
