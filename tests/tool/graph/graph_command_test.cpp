// Tests of `vsa graph` with files, and of Graphviz with its output.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tool/command_fixture.h"

namespace {

size_t occurrences(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

class GraphTest : public vsa_tests::CommandFixture {
 protected:
  /// Returns what the command prints. Expects that it succeeds.
  std::string graph(const std::string& arguments) {
    const auto run = vsa("graph " + arguments);
    EXPECT_EQ(0, run.status) << run.err;
    return run.out;
  }

  void expectHas(const std::string& text, const std::string& part) {
    EXPECT_NE(std::string::npos, text.find(part)) << part << "\n" << text;
  }

  /// Returns a text of 10,000 nodes: 3 textures, 99 materials that are connected to a texture each,
  /// and meshes. Every second mesh refers to a material.
  std::string largeScene() {
    std::string text;
    for (int i = 0; i < 3; ++i) text += "texture t" + std::to_string(i) + ";\n";
    for (int i = 0; i < 99; ++i) {
      text += "material m" + std::to_string(i) + ": .map |= t" + std::to_string(i % 3) + ".out;\n";
    }
    for (int i = 0; i < 9898; ++i) {
      text += "mesh n" + std::to_string(i);
      text += i % 2 == 0 ? ": .material = m" + std::to_string(i % 99) + ";\n" : ";\n";
    }
    return text;
  }
};

TEST_F(GraphTest, DrawsEachNodeAndLinkOfASmallScene) {
  write("a.vsa",
        "lamp sun: .color |= dusk.out; sky dusk; sphere ball: .materials[*] = clay; .other = clay; "
        "material clay; .materials[*] = null;");
  const std::string dot = graph("a.vsa");
  expectHas(dot, "label=\"a.vsa: 4 nodes, 3 links\"");
  expectHas(dot, "  n0 [label=\"sun\\nlamp\", fillcolor=");
  expectHas(dot, "  n0 -> n1 [label=\"color\", penwidth=1.0, style=dashed];\n");
  expectHas(dot, "  n2 -> n3 [label=\"materials[], ... × 2\", penwidth=1.2];\n");
  EXPECT_EQ(2u, occurrences(dot, "->"));
}

TEST_F(GraphTest, ColoursAreThoseOfTypes) {
  write("a.vsa", "lamp a; lamp b; sky c;");
  const std::string dot = graph("a.vsa");
  const auto colour = [&](const std::string& node) {
    const size_t at = dot.find("fillcolor=", dot.find("  " + node + " ["));
    return dot.substr(at, dot.find(']', at) - at);
  };
  EXPECT_EQ(colour("n0"), colour("n1"));
  EXPECT_NE(colour("n0"), colour("n2"));
}

TEST_F(GraphTest, ReferencesAndConnectionsAreDifferentArrows) {
  write("a.vsa", "t a: .p = b; .q |= b.out; .r |= b.out; t b;");
  const std::string dot = graph("a.vsa");
  expectHas(dot,
            "  n0 -> n1 [label=\"p\", penwidth=1.0];\n"
            "  n0 -> n1 [label=\"q, ... × 2\", penwidth=1.2, style=dashed];\n");
}

TEST_F(GraphTest, GroupsNodesThatAreLinkedAlike) {
  write("a.vsa", largeScene());
  const std::string dot = graph("a.vsa");
  expectHas(dot, "label=\"a.vsa: 10000 nodes, 5048 links, 4 groups\"");
  expectHas(dot, "[label=\"3 × texture\\nt0, ...\"");
  expectHas(dot, "[label=\"99 × material\\nm0, ...\"");
  expectHas(dot, "[label=\"4949 × mesh\\nn0, ...\"");
  expectHas(dot, "[label=\"4949 × mesh\\nn1, ...\"");
  expectHas(dot, "[label=\"material × 4949\"");
  EXPECT_EQ(2u, occurrences(dot, "->"));
}

TEST_F(GraphTest, OnlyGroupsOfSeveralNodesHaveTwoLines) {
  write("a.vsa", largeScene() + "sky alone;");
  const std::string dot = graph("a.vsa");
  EXPECT_EQ(4u, occurrences(dot, ", peripheries=2];\n"));
  const size_t alone = dot.find("[label=\"alone\\nsky\"");
  ASSERT_NE(std::string::npos, alone) << dot;
  EXPECT_EQ(std::string::npos,
            dot.substr(alone, dot.find('\n', alone) - alone).find("peripheries"));
}

TEST_F(GraphTest, TheLimitBoundsNodesAndLinks) {
  std::string text;
  for (int i = 0; i < 300; ++i) {
    text += "type" + std::to_string(i) + " n" + std::to_string(i) + ":";
    for (int k = 1; k < 20; ++k) text += " .l[*] = n" + std::to_string(i * k % 300) + ";";
  }
  write("a.vsa", text);
  const std::string dot = graph("--limit 10 a.vsa");
  EXPECT_EQ(10u, occurrences(dot, "label=") - occurrences(dot, "->") - 1);
  EXPECT_LE(occurrences(dot, "->"), 30u);
  expectHas(dot, "291 nodes\\nof other types");
  expectHas(dot, "300 nodes, 5700 links, 10 groups");
  const std::string some = graph("--limit 299 a.vsa");
  expectHas(some, " links not drawn\"");
  EXPECT_EQ(3u * 299, occurrences(some, "->"));
  const std::string grouped = graph("a.vsa");
  EXPECT_EQ(40u, occurrences(grouped, "label=") - occurrences(grouped, "->") - 1);
  EXPECT_LE(occurrences(grouped, "->"), 120u);
  for (const char* bad : {"0", "-1", "10001", "x"}) {
    EXPECT_EQ(2, vsa(std::string("graph --limit ") + bad + " a.vsa").status) << bad;
  }
}

// Two groups may have six arrows, and this scene has seven with one link each.
TEST_F(GraphTest, OfArrowsWithEquallyManyLinksTheLastIsOmitted) {
  write("a.vsa",
        "s a: .p = a; .q |= b.out; .r = c; .s |= c.out;\n"
        "s b;\n"
        "t c: .p = a; .q |= a.out; .r = c;\n");
  const std::string dot = graph("--limit 2 a.vsa");
  expectHas(dot, "3 nodes, 7 links, 2 groups; 1 link not drawn\"");
  EXPECT_EQ(6u, occurrences(dot, "->"));
  EXPECT_EQ(0u, occurrences(dot, "n1 -> n1")) << dot;
}

// Each round puts the first and the last node of the rest of the chain into groups of their own.
TEST_F(GraphTest, NodesThatDifferFarAwayShareAGroup) {
  std::string text;
  for (int i = 1; i < 20; ++i) {
    text += "part n" + std::to_string(i) + ": .next = n" + std::to_string(i + 1) + ";\n";
  }
  write("a.vsa", text + "part n20;\n");
  const std::string dot = graph("--limit 19 a.vsa");
  expectHas(dot, "20 nodes, 19 links, 17 groups");
  expectHas(dot, "[label=\"4 × part\\nn9, ...\"");
}

TEST_F(GraphTest, GraphvizDrawsIt) {
  write("a.vsa", largeScene());
  const std::string svg = graph("--svg a.vsa");
  expectHas(svg, "<svg ");
  EXPECT_EQ(4u, occurrences(svg, "class=\"node\""));
  expectHas(svg, ">4949 × mesh</text>");
  EXPECT_EQ("", graph("--png a.vsa -o a.png"));
  EXPECT_TRUE(content("a.png").starts_with("\x89PNG\r\n"));
  EXPECT_EQ(2, vsa("graph --png --svg a.vsa").status);
}

TEST_F(GraphTest, WithoutGraphvizItSaysWhatIsMissing) {
  write("a.vsa", "lamp sun;");
  EXPECT_EQ(2,
            statusOf("PATH=/nowhere " VSA_COMMAND " graph --svg a.vsa >stdout.txt 2>stderr.txt"));
  EXPECT_EQ("", content("stdout.txt"));
  EXPECT_EQ(
      "vsa: --svg needs the program dot of Graphviz, which is not installed (on Debian: the "
      "package "
      "graphviz); without --svg the graph is written as DOT\n",
      content("stderr.txt"));
  EXPECT_EQ(0, statusOf("PATH=/nowhere " VSA_COMMAND " graph a.vsa >stdout.txt"));
}

TEST_F(GraphTest, AFailureOfGraphvizIsAnError) {
  write("a.vsa", "lamp sun;");
  write("dot", "#!/bin/sh\nexit 1\n");
  EXPECT_EQ(2,
            statusOf("chmod +x dot; PATH=.:$PATH " VSA_COMMAND " graph --svg a.vsa 2>stderr.txt"));
  EXPECT_EQ("vsa: dot failed\n", content("stderr.txt"));
}

TEST_F(GraphTest, NodesWithALinkAndNodesThatItLeadsToAreDifferentGroups) {
  std::string text;
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    text += "part from" + number + ": .next = to" + number + ";\npart to" + number + ";\n";
  }
  write("a.vsa", text);
  const std::string dot = graph("a.vsa");
  expectHas(dot, "200 nodes, 100 links, 2 groups");
  expectHas(dot, "[label=\"100 × part\\nfrom0, ...\"");
}

// The links of each node differ from those of the others, but three groups are too many.
TEST_F(GraphTest, AGroupIsNotSplitIntoTooManyGroups) {
  write("a.vsa", "part a: .next = b; part b: .next = c; part c;");
  expectHas(graph("--limit 2 a.vsa"), "3 nodes, 2 links, 1 group\"");
}

TEST_F(GraphTest, ALimitOfOneGroupsAllNodes) {
  write("a.vsa", "part a: .next = b; part b;");
  expectHas(graph("--limit 1 a.vsa"), "2 nodes, 1 link, 1 group\"");
  expectHas(graph("a.vsa"), "2 nodes, 1 link\"");
}

TEST_F(GraphTest, HostileNames) {
  const std::string name =
      "\xC2\x9B"
      "2J\xF0";
  write("a&amp;\"\\.vsa", name + " " + name + ": ." + std::string(5000, 'x') + " = " + name + ";");
  const std::string dot = graph("'a&amp;\"\\.vsa'");
  EXPECT_EQ(std::string::npos, dot.find("\xC2\x9B"));
  EXPECT_EQ(std::string::npos, dot.find('\xF0'));
  expectHas(dot, "label=\"a&amp;amp;\\\"\\\\\\\\.vsa: 1 node, 1 link\"");
  expectHas(dot, "\\\\u009b2J\\\\xf0");
  EXPECT_LT(dot.size(), 2000u);
  expectHas(graph("--svg 'a&amp;\"\\.vsa'"), ">\\u009b2J\\xf0</text>");
}

// A limit for the size of files stands for a full disk.
TEST_F(GraphTest, AFileThatCannotBeWrittenRemains) {
  write("a.vsa", largeScene());
  write("a.dot", "old");
  EXPECT_EQ(2, statusOf("trap '' XFSZ; ulimit -f 1; " VSA_COMMAND
                        " graph --limit 10000 a.vsa -o a.dot 2>/dev/null"));
  EXPECT_EQ("old", content("a.dot"));
  EXPECT_EQ(0, vsa("graph a.vsa -o a.dot").status);
  EXPECT_TRUE(content("a.dot").starts_with("digraph scene {"));
}

TEST_F(GraphTest, DamagedFilesAndFailures) {
  write("bad.vsa", "lamp sun;\n42;\nlamp lost;\n");
  const auto run = vsa("graph bad.vsa");
  EXPECT_EQ(1, run.status);
  expectHas(run.out, "bad.vsa: 1 node, 0 links");
  expectHas(run.err, "unrecognized token '42'");
  EXPECT_EQ(2, vsa("graph missing.vsa").status);
  EXPECT_EQ(1, vsa("graph --max-text 5 bad.vsa").status);
  write("a.vsa", "lamp sun;");
  EXPECT_EQ(2, vsa("graph a.vsa -o missing/a.dot").status);
  EXPECT_EQ(2, statusOf(VSA_COMMAND " graph a.vsa >/dev/full 2>stderr.txt"));
  expectHas(graph("- </dev/null"), "0 nodes, 0 links");
  expectHas(vsa("graph --help").out, "Examples:");
}

}  // namespace
