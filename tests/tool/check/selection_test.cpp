// Tests which findings are reported: levels, configuration files, comments and baselines.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/tool/command_fixture.h"

namespace vsa_tests {

namespace {

class SelectionTest : public CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    std::filesystem::create_directories(folder_ / "sub/deep");
    write("a.vsa", TEXT);
    write("sub/deep/a.vsa", TEXT);
  }

  /// A text with a narrowing, which is a warning, and a wrong type, which is an error.
  static constexpr char TEXT[] = "lamp a: .k = 1;\n.k = 2.5;\n.k = \"x\";\n";

  std::string summary(const std::string& arguments) {
    const std::string out = vsa("check --ignore assigned-twice " + arguments).out;
    return out.substr(out.rfind("checked: ") + 9);
  }
};

TEST_F(SelectionTest, OptionsSetLevels) {
  EXPECT_EQ("1 error, 1 warning\n", summary("a.vsa"));
  EXPECT_EQ("2 errors, 0 warnings\n", summary("--error narrowing a.vsa"));
  EXPECT_EQ("0 errors, 2 warnings\n", summary("--warn wrong-type a.vsa"));
  EXPECT_EQ("1 error, 0 warnings\n", summary("--ignore narrowing a.vsa"));
  EXPECT_EQ("no problems found\n", summary("--ignore narrowing,wrong-type a.vsa"));
  EXPECT_EQ("no problems found\n", summary("--ignore reader a.vsa"));
  EXPECT_EQ("1 error, 0 warnings\n", summary("--ignore all --error narrowing a.vsa"));
  EXPECT_EQ("0 errors, 2 warnings\n", summary("--warn wrong-type --ignore reader "
                                              "--warn narrowing --ignore wrong-type a.vsa"));
  EXPECT_EQ(0, vsa("check --warn wrong-type a.vsa").status);
}

TEST_F(SelectionTest, AnUnknownIdIsNamed) {
  const CommandOutcome run = vsa("check --ignore narowing a.vsa");
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("vsa: there is no rule or group narowing: did you mean narrowing?\n", run.err);
}

TEST_F(SelectionTest, NoConfigurationAndAConfigurationExcludeEachOther) {
  write("c.json", R"({"ignore": ["narrowing"]})");
  const CommandOutcome run = vsa("check --no-config --config c.json a.vsa");
  EXPECT_EQ(2, run.status);
  EXPECT_EQ("", run.out);
  EXPECT_NE(run.err.find("--config excludes --no-config"), std::string::npos) << run.err;
}

TEST_F(SelectionTest, TheNearestConfigurationIsUsed) {
  write(".vsa-check.json", R"({"ignore": ["narrowing"]})");
  EXPECT_EQ("1 error, 0 warnings\n", summary("a.vsa"));
  EXPECT_EQ("1 error, 0 warnings\n", summary("sub/deep/a.vsa"));
  EXPECT_EQ("1 error, 1 warning\n", summary("--no-config a.vsa"));
  EXPECT_EQ("1 error, 1 warning\n", summary("--warn narrowing a.vsa"));
  write("sub/.vsa-check.json", R"({"$schema": "x", "warn": ["wrong-type"], "error": []})");
  EXPECT_EQ("0 errors, 2 warnings\n", summary("sub/deep/a.vsa"));
  EXPECT_EQ("0 errors, 2 warnings\n", summary("--config sub/.vsa-check.json a.vsa"));
  EXPECT_EQ("0 errors, 2 warnings\n", summary("--stdin-filename sub/x.vsa - <a.vsa"));
  EXPECT_EQ("1 error, 2 warnings in 2 files\n", summary("a.vsa sub/deep/a.vsa"));
}

TEST_F(SelectionTest, AWrongConfigurationIsAnError) {
  const std::pair<const char*, const char*> rows[] = {
      {"{\"ingore\": []}", "there is no setting ingore: did you mean ignore?"},
      {"{\"ignore\": [\"narrow\"]}", "there is no rule or group narrow"},
      {"{\"ignore\": 1}", "type must be array"},
      {"[]", "type must be"},
      {"{", "parse error"},
  };
  for (const auto& [text, message] : rows) {
    write(".vsa-check.json", text);
    const CommandOutcome run = vsa("check a.vsa");
    EXPECT_EQ(2, run.status) << text;
    EXPECT_NE(std::string::npos, run.err.find(message)) << run.err;
    EXPECT_NE(std::string::npos, run.err.find(".vsa-check.json: ")) << run.err;
  }
  EXPECT_EQ("vsa: none: No such file or directory\n", vsa("check --config none a.vsa").err);
}

// Copying a value that is nested very deeply overflowed the stack.
TEST_F(SelectionTest, AJsonFileIsNestedAtMost32Levels) {
  const auto nested = [](std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
  };
  write("closed.json", "{\"ignore\": " + nested(200000) + "}");
  write("open.json", std::string(400000, '['));
  std::string objects;
  for (int i = 0; i < 100000; ++i) objects += "{\"\":";
  write("objects.json", objects);
  for (const std::string file : {"closed.json", "open.json", "objects.json"}) {
    for (const std::string option :
         {"check --config ", "check --baseline ", "check --types ", "convert -o b.vsa --types "}) {
      const CommandOutcome run = vsa(option + file + " a.vsa");
      EXPECT_EQ(2, run.status) << option << file;
      EXPECT_NE(std::string::npos, run.err.find("nested deeper than 32 levels")) << run.err;
    }
  }
  write("33.json", nested(33));
  EXPECT_EQ("vsa: 33.json: nested deeper than 32 levels\n",
            vsa("check --config 33.json a.vsa").err);
  write("32.json", nested(32));
  EXPECT_EQ("vsa: 32.json: this is no baseline of vsa check\n",
            vsa("check --baseline 32.json a.vsa").err);
  write(".vsa-check.json", content("closed.json"));
  EXPECT_TRUE(vsa("check a.vsa").err.ends_with("/.vsa-check.json: nested deeper than 32 levels\n"));
}

TEST_F(SelectionTest, CommentsIgnoreFindings) {
  const std::pair<const char*, const char*> rows[] = {
      {"lamp a: .k = 1;\n# vsa-check: ignore narrowing\n\n# more\n.k\n= 2.5;\n.k = 3.5;\n",
       "0 errors, 1 warning\n"},
      {"lamp a: .k = 1;\n.k = 2.5; # vsa-check: ignore wrong-type, narrowing -- why\n",
       "no problems found\n"},
      {"lamp a: .k = 1;\n.k = 2.5; # vsa-check: ignore wrong-type -- narrowing\n",
       "0 errors, 1 warning\n"},
      {"lamp a: .k = 1;\n.k = 2.5;\n.k = 3.5;\n#vsa-check:ignore-file reader\n",
       "no problems found\n"},
      {"lamp a: .k = 1;\n.k = 2.5; # vsa-check: ignore all\n", "no problems found\n"},
      {"lamp a: .k = 1;\n# see vsa-check: ignore all\n.k = 2.5;\n", "0 errors, 1 warning\n"},
      {"lamp a: .k = 1;\n.k = 2.5;\n# vsa-check: ignore all", "0 errors, 1 warning\n"},
      {"lamp a: .k = 1;\n.k = 2.5; # vsa-check: keep # vsa-check: ignore narrowing\n",
       "0 errors, 1 warning\n"},
      {"lamp a: .k = 1;\n# vsa-check: ignore narrowing\n# vsa-check: ignore reader\n.k = 2.5;\n"
       ".k = 3.5;\n",
       "0 errors, 1 warning\n"},
  };
  for (const auto& [text, expected] : rows) {
    write("c.vsa", text);
    EXPECT_EQ(expected, summary("c.vsa")) << text;
  }
}

TEST_F(SelectionTest, ABaselineHidesWhatItKnows) {
  const CommandOutcome written =
      vsa("check --ignore assigned-twice --write-baseline known.json a.vsa sub");
  EXPECT_EQ(0, written.status);
  EXPECT_EQ("2 files checked: no problems found; 4 in the baseline\n", written.out);
  EXPECT_EQ("no problems found; 4 in the baseline\n", summary("--baseline known.json a.vsa sub"));
  write("a.vsa", std::string("# moved\n\n") + TEXT + ".k = 2.5;\n");
  EXPECT_EQ("0 errors, 1 warning; 2 in the baseline\n", summary("--baseline known.json a.vsa"));
  EXPECT_EQ("vsa: none.json: No such file or directory\n",
            vsa("check --baseline none.json a.vsa").err);
  write("wrong.json", "[1]");
  EXPECT_EQ("vsa: wrong.json: this is no baseline of vsa check\n",
            vsa("check --baseline wrong.json a.vsa").err);
  EXPECT_EQ(2, vsa("check --ignore assigned-twice --write-baseline /dev/full a.vsa").status);
}

TEST_F(SelectionTest, TheOutputIsCompleteIfTheBaselineCannotBeWritten) {
  const CommandOutcome run = vsa("check -q --format sarif --write-baseline none/known.json a.vsa");
  EXPECT_EQ(2, run.status);
  EXPECT_TRUE(nlohmann::json::accept(run.out)) << run.out;
  EXPECT_EQ("vsa: cannot write beside none/known.json: No such file or directory\n", run.err);
}

TEST_F(SelectionTest, TypesAreReadFromAFile) {
  write("types.json", R"({"types": {"lamb": {"inputs": {}}}})");
  const CommandOutcome run = vsa("check --ignore reader --types types.json a.vsa");
  EXPECT_NE(std::string::npos, run.out.find("[unknown-type]")) << run.out << run.err;
  EXPECT_EQ("vsa: none: No such file or directory\n", vsa("check --types none a.vsa").err);
  write("wrong.json", "{\n\"typos\": []}");
  EXPECT_EQ("vsa: standard input can be read only once\n",
            vsa("check --types - - <types.json").err);
  const CommandOutcome wrong = vsa("check --types wrong.json a.vsa");
  EXPECT_EQ(2, wrong.status);
  EXPECT_TRUE(wrong.err.starts_with("vsa: wrong.json:2:")) << wrong.err;
}

}  // namespace

}  // namespace vsa_tests
