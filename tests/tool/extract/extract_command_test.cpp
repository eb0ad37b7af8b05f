// Tests of vsa extract: which nodes it writes, and that its text can be read without the original
// text.
#include "tests/tool/command_fixture.h"

namespace {

using vsa_tests::CommandOutcome;

constexpr char EXTRACTED_TEXT[] =
    "# scene\nsphere ball:\n  .material = clay;\n  .keys[1].at = sun;\nmaterial clay:\n"
    "  .map |= noise.out;\ntexture noise;\nlamp sun: .target = ball;\ncamera cam: .lookAt = "
    "ball;\n";

class ExtractCommandTest : public vsa_tests::CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    write("a.vsa", EXTRACTED_TEXT);
  }
};

TEST_F(ExtractCommandTest, WritesWhatANodeNeeds) {
  const CommandOutcome run = vsa("extract a.vsa clay");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, "# scene\n\nmaterial clay:\n  .map |= noise.out;\ntexture noise;\n");
}

TEST_F(ExtractCommandTest, FollowsLinksInCirclesAndArrays) {
  const std::string text = vsa("extract --no-header a.vsa ball").out;
  for (const char* node : {"sphere ball:", "lamp sun:", "material clay:", "texture noise;"}) {
    EXPECT_NE(text.find(node), std::string::npos) << text;
  }
  EXPECT_EQ(text.find("camera"), std::string::npos);
}

TEST_F(ExtractCommandTest, Without) {
  const CommandOutcome run = vsa("extract --no-header a.vsa --without 'cl*' --without sun ball");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            "sphere ball:\n  .material = null;\n  .keys[0] = {};\n  .keys[1].at = null;\n");
  EXPECT_EQ(vsa("extract --no-header a.vsa --without noise clay").out,
            "material clay:\n  .map |= null;\n");
}

TEST_F(ExtractCommandTest, Patterns) {
  EXPECT_EQ(vsa("extract --no-header a.vsa 'n*'").out, "texture noise;\n");
  EXPECT_EQ(vsa("extract --no-header a.vsa '*' | grep -c :").status, 0);
}

TEST_F(ExtractCommandTest, ReadsWithoutAWarning) {
  write("b.vsa",
        EXTRACTED_TEXT +
            std::string("# version: 1.5\n# version: 2\n# time: noon\n"
                        "t n: .a = []; .o.e = 1; .o.f = []; .o.g[1][0] = []; .h[0][0].i = [];\n"
                        "  .p = missing; .q |= x.y;"));
  for (const char* names : {"ball", "n", "'*'", "cam --without ball"}) {
    EXPECT_EQ(vsa(std::string("extract b.vsa -o c.vsa ") + names).status, 0) << names;
    const CommandOutcome check = vsa("check --strict c.vsa");
    EXPECT_EQ(check.status, 0) << names << check.err << content("c.vsa");
    EXPECT_TRUE(content("c.vsa").starts_with("# scene\n# version: 2\n# time: noon\n\n"));
  }
}

TEST_F(ExtractCommandTest, UsesTheOptionsOfTheWriter) {
  EXPECT_EQ(vsa("extract --no-header --full-paths --by-name a.vsa clay -o b.vsa").status, 0);
  EXPECT_EQ(content("b.vsa"), "material clay;\nclay.map |= noise.out;\ntexture noise;\n");
  EXPECT_EQ(statusOf(VSA_COMMAND " extract a.vsa noise >/dev/full 2>err.txt"), 2);
}

TEST_F(ExtractCommandTest, NamesWhatIsMissing) {
  const CommandOutcome run = vsa("extract a.vsa clay nosuch -o b.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "vsa: a.vsa: no node is named nosuch\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "b.vsa"));
}

TEST_F(ExtractCommandTest, DamagedFilesAndWrongUse) {
  write("bad.vsa", "t n; n.a = \"cut");
  const CommandOutcome run = vsa("extract bad.vsa n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("nothing was written"), std::string::npos);
  EXPECT_EQ(vsa("extract missing.vsa n").status, 2);
  EXPECT_EQ(vsa("extract a.vsa").status, 2);
  EXPECT_EQ(vsa("extract . n").status, 2);
}

}  // namespace
