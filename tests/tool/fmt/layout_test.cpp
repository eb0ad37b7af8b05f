// Tests of the layout that docs/formatting.md describes.
#include <gtest/gtest.h>

#include <string>

#include "tests/syntax/syntax_source.h"
#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/layout/text_layout.h"

namespace vsa_tools {

namespace {

std::string layoutOf(std::string_view text) {
  StringSink sink;
  vsa::SyntaxReader reader(text);
  EXPECT_TRUE(formatText(reader, sink));
  return sink.text;
}

TEST(LayoutTest, OneStatementALine) {
  EXPECT_EQ(layoutOf("sphere ball:.radius=1.50;.at=vec3( 1,2 ,3 );lamp sun;sun.power=2;"),
            "sphere ball:\n  .radius = 1.50;\n  .at = vec3(1 2 3);\nlamp sun;\nsun.power = 2;\n");
  EXPECT_EQ(layoutOf("n . a [ 0 ] . b |  =  m . out ;"), "n.a[ 0 ].b |= m.out;\n");
  EXPECT_EQ(layoutOf(".a=TRUE;.b={ };.c=[ ];.d=\"x  y\";"),
            "  .a = TRUE;\n  .b = {};\n  .c = [ ];\n  .d = \"x  y\";\n");
}

TEST(LayoutTest, BlankLines) {
  EXPECT_EQ(layoutOf("\n\n a b;\n\n\n\nc d;\ne f;\n\n"), "a b;\n\nc d;\ne f;\n");
  EXPECT_EQ(layoutOf("a b;\r\n\r\nc d;"), "a b;\n\nc d;\n");
  EXPECT_EQ(layoutOf(""), "");
  EXPECT_EQ(layoutOf(" \n\n"), "");
}

TEST(LayoutTest, Comments) {
  EXPECT_EQ(layoutOf("#a  \n   # b\nt n: # c\n# d\n   # e\n.x=1; # f\nm o;\n   # g"),
            "#a  \n# b\nt n:  # c\n# d\n  # e\n  .x = 1;  # f\nm o;\n# g\n");
  EXPECT_EQ(layoutOf("# a\r# b\rt n;"), "# a\n# b\nt n;\n");
}

TEST(LayoutTest, ListsThatFitStayOnTheirLine) {
  EXPECT_EQ(layoutOf(".p=vec3f[2]{0,0,0,1,0,0};"), "  .p = vec3f[2] {0 0 0 1 0 0};\n");
  // This line has 120 columns, including the semicolon.
  const std::string longest =
      "  .p = int32[1] {" + std::string(50, '1') + ' ' + std::string(50, '2') + "};\n";
  ASSERT_EQ(longest.size(), 121U);
  EXPECT_EQ(layoutOf(longest), longest);
  EXPECT_NE(layoutOf(".longer" + longest.substr(4)), ".longer" + longest.substr(4));
}

TEST(LayoutTest, LongLists) {
  std::string numbers;
  for (int i = 0; i < 60; ++i) numbers += " " + std::to_string(100 + i);
  const std::string wrapped = layoutOf(".p=int32[60]{" + numbers + "};");
  EXPECT_EQ(wrapped.substr(0, 30), "  .p = int32[60] {\n    100 101");
  EXPECT_EQ(wrapped.substr(wrapped.size() - 12), "58 159\n  };\n");
  for (std::size_t at = 0; at < wrapped.size();) {
    const std::size_t end = wrapped.find('\n', at);
    EXPECT_LE(end - at, 120U);
    at = end + 1;
  }
  const std::string vectors = layoutOf(".p=VEC3F[20]{" + numbers + "};");
  EXPECT_EQ(vectors.substr(0, 50), "  .p = VEC3F[20] {\n    100 101 102\n    103 104 105");
}

TEST(LayoutTest, MatricesAreAligned) {
  EXPECT_EQ(layoutOf(".m=mat3(1 0 0 -10 1 0 0.5 0 1);"),
            "  .m = mat3(\n      1 0 0\n    -10 1 0\n    0.5 0 1\n  );\n");
  EXPECT_EQ(layoutOf("n.m=mat4f[1]{1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 -1};"),
            "n.m = mat4f[1] {\n  1 0 0  0\n  0 1 0  0\n  0 0 1  0\n  0 0 0 -1\n};\n");
  EXPECT_EQ(layoutOf(".m=mat3(1 2 3 4);"), "  .m = mat3(\n    1 2 3\n    4\n  );\n");
}

TEST(LayoutTest, KeepsWhatTheReaderMakesOfAList) {
  EXPECT_EQ(layoutOf("n.a={{{1}{2}} [3,4]};"), "n.a = {12 3 4};\n");
  EXPECT_EQ(layoutOf("n.a={1 , };"), "n.a = {1 ,};\n");
}

TEST(LayoutTest, ListOfOneNumberIsNotBroken) {
  const std::string block(40000, '7');
  EXPECT_EQ(layoutOf("n.a=byte[9]{  ." + block + "\n};"), "n.a = byte[9] {." + block + "};\n");
  const std::string several = "n.a = float[3] {\n  1\n  " + block + "\n  2\n};\n";
  EXPECT_EQ(layoutOf("n.a=float[3]{1 " + block + " 2};"), several);
  EXPECT_EQ(layoutOf(several), several);
  const std::string first = "n.a = float[2] {" + block + "\n  2\n};\n";
  EXPECT_EQ(layoutOf("n.a=float[2]{" + block + " 2};"), first);
  EXPECT_EQ(layoutOf(first), first);
}

TEST(LayoutTest, TellsWhenTheSinkFails) {
  struct FullSink final : vsa::Sink {
    bool write(std::string_view) override { return false; }
  } sink;
  vsa::SyntaxReader reader("a b;");
  EXPECT_FALSE(formatText(reader, sink));
}

}  // namespace

}  // namespace vsa_tools
