// Tests of the page of `vsa stats --html`.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/text.h"
#include "tests/tool/command_fixture.h"
#include "tools/vsa/common/embedded/embedded_files.h"

namespace {

class StatsPageTest : public vsa_tests::CommandFixture {
 protected:
  /// Returns the text between the two marks. Expects that it contains both marks.
  std::string between(const std::string& text, const std::string& begin, const std::string& end) {
    const size_t from = text.find(begin);
    EXPECT_NE(std::string::npos, from) << begin;
    const size_t start = from + begin.size();
    return text.substr(start, text.find(end, start) - start);
  }
};

TEST_F(StatsPageTest, ContainsTheReportAndAllThatItNeeds) {
  write("a.vsa", "mesh m: .points = vec3f[2] {0 1 2 3 4 5}; .name = \"abc\";");
  const auto run = vsa("stats --html a.vsa");
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_TRUE(run.out.starts_with("<!DOCTYPE html>"));
  EXPECT_TRUE(run.out.ends_with("</html>\n"));
  const auto report = nlohmann::json::parse(
      between(run.out, "<script type=\"application/json\" id=\"report\">", "</script>"));
  EXPECT_EQ(27, report["total"]["dataBytes"]);
  EXPECT_NE(std::string::npos, run.out.find("Chart.js v4"));
  EXPECT_EQ(std::string::npos, run.out.find("@REPORT@"));
  EXPECT_EQ(std::string::npos, run.out.find("@CHART_SCRIPT@"));
  for (const char* loading : {" src=", " href=", "@import", "fetch(", "sourceMappingURL"}) {
    EXPECT_EQ(std::string::npos, run.out.find(loading)) << loading;
  }
  EXPECT_NE(std::string::npos, run.out.find("content=\"default-src 'none'; "));
}

TEST_F(StatsPageTest, TextsOfTheSceneAreNoMarkup) {
  write("<b>.vsa", "lamp a: .v = \"</script><script>alert(1)</script><!--\";");
  const std::string page = vsa("stats --html '<b>.vsa'").out;
  EXPECT_EQ(std::string::npos, page.find("<script>alert"));
  EXPECT_EQ(std::string::npos, page.find("<b>.vsa"));
  const auto report = nlohmann::json::parse(
      between(page, "<script type=\"application/json\" id=\"report\">", "</script>"));
  EXPECT_EQ("<b>.vsa", report["files"][0]["name"]);
}

TEST_F(StatsPageTest, EmbeddedFilesAreTheFilesOfTheTree) {
  const auto fileOfTree = [](const std::string& name) {
    return vsa_tests::contentOf(VSA_TEST_DIR "/../tools/vsa/stats/" + name);
  };
  EXPECT_EQ(fileOfTree("page.html"), vsa_tools::pageTemplate());
  EXPECT_EQ(fileOfTree("vendor/chart.umd.min.js"), vsa_tools::chartScript());
}

TEST_F(StatsPageTest, WrongUsage) {
  write("a.vsa", "lamp sun;");
  EXPECT_EQ(2, vsa("stats --html --json a.vsa").status);
  EXPECT_EQ(2, statusOf(VSA_COMMAND " stats --html a.vsa >/dev/full 2>stderr.txt"));
  write("bad.vsa", "lamp sun; 42;");
  EXPECT_EQ(1, vsa("stats --html bad.vsa").status);
}

}  // namespace
