// Tests of comments and directives, with direct calls: what they recognise and what they ignore.
// The directive `with` needs direct calls, because the statement loop never reaches it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::LoggedLines;
using vsa_tests::PrimedParser;
using vsa_tests::text;
using Lines = std::vector<std::string>;

/// Returns the name that a recogniser finds, or "-" if it consumes nothing.
template <class Info>
std::string recognised(bool (VsaParser::*recogniser)(Info&), const std::string& bytes) {
  PrimedParser primed(bytes);
  const std::string before = primed.ahead();
  Info info;
  if (!(primed.parser.*recogniser)(info)) {
    EXPECT_EQ(primed.ahead(), before) << bytes;
    EXPECT_EQ(text(info.name.text), "") << bytes;
    return "-";
  }
  return text(info.name.text) + " then " + primed.ahead();
}

TEST(Directives, Remove) {
  const auto remove = [](const std::string& bytes) {
    return recognised(&VsaParser::remove, bytes);
  };
  EXPECT_EQ(remove("remove a; b c"), "a then b c EOF");
  EXPECT_EQ(remove("REMOVE a;"), "a then EOF EOF EOF");
  EXPECT_EQ(remove("rEmOvE remove;"), "remove then EOF EOF EOF");
  for (const char* const bytes : {"remove a:", "remove a", "remove ;", "remove \"a\";",
                                  "removes a;", "remove null;", "remove 1;", "a remove;", ""}) {
    EXPECT_EQ(remove(bytes), "-") << bytes;
  }
}

TEST(Directives, Define) {
  const auto define = [](const std::string& bytes) {
    return recognised(&VsaParser::define, bytes);
  };
  EXPECT_EQ(define("define a;"), "a then EOF EOF EOF");
  EXPECT_EQ(define("Define a; b"), "a then b EOF EOF");
  for (const char* const bytes : {"define a:", "define a.b;", "remove a;", "define true;"}) {
    EXPECT_EQ(define(bytes), "-") << bytes;
  }
}

TEST(Directives, With) {
  const auto with = [](const std::string& bytes) { return recognised(&VsaParser::with, bytes); };
  EXPECT_EQ(with("with a: .b = 1;"), "a then . b =");
  EXPECT_EQ(with("WITH a:"), "a then EOF EOF EOF");
  for (const char* const bytes : {"with a;", "with a", "without a:", "with \"a\":"}) {
    EXPECT_EQ(with(bytes), "-") << bytes;
  }
}

TEST(Directives, Declare) {
  for (const bool isWith : {false, true}) {
    PrimedParser primed(isWith ? "sphere s: x" : "sphere s; x");
    VsaParser::DeclareInfo info;
    EXPECT_TRUE(primed.parser.declare(info));
    EXPECT_EQ(text(info.type.text), "sphere");
    EXPECT_EQ(text(info.name.text), "s");
    EXPECT_EQ(info.isWith, isWith);
    EXPECT_EQ(primed.ahead(), "x EOF EOF");
    EXPECT_EQ(text(primed.parser.current.text), isWith ? ":" : ";");
  }
  const auto declare = [](const std::string& bytes) {
    return recognised(&VsaParser::declare, bytes);
  };
  for (const char* const bytes : {"sphere s", "sphere s.", "sphere;", "sphere \"s\";", "s = 1;",
                                  "sphere null;", "true s;", "# sphere s;"}) {
    EXPECT_EQ(declare(bytes), "-") << bytes;
  }
}

TEST(Directives, ParseFunctionsIgnoreOtherStatements) {
  PrimedParser primed("a.b = 1;");
  EXPECT_FALSE(primed.parser.parseComment());
  EXPECT_FALSE(primed.parser.parseRemove());
  EXPECT_FALSE(primed.parser.parseDefine());
  EXPECT_FALSE(primed.parser.parseDeclare());
  EXPECT_FALSE(primed.parser.parseWith());
  EXPECT_EQ(primed.ahead(), "a . b");
  EXPECT_EQ(primed.scene.options.calls, Lines{});
}

TEST(Declarations, CreateOnceAndSelect) {
  PrimedParser primed("sphere s; cube s; sphere s: light l;");
  EXPECT_TRUE(primed.parser.parseDeclare());
  EXPECT_EQ(primed.parser.withNode, nullptr);
  EXPECT_TRUE(primed.parser.parseDeclare());
  EXPECT_EQ(primed.parser.withNode, nullptr);
  EXPECT_TRUE(primed.parser.parseDeclare());
  EXPECT_EQ(primed.parser.withNode, primed.scene.findNode("s"));
  EXPECT_TRUE(primed.parser.parseDeclare());
  EXPECT_EQ(primed.parser.withNode, primed.scene.findNode("s"));
  EXPECT_EQ(primed.scene.options.calls, (Lines{"createNode sphere s <>", "createNode light l <>"}));
}

TEST(Declarations, RecordFieldsAreInOrder) {
  const VsaParser::DeclareInfo declared;
  const auto& [type, name, isWith] = declared;
  EXPECT_EQ(&type, &declared.type);
  EXPECT_EQ(&name, &declared.name);
  EXPECT_EQ(&isWith, &declared.isWith);
  EXPECT_FALSE(isWith);
  static_assert(sizeof(VsaParser::RemoveInfo) == sizeof(Token));
  static_assert(sizeof(VsaParser::DefineInfo) == sizeof(Token));
  static_assert(sizeof(VsaParser::WithInfo) == sizeof(Token));
}

TEST(Declarations, RefusedNodeClearsTheWithNode) {
  PrimedParser primed("sphere s:");
  primed.scene.options.refusesNodes = true;
  primed.parser.withNode = primed.scene.add("lamp", "l");
  EXPECT_TRUE(primed.parser.parseDeclare());
  EXPECT_EQ(primed.parser.withNode, nullptr);
}

TEST(Define, FindsOrDefinesAndStoresTheNode) {
  PrimedParser primed("define a; define l; define a;");
  primed.scene.add("lamp", "l");
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(primed.parser.parseDefine());
  EXPECT_EQ(primed.scene.options.calls, Lines{"defineNode a"});
  ASSERT_EQ(primed.parser.definedNodes.size, 3U);
  EXPECT_EQ(primed.parser.definedNodes[0], primed.scene.findNode("a"));
  EXPECT_EQ(primed.parser.definedNodes[1], primed.scene.findNode("l"));
  EXPECT_EQ(primed.parser.definedNodes[2], primed.scene.findNode("a"));
  EXPECT_EQ(primed.parser.definedNodes.capacity, 4U);
  EXPECT_EQ(primed.parser.withNode, nullptr);
}

TEST(Define, RefusedNodeIsNotStored) {
  PrimedParser primed("define a; with b:");
  primed.scene.options.refusesNodes = true;
  EXPECT_TRUE(primed.parser.parseDefine());
  EXPECT_TRUE(primed.parser.parseWith());
  EXPECT_EQ(primed.parser.withNode, nullptr);
}

TEST(Remove, KeepsTheWithNode) {
  PrimedParser primed("remove other; remove gone;");
  vsa_tests::HostNode* const lamp = primed.scene.add("lamp", "l");
  primed.parser.withNode = lamp;
  EXPECT_TRUE(primed.parser.parseRemove());
  EXPECT_TRUE(primed.parser.parseRemove());
  EXPECT_EQ(primed.parser.withNode, lamp);
  EXPECT_EQ(primed.scene.options.calls, (Lines{"removeNode other", "removeNode gone"}));
}

TEST(With, FindsTheNodeOfThatName) {
  PrimedParser primed("with settings:");
  vsa_tests::HostNode* const named = primed.scene.add("lamp", "settings");
  primed.parser.definedNodes.push_back(primed.scene.add("settings", "s1"));
  EXPECT_TRUE(primed.parser.parseWith());
  EXPECT_EQ(primed.parser.withNode, named);
}

TEST(With, FallsBackToTheLastDefinedNodeOfThatType) {
  PrimedParser primed("with settings:");
  primed.parser.definedNodes.push_back(primed.scene.add("settings", "s1"));
  primed.parser.definedNodes.push_back(primed.scene.add("settings", "s2"));
  primed.parser.definedNodes.push_back(primed.scene.add("lamp", "l"));
  primed.scene.add("settings", "s3");  // not created by `define`
  EXPECT_TRUE(primed.parser.parseWith());
  EXPECT_EQ(primed.parser.withNode, primed.scene.findNode("s2"));
  EXPECT_EQ(primed.scene.options.calls, Lines{});
}

TEST(With, TypesAreCaseSensitive) {
  PrimedParser primed("with Settings:");
  primed.parser.definedNodes.push_back(primed.scene.add("settings", "s1"));
  EXPECT_TRUE(primed.parser.parseWith());
  EXPECT_EQ(primed.parser.withNode, nullptr);
}

TEST(With, FailedLookUpClearsTheWithNode) {
  PrimedParser primed("with nothing:");
  primed.parser.withNode = primed.scene.add("lamp", "l");
  EXPECT_TRUE(primed.parser.parseWith());
  EXPECT_EQ(primed.parser.withNode, nullptr);
  EXPECT_EQ(text(primed.parser.current.text), ":");
}

// --- comments ---

struct CommentRow {
  const char* text;
  Lines calls;
};

TEST(Comments, HeaderWords) {
  const CommentRow rows[] = {
      {"# hello", {"pushFileComment <# hello>"}},
      {"#", {"pushFileComment <#>"}},
      {"# version:   12  ", {"setFileVersion 12", "pushFileComment <# version:   12  >"}},
      {"#version:0", {"setFileVersion 0", "pushFileComment <#version:0>"}},
      {"# version:18446744073709551615",
       {"setFileVersion 18446744073709551615", "pushFileComment <# version:18446744073709551615>"}},
      {"# Version: 3", {"pushFileComment <# Version: 3>"}},
      {"# version 3", {"pushFileComment <# version 3>"}},
      {"# a conversion: 3", {"setFileVersion 3", "pushFileComment <# a conversion: 3>"}},
      {"# time: 2024-01-01 12:30 ",
       {"setFileTime <2024-01-01 12:30>", "pushFileComment <# time: 2024-01-01 12:30 >"}},
      {"# time:", {"pushFileComment <# time:>"}},
      {"# time:  ", {"pushFileComment <# time:  >"}},
      {"# file time: now", {"setFileTime <now>", "pushFileComment <# file time: now>"}},
      {"# a: time: b", {"setFileTime <time: b>", "pushFileComment <# a: time: b>"}},
      {"# version: 3 time: x",
       {"pushFileComment <# version: 3 time: x>"}},  // "3 time: x" is not a number
      {"# time: version: 3", {"pushFileComment <# time: version: 3>"}},
  };
  for (const CommentRow& row : rows) {
    PrimedParser primed(row.text);
    const LoggedLines log;
    EXPECT_TRUE(primed.parser.parseComment());
    EXPECT_EQ(primed.scene.options.calls, row.calls) << row.text;
    const bool hasVersion = std::string(row.text).find("version:") != std::string::npos;
    const bool isRead = row.calls.size() == 2;
    const std::string warning =
        "warning: Failed to parse VSA version comment: " + std::string(row.text);
    EXPECT_EQ(log.lines(), hasVersion && !isRead ? Lines{warning} : Lines{}) << row.text;
  }
}

TEST(Comments, NonNumericVersionIsAWarning) {
  for (const char* const bytes : {"# version: beta", "# version:", "# version: -1",
                                  "# version: 1.5", "# version: 18446744073709551616"}) {
    PrimedParser primed(bytes);
    const LoggedLines log;
    EXPECT_TRUE(primed.parser.parseComment());
    EXPECT_EQ(log.lines(),
              Lines{std::string("warning: Failed to parse VSA version comment: ") + bytes});
    EXPECT_EQ(primed.scene.options.calls, Lines{std::string("pushFileComment <") + bytes + ">"});
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
