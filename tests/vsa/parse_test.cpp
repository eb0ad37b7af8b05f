// Tests of the entry points: the header, a null scene, exceptions, texts that do not affect each
// other, byte order marks, the locales of hosts, and the report.
#include <vsa/parse.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <vsa/model/scene.h>
#include <vsa/scene/file_version.h>
#include "tests/support/byte_source.h"
#include "tests/support/disk_file.h"
#include "tests/support/host_locale.h"
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"
#include "tools/scene_text/scene_dump.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::DiskFile;
using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::memoryFile;
using vsa_tests::string;
using vsa_tests::text;
using Lines = std::vector<std::string>;

TEST(EntryPoints, TheFilesVersionIsOne) {
  EXPECT_EQ(VSX_FILE_VERSION_1, 1);
}

TEST(EntryPoints, ParseStringKeepsTheHeader) {
  HostScene scene;
  EXPECT_TRUE(parseString(&scene, "a b;"));
  EXPECT_EQ(scene.options.calls, Lines{"createNode a b <>"});
}

TEST(EntryPoints, ParseVsaResetsTheHeaderFirst) {
  const Lines reset = {"clearComments", "setFileVersion 1", "setFileTime <>"};
  HostScene scene;
  EXPECT_TRUE(parseVsa(&scene, memoryFile(""), false));
  EXPECT_EQ(scene.options.calls, reset);
  scene.options.calls.clear();
  EXPECT_TRUE(parseVsa(&scene, File(), false));
  EXPECT_EQ(scene.options.calls, reset);
  scene.options.calls.clear();
  EXPECT_THROW(parseVsa(&scene, memoryFile("}"), false), std::runtime_error);
  EXPECT_EQ(scene.options.calls, reset);
}

TEST(EntryPoints, ParseVsaKeepsTheHeader) {
  HostScene scene;
  EXPECT_TRUE(parseVsa(&scene, memoryFile("# version: 3"), true));
  EXPECT_EQ(scene.options.calls, (Lines{"setFileVersion 3", "pushFileComment <# version: 3>"}));
}

TEST(EntryPoints, TheHeaderOfTheMinimalScene) {
  Scene scene;
  EXPECT_EQ(scene.fileVersion(), 0U);
  EXPECT_TRUE(parseString(&scene, "# version: 7\n# time: now\n# more"));
  EXPECT_EQ(scene.fileVersion(), 7U);
  EXPECT_EQ(text(scene.fileTime()), "now");
  EXPECT_EQ(scene.fileCommentCount(), 3U);
  EXPECT_TRUE(parseVsa(&scene, memoryFile("# another"), true));
  EXPECT_EQ(scene.fileVersion(), 7U);
  EXPECT_EQ(scene.fileCommentCount(), 4U);
  EXPECT_TRUE(parseVsa(&scene, memoryFile(""), false));
  EXPECT_EQ(scene.fileVersion(), 1U);
  EXPECT_EQ(text(scene.fileTime()), "");
  EXPECT_EQ(scene.fileCommentCount(), 0U);
}

TEST(EntryPoints, NullScene) {
  const LoggedLines log;
  EXPECT_TRUE(parseString(nullptr, ""));
  EXPECT_TRUE(parseVsa(nullptr, memoryFile("# version: 3\nremove a; define b; c d;"), false));
  EXPECT_EQ(log.lines(), Lines{});
  EXPECT_FALSE(parseString(nullptr, "a b; b.c = 1;"));
  EXPECT_FALSE(parseString(nullptr, "a b: .c = 1;"));
  EXPECT_EQ(log.lines(), (Lines{"error: PARSE ERROR (1,13): node 'b.c' not found .",
                                "error: PARSE ERROR (1,12): 'with' node not set (input: .c)."}));
}

TEST(EntryPoints, ExceptionsPropagate) {
  HostScene scene;
  EXPECT_EQ(vsa_tests::thrownBy([&] { parseString(&scene, "}"); }), "INVALID TOKEN (1,0): '}'");
  EXPECT_EQ(vsa_tests::thrownBy([&] { parseVsa(&scene, memoryFile("\n}", 1), true); }),
            "INVALID TOKEN (1,1): '}'");
  const auto outcome = vsa_tools::captureRead([&] { return parseString(&scene, "}"); });
  EXPECT_EQ(outcome.escaped, "INVALID TOKEN (1,0): '}'");
  EXPECT_FALSE(outcome.result);
}

TEST(EntryPoints, OneParsersTableOutlivesAnother) {
  for (int i = 0; i < 3; ++i) {
    Scene scene;
    EXPECT_TRUE(parseString(&scene, "a b; b.c = vec3(1 2 3); b.d = float[1] {1}; b.e |= b.o;"));
  }
}

// --- calls are independent ---

TEST(EntryPoints, WithNodeIsResetBetweenTexts) {
  Scene scene;
  const LoggedLines log;
  EXPECT_TRUE(parseString(&scene, "a b: .c = 1;"));
  EXPECT_FALSE(parseString(&scene, ".c = 2;"));
  EXPECT_FALSE(parseVsa(&scene, memoryFile(".c = 2;"), true));
  EXPECT_EQ(log.lines(), Lines(2, "error: PARSE ERROR (1,7): 'with' node not set (input: .c)."));
  EXPECT_EQ(scene.findNode("b")->input("c")->integer(), 1);
}

TEST(EntryPoints, LinksOfAFailedTextAreDiscarded) {
  HostScene scene;
  const LoggedLines log;
  EXPECT_FALSE(parseString(&scene, "a b; b.x |= b.out; b.y = b; 42;"));
  scene.options.calls.clear();
  EXPECT_TRUE(parseString(&scene, "a c; c.x |= c.out;"));
  EXPECT_EQ(scene.options.calls, (Lines{"createNode a c <>", "c.createInput x Null", "c.x.retain",
                                        "c.x.connect c.out", "c.x.release"}));
  EXPECT_EQ(log.lines(), Lines{"error: PARSE ERROR (1,27): unrecognized token '42'.."});
}

TEST(EntryPoints, PositionsRestart) {
  Scene scene;
  const LoggedLines log;
  EXPECT_TRUE(parseString(&scene, "a b;\n\n\n"));
  EXPECT_FALSE(parseString(&scene, "42;"));
  EXPECT_EQ(log.lines(), Lines{"error: PARSE ERROR (0,0): unrecognized token '42'.."});
}

// --- a byte order mark ---

TEST(ByteOrderMarks, SkippedAtTheStartOfAFile) {
  const std::string mark = "\xEF\xBB\xBF";
  {
    HostScene scene;
    const DiskFile disk(mark + "}");
    EXPECT_EQ(vsa_tests::thrownBy([&] { parseVsa(&scene, File::open(disk.path().c_str()), true); }),
              "INVALID TOKEN (1,0): '}'");
  }
  {
    HostScene scene;
    const LoggedLines log;
    const DiskFile disk(mark + "a b; 42");
    EXPECT_FALSE(parseVsa(&scene, File::open(disk.path().c_str()), true));
    EXPECT_EQ(scene.options.calls, Lines{"createNode a b <>"});
    EXPECT_EQ(log.lines(), Lines{"error: PARSE ERROR (1,4): unrecognized token '42'.."});
  }
  {
    HostScene scene;
    const DiskFile disk(mark);
    EXPECT_TRUE(parseVsa(&scene, File::open(disk.path().c_str()), true));
    EXPECT_EQ(scene.options.calls, Lines{});
  }
}

TEST(ByteOrderMarks, LettersAnywhereElse) {
  const std::string mark = "\xEF\xBB\xBF";
  HostScene scene;
  EXPECT_TRUE(parseString(&scene, string(mark + "a b;")));
  EXPECT_TRUE(parseVsa(&scene, memoryFile(mark + "c d;"), true));
  {
    const DiskFile disk(mark + mark + "e f; g" + mark + " h;");
    EXPECT_TRUE(parseVsa(&scene, File::open(disk.path().c_str()), true));
  }
  EXPECT_EQ(scene.options.calls,
            (Lines{"createNode " + mark + "a b <>", "createNode " + mark + "c d <>",
                   "createNode " + mark + "e f <>", "createNode g" + mark + " h <>"}));
  EXPECT_EQ(vsa_tests::thrownBy([&] { parseString(&scene, string(mark + "}")); }),
            "INVALID TOKEN (1,3): '}'");
}

// --- a locale that the host has set ---

constexpr char NUMBERS_OF_MANY_FORMS[] =
    "TYPE n: .r = 1234567.5; .i = 1234567; .u = 12u; .b = TRUE; .v = vec3(1.5 -2.5e-1, 3);\n"
    ".f = float[3] {0.1 1.5,-2}; .d = double[1] {1234.25}; .k = INT32[2] {1000 2000};\n"
    ".m = Mat3(1 0 0 0 1 0 0 0 1.5); .s = \"1,5 \\u00e9\"; .i = 2.5; .l = float[1000] {1};\n"
    "REMOVE x; .r = null; .q = nosuch; .w |= TITLE.I;\n"
    "# version: 1234567\n# version: 1.234\n";

std::string outcomeUnder(const char* cLocale) {
  const vsa_tests::HostLocale locale(cLocale);
  Scene scene;
  const auto outcome =
      vsa_tools::captureRead([&] { return parseString(&scene, NUMBERS_OF_MANY_FORMS); });
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  vsa_tools::dumpJson(outcome, scene, out);
  return out.text();
}

TEST(HostLocales, DoNotAffectTheResult) {
  Scene scene;
  const auto outcome =
      vsa_tools::captureRead([&] { return parseString(&scene, NUMBERS_OF_MANY_FORMS); });
  vsa_tools::TextOutput expected;
  vsa_tools::dumpCase(outcome, scene, expected);
  EXPECT_NE(expected.text().find("r Real 1234567.5\n"), std::string::npos);
  EXPECT_NE(expected.text().find("f Buffer Float 3 [0.1, 1.5, -2]\n"), std::string::npos);
  EXPECT_NE(expected.text().find("fileVersion 1234567\n"), std::string::npos);
  EXPECT_NE(expected.text().find("Too few elements (1) for float[1000] buffer"), std::string::npos);
  vsa_tools::dumpJson(outcome, scene, expected);
  for (const char* const name : vsa_tests::cLocales()) {
    EXPECT_EQ(outcomeUnder(name), expected.text()) << name;
  }
}

// --- the report ---

struct ReportRow {
  std::string text;
  bool endedAtMark;
  const char* cutOff;
  int line;
  int column;
};

TEST(ReadReports, EmptyInitially) {
  const ReadReport report;
  EXPECT_FALSE(report.endedAtMark);
  EXPECT_TRUE(report.cutOff.isEmpty());
  EXPECT_EQ(report.line, 0);
  EXPECT_EQ(report.column, 0);
}

TEST(ReadReports, EndOfTheSource) {
  const ReportRow rows[] = {
      {"a b;\n", false, "", 1, 5},
      {"a b;\n\xFF}", true, "", 1, 5},
      {"a b;\n \"cut", false, "UNEXPECTED EOF while parsing STRING", 2, 5},
      {"a b; b.c = {1 2", false, "UNEXPECTED EOF while parsing BRACES", 1, 15},
      {"a b; (1\xFF", true, "UNEXPECTED EOF while parsing PARENS", 1, 7},
      {"a b; c d\n 42", false, "", 2, 3},
  };
  for (const ReportRow& row : rows) {
    const LoggedLines log;
    for (const bool fromFile : {false, true}) {
      HostScene scene;
      ReadReport report;
      if (fromFile) {
        parseVsa(&scene, memoryFile(row.text, 1), false, report);
      } else {
        parseString(&scene, string(row.text), report);
      }
      EXPECT_EQ(report.endedAtMark, row.endedAtMark) << row.text;
      EXPECT_EQ(text(report.cutOff), row.cutOff) << row.text;
      EXPECT_EQ(report.line, row.line) << row.text;
      EXPECT_EQ(report.column, row.column) << row.text;
    }
  }
}

TEST(ReadReports, WithoutAScene) {
  const LoggedLines log;
  for (const bool keepHeader : {false, true}) {
    ReadReport report;
    EXPECT_TRUE(parseVsa(nullptr, memoryFile("a b; \"cut"), keepHeader, report));
    EXPECT_EQ(text(report.cutOff), "UNEXPECTED EOF while parsing STRING");
    HostScene scene;
    EXPECT_TRUE(parseVsa(&scene, memoryFile("a b;"), keepHeader, report));
    EXPECT_EQ(text(report.cutOff), "");
    EXPECT_EQ(scene.options.calls.size(), keepHeader ? 1U : 4U);
  }
  EXPECT_EQ(log.lines(), Lines{});
}

TEST(ReadReports, UnchangedByAnException) {
  HostScene scene;
  ReadReport report{true, "cut", 7, 9};
  EXPECT_THROW(parseString(&scene, "}", report), std::runtime_error);
  EXPECT_THROW(parseVsa(&scene, memoryFile("}"), false, report), std::runtime_error);
  scene.options.onCall = [](const std::string& line) {
    if (line == "createNode a b <>") throw std::logic_error("mine");
  };
  EXPECT_THROW(parseString(&scene, "a b;", report), std::logic_error);
  EXPECT_TRUE(report.endedAtMark);
  EXPECT_EQ(text(report.cutOff), "cut");
  EXPECT_EQ(report.line, 7);
  EXPECT_EQ(report.column, 9);
}

TEST(ReadReports, SetWhenParsingFails) {
  HostScene scene;
  const LoggedLines log;
  ReadReport report{true, "cut", 7, 9};
  EXPECT_FALSE(parseString(&scene, "a b;\n42; c", report));
  EXPECT_FALSE(report.endedAtMark);
  EXPECT_EQ(text(report.cutOff), "");
  EXPECT_EQ(report.line, 2);
  EXPECT_EQ(report.column, 5);
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
