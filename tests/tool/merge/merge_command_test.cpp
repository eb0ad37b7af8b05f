// Tests of vsa merge: the merged text, names that several texts use, and new names for them.
#include <nlohmann/json.hpp>
#include <string>

#include "tests/tool/command_fixture.h"

namespace {

using vsa_tests::CommandOutcome;

class MergeCommandTest : public vsa_tests::CommandFixture {
 protected:
  nlohmann::json nodesOf(const std::string& name) {
    return nlohmann::json::parse(vsa("dump " + name).out)["nodes"];
  }
  /// Returns the node "set" of a text.
  nlohmann::json setOf(const std::string& name) {
    return nlohmann::json::parse(vsa("dump --select set " + name).out)["nodes"];
  }
};

TEST_F(MergeCommandTest, KeepsEachText) {
  write("a.vsa", "# one\nt n: .x=1.50; # c\n");
  write("b.vsa", "# two\nu m;m.f=float[2]{1,2};m.l=n;");
  const CommandOutcome run = vsa("merge a.vsa b.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "# one\nt n:\n  .x = 1.50;  # c\n# two\nu m;\nm.f = float[2] {1 2};\nm.l = n;\n");
  EXPECT_EQ(vsa("merge a.vsa - -o c.vsa <b.vsa").status, 0);
  EXPECT_EQ(content("c.vsa"), run.out);
}

TEST_F(MergeCommandTest, NamesClashes) {
  write("a.vsa", "t n; t m; t o;");
  write("b.vsa", "t m; u n;");
  const CommandOutcome run = vsa("merge a.vsa b.vsa -o c.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "vsa: b.vsa: the node m is in a.vsa, too; --rename gives it another name\n"
            "vsa: b.vsa: the node n is in a.vsa, too; --rename gives it another name\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "c.vsa"));
}

TEST_F(MergeCommandTest, ANodeThatWasRemovedIsNoClash) {
  write("a.vsa", "t n: .x = 1;\nremove n;\nt m;\n");
  write("b.vsa", "t n: .x = 2;\n");
  for (const char* option : {"", "--rename "}) {
    const CommandOutcome run = vsa(std::string("merge a.vsa b.vsa -o c.vsa ") + option);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    const nlohmann::json nodes = nodesOf("c.vsa");
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[1]["name"], "n");
    EXPECT_EQ(nodes[1]["inputs"][0]["value"], 2);
  }
}

// In the merged text, the statements of the later text would change the node of the earlier text.
// Therefore the same name in both texts is a clash.
TEST_F(MergeCommandTest, ANodeThatIsRemovedLaterIsAClash) {
  write("a.vsa", "t n: .x = 1;");
  for (const char* text : {"t n: .x = 2; remove n;", "remove n;"}) {
    write("b.vsa", text);
    EXPECT_EQ(vsa("merge a.vsa b.vsa").status, 1) << text;
    EXPECT_EQ(vsa("merge --rename a.vsa b.vsa -o c.vsa").status, 0) << text;
    EXPECT_EQ(nodesOf("c.vsa"), nodesOf("a.vsa")) << text;
  }
}

// In the merged text, the link of the earlier text would refer to the node of the later text.
// Therefore the same name in both texts is a clash.
TEST_F(MergeCommandTest, ALinkToANodeThatWasRemovedMakesAClash) {
  write("a.vsa", "t n; t m: .l = n; remove n;");
  write("b.vsa", "t n;");
  EXPECT_EQ(vsa("merge a.vsa b.vsa").status, 1);
  EXPECT_EQ(vsa("merge --rename a.vsa b.vsa -o c.vsa").status, 0);
  EXPECT_EQ(nodesOf("c.vsa")[1]["name"], "n_2");
}

// Texts may share a node that each of them defines: the merged text assigns the same values to it
// twice.
TEST_F(MergeCommandTest, EqualDefinitionsAreNoClash) {
  write("a.vsa", "define set; with set: .unit = \"m\"; .size = vec2(1, 2); t n: .l = set;");
  const char* const equal[] = {
      "define set;\nset.unit = \"m\";  # metres\nset.size = vec2( 1 2 );", "DEFINE set;",
      "t m;\ndefine set;\nm.x = 1;\nwith set:\n  .unit = \"m\";\nm.y = 1;\n.size=vec2(1 2);"};
  for (const char* text : equal) {
    write("b.vsa", text);
    for (const char* command :
         {"merge a.vsa b.vsa -o c.vsa", "merge --rename b.vsa a.vsa -o c.vsa"}) {
      const CommandOutcome run = vsa(command);
      EXPECT_EQ(run.status, 0) << text;
      EXPECT_EQ(run.err, "") << text;
      EXPECT_EQ(setOf("c.vsa"), setOf("a.vsa")) << text;
    }
  }
}

TEST_F(MergeCommandTest, OtherDefinitionsAreAClash) {
  const char* const others[][2] = {
      {"define set; set.x = 1;", "define set; set.x = 2;"},
      {"define set; set.x = 1;", "define set; set.x = 1; set.y = 1;"},
      {"define set; set.x = 1; set.y = 2;", "define set; set.y = 2; set.x = 1;"},
      // An element would be appended twice.
      {"define set; set.x[*] = 1;", "define set; set.x[*] = 1;"},
      // A node with a type of its own, and one that is removed.
      {"define set;", "set set;"},
      {"t set;", "define set;"},
      {"define set;", "define set; remove set;"},
      {"define set;", "define set; remove set; define set;"},
  };
  for (const auto& [first, second] : others) {
    write("a.vsa", first);
    write("b.vsa", second);
    const CommandOutcome run = vsa("merge a.vsa b.vsa");
    EXPECT_EQ(run.status, 1) << second;
    EXPECT_EQ(run.err,
              "vsa: b.vsa: the node set is in a.vsa, too; --rename gives it another name\n");
    EXPECT_EQ(vsa("merge --rename a.vsa b.vsa").status, 0) << second;
  }
}

// An empty definition may be shared with any other. The first one that is not empty counts.
TEST_F(MergeCommandTest, EmptyDefinitionsAreNoClash) {
  write("a.vsa", "define set; t a: .l = set;");
  write("b.vsa", "define set; set.x[*] = 1;");
  write("c.vsa", "define set; t c: .l = set;");
  write("d.vsa", "define set; set.x = 2;");
  EXPECT_EQ(vsa("merge a.vsa b.vsa c.vsa -o all.vsa").status, 0);
  EXPECT_EQ(nodesOf("all.vsa")[0], nodesOf("b.vsa")[0]);
  EXPECT_EQ(vsa("merge a.vsa b.vsa c.vsa d.vsa").err,
            "vsa: d.vsa: the node set is in b.vsa, too; --rename gives it another name\n");
}

// A definition with a link to a node that is renamed is another definition, and so is one with a
// link to that definition.
TEST_F(MergeCommandTest, DefinitionsThatLinkToRenamedNodes) {
  write("a.vsa", "t eye; define cam; cam.eye |= eye.out; define set; set.cam = cam; define o;");
  EXPECT_EQ(vsa("merge --rename a.vsa a.vsa").err,
            "vsa: a.vsa: the node cam is renamed to cam_2\n"
            "vsa: a.vsa: the node eye is renamed to eye_2\n"
            "vsa: a.vsa: the node set is renamed to set_2\n");
  write("b.vsa", "define cam; cam.eye |= eye.out;");
  EXPECT_EQ(vsa("merge a.vsa b.vsa").status, 0);
  EXPECT_EQ(vsa("merge --rename b.vsa a.vsa b.vsa").err, "");
  write("e.vsa", "t eye;");
  // The cam of a.vsa is linked to eye_2, that of b.vsa to the node eye of e.vsa.
  EXPECT_EQ(vsa("merge --rename e.vsa a.vsa b.vsa").err,
            "vsa: a.vsa: the node eye is renamed to eye_2\n"
            "vsa: b.vsa: the node cam is renamed to cam_2\n");
}

// A new name must not be one to which a broken link of a text refers.
TEST_F(MergeCommandTest, NewNamesMakeNoLinks) {
  write("a.vsa", "t n; t a: .l = n_2;");
  write("b.vsa", "t n; t b: .l |= n_3.out;");
  EXPECT_EQ(vsa("merge --rename a.vsa b.vsa").err, "vsa: b.vsa: the node n is renamed to n_4\n");
  write("a.vsa", "t n; t a: .l = n_2; .m = n_3;");
  EXPECT_EQ(vsa("merge --rename a.vsa a.vsa").err,
            "vsa: a.vsa: the node a is renamed to a_2\n"
            "vsa: a.vsa: the node n is renamed to n_4\n");
}

TEST_F(MergeCommandTest, FoldersAndLists) {
  std::filesystem::create_directories(folder_ / "in");
  write("in/a.vsa", "t n;");
  write("in/b c.vsa", "t m;");
  EXPECT_EQ(vsa("merge in").out, "t n;\nt m;\n");
  EXPECT_EQ(
      statusOf("printf 'in/b c.vsa\\0in/a.vsa\\0' >list; " VSA_COMMAND " merge -0 @list >out.vsa"),
      0);
  EXPECT_EQ(content("out.vsa"), "t m;\nt n;\n");
  EXPECT_EQ(vsa("merge missing @missing").status, 2);
}

TEST_F(MergeCommandTest, RenamesEachUse) {
  write("a.vsa", "t n; t n_2; t vec3;");
  write("b.vsa",
        "t n: .n = n; .l |= n.n; u m: .n[0].n = n; n.n = vec3(1 2 3); m.x |= n.n; m.v = vec3;\n"
        "n m2; define q; t vec3; t d; remove d; with n: .z = n;\n# n = n;\nm.s = \"n\"; .l |= .n;");
  const CommandOutcome run = vsa("merge --rename a.vsa b.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err,
            "vsa: b.vsa: the node n is renamed to n_3\n"
            "vsa: b.vsa: the node vec3 is renamed to vec3_2\n");
  EXPECT_EQ(run.out,
            "t n;\nt n_2;\nt vec3;\n"
            "t n_3:\n  .n = n_3;\n  .l |= n_3.n;\nu m:\n  .n[0].n = n_3;\nn_3.n = vec3(1 2 3);\n"
            "m.x |= n_3.n;\nm.v = vec3_2;\nn m2;\ndefine q;\nt vec3_2;\nt d;\nremove d;\n"
            "with n_3:\n  .z = n_3;\n# n = n;\nm.s = \"n\";\n  .l |= .n;\n");
}

TEST_F(MergeCommandTest, RenamedNodesHaveTheSameContent) {
  write("a.vsa", "t n: .x = 1; .l = m; t m: .c |= n.out;");
  EXPECT_EQ(vsa("merge --rename a.vsa a.vsa a.vsa -o c.vsa").status, 0);
  nlohmann::json nodes = nodesOf("c.vsa");
  ASSERT_EQ(nodes.size(), 6U);
  EXPECT_EQ(nodes[0]["inputs"][0], nodes[2]["inputs"][0]);
  EXPECT_EQ(nodes[2]["name"], "n_2");
  EXPECT_EQ(nodes[2]["inputs"][1]["value"], "m_2");
  EXPECT_EQ(nodes[5]["inputs"][0]["connection"], "n_3.out");
}

TEST_F(MergeCommandTest, LongLists) {
  std::string text = "t n;n.f=float[400000]{";
  for (int i = 0; i < 400000; ++i) text += std::to_string(i) + ' ';
  write("a.vsa", text + "};");
  write("b.vsa", "t m;");
  EXPECT_EQ(vsa("merge b.vsa a.vsa -o c.vsa").status, 0);
  EXPECT_EQ(nodesOf("c.vsa")[1], nodesOf("a.vsa")[0]);
}

TEST_F(MergeCommandTest, MoreFilesThanAProcessMayOpen) {
  for (int i = 0; i < 100; ++i) {
    write("n" + std::to_string(i) + ".vsa", "t n" + std::to_string(i) + ";");
  }
  EXPECT_EQ(statusOf("ulimit -n 30; " VSA_COMMAND " merge n*.vsa -o all.vsa"), 0);
  EXPECT_EQ(nodesOf("all.vsa").size(), 100U);
}

TEST_F(MergeCommandTest, ReadsPipes) {
  write("a.vsa", "t n;");
  EXPECT_EQ(statusOf("mkfifo pipe; echo 't  m;' >pipe & " VSA_COMMAND " merge a.vsa pipe -o c.vsa"),
            0);
  EXPECT_EQ(content("c.vsa"), "t n;\nt m;\n");
}

TEST_F(MergeCommandTest, ATextThatIsTooLong) {
  write("a.vsa", "t n;" + std::string(2000, ' '));
  EXPECT_EQ(vsa("merge --max-text 1000 a.vsa").status, 1);
  write("b.vsa", "\xEF\xBB\xBFt n;\n");
  EXPECT_EQ(vsa("merge --max-text 5 b.vsa").status, 0);  // a byte order mark does not count
  EXPECT_EQ(vsa("merge --max-text 4 b.vsa").status, 1);
  EXPECT_EQ(statusOf("cat /dev/zero 2>err.txt | " VSA_COMMAND
                     " merge --max-text 1000 - >out.txt 2>err.txt"),
            1);
  EXPECT_EQ(content("out.txt").find("t n"), std::string::npos);
}

// The first text is changed before it is written. The command reads it before standard input. The
// pipe holds fewer bytes than are written to it: they are written when the first text was read.
TEST_F(MergeCommandTest, ATextThatChangesIsNamed) {
  constexpr const char* CHANGES[][2] = {
      {"echo 't changed;' >a.vsa", "the file has changed since it was read"},
      {"echo 't n;' >b.vsa; mv b.vsa a.vsa", "the file has changed since it was read"},
      {"rm a.vsa; mkfifo a.vsa", "the file has changed since it was read"},
      {"rm a.vsa", "No such file or directory"}};
  for (const auto& [change, problem] : CHANGES) {
    std::filesystem::remove(folder_ / "a.vsa");
    write("a.vsa", "t n;\n");
    EXPECT_EQ(statusOf(std::string("rm -f pipe; mkfifo pipe; ") + VSA_COMMAND +
                       " merge a.vsa - -o c.vsa <pipe 2>err.txt & merge=$!; exec 3>pipe; "
                       "head -c 200000 /dev/zero | tr '\\0' ' ' >&3; " +
                       change + "; exec 3>&-; wait $merge"),
              2)
        << change;
    EXPECT_EQ(content("err.txt"), std::string("vsa: a.vsa: ") + problem + '\n');
    EXPECT_FALSE(std::filesystem::exists(folder_ / "c.vsa"));
  }
}

TEST_F(MergeCommandTest, DamagedFilesAndWrongUse) {
  write("a.vsa", "t n;");
  for (const char* text : {"t m; m.x = \"cut", ".x = 1;", "t m; m.x = ;"}) {
    write("bad.vsa", text);
    const CommandOutcome run = vsa("merge a.vsa bad.vsa -o c.vsa");
    EXPECT_EQ(run.status, 1) << text;
    EXPECT_NE(run.err.find("nothing was written"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "c.vsa"));
  }
  EXPECT_EQ(vsa("merge a.vsa missing.vsa").status, 2);
  EXPECT_EQ(vsa("merge").status, 2);
  EXPECT_EQ(vsa("merge a.vsa -o no/such/folder").status, 2);
  EXPECT_EQ(statusOf(VSA_COMMAND " merge a.vsa >/dev/full 2>err.txt"), 2);
}

}  // namespace
