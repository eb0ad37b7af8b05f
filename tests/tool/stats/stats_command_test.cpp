// Tests of `vsa stats` with files.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/stats/quantity.h"

namespace {

using Json = nlohmann::json;

class StatsTest : public vsa_tests::CommandFixture {
 protected:
  /// Returns the JSON that the command prints. Expects that it succeeds.
  Json json(const std::string& arguments) {
    const auto run = vsa("stats --json " + arguments);
    EXPECT_EQ(0, run.status) << run.err;
    return Json::parse(run.out);
  }
};

const char SCENE[] =
    "# version: 1\n# two\n"
    "mesh m: .points = vec3f[2] {0 1 2 3 4 5}; .name = \"abc\"; .on = true; .clay = c;\n"
    "material c: .color = rgba(1 0 0 1); .keys[*].time = 0.5; .keys[*].time = 1.5; .k = 7;\n"
    "mesh other: .points = vec3f[1] {0 1 2}; .ids = int32[3] {1 2 3}; .tint |= c.out;\n"
    "other.gone = nobody;\n";

TEST_F(StatsTest, CountsOneFile) {
  const std::string text = SCENE;
  write("a.vsa", text);
  const Json total = json("a.vsa")["total"];
  EXPECT_EQ(Json({{"mesh", 2}, {"material", 1}}), total["nodesByType"]);
  EXPECT_EQ(3, total["nodes"]);
  EXPECT_EQ(Json({{"ofNodes", 0}, {"ofObjects", 2}, {"ofArrays", 0}}),
            total["inputsByType"]["Real"]);
  EXPECT_EQ(Json({{"ofNodes", 0}, {"ofObjects", 0}, {"ofArrays", 2}}),
            total["inputsByType"]["Object"]);
  EXPECT_EQ(Json({{"references", 1}, {"connections", 1}, {"broken", 1}}), total["links"]);
  EXPECT_EQ(Json({{"buffers", 2}, {"elements", 3}, {"bytes", 36}}),
            total["buffersByType"]["Vec3f"]);
  EXPECT_EQ(text.size(), total["textBytes"]);
  // The sum of 48 bytes of buffers, 3 of a string, 1 of a Bool, 8 of a reference, 32 of a colour,
  // 16 of two keys, 8 of an Int, and 8 of a connection.
  EXPECT_EQ(124, total["dataBytes"]);
  EXPECT_EQ(2, total["comments"]);
  EXPECT_EQ("c.keys[0].time", total["longestPath"]);
  EXPECT_EQ(3, total["deepestPath"]);
  EXPECT_GT(total["seconds"], 0);
}

TEST_F(StatsTest, AFileNameIsNoCommandOfACiRunner) {
  write("::error::a.vsa", "lamp a;");
  EXPECT_TRUE(vsa("stats ::error::a.vsa").out.starts_with("\\x3a:error::a.vsa\n"));
  write("b.vsa", "lamp b;");
  const std::string table = vsa("stats ::error::a.vsa b.vsa").out;
  EXPECT_NE(table.find("  \\x3a:error::a.vsa"), std::string::npos) << table;
}

TEST_F(StatsTest, ANodeWithoutInputsHasNoPath) {
  write("a.vsa", "lamp a;");
  const Json total = json("a.vsa")["total"];
  EXPECT_EQ(0, total["deepestPath"]);
  EXPECT_EQ("", total["longestPath"]);
}

TEST_F(StatsTest, TheLargestInputsComeFirst) {
  write("a.vsa", SCENE);
  const Json largest = json("a.vsa")["total"]["largestInputs"];
  ASSERT_EQ(10u, largest.size());
  EXPECT_EQ("c.color", largest[0]["input"]);
  EXPECT_EQ(32, largest[0]["bytes"]);
  EXPECT_DOUBLE_EQ(32.0 / 124, largest[0]["share"]);
  EXPECT_EQ("m.points", largest[1]["input"]);
  EXPECT_EQ("vec3f[2] 0 1 2 3 ...", largest[1]["value"]);
  EXPECT_EQ("c.keys", largest[2]["input"]);
  EXPECT_EQ(16, largest[2]["bytes"]);
  EXPECT_EQ("m.on", largest[9]["input"]);
}

TEST_F(StatsTest, InputsOfTheSameSizeAreInTheOrderOfTheScene) {
  write("a.vsa", "a n: .b = int32[2] {1 2}; .a = int32[2] {3 4};");
  const Json largest = json("a.vsa")["total"]["largestInputs"];
  ASSERT_EQ(2u, largest.size());
  EXPECT_EQ("n.b", largest[0]["input"]);
  EXPECT_EQ("n.a", largest[1]["input"]);
}

TEST_F(StatsTest, InputsWithoutBytesAreNotAmongTheLargest) {
  write("a.vsa", "a n: .b = float[0] {}; .c = byte[2] {1 2};");
  const Json largest = json("a.vsa")["total"]["largestInputs"];
  ASSERT_EQ(1u, largest.size());
  EXPECT_EQ("n.c", largest[0]["input"]);
}

TEST_F(StatsTest, CountsHaveCommas) {
  std::string text;
  for (int i = 0; i < 1234; ++i) text += "t n" + std::to_string(i) + ";\n";
  write("a.vsa", text);
  const std::string out = vsa("stats a.vsa").out;
  EXPECT_NE(std::string::npos, out.find(" 1,234 ")) << out;
  EXPECT_EQ(std::string::npos, out.find("1234")) << out;
}

TEST(QuantityTest, IsATextForPeople) {
  EXPECT_EQ("1,234,567", vsa_tools::countText(1234567));
  EXPECT_EQ("999 B", vsa_tools::sizeText(999));
  EXPECT_EQ("1.0 KB", vsa_tools::sizeText(1000));
  EXPECT_EQ("950.0 MB", vsa_tools::sizeText(950'000'000));
  EXPECT_EQ("100.0 %", vsa_tools::shareText(1, 1));
  EXPECT_EQ("-", vsa_tools::shareText(0, 0));
}

TEST_F(StatsTest, SumsSeveralFiles) {
  write("a.vsa", SCENE);
  write("b.vsa", "lamp sun: .power = 2.5;\n# three\n");
  const Json report = json("a.vsa b.vsa");
  EXPECT_EQ("a.vsa", report["files"][0]["name"]);
  EXPECT_EQ("complete", report["files"][1]["status"]);
  EXPECT_EQ(1, report["files"][1]["nodes"]);
  EXPECT_EQ(4, report["total"]["nodes"]);
  EXPECT_EQ(132, report["total"]["dataBytes"]);
  EXPECT_EQ(3, report["total"]["comments"]);
  const auto text = vsa("stats a.vsa b.vsa").out;
  EXPECT_NE(std::string::npos, text.find("\n  b.vsa ")) << text;
  const std::string files = text.substr(0, text.find("\n\n"));
  EXPECT_NE(std::string::npos, files.find("\n  all ")) << text;
}

TEST_F(StatsTest, PrintsTables) {
  write("a.vsa", SCENE);
  const auto run = vsa("stats a.vsa");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ("a.vsa: warning: Cannot assign nonexistent node nobody to other.gone.\n", run.err);
  for (const char* part :
       {"a.vsa\n\nText ", "Data          124 B, ", "Comments      2 (17 B)\n",
        "Links         2 made (1 references, 1 connections), 1 broken\n",
        "Longest path  c.keys[0].time (14 bytes)\n", "  mesh             2  66.7 %\n",
        "Inputs by type  of nodes  of objects  of arrays\n",
        "Buffers by element type  buffers  elements  size  share of data\n",
        "  Vec3f                        2         3  36 B         29.0 %\n",
        "  m.points      24 B         19.4 %  vec3f[2] 0 1 2 3 ...\n"}) {
    EXPECT_NE(std::string::npos, run.out.find(part)) << part << "\n" << run.out;
  }
}

TEST_F(StatsTest, TheTableOfInputsHasTheTypesOfTheFile) {
  write("a.vsa", "a n: .k = 1;");
  const std::string out = vsa("stats a.vsa").out;
  EXPECT_NE(std::string::npos, out.find("Inputs by type  of nodes  of objects  of arrays\n"
                                        "  Int                  1           0          0\n"
                                        "  all                  1           0          0\n"))
      << out;
}

TEST_F(StatsTest, OtherWarningsAreNoBrokenLinks) {
  write("a.vsa", "lamp a: .k = 1; .k = 2.5; .k = a; .l = none; .m |= a.b; # version: x\n");
  const auto run = vsa("stats a.vsa");
  EXPECT_NE(std::string::npos,
            run.out.find("Links         1 made (0 references, 1 connections), 2 broken\n"))
      << run.out;
}

TEST_F(StatsTest, ASourceThatIsNoOutputIsABrokenLink) {
  write("a.vsa", "lamp a: .k |= b.c.d;\n");
  const auto run = vsa("stats a.vsa");
  EXPECT_NE(std::string::npos,
            run.out.find("Links         0 made (0 references, 0 connections), 1 broken\n"))
      << run.out;
}

TEST_F(StatsTest, DamagedFilesAreCountedAsFarAsTheyWereRead) {
  write("bad.vsa", "lamp sun;\nlamp moon: .power = 2.5;\n42;\nlamp lost;\n");
  write("nul.vsa", std::string("lamp sun;\n# x\0y\n", 16));
  write("cut.vsa", "lamp sun; \"cut");
  write("wide.vsa", std::string("#\0 \0a\0\n\0", 8));
  for (const char* name : {"bad.vsa", "nul.vsa", "cut.vsa", "wide.vsa"}) {
    const auto run = vsa(std::string("stats --json ") + name);
    EXPECT_EQ(1, run.status) << name;
    EXPECT_NE(std::string::npos, run.err.find(": error: ")) << run.err;
    EXPECT_NE("complete", Json::parse(run.out)["files"][0]["status"]) << name;
  }
  EXPECT_EQ(2, Json::parse(vsa("stats --json bad.vsa").out)["total"]["nodes"]);
  EXPECT_TRUE(vsa("stats bad.vsa").out.starts_with("bad.vsa (stopped-by-error)\n"));
  const auto missing = vsa("stats missing.vsa bad.vsa");
  EXPECT_EQ(2, missing.status);
  EXPECT_TRUE(missing.err.starts_with("vsa: missing.vsa: No such file or directory\n"))
      << missing.err;
  EXPECT_EQ(0, vsa("stats - </dev/null").status);
}

TEST_F(StatsTest, NamesAreSafeForTerminals) {
  write("a.vsa",
        "\xC2\x9B"
        "2J n: .v = \"\x1B[2J\";\nlamp " +
            std::string(5000, 'x') + ": .k = 1;");
  const auto run = vsa("stats a.vsa");
  EXPECT_EQ(std::string::npos, run.out.find('\x1B'));
  EXPECT_EQ(std::string::npos, run.out.find("\xC2\x9B"));
  EXPECT_LT(run.out.size(), 2000u);
  const std::string report = vsa("stats --json a.vsa").out;
  EXPECT_EQ(1, Json::parse(report)["total"]["nodesByType"]["\xC2\x9B"
                                                           "2J"]);
  EXPECT_EQ(std::string::npos, report.find("\xC2\x9B"));
}

TEST_F(StatsTest, ALongLogIsCut) {
  std::string text = "lamp a: .k = 1;\n";
  for (int i = 0; i < 1500; ++i) text += ".k = 2.5;\n";
  write("a.vsa", text);
  const auto run = vsa("stats --max-diagnostics 1000 a.vsa");
  EXPECT_EQ(0, run.status);
  EXPECT_EQ(1001, std::count(run.err.begin(), run.err.end(), '\n'));
  EXPECT_TRUE(run.err.ends_with("and 500 more messages (--max-diagnostics N prints more)\n"));
}

// Messages after the first one that does not fit into 1 MiB are only counted, also shorter ones.
TEST_F(StatsTest, ALogThatIsTooLargeIsCut) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\nlamp " + std::string(1 << 20, 'b') +
                     ": .k = 1;\n.k = 2.5;\na.k = 2.5;\na.k = nobody;\n");
  const auto run = vsa("stats --full a.vsa");
  EXPECT_EQ(2, std::count(run.err.begin(), run.err.end(), '\n')) << run.err.size();
  EXPECT_TRUE(run.err.ends_with("and 3 more messages (--max-diagnostics N prints more)\n"));
}

// The command prints only one message because of its option. But it also prints the error that
// ended the reading.
TEST_F(StatsTest, ALongLogHasTheErrorThatEndedTheReading) {
  write("a.vsa", "lamp a: .k = 1;\n.k = 2.5;\n.k = 2.5;\n.k = 2.5;\n.k = ;\n");
  const auto run = vsa("stats --max-diagnostics 1 a.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_NE(std::string::npos, run.err.find("BAD TOKEN (5,6)")) << run.err;
  EXPECT_TRUE(run.err.ends_with("and 2 more messages (--max-diagnostics N prints more)\n"));
}

TEST_F(StatsTest, OutputThatCannotBeWritten) {
  write("a.vsa", SCENE);
  EXPECT_EQ(2, statusOf(VSA_COMMAND " stats a.vsa >/dev/full 2>stderr.txt"));
  EXPECT_NE(std::string::npos, content("stderr.txt").find("vsa: cannot write: "));
  EXPECT_EQ(2, vsa("stats").status);
  EXPECT_NE(std::string::npos, vsa("stats --help").out.find("Examples:"));
}

}  // namespace
