// Tests of `vsa tree` with files.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tool/command_fixture.h"

namespace {

class TreeTest : public vsa_tests::CommandFixture {
 protected:
  /// Returns what the command prints. Expects that it succeeds.
  std::string tree(const std::string& arguments) {
    const auto run = vsa("tree " + arguments);
    EXPECT_EQ(0, run.status) << run.err;
    return run.out;
  }
};

const char TREE_SCENE[] =
    "camera cam: .lookAt = ball; .position = pos3(0 1.5 6);\n"
    "lamp sun: .color |= dusk.outColor; .power = 2.5;\n"
    "sky dusk;\n"
    "material clay: .map = noise; .color = rgba(1 0 0 1);\n"
    "sphere ball: .material = clay; .keys[*].at = 1.0;\n"
    "box box1: .material = clay; .points = vec3f[2] {0 1 2 3 4 5};\n"
    "texture noise: .file = \"n.png\";\n";

TEST_F(TreeTest, ShowsTheLinksOfEachNodeOnce) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ(
      "cam (camera)\n"
      "└─ .lookAt = ball (sphere)\n"
      "   └─ .material = clay (material)\n"
      "      └─ .map = noise (texture)\n"
      "sun (lamp)\n"
      "└─ .color |= dusk.outColor (sky)\n"
      "box1 (box)\n"
      "└─ .material = clay (material) (shown above)\n",
      tree("a.vsa"));
}

TEST_F(TreeTest, ShowsInputs) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ(
      "ball (sphere)\n"
      "├─ .material = clay (material)\n"
      "│  ├─ .map = noise (texture)\n"
      "│  │  └─ .file = \"n.png\"\n"
      "│  └─ .color = rgba(1 0 0 1)\n"
      "├─ .keys = object[1]\n"
      "└─ .keys[0].at = 1.0\n"
      "box1 (box)\n"
      "├─ .material = clay (material) (shown above)\n"
      "└─ .points = vec3f[2] 0 1 2 3 ...\n",
      tree("--inputs --name 'b*' a.vsa"));
}

TEST_F(TreeTest, ShowsTheValuesOfConnectedInputs) {
  write("a.vsa", "a n: .v = 1; .v |= m.out; .w |= m.out; a m;");
  EXPECT_EQ("n (a)\n├─ .v = 1\n├─ .v |= m.out (a)\n└─ .w |= m.out (a)\n", tree("--inputs a.vsa"));
}

TEST_F(TreeTest, BeginsAtNamesAndTypes) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ("clay (material)\n└─ .map = noise (texture)\n", tree("--type mat* a.vsa"));
  EXPECT_EQ("dusk (sky)\nnoise (texture)\n", tree("--type sky --type texture a.vsa"));
  EXPECT_EQ("sun (lamp)\n└─ .color |= dusk.outColor (sky)\n",
            tree("--type lamp --name 's?n' a.vsa"));
  const auto none = vsa("tree --type lamp --name dusk a.vsa");
  EXPECT_EQ(1, none.status);
  EXPECT_EQ("vsa: a.vsa: no node has such a name and type\n", none.err);
}

TEST_F(TreeTest, ARootShownBelowAnotherIsNotShownAgain) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ(
      "clay (material)\n└─ .map = noise (texture)\nball (sphere)\n"
      "└─ .material = clay (material) (shown above)\n",
      tree("--name clay --name ball a.vsa"));
  write("b.vsa", "a x: .k = y; a y: .k = z; a z;");
  EXPECT_EQ("x (a)\n└─ .k = y (a)\n   └─ .k = z (a)\n", tree("--name x --name y b.vsa"));
}

TEST_F(TreeTest, MarksCircles) {
  write("a.vsa", "a x: .k = y; a y: .k = x; .self = y; a lone: .k |= lone.out;");
  EXPECT_EQ(
      "x (a)\n"
      "└─ .k = y (a)\n"
      "   ├─ .k = x (a) (circle)\n"
      "   └─ .self = y (a) (circle)\n"
      "lone (a)\n"
      "└─ .k |= lone.out (a) (circle)\n",
      tree("a.vsa"));
}

TEST_F(TreeTest, StopsAtADepth) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ(
      "cam (camera)\n└─ .lookAt = ball (sphere) ...\n"
      "sun (lamp)\n└─ .color |= dusk.outColor (sky)\n"
      "box1 (box)\n└─ .material = clay (material) ...\n",
      tree("--depth 1 a.vsa"));
  EXPECT_EQ("cam (camera) ...\nsun (lamp) ...\nbox1 (box) ...\n", tree("--depth 0 a.vsa"));
  EXPECT_EQ(tree("--depth 9 a.vsa"), tree("--depth 18446744073709551615 a.vsa"));
  EXPECT_EQ(2, vsa("tree --depth -1 a.vsa").status);
}

// z is three links below root, by root.x, and five by root.a.
TEST_F(TreeTest, EachNodeWithinTheDepthIsShown) {
  write("a.vsa",
        "t root: .a = a; .x = x; t a: .x = x; t x: .y = y; t y: .z = z; t z: .w = w; t w;");
  EXPECT_EQ(
      "root (t)\n"
      "├─ .a = a (t)\n"
      "│  └─ .x = x (t) (shown below)\n"
      "└─ .x = x (t)\n"
      "   └─ .y = y (t)\n"
      "      └─ .z = z (t) ...\n",
      tree("--depth 3 a.vsa"));
  EXPECT_EQ(
      "root (t)\n"
      "├─ .a = a (t)\n"
      "│  └─ .x = x (t)\n"
      "│     └─ .y = y (t)\n"
      "│        └─ .z = z (t)\n"
      "│           └─ .w = w (t)\n"
      "└─ .x = x (t) (shown above)\n",
      tree("a.vsa"));
}

TEST_F(TreeTest, ElidesElements) {
  std::string text = "a x: ";
  for (int i = 0; i < 30; ++i) text += ".keys[*].at = " + std::to_string(i) + ".0;";
  write("a.vsa", text + ".keys[20].to = y; a y;");
  const std::string out = tree("--inputs a.vsa");
  EXPECT_NE(std::string::npos, out.find("├─ .keys[9].at = 9.0\n├─ .keys: 20 more elements\n└─ "
                                        ".keys[20].to = y (a)\n"))
      << out;
}

TEST_F(TreeTest, ALongChainGivesLinesOfBoundedLength) {
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text += "a n" + std::to_string(i) + ": .k = n" + std::to_string(i + 1) + ";\n";
  }
  write("a.vsa", text + "a n100000;");
  const std::string out = tree("a.vsa");
  EXPECT_EQ(100001, std::count(out.begin(), out.end(), '\n'));
  EXPECT_NE(std::string::npos, out.find("[100000] "));
  EXPECT_LT(out.size(), 100001u * 180);
}

TEST_F(TreeTest, DamagedFilesAreShownAsFarAsTheyWereRead) {
  write("bad.vsa", "lamp sun: .k = 1;\n42;\nlamp lost;\n");
  const auto run = vsa("tree bad.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("sun (lamp)\n", run.out);
  EXPECT_NE(std::string::npos, run.err.find("unrecognized token '42'")) << run.err;
  EXPECT_EQ(2, vsa("tree missing.vsa").status);
  EXPECT_EQ(1, vsa("tree --max-text 5 bad.vsa").status);
  EXPECT_EQ("", tree("- </dev/null"));
}

TEST_F(TreeTest, NamesAreSafeForTerminals) {
  write("a.vsa",
        "\xC2\x9B"
        "2J n: .v = \"\x1B[2J\";\nlamp " +
            std::string(5000, 'x') + ": ." + std::string(5000, 'y') + " = n;");
  const auto run = vsa("tree -i a.vsa");
  EXPECT_EQ(std::string::npos, run.out.find('\x1B'));
  EXPECT_EQ(std::string::npos, run.out.find("\xC2\x9B"));
  EXPECT_LT(run.out.size(), 1000u);
}

TEST_F(TreeTest, WrongUsage) {
  write("a.vsa", TREE_SCENE);
  EXPECT_EQ(2, statusOf(VSA_COMMAND " tree a.vsa >/dev/full 2>stderr.txt"));
  EXPECT_NE(std::string::npos, content("stderr.txt").find("vsa: cannot write: "));
  EXPECT_EQ(2, vsa("tree").status);
  EXPECT_EQ(2, vsa("tree a.vsa b.vsa").status);
  EXPECT_NE(std::string::npos, vsa("tree --help").out.find("Examples:"));
}

}  // namespace
