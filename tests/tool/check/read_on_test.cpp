// Tests of reading on after fatal mistakes: each mistake of a text is reported once.
#include "tools/vsa/check/reading/read_on.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tests/tool/command_fixture.h"
#include "tools/vsa/check/file_check.h"

namespace vsa_tests {

namespace {

class ReadOnTest : public CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    // To narrow a value, the texts assign to an input twice. The rule `assigned-twice` would report
    // that, too, but it is not tested here.
    write(".vsa-check.json", R"({"ignore": ["assigned-twice"]})");
  }
};

/// Returns the line and the id of each finding in the output, sorted.
std::vector<std::string> linesAndIds(const std::string& output) {
  std::vector<std::string> found;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t begin = line.find(':') + 1;
    found.push_back(line.substr(begin, line.find(':', begin) - begin) +
                    line.substr(line.rfind(" [")));
  }
  std::sort(found.begin(), found.end());
  return found;
}

/// A statement with one mistake, and the id of the finding. Each `#` except the first character of
/// the text is replaced by a number that differs each time.
struct Mistake {
  const char* text;
  const char* id;
};

// The mistakes are independent of each other, and do not affect the statements after them.
constexpr Mistake MISTAKES[] = {
    {"good.x# = 1e-05;", "bad-token"},
    {"good.x# = ;", "bad-token"},
    {"good.x# = 50%;", "invalid-token"},
    {"good.x# = vec3(1 2);", "bad-token"},
    {"good.x# = vec3(1 2 3;", "invalid-list-token"},
    {"good.x# = float[2] {1 2;", "invalid-list-token"},
    {"good.x# = float[2] {1 2 x};", "invalid-list-token"},
    {"good.x# = byte[1] {1 2};", "too-many-elements"},
    {"good.x# = byte[2] {1};", "too-few-elements"},
    {"good.x#[] = 1;", "invalid-array-index"},
    {"good.number.x# = 1;", "cannot-assign-type"},
    {"good.number = \"text\";", "wrong-type"},
    {"good.number = 2.5;", "narrowing"},
    {"missing#.x = 1;", "node-not-found"},
    {"good.x# = missing#;", "no-node-to-assign"},
    {"good.x# |= missing#.out;", "no-node-to-connect"},
    {"lamp lamp# = 3; lamp#.x = 1; good.y# = lamp#;", "unrecognized-token"},
    {"lamp lamp# lamp#.x = 1;", "unrecognized-token"},
    {"good.x# = \"never closed;", "bad-token"},
    {"good.x# = 1", "bad-token"},
    {"lamp lamp#", "unrecognized-token"},
    {"}", "invalid-token"},
    {"# version: #x", "bad-version"},
    {"42;", "unrecognized-token"},
};

std::string numbered(std::string text, int number) {
  for (std::size_t at = 1; (at = text.find('#', at)) != std::string::npos;) {
    text.replace(at, 1, std::to_string(number));
  }
  return text;
}

/// A text with mistakes between correct statements, and the expected findings.
struct WrongText {
  std::string text = "thing good: .number = 1;\n";
  std::vector<std::string> expected;
  int line = 1;

  void add(const std::string& lines) {
    text += lines + '\n';
    line += static_cast<int>(std::count(lines.begin(), lines.end(), '\n')) + 1;
  }
  void add(const Mistake& mistake, int number) {
    add("thing right" + std::to_string(number) + ": .a = 1;");
    add(numbered(mistake.text, number));
    expected.push_back(std::to_string(line) + " [" + mistake.id + "]");
    add("good.r" + std::to_string(number) + " = right" + std::to_string(number) + ";");
  }
};

TEST_F(ReadOnTest, EachKindOfMistakeIsReportedOnceBetweenRightStatements) {
  for (const Mistake& mistake : MISTAKES) {
    WrongText wrong;
    wrong.add(mistake, 1);
    write("a.vsa", wrong.text);
    EXPECT_EQ(wrong.expected, linesAndIds(vsa("check -q --ignore all --error reader --format line "
                                              "a.vsa")
                                              .out))
        << wrong.text;
  }
}

TEST_F(ReadOnTest, OneToTwentyMistakesAreEachReportedOnce) {
  std::mt19937 random(14);
  for (int count = 1; count <= 20; ++count) {
    for (int round = 0; round < 5; ++round) {
      WrongText wrong;
      for (int i = 1; i <= count; ++i) {
        wrong.add(MISTAKES[random() % std::size(MISTAKES)], i);
      }
      std::sort(wrong.expected.begin(), wrong.expected.end());
      write("a.vsa", wrong.text);
      EXPECT_EQ(wrong.expected, linesAndIds(vsa("check -q --ignore all --error reader --format "
                                                "line a.vsa")
                                                .out))
          << wrong.text;
    }
  }
}

// Returns the hints of the findings after the place where the reader stops. At first, at most
// `maxKept` bytes of the text are in memory.
std::vector<std::string> hintsAfterStop(const std::filesystem::path& path, std::uint64_t maxKept) {
  vsa_tools::CheckedText text(path, maxKept);
  const vsa_tools::ReadArguments reading;
  const vsa_tools::RuleSet rules([](const vsa_tools::Rule&) { return true; });
  const vsa_tools::FileCheckOptions options{reading};
  std::vector<std::string> hints;
  const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&& finding) {
    if (finding.isAfterStop) hints.push_back(finding.hint);
    return true;
  };
  vsa_tools::FileCheck(text, options, rules, consumer).run();
  return hints;
}

TEST_F(ReadOnTest, ALargeTextHasHintsAfterTheStop) {
  write("a.vsa", "lamp a:\n.x = 1e-05;\n.y = 2\n.z = 3;\n");
  EXPECT_EQ(hintsAfterStop(folder_ / "a.vsa", 1000),
            std::vector<std::string>{"end the statement with `;`"});
  EXPECT_EQ(hintsAfterStop(folder_ / "a.vsa", 10), hintsAfterStop(folder_ / "a.vsa", 1000));
}

// After these mistakes, the text is read several times as a whole. Each of these readings reports
// the last mistake.
TEST_F(ReadOnTest, AMistakeThatSeveralReadingsReportIsReportedOnce) {
  const char* const texts[] = {
      "thing good;\n.x[] = 1;\n:\ngood.x = byte[2] {1}; ){\ngood.y = 1;\nlamp a {\n",
      "thing good;\n.x: 3;\na.b |= \ngood.x3 = vec3(1 2 3; good.x = byte[2] {1};}\n",
      "thing good: .x = 1e-05;\n.y = byte[2] {1}; .x: 3; remove good; :\n)\n}\n",
  };
  for (const char* text : texts) {
    write("a.vsa", text);
    const std::string out = vsa("check -q --ignore all --error reader --format line a.vsa").out;
    const std::size_t first = out.find("[too-few-elements]");
    EXPECT_NE(first, std::string::npos) << text << out;
    EXPECT_EQ(first, out.rfind("[too-few-elements]")) << text << out;
  }
}

TEST_F(ReadOnTest, TheStopOfTheReaderIsMarked) {
  write("a.vsa", "lamp a;\na.x = 1e-05;\na.k = 1;\na.k = 2.5;\n42;\n");
  const std::string out = vsa("check a.vsa").out;
  const std::size_t note = out.find(
      "a.vsa: note: the reader stops at line 2; the following was found by reading on\n"
      "a.vsa:4:7: warning: narrowing");
  EXPECT_NE(note, std::string::npos) << out;
  EXPECT_EQ(note, out.rfind("a.vsa: note: the reader stops")) << out;
  EXPECT_LT(out.find("a.vsa:2:7: error"), note);
  EXPECT_NE(out.find("a.vsa:5:1: error: unrecognized token '42'"), std::string::npos);
  const std::string first = vsa("check --first a.vsa").out;
  EXPECT_NE(first.find("1 file checked: 1 error, 0 warnings\n"), std::string::npos) << first;
}

TEST_F(ReadOnTest, RulesStopWithTheReaderIfOnlyTheFirstMistakeIsWanted) {
  write("a.vsa", "lamp a: .p = \"\\q\";\na.x = 1e-05;\na.s = \"\\q\";\n");
  const std::string all = "check -q --format line a.vsa",
                    first = "check -q --format line --first a.vsa";
  EXPECT_NE(vsa(all).out.find("a.vsa:3:8: warning"), std::string::npos);
  EXPECT_NE(vsa(first).out.find("a.vsa:1:15: warning"), std::string::npos);
  EXPECT_NE(vsa(first).out.find("a.vsa:2:7: error"), std::string::npos);
  EXPECT_EQ(vsa(first).out.find("a.vsa:3:"), std::string::npos);
}

TEST_F(ReadOnTest, OneMistakeWithSeveralWrongTokensIsReportedOnce) {
  const std::pair<const char*, std::vector<std::string>> texts[] = {
      {"lamp a: .x: 3;\n.y = 1;\n", {"1 [unrecognized-token]"}},
      {"lamp a: .x := 3;\n.y = 1;\n", {"1 [unrecognized-token]"}},
      {"lamp a {\n  .x = 1;\n  .y = 2;\n}\nlamp b;\n", {"1 [invalid-list-token]"}},
      {"$lamp;\nlamp b;\n", {"1 [invalid-token]"}},
      {"lamp a: .x = 1;\n);\n~~~\nlamp b;\n", {"2 [invalid-token]", "3 [invalid-token]"}},
      {"<lamp name=\"a\"/>\nlamp b;\n", {"1 [invalid-token]"}},
      {"lamp a;;;\nlamp b;\n", {"1 [unrecognized-token]"}},
      {"lamp a;\na::x = 1;\n", {"2 [unrecognized-token]"}},
      {"/* a\n   lamp */\n// noon\n-- moon\nlamp a; a.x[] = 1;\n",
       {"1 [unrecognized-token]", "3 [unrecognized-token]", "4 [unrecognized-token]",
        "5 [invalid-array-index]"}},
      {"lamp: a;\na.x = 1;\n", {"1 [unrecognized-token]"}},
      {"::: lamp a;\na.x[] = 1;\n",
       {"1 [unrecognized-token]", "1 [unrecognized-token]", "1 [unrecognized-token]",
        "2 [invalid-array-index]"}},
      {"lamp a:\n.m = mat3(1 0 0; 0 1 0; 0 0 1);\n.y = 50%;\n",
       {"2 [invalid-list-token]", "3 [invalid-token]"}},
      {"lamp {\n  .x = 1;\n}\nlamp b;\n", {"1 [invalid-list-token]"}},
      {"lamp a = {\n  .x = 1;\n};\na.y = 2;\n", {"1 [unrecognized-token]"}},
      {"lamp a:\n<<<<<<< HEAD\n.x = 1;\n=======\n.x = 2;\n>>>>>>> b\n.y = 1;\n",
       {"2 [invalid-token]", "4 [unrecognized-token]", "6 [invalid-token]"}},
  };
  for (const auto& [text, expected] : texts) {
    write("a.vsa", text);
    const std::string out = vsa("check -q --ignore all --error reader --format line a.vsa").out;
    EXPECT_EQ(expected, linesAndIds(out)) << text;
  }
}

// Each of these texts has one mistake. A rule must not report what only follows from another
// finding. Therefore each text has exactly one finding.
TEST_F(ReadOnTest, FindingsOfRulesThatFollowFromADiagnosticAreLeftOut) {
  const char* const texts[] = {
      "lamp a: .s = \"x\"; .s = 3;\n",
      "lamp a: .n = 1; .n = 2.5;\n",
      "lamp a: .k = 1; .k[1] = 2;\n",
      "lamp a: .v = mat3((1 0 0)(0 1 0)(0 0 1));\n",
      "lamp a: .v = vec2f[2] {{1 2}{3 4}};\n",
      "mat m; lamp a: .m = m; .m = \"m\";\n",
      "lamp a: .v = byte[400000000] {0 1};\n",
      "lamp a: .x = 1; lamp b; .x = 2;\n",
      "lamp a: .x = float[1] {.7801000010010000000000};\n",
      "lamp a: .x = float[2] {.7801000010010000000000};\n",
      "lamp a: remove a; .x = 1; .y = 2;\n",
      // The statements after a wrong one are found, and belong to the node that is set.
      "t a: .x = 1; .y = vec3(1 2\nt b:\n.x = 2;\n",
      "t a: .x = 1; .y = \"open;\nt b:\n.x = \"c\"; .z = 3;\n",
      "t a: .x = 1;\nt b\n.x = 2;\n",
      "t a: .x = 1;\nt 3b: .x = 2;\n",
      "t a: .k[0] = 1; .k[1] = 50%; .k[2] = 2;\n",
      // The wrong statement may have been intended to declare b.
      "t: b;\nb.x = 1;\n",
  };
  for (const char* text : texts) {
    write("a.vsa", text);
    const std::string out = vsa("check -q --no-config --format line a.vsa").out;
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1) << text << out;
  }
  write("a.vsa", std::string(40000, '\n') + texts[0]);
  const std::string out = vsa("check -q --no-config --format line a.vsa").out;
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1) << out;
}

TEST_F(ReadOnTest, EachMissingSemicolonIsReported) {
  write("a.vsa",
        "lamp a; lamp b;\nremove b\ndefine c\n\nlamp d  \nwith d\n.x = 1\n.y = 2\nlamp e;\n");
  const std::string id = " [unrecognized-token]";
  EXPECT_EQ((std::vector<std::string>{"2" + id, "3" + id, "5" + id, "6" + id, "7 [bad-token]",
                                      "8 [bad-token]"}),
            linesAndIds(vsa("check -q --no-config --format line a.vsa").out));
}

TEST_F(ReadOnTest, WhatDoesNotFollowFromADiagnosticIsReported) {
  // The string without its first quote extends to the quote in the last line.
  write("a.vsa",
        "t a: .s = open\";\n.p = float[4000000] {1};\n.v = byte[1] {2 3}; .t = \"b\";\n"
        "# caf\xE9\n");
  EXPECT_EQ(
      (std::vector<std::string>{"1 [bad-token]", "2 [large-declared-count]", "2 [too-few-elements]",
                                "3 [too-many-elements]", "4 [not-utf-8]"}),
      linesAndIds(vsa("check -q --no-config --format line a.vsa").out));
  // A narrowed value is assigned, so the element before it is missing.
  write("a.vsa", "t a: .k[0].n = 1;\n.k[2].n = 1; .k[2].n = 2.5;\n");
  EXPECT_EQ((std::vector<std::string>{"2 [array-gap]", "2 [narrowing]"}),
            linesAndIds(vsa("check -q --no-config --format line a.vsa").out));
}

// The rules find the statements after an open string, and the places of their findings, although
// another quote closes the string in a later line.
TEST_F(ReadOnTest, RulesInspectTheStatementsAfterAWrongOne) {
  write("a.vsa",
        "t a: .s = \"open;\nt b: .s = \"50\\%\";\n.v = vec2(1 2 3);\n.c |= b.out;\n"
        "b.u = \"\\q\" 50%;\nc.u = \"\\q\";\n");
  const std::string out = vsa("check -q --no-config --format line a.vsa").out;
  EXPECT_EQ(
      (std::vector<std::string>{"1 [invalid-token]", "2 [unknown-escape]", "3 [dropped-components]",
                                "4 [self-connection]", "5 [invalid-token]", "6 [node-not-found]",
                                "6 [unknown-escape]"}),
      linesAndIds(out))
      << out;
}

// A large text is checked by a second thread, which does not know yet where the statements are
// wrong.
TEST_F(ReadOnTest, RulesThatRunWhileTheTextIsReadGiveTheSameFindings) {
  const std::string text = "t a: .x = 1; .y = vec3(1 2\nt b:\n.x = 2;\n.k[1] = \"\\q\";\n";
  const auto idsFor = [&](std::size_t minConcurrentBytes) {
    vsa_tools::CheckedText checked(vsa_tools::CheckedText::InMemory{text});
    const vsa_tools::ReadArguments reading;
    const vsa_tools::RuleSet rules([](const vsa_tools::Rule& rule) { return rule.isDefault; });
    const vsa_tools::FileCheckOptions options{.reading = reading,
                                              .minConcurrentBytes = minConcurrentBytes};
    std::vector<std::string> ids;
    const vsa_tools::FileCheck::Consumer consumer = [&](vsa_tools::Finding&& finding) {
      ids.emplace_back(finding.id);
      return true;
    };
    vsa_tools::FileCheck(checked, options, rules, consumer).run();
    return ids;
  };
  EXPECT_EQ((std::vector<std::string>{"invalid-list-token", "unknown-escape", "array-gap"}),
            idsFor(1));
  EXPECT_EQ(idsFor(1), idsFor(text.size() + 1));
}

TEST_F(ReadOnTest, AnInputInAWrongStatementIsNotReportedAsMissing) {
  write("types.json",
        R"({"types": {"lamp": {"inputs": {"power": {"type": "Real", "required": true}}}}})");
  const auto idsFor = [&](const std::string& text) {
    write("a.vsa", text);
    return linesAndIds(vsa("check -q --format line --types types.json a.vsa").out);
  };
  EXPECT_EQ((std::vector<std::string>{"1 [invalid-token]"}), idsFor("lamp a: .power = 50%;\n"));
  EXPECT_EQ((std::vector<std::string>{"1 [bad-token]"}), idsFor("lamp a: .power = 1e-05;\n"));
  EXPECT_EQ((std::vector<std::string>{"1 [unrecognized-token]"}), idsFor("lamp a: power = 1.0;\n"));
  EXPECT_EQ((std::vector<std::string>{"1 [with-node-not-set]"}), idsFor("lamp a; .power = 1.0;\n"));
  EXPECT_EQ((std::vector<std::string>{"1 [wrong-type]"}), idsFor("lamp a: .power = [1 2];\n"));
  EXPECT_EQ(
      (std::vector<std::string>{"1 [missing-input]", "2 [invalid-token]", "2 [unknown-input]"}),
      idsFor("lamp a: \n.mass = 50%;\n"));
}

// No memory can hold a buffer with this number of elements. The finding is the same whether this is
// the first mistake of the text or a later one.
TEST_F(ReadOnTest, ACountThatNoMemoryHoldsIsOneOfTheMistakes) {
  write("a.vsa", "a.x = 1;\nmesh m;\nm.ids = mat4d[9223372036854775807] {};\nm.k = 1e-05;\n");
  const std::string all = vsa("check -q --format line --ignore all --error reader a.vsa").out;
  EXPECT_EQ(
      (std::vector<std::string>{"1 [node-not-found]", "3 [cannot-allocate]", "4 [bad-token]"}),
      linesAndIds(all));
  write("a.vsa", "mesh m: .ids = mat4d[9223372036854775807] {};\nm.k = 1e-05;\n");
  const std::string first = vsa("check -q --format line --ignore all --error reader a.vsa").out;
  EXPECT_EQ((std::vector<std::string>{"1 [cannot-allocate]", "2 [bad-token]"}), linesAndIds(first));
}

TEST_F(ReadOnTest, WhatOnlyFollowsIsNotReported) {
  const char* const texts[] = {
      "lamp a = 3;\na.x = 1;\na.y |= a.out;\n",     // a is missing after its wrong declaration
      "nobody.x = 1;\nnobody.y = 2;\n",             // the node is missing in both statements
      ".x = 1;\n.y = 2;\n.z = 3;\n",                // the with node is missing in each statement
      "lamp a: .k = ;\n.x = 1;\n.y = 2;\n",         // the with node is still set after the mistake
      "lamp 3a:\n.x = 1;\n.y = 2;\n",               // there is a with node, but its name is unknown
      "lamp a; a.s = \"never closed;\na.t = 1;\n",  // the string extends to the end of the text
  };
  for (const char* text : texts) {
    write("a.vsa", text);
    const std::string out = vsa("check --ignore all --error reader a.vsa").out;
    EXPECT_NE(out.find(": 1 error, 0 warnings\n"), std::string::npos) << text << out;
  }
}

// The time must be proportional to the number of fatal mistakes. If each of them caused another
// reading of the text, this test would take hours.
TEST_F(ReadOnTest, ManyFatalMistakesAreFound) {
  std::string text = "lamp a;\n";
  for (int i = 0; i < 20000; ++i) text += "a.x = 1e-05;\n";
  write("a.vsa", text);
  const std::string out = vsa("check -q --format line --max-diagnostics 99999 a.vsa").out;
  EXPECT_EQ(20000, std::count(out.begin(), out.end(), '\n'));
}

TEST_F(ReadOnTest, ATextCutOrChangedAtEachByteIsReadOn) {
  const std::string text =
      "# version: 1\nlamp a: .k = vec3(1 2 3);\n.s = \"x\\\"y\";\nwith a: .b = byte[2] {1 2};\n"
      "define d;\nremove d;\na.o = {};\na.r |= a.out;\na.l[*].m = null;\n";
  const std::string bytes = "\"{}()[];:.#%\n a\xFF\\";
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    for (std::size_t i = 0; i <= bytes.size(); ++i) {
      std::string changed = text;
      if (i == bytes.size()) {
        changed.resize(at);
      } else {
        changed[at] = bytes[i];
      }
      const vsa::ReadResult first = vsa::readText(changed);
      if (first.isComplete() || first.diagnostics.empty()) continue;
      const vsa::ReadResult rest = vsa_tools::readOn(
          changed, first.diagnostics.back(), {}, [&](const vsa::Diagnostic& found) {
            ++count;
            EXPECT_LE(found.range.end.offset, changed.size());
          });
      EXPECT_TRUE(rest.isComplete() || rest.status == vsa::ReadStatus::CutOff ||
                  rest.status == vsa::ReadStatus::StoppedByError)
          << changed;
    }
  }
  EXPECT_GT(count, 0u);
}

}  // namespace

}  // namespace vsa_tests
