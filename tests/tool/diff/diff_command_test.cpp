// Tests of `vsa diff` with files.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/tool/command_fixture.h"

namespace {

class DiffTest : public vsa_tests::CommandFixture {
 protected:
  /// Returns what a comparison of two texts prints. Expects the exit status 0 if it prints nothing,
  /// and otherwise 1.
  std::string diff(const std::string& a, const std::string& b, const std::string& options = "") {
    write("a.vsa", a);
    write("b.vsa", b);
    const auto run = vsa("diff " + options + " a.vsa b.vsa");
    EXPECT_EQ(run.out.empty() ? 0 : 1, run.status) << run.err;
    return run.out;
  }
};

TEST_F(DiffTest, TheSameSceneInAnotherOrder) {
  EXPECT_EQ("", diff("# one\nlamp a: .k = 1; .l = b; .o.x = 1; .o.y = 2; lamp b;",
                     "# time: now\nlamp b; lamp a: .o.y = 2; .o.x = 1; .l = b; .k = 1;"));
  EXPECT_EQ("", diff("", ""));
}

TEST_F(DiffTest, NodesAddedRemovedRenamedRetyped) {
  EXPECT_EQ(
      "- box gone\n"
      "~ material clay -> mud\n"
      "~ ball: type sphere -> cube\n"
      "+ sky dawn\n",
      diff("box gone: .k = 1; material clay: .color = rgba(1 0 0 1); sphere ball: .m = clay;",
           "sky dawn; cube ball: .m = mud; material mud: .color = rgba(1 0 0 1);"));
}

TEST_F(DiffTest, RenamedNodesAreTheOnesWithTheSameLinks) {
  EXPECT_EQ("~ m a -> y\n~ m b -> x\n~ t t1 -> u1\n~ t t2 -> u2\n",
            diff("m a: .map = t1; m b: .map = t2; t t1: .file = \"1\"; t t2: .file = \"2\";",
                 "m x: .map = u2; m y: .map = u1; t u1: .file = \"1\"; t u2: .file = \"2\";"));
}

// The nodes that other nodes link to have the same content, so only the links tell them apart.
TEST_F(DiffTest, RenamedNodesAreTheOnesThatTheSameInputsLinkTo) {
  EXPECT_EQ("~ texture t1 -> v1\n~ texture t2 -> v2\n",
            diff("m a: .tex |= t1.out; m b: .tex |= t2.out; texture t1; texture t2;",
                 "texture v2; texture v1; m a: .tex |= v1.out; m b: .tex |= v2.out;"));
  EXPECT_EQ(
      "~ m a -> x\n~ m b -> y\n~ t t1 -> u1\n~ t t2 -> u2\n~ u v1 -> w1\n~ u v2 -> w2\n",
      diff(
          "m a: .k = 1; .t = t1; m b: .k = 2; .t = t2; t t1: .u = v1; t t2: .u = v2; u v1; u v2;",
          "u w2; u w1; t u2: .u = w2; t u1: .u = w1; m y: .k = 2; .t = u2; m x: .k = 1; .t = u1;"));
}

// The nodes of type c have the same content. The clips that they link to are told apart by other
// nodes.
TEST_F(DiffTest, RenamedNodesAreTheOnesThatLinkToTheSameNode) {
  EXPECT_EQ(
      "~ c a1 -> x1\n~ c a2 -> x2\n~ k b1 -> y1\n~ k b2 -> y2\n~ clip p1 -> q1\n~ clip p2 -> q2\n",
      diff("c a1: .p = p1; c a2: .p = p2; k b1: .i = 1; .p = p1; k b2: .i = 2; .p = p2; "
           "clip p1; clip p2;",
           "c x2: .p = q2; c x1: .p = q1; k y2: .i = 2; .p = q2; k y1: .i = 1; .p = q1; "
           "clip q2; clip q1;"));
}

// Both nodes of type s have the same content. The nodes of type c are in another order, so only
// their links tell which of them belong together.
TEST_F(DiffTest, RenamedNodesAreTheGroupsThatLinkToTheSameNode) {
  EXPECT_EQ(
      "~ s t1 -> u1\n~ s t2 -> u2\n~ c a1 -> x1\n~ c a2 -> x2\n~ c a3 -> x3\n"
      "~ c b1 -> y1\n~ c b2 -> y2\n~ c b3 -> y3\n",
      diff("s t1; s t2; c a1: .p = t1; c a2: .p = t1; c a3: .p = t1;"
           "c b1: .p = t2; c b2: .p = t2; c b3: .p = t2;",
           "s u1; s u2; c x1: .p = u1; c y1: .p = u2; c x2: .p = u1; c y2: .p = u2;"
           "c x3: .p = u1; c y3: .p = u2;"));
}

// All nodes have the same content. The pairs of the nodes that link to others are found first.
TEST_F(DiffTest, ARenamedNodeIsTheOneThatLinksLeadTo) {
  EXPECT_EQ("~ a n0 -> m0\n~ a n1 -> m1\n~ a n2 -> m2\n~ a n3 -> m3\n",
            diff("a n0; a n1; a n2: .p = n0; a n3: .p = n0;",
                 "a m1; a m0; a m2: .p = m0; a m3: .p = m0;"));
}

TEST_F(DiffTest, ARenamedChainInReverseOrder) {
  std::string a, b, shown;
  for (int i = 0; i < 9; ++i) {
    const std::string number = std::to_string(i), next = std::to_string(i + 1);
    a += "t x" + number + (i < 8 ? ": .n = x" + next + ";" : ";");
    b = "t y" + number + (i < 8 ? ": .n = y" + next + ";" : ";") + b;
    shown += "~ t x" + number + " -> y" + number + "\n";
  }
  EXPECT_EQ(shown, diff(a, b));
}

TEST_F(DiffTest, RenamedNodesAreTheOnesWithTheSameMembers) {
  EXPECT_EQ("~ a x -> u\n~ a y -> v\n",
            diff("a x: .o.k = 1; a y: .o.k = 2;", "a v: .o.k = 2; a u: .o.k = 1;"));
}

// x may be either of y and z, but not both.
TEST_F(DiffTest, ANodeIsRenamedOnce) {
  const std::string out =
      diff("r r: .p = x; .q = x; m x;", "r r: .p = y; .q = z; m y; m z;", "--ignore r");
  EXPECT_TRUE(out == "~ m x -> y\n+ m z\n" || out == "~ m x -> z\n+ m y\n") << out;
}

// The contents differ only in the node that three links lead to, and a longer chain must not change
// what is a pair.
TEST_F(DiffTest, RenamedChainsThatDifferAtTheirEnds) {
  const std::string a = "p a1: .n = a2; q a2: .n = a3; r a3: .n = a4; s a4: .k = 1;";
  const std::string b = "p b1: .n = b2; q b2: .n = b3; r b3: .n = b4; s b4: .k = 2;";
  const std::string shown = "- p a1\n- q a2\n- r a3\n- s a4\n+ p b1\n+ q b2\n+ r b3\n+ s b4\n";
  EXPECT_EQ(shown, diff(a, b));
  const std::string c = "t c1: .n = c2; t c2: .n = c3; t c3: .n = c4; t c4: .n = c5; t c5;";
  const std::string d = "t d1: .n = d2; t d2: .n = d3; t d3: .n = d4; t d4: .n = d5; t d5;";
  const std::string renamed =
      "~ t c1 -> d1\n~ t c2 -> d2\n~ t c3 -> d3\n~ t c4 -> d4\n~ t c5 -> d5\n";
  EXPECT_EQ(renamed + shown, diff(c + a, d + b));
}

TEST_F(DiffTest, ValuesOfEveryKind) {
  const struct {
    const char *a, *b, *shown;
  } rows[] = {
      {"1", "2", "n.v: 1 -> 2\n"},
      {"1", "1.0", "n.v: 1 (Int) -> 1.0 (Real)\n"},
      {"true", "false", "n.v: true -> false\n"},
      {"1u", "2u", "n.v: 1u -> 2u\n"},
      {"0.0", "-0.0", "n.v: 0.0 -> -0.0\n"},
      {"\"red\"", "\"reed\"", "n.v: \"red\" -> \"reed\"\n"},
      {"n", "other", "n.v: n -> other\n"},
      {"n", "null", "n.v: n -> null\n"},
      {"vec2(0 1)", "vec2(0 3)",
       "n.v: vec2(0 1) -> vec2(0 3): 1 number differs, the first at 1: 1 -> 3, largest deviation 2 "
       "at 1\n"},
      {"vec2(0 1)", "pos2(0 1)", "n.v: vec2(0 1) (Vec2) -> pos2(0 1) (Pos2)\n"},
      {"float[1] {1}", "double[1] {1}", "n.v: float[1] 1 -> double[1] 1\n"},
      {"float[1] {1}", "float[2] {1 2}", "n.v: float[1] 1 -> float[2] 1 2\n"},
      {"vec2f[3] {0 0 1 1 2 2}", "vec2f[3] {0 0 1 1.5 2 6}",
       "n.v: vec2f[3] 0 0 1 1 ... -> vec2f[3] 0 0 1 1.5 ...: 2 elements differ, the first at 1: "
       "(1 1) -> (1 1.5), largest deviation 4 at 2\n"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.shown, diff(std::string("a other; a n: .v = ") + row.a + ";",
                              std::string("a other; a n: .v = ") + row.b + ";"))
        << row.a;
  }
}

TEST_F(DiffTest, LongStringsAreShownWhereTheyDiffer) {
  EXPECT_EQ("n.v: byte 80: ...\"" + std::string(20, 'x') + "a\" -> byte 80: ...\"" +
                std::string(20, 'x') + "b\"\n",
            diff("a n: .v = \"" + std::string(100, 'x') + "a\";",
                 "a n: .v = \"" + std::string(100, 'x') + "b\";"));
  const std::string context(20, 'x');
  EXPECT_EQ("n.v: \"" + context + "a\" -> \"" + context + "b\"\n",
            diff("a n: .v = \"" + context + "a\";", "a n: .v = \"" + context + "b\";"));
  EXPECT_EQ("n.v: byte 1: ...\"" + context + "a\" -> byte 1: ...\"" + context + "b\"\n",
            diff("a n: .v = \"x" + context + "a\";", "a n: .v = \"x" + context + "b\";"));
}

TEST_F(DiffTest, ArraysAndObjects) {
  EXPECT_EQ(
      "n.keys: real[2] 1.0 2.0 -> real[3] 1.0 2.5 9.0: 1 element differs, the first at 1: 2.0 -> "
      "2.5, largest deviation 0.5 at 1\n"
      "n.objs[0].b: added 2\n"
      "n.objs[1]: removed {1 member}\n"
      "n.o.x: 1 -> 2\n"
      "n.o.z: removed true\n"
      "n.links[0]: n -> m\n"
      "n.new: added vec2(1 2)\n",
      diff("a m; a n: .keys[*] = 1.0; .keys[*] = 2.0; .objs[*].a = 1; .objs[*].a = 2; .o.x = 1; "
           ".o.z "
           "= true; .links[*] = n;",
           "a m; a n: .keys[*] = 1.0; .keys[*] = 2.5; .keys[*] = 9.0; .objs[*].a = 1; .objs[0].b = "
           "2; .o.x = 2; .links[*] = m; .new = vec2(1 2);"));
}

TEST_F(DiffTest, AnEscapeDiffersFromABackslash) {
  EXPECT_EQ("n.s: \"a\\u200bc\" -> \"a\\\\u200bc\"\n",
            diff("a n: .s = \"a\\u200bc\";", "a n: .s = \"a\\\\u200bc\";"));
}

TEST_F(DiffTest, ElementsThatAreNoNumbers) {
  EXPECT_EQ(
      "n.k: string[3] \"x\" \"y\" \"z\" -> string[3] \"x\" \"Y\" \"z\": 1 element differs, the "
      "first at 1: \"y\" -> \"Y\"\n",
      diff("a n: .k[0] = \"x\"; .k[1] = \"y\"; .k[2] = \"z\";",
           "a n: .k[0] = \"x\"; .k[1] = \"Y\"; .k[2] = \"z\";"));
}

TEST_F(DiffTest, Connections) {
  EXPECT_EQ(
      "n.a |= m.out -> m.other\n"
      "n.b |= m.out -> none\n"
      "n.c |= none -> m.out\n"
      "n.k[0] |= none -> m.out\n",
      diff("a m; a n: .a |= m.out; .b = 1; .b |= m.out; .c = 2; .k[*] = 1;",
           "a m; a n: .a |= m.other; .b = 1; .c = 2; .c |= m.out; .k[*] = 1; .k[0] |= m.out;"));
  const std::string without = "a m; a n;", with = "a m; a n: .a |= m.out; .b = 1; .b |= m.out;";
  EXPECT_EQ("n.a: added m.out\nn.b: added 1 |= m.out\n", diff(without, with));
  EXPECT_EQ("n.a: removed m.out\nn.b: removed 1 |= m.out\n", diff(with, without));
}

TEST_F(DiffTest, Tolerances) {
  const std::string a = "a n: .v = 100.0; .t = vec2(1 2); .b = float[2] {1 100}; .k[*] = 1.0;";
  const std::string b = "a n: .v = 100.5; .t = vec2(1 2.5); .b = float[2] {1.5 101}; .k[*] = 1.5;";
  EXPECT_EQ("", diff(a, b, "--tolerance 1"));
  EXPECT_EQ(
      "n.b: float[2] 1 100 -> float[2] 1.5 101: 1 element differs, the first at 1: 100 -> 101, "
      "largest deviation 1 at 1\n",
      diff(a, b, "--tolerance 0.5"));
  EXPECT_EQ("", diff(a, b, "--tolerance 0.5 --relative 0.01"));
  EXPECT_EQ("", diff(a, b, "--relative 0.4"));
  for (const char* bad :
       {"--tolerance -1", "--tolerance nan", "--relative NaN", "--relative x", "--tolerance"}) {
    EXPECT_EQ(2, vsa(std::string("diff ") + bad + " a.vsa b.vsa").status) << bad;
  }
  const std::string negative = vsa("diff --tolerance -1 a.vsa b.vsa").err;
  EXPECT_NE(std::string::npos, negative.find("a negative number")) << negative;
  const std::string notANumber = vsa("diff --tolerance nan a.vsa b.vsa").err;
  EXPECT_NE(std::string::npos, notANumber.find("not a number")) << notANumber;
}

// Two NaN differ if their signs do, so the sign is shown.
TEST_F(DiffTest, SignsOfNan) {
  EXPECT_EQ("n.b: float[1] nan -> float[1] -nan: 1 element differs, the first at 0: nan -> -nan\n",
            diff("a n: .b = float[1] {nan};", "a n: .b = float[1] {-nan};"));
}

TEST_F(DiffTest, IgnoredNodesAndInputs) {
  const std::string a = "a n: .time = 1; .o.time = 1; .v = 1; b tmp1: .x = 1; c old: .time = 1;";
  const std::string b = "a n: .time = 2; .o.time = 2; .v = 2; b tmp2: .x = 2; c new: .time = 2;";
  EXPECT_EQ("n.v: 1 -> 2\n~ c old -> new\n", diff(a, b, "--ignore '*.time' --ignore 'tmp*'"));
  EXPECT_EQ("", diff(a, b, "--ignore '*'"));
  EXPECT_EQ("n.v: 1 -> 2\n",
            diff("a n: .v = 1; .x.y = 1;", "a n: .v = 2; .x.z = 1;", "--ignore 'n.x*'"));
  // Everything inside an ignored input is ignored, too.
  EXPECT_EQ("~ a n -> m\n", diff("a n: .o.x = 1;", "a m: .o.x = 2;", "--ignore '*.o'"));
}

TEST_F(DiffTest, Json) {
  write("a.vsa", "a n: .v = 1.0; .p = vec2f[1] {1 2}; b old: .x = 1;");
  write("b.vsa", "a n: .v = 2.0; .p = vec2f[1] {1 4}; b new: .x = 1;");
  const auto run = vsa("diff --json a.vsa b.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_EQ(nlohmann::json::parse(R"({"a": "a.vsa", "b": "b.vsa", "same": false, "differences": [
      {"kind": "value", "nodeA": "n", "nodeB": "n", "input": "v", "a": "1.0", "b": "2.0"},
      {"kind": "value", "nodeA": "n", "nodeB": "n", "input": "p", "a": "vec2f[1] 1 2",
       "b": "vec2f[1] 1 4", "list": {"countA": 1, "countB": 1, "differing": 1, "first": 0,
       "largestDeviation": 2.0, "largestAt": 0}},
      {"kind": "node-renamed", "nodeA": "old", "nodeB": "new"}]})"),
            nlohmann::json::parse(run.out));
  write("c.vsa", "lamp a: .f = float[1] {inf};");
  write("d.vsa", "lamp a: .f = float[1] {1};");
  const auto infinite = nlohmann::json::parse(vsa("diff --json c.vsa d.vsa").out);
  EXPECT_EQ("inf", infinite["differences"][0]["list"]["largestDeviation"]);
  const auto same = vsa("diff --json a.vsa a.vsa");
  EXPECT_EQ(0, same.status);
  EXPECT_EQ("{\"a\":\"a.vsa\",\"b\":\"a.vsa\",\"differences\":[],\"same\":true}\n", same.out);
}

TEST_F(DiffTest, JsonNamesTheKindsOfNodeDifferences) {
  write("a.vsa", "a gone: .x = 1; a kept; a same;");
  write("b.vsa", "a made: .x = 2; b kept; a same;");
  EXPECT_EQ(nlohmann::json::parse(R"([
      {"kind": "node-removed", "nodeA": "gone"},
      {"kind": "node-type", "nodeA": "kept", "nodeB": "kept", "a": "a", "b": "b"},
      {"kind": "node-added", "nodeB": "made"}])"),
            nlohmann::json::parse(vsa("diff --json a.vsa b.vsa").out)["differences"]);
}

TEST_F(DiffTest, JsonNamesTheKindsOfInputDifferences) {
  write("a.vsa", "a m; a n: .x = 1; .z = 1; .z |= m.out;");
  write("b.vsa", "a m; a n: .y = 2; .z = 1;");
  EXPECT_EQ(nlohmann::json::parse(R"([
      {"kind": "input-removed", "nodeA": "n", "nodeB": "n", "input": "x", "a": "1"},
      {"kind": "connection", "nodeA": "n", "nodeB": "n", "input": "z", "a": "m.out", "b": "none"},
      {"kind": "input-added", "nodeA": "n", "nodeB": "n", "input": "y", "b": "2"}])"),
            nlohmann::json::parse(vsa("diff --json a.vsa b.vsa").out)["differences"]);
}

TEST_F(DiffTest, TroubleIsTwo) {
  write("good.vsa", "lamp sun: .k = 1;\n");
  write("bad.vsa", "lamp sun: .k = 1;\n42;\n");
  write("nul.vsa", std::string("lamp sun;\n# x\0y\n", 16));
  for (const char* files : {"good.vsa bad.vsa", "bad.vsa good.vsa", "nul.vsa good.vsa",
                            "good.vsa missing.vsa", "good.vsa", "a b c", "- - <good.vsa"}) {
    const auto run = vsa(std::string("diff ") + files);
    EXPECT_EQ(2, run.status) << files;
    EXPECT_EQ("", run.out) << files;
    EXPECT_NE("", run.err) << files;
  }
  write("other.vsa", "lamp sun: .k = 2;\n");
  EXPECT_EQ(2, statusOf(VSA_COMMAND " diff good.vsa other.vsa >/dev/full 2>stderr.txt"));
  EXPECT_EQ(2, vsa("diff --max-text 5 good.vsa good.vsa").status);
  EXPECT_EQ(0, vsa("diff - good.vsa <good.vsa").status);
  EXPECT_NE(std::string::npos, vsa("diff --help").out.find("Examples:"));
}

TEST_F(DiffTest, NamesAreSafeForTerminals) {
  const std::string name(5000, 'x');
  const std::string out = diff(
      "\xC2\x9B"
      "2J n: .v = \"\x1B[2J\"; lamp " +
          name + ";",
      "lamp n: .v = \"\x1B[3J\"; lamp m: ." + name + " = 1;");
  EXPECT_EQ(std::string::npos, out.find('\x1B'));
  EXPECT_EQ(std::string::npos, out.find("\xC2\x9B"));
  EXPECT_LT(out.size(), 1000u);
  const std::string json = vsa("diff --json a.vsa b.vsa").out;
  EXPECT_TRUE(nlohmann::json::accept(json));
  EXPECT_EQ(std::string::npos, json.find("\xC2\x9B"));
}

// The links of 20,000 nodes form a cycle. In the other file, each node has another name.
TEST_F(DiffTest, ManyRenamedNodesInACircle) {
  const auto circle = [](const std::string& prefix) {
    std::string text;
    for (int i = 0; i < 20000; ++i) {
      text += "a " + prefix + std::to_string(i) + ": .v = " + std::to_string(i) +
              "; .k = " + prefix + std::to_string((i + 1) % 20000) + ";\n";
    }
    return text;
  };
  const std::string out = diff(circle("a"), circle("b"));
  EXPECT_EQ(20000, std::count(out.begin(), out.end(), '\n'));
  EXPECT_TRUE(out.starts_with("~ a a0 -> b0\n~ a a1 -> b1\n")) << out.substr(0, 100);
}

/// A fixture with a git repository. It has one scene, which was changed after it was committed.
class GitDiffTest : public DiffTest {
 protected:
  void SetUp() override {
    DiffTest::SetUp();
    write("setup.sh", "set -e\nexport HOME=$PWD\nPATH=$(dirname " VSA_COMMAND
                      "):$PATH\n"
                      "git init -q .\n"
                      "git config user.email someone@example.com; git config user.name Someone\n"
                      "echo '*.vsa diff=vsa' >.gitattributes\n");
    write("scene.vsa", "lamp sun: .k = 1;\nsky dusk;\n");
    EXPECT_EQ(0, statusOf(". ./setup.sh; git add -A; git commit -qm one"));
    write("scene.vsa", "sky dusk;\nlamp sun: .k = 2;\n");
  }

  std::string git(const std::string& commands) {
    EXPECT_EQ(0, statusOf("( . ./setup.sh; " + commands + " ) >stdout.txt 2>stderr.txt"))
        << content("stderr.txt");
    EXPECT_EQ("", content("stderr.txt"));
    return content("stdout.txt");
  }
};

// The tests below try the two recipes of docs/commands.md.
TEST_F(GitDiffTest, AsAnExternalDiff) {
  const std::string configured =
      "git config diff.vsa.command 'f() { echo \"vsa diff $1\"\n  vsa diff \"$2\" \"$5\" || "
      "test $? -eq 1 || diff -u \"$2\" \"$5\" || :; }; f'; ";
  EXPECT_EQ("vsa diff scene.vsa\nsun.k: 1 -> 2\n", git(configured + "git diff scene.vsa"));
  write("scene.vsa", "lamp sun: .k = ;\nsky dusk;\n");
  EXPECT_EQ(0, statusOf("( . ./setup.sh; git diff scene.vsa ) >stdout.txt 2>stderr.txt"));
  const std::string damaged = content("stdout.txt");
  EXPECT_NE(std::string::npos, damaged.find("\n-lamp sun: .k = 1;\n+lamp sun: .k = ;\n"))
      << damaged;
  EXPECT_EQ(0, statusOf(". ./setup.sh; git rm -qf scene.vsa"));
  EXPECT_EQ("vsa diff scene.vsa\n- lamp sun\n- sky dusk\n", git("git diff HEAD -- scene.vsa"));
}

TEST_F(GitDiffTest, AsATextConversion) {
  const std::string shown =
      git("git config diff.vsa.textconv "
          "'f() { vsa convert --by-name --full-paths \"$1\" || cat \"$1\"; }; f'; "
          "git diff -U0 scene.vsa");
  EXPECT_NE(std::string::npos, shown.find("\n-sun.k = 1;\n+sun.k = 2;\n")) << shown;
  EXPECT_EQ(std::string::npos, shown.find("dusk;\n")) << shown;
  write("scene.vsa", "lamp sun: .k = ;\nsky dusk;\n");
  EXPECT_EQ(0, statusOf("( . ./setup.sh; git diff scene.vsa ) >stdout.txt 2>stderr.txt"));
  EXPECT_NE(std::string::npos, content("stdout.txt").find("\n+lamp sun: .k = ;\n"));
}

}  // namespace
