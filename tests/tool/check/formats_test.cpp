// Tests of the output formats of vsa check: for editors, for CI and for other programs.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/check/output/format.h"

namespace vsa_tests {

namespace {

using nlohmann::json;
using vsa_tools::CheckedText;
using vsa_tools::Finding;
using vsa_tools::Format;
using vsa_tools::FormatName;
using vsa_tools::makeFormat;

class FormatsTest : public CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    // To narrow a value, the texts assign to an input twice. The rule `assigned-twice` would report
    // that, too, but it is not tested here.
    write(".vsa-check.json", R"({"ignore": ["assigned-twice"]})");
    write("w.vsa", "lamp a: .k = 1;\n.k = 2.5;\n");
    write("e.vsa", "lamp a: .s = \"\xC3\xA4\"; .s = 1;\n42;\n.k = 1; .k = \xE2\x82\xAC;\n");
    write("clean.vsa", "lamp a;\n");
  }

  std::string check(const std::string& arguments) { return vsa("check " + arguments).out; }

  /// Returns the problems that the schema finds in stdout.txt, or an empty text.
  std::string problemsWith(const std::string& schema) {
    statusOf(std::string(VSA_TEST_DIR "/tool/check/schemas/validate.py " VSA_TEST_DIR "/") +
             schema + " <stdout.txt >problems.txt 2>&1 || echo not valid >>problems.txt");
    return content("problems.txt");
  }

  /// Returns a finding about the second line, with a note, a hint and an edit.
  static Finding fullFinding() {
    Finding finding;
    finding.id = "some-rule";
    finding.level = vsa_tools::Level::Warning;
    finding.message = "a <\"message\"> & more";
    finding.range = {{16, 2, 1}, {18, 2, 3}};
    finding.notes.push_back({{{0, 1, 1}, {4, 1, 5}}, "declared here"});
    finding.hint = "write: 1, 2";
    finding.edits.push_back({16, 18, "x"});
    return finding;
  }

  std::string rendered(FormatName name, const Finding& finding) {
    const CheckedText text((folder_ / "w.vsa").string());
    const std::unique_ptr<Format> format = makeFormat(name, false, false);
    return format->render(finding, {"a b.vsa", text, {}});
  }
};

// These lines have the form that Vim's errorformat, Emacs and a problem matcher of GitHub
// recognise.
TEST(LevelTest, HasAName) {
  EXPECT_STREQ("note", name(vsa_tools::Level::Note));
  EXPECT_STREQ("warning", name(vsa_tools::Level::Warning));
  EXPECT_STREQ("error", name(vsa_tools::Level::Error));
}

TEST_F(FormatsTest, LinesAreRecognisedByEditors) {
  const testing::Matcher<std::string> line = testing::MatchesRegex(
      ".+:[1-9][0-9]*:[1-9][0-9]*: (error|warning|note): .* \\[[a-z0-9-]+\\]");
  const std::string out = check("-q --format line w.vsa e.vsa missing.vsa");
  std::istringstream lines(out);
  int count = 0;
  for (std::string text; std::getline(lines, text); ++count) {
    EXPECT_TRUE(line.Matches(text)) << text;
  }
  EXPECT_EQ(5, count) << out;
  EXPECT_EQ("a b.vsa:2:1: warning: a <\"message\"> & more (write: 1, 2) [some-rule]\n",
            rendered(FormatName::Line, fullFinding()));
}

TEST_F(FormatsTest, TheSummaryOfOtherFormatsGoesToStandardError) {
  for (const char* format : {"line", "log", "json", "sarif", "github", "junit"}) {
    const CommandOutcome run = vsa(std::string("check --format ") + format + " w.vsa");
    EXPECT_EQ("1 file checked: 0 errors, 1 warning\n", run.err) << format;
    EXPECT_EQ(std::string::npos, run.out.find("checked")) << run.out;
  }
}

TEST_F(FormatsTest, TheLogIsThatOfTheReader) {
  EXPECT_EQ("TYPE WARNING (2,9): narrowing Real to Int @ a.k.\n", check("-q --format log w.vsa"));
  EXPECT_EQ(
      "TYPE ERROR (1,26): expected String @ a.s but found Int.\n"
      "PARSE ERROR (1,26): unrecognized token '42'..\n",
      check("-q --format log e.vsa"));
}

TEST_F(FormatsTest, FullHasNotesAndHints) {
  EXPECT_EQ(
      "a b.vsa:2:1: warning: a <\"message\"> & more [some-rule]\n"
      "    2 | .k = 2.5;\n"
      "      | ^^\n"
      "      = hint: write: 1, 2\n"
      "a b.vsa:1:1: note: declared here\n"
      "    1 | lamp a: .k = 1;\n"
      "      | ^^^^\n",
      rendered(FormatName::Full, fullFinding()));
}

TEST_F(FormatsTest, JsonFollowsItsSchema) {
  check("-q --format json w.vsa e.vsa clean.vsa missing.vsa");
  EXPECT_EQ("", problemsWith("../docs/check_finding.schema.json --lines"));
  std::istringstream lines(content("stdout.txt"));
  std::string line;
  std::getline(lines, line);
  const json expected = json::parse(R"({"file": "w.vsa", "level": "warning", "id": "narrowing",
      "message": "narrowing Real to Int @ a.k", "hint": "", "notes": [], "edits": [],
      "range": {"begin": {"offset": 21, "line": 2, "column": 6},
                "end": {"offset": 24, "line": 2, "column": 9}},
      "log": "TYPE WARNING (2,9): narrowing Real to Int @ a.k.", "afterStop": false})");
  json found = json::parse(line);
  for (const char* ofRules : {"hint", "notes", "edits"}) found[ofRules] = expected[ofRules];
  EXPECT_EQ(expected, found);
  const json full = json::parse(rendered(FormatName::Json, fullFinding()));
  EXPECT_EQ(json::parse(R"([{"begin": 16, "end": 18, "text": "x"}])"), full["edits"]);
  EXPECT_EQ("declared here", full["notes"][0]["message"]);
}

TEST_F(FormatsTest, JsonAndSarifAreSafeForTerminals) {
  write("t.vsa", "# version: \xC2\x9B\xE2\x80\xAE\n");
  for (const char* format : {"json", "sarif"}) {
    check(std::string("-q t.vsa --format ") + format);
    const std::string out = content("stdout.txt");
    EXPECT_TRUE(json::accept(out)) << out;
    EXPECT_NE(std::string::npos, out.find("\\u009b\\u202e")) << out;
    EXPECT_EQ(std::string::npos, out.find("\xC2\x9B"));
    EXPECT_EQ(std::string::npos, out.find("\xE2\x80\xAE"));
  }
}

// Of a long line, only the last 4096 bytes before a column are read. The others are characters of
// one byte here.
TEST_F(FormatsTest, SarifColumnsOfALongLineCountCharacters) {
  const std::string text =
      "lamp a: .s = \"" + std::string(5000, 'a') + "\xC3\xA4\xC3\xA4\"; .s = 1;\n";
  write("long.vsa", text);
  const json run = json::parse(check("-q --format sarif long.vsa"))["runs"][0];
  const json region = run["results"][0]["locations"][0]["physicalLocation"]["region"];
  const std::size_t offset = text.find("1;");
  EXPECT_EQ(offset, region["byteOffset"]);
  EXPECT_EQ(offset + 1 - 2, region["startColumn"]);
}

TEST_F(FormatsTest, JsonIsUtf8) {
  const std::string out = check("-q --format json e.vsa");
  EXPECT_NE(std::string::npos, out.find("\xE2\x82\xAC")) << out;
}

TEST_F(FormatsTest, SarifFollowsItsSchema) {
  constexpr char SCHEMA[] = "tool/check/schemas/sarif-2.1.0.schema.json";
  check("-q --format sarif clean.vsa");
  EXPECT_EQ("", problemsWith(SCHEMA));
  check("-q --format sarif w.vsa e.vsa missing.vsa");
  EXPECT_EQ("", problemsWith(SCHEMA));
  const json run = json::parse(content("stdout.txt"))["runs"][0];
  EXPECT_EQ(false, run["invocations"][0]["executionSuccessful"]);
  EXPECT_EQ("vsa check", run["tool"]["driver"]["name"]);
  ASSERT_EQ(5u, run["results"].size());
  const json region = run["results"][1]["locations"][0]["physicalLocation"]["region"];
  EXPECT_EQ("wrong-type", run["results"][1]["ruleId"]);
  // Columns count characters, and one character before this column has two bytes.
  EXPECT_EQ(24, region["startColumn"]);
  EXPECT_EQ(24, region["byteOffset"]);
  write("stdout.txt",
        "{\"version\":\"2.1.0\",\"runs\":[{\"tool\":{\"driver\":{\"name\":\"x\"}},"
        "\"results\":[" +
            rendered(FormatName::Sarif, fullFinding()) + "]}]}");
  EXPECT_EQ("", problemsWith(SCHEMA));
  const json result = json::parse(content("stdout.txt"))["runs"][0]["results"][0];
  EXPECT_EQ("a%20b.vsa", result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]);
  EXPECT_EQ("x",
            result["fixes"][0]["artifactChanges"][0]["replacements"][0]["insertedContent"]["text"]);
}

TEST_F(FormatsTest, GithubHasWorkflowCommands) {
  const std::string out = check("-q --format github w.vsa");
  EXPECT_TRUE(
      out.starts_with("::warning file=w.vsa,line=2,col=6,endColumn=8,title=narrowing::"
                      "narrowing Real to Int @ a.k"))
      << out;
  Finding finding = fullFinding();
  finding.message = "50%\n, next";
  EXPECT_EQ(
      "::warning file=a b.vsa,line=2,col=1,endColumn=2,title=some-rule::50%25\\n, next%0Ahint: "
      "write: 1, 2\n",
      rendered(FormatName::Github, finding));
}

TEST_F(FormatsTest, JunitCountsFailures) {
  const std::string out = check("-q --format junit clean.vsa w.vsa e.vsa missing.vsa");
  EXPECT_TRUE(
      out.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<testsuites tests=\"6\" failures=\"3\" errors=\"0\">\n"))
      << out;
  EXPECT_NE(std::string::npos,
            out.find("<testcase classname=\"clean.vsa\" name=\"check\" file=\"clean.vsa\"/>\n"));
  const std::string strict = check("-q --strict --format junit w.vsa");
  EXPECT_NE(std::string::npos, strict.find("failures=\"1\"")) << strict;
  EXPECT_NE(
      std::string::npos,
      rendered(FormatName::Junit, fullFinding()).find("a &lt;&quot;message&quot;&gt; &amp; more"));
}

// GitLab also reads the attributes `file` and `line` of a test case, which are not in the schema.
TEST_F(FormatsTest, JunitFollowsItsSchema) {
  for (const char* const files : {"clean.vsa", "clean.vsa w.vsa e.vsa missing.vsa"}) {
    check(std::string("-q --format junit ") + files);
    statusOf("sed -E 's/ (file|line)=\"[^\"]*\"//g' stdout.txt >report.xml");
    EXPECT_EQ(0, statusOf("xmllint --noout --schema " VSA_TEST_DIR
                          "/tool/check/schemas/junit.xsd report.xml >problems.txt 2>&1"))
        << content("problems.txt");
  }
}

}  // namespace

}  // namespace vsa_tests
