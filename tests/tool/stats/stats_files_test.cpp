// Tests of `vsa stats` with many files.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/tool/command_fixture.h"

namespace {

using Json = nlohmann::json;

class StatsFilesTest : public vsa_tests::CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    std::filesystem::create_directories(folder_ / "scenes/inner");
    for (int i = 0; i < 20; ++i) {
      const std::string number = std::to_string(i + 10);
      write("scenes/" + number + ".vsa", "lamp a" + number + ": .k = 1; .gone = nobody;\n");
    }
    write("scenes/inner/x.vsa", "sky x;\n");
    write("scenes/note.txt", "no scene");
  }
};

TEST_F(StatsFilesTest, AFolderGivesTotalsAndATableOfFiles) {
  const auto run = vsa("stats --json scenes");
  EXPECT_EQ(0, run.status) << run.err;
  const Json report = Json::parse(run.out);
  ASSERT_EQ(21u, report["files"].size());
  EXPECT_EQ("scenes/10.vsa", report["files"][0]["name"]);
  EXPECT_EQ(Json({{"lamp", 20}, {"sky", 1}}), report["total"]["nodesByType"]);
  EXPECT_EQ(20, report["total"]["links"]["broken"]);
  double seconds = 0;
  for (const Json& file : report["files"]) seconds += file["seconds"].get<double>();
  EXPECT_DOUBLE_EQ(seconds, report["total"]["seconds"].get<double>());
  const std::string table = vsa("stats scenes").out;
  EXPECT_TRUE(table.starts_with("Files ")) << table;
  EXPECT_NE(std::string::npos, table.find("\n  scenes/inner/x.vsa ")) << table;
  EXPECT_NE(std::string::npos, table.find("20 broken\n")) << table;
}

TEST_F(StatsFilesTest, SeveralThreadsPrintTheSame) {
  const auto one = vsa("stats --json scenes");
  for (const char* jobs : {"-j 4", "-j 0", "--jobs 100"}) {
    const auto many = vsa(std::string("stats --json ") + jobs + " scenes");
    EXPECT_EQ(one.err, many.err) << jobs;
    Json a = Json::parse(one.out), b = Json::parse(many.out);
    for (Json* report : {&a, &b}) {
      report->erase("peakMemoryBytes");
      (*report)["total"].erase("seconds");
      for (Json& file : (*report)["files"]) file.erase("seconds");
    }
    EXPECT_EQ(a, b) << jobs;
  }
  EXPECT_EQ(2, vsa("stats -j -1 scenes").status);
}

TEST_F(StatsFilesTest, NamesFromAList) {
  write("list", std::string("scenes/10.vsa\0scenes/11.vsa\0", 28));
  EXPECT_EQ(2u, Json::parse(vsa("stats --json -0 @list").out)["files"].size());
  write("lines", "scenes/10.vsa\nscenes/inner\n");
  EXPECT_EQ(2u, Json::parse(vsa("stats --json @lines").out)["files"].size());
  EXPECT_EQ(2, vsa("stats @missing scenes").status);
}

TEST_F(StatsFilesTest, TheWorstFileGivesTheStatus) {
  write("scenes/bad.vsa", "lamp sun;\n42;\n");
  EXPECT_EQ(1, vsa("stats -j 3 scenes").status);
  EXPECT_EQ(2, vsa("stats -j 3 scenes missing.vsa").status);
}

}  // namespace
