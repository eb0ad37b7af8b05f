// Tests of values as short text.
#include <gtest/gtest.h>

#include <vsa/read.h>
#include "tools/vsa/common/scene/short_value.h"

namespace {

using vsa_tools::shortText;
using vsa_tools::shortValue;

struct ValueRow {
  const char *value, *shown;
};

TEST(ShortValueTest, ValuesOfManyTypes) {
  const ValueRow rows[] = {
      {"true", "true"},
      {"-7", "-7"},
      {"12u", "12u"},
      {"2.0", "2.0"},
      {"-0.0", "-0.0"},
      {"1.0e300", "1e+300"},
      {"vec3(0 1 2.5)", "vec3(0 1 2.5)"},
      {"mat3(1 0 0 0 1 0 0 0 1)", "mat3(1 0 0 0 ...)"},
      {"\"red\"", "\"red\""},
      {"n", "n"},
      {"vec3f[2] {0.1 0.9 3 4 5 6}", "vec3f[2] 0.1 0.9 3 4 ..."},
      {"int16[2] {1 -2}", "int16[2] 1 -2"},
      {"uint64[1] {18446744073709551615}", "uint64[1] 18446744073709551615"},
      {"byte[0] {}", "byte[0]"},
  };
  for (const ValueRow& row : rows) {
    const auto result = vsa::readText(std::string("thing n: .v = ") + row.value + ";");
    ASSERT_TRUE(result.isComplete()) << row.value;
    EXPECT_EQ(row.shown, shortValue(result.scene["n"]["v"])) << row.value;
  }
}

TEST(ShortValueTest, ArraysObjectsAndLinks) {
  const auto result = vsa::readText(
      "thing n: .reals[*] = 1.0; .reals[*] = 2.5; .at.x = 1; .at.y = 2; .list[*].k = 1;\n"
      ".links[*] = n; .links[*] = n; .source |= n.out; .none = null; .names[*] = \"a\";");
  ASSERT_TRUE(result.isComplete());
  const vsa::NodeView node = result.scene["n"];
  EXPECT_EQ("real[2] 1.0 2.5", shortValue(node["reals"]));
  EXPECT_EQ("{2 members}", shortValue(node["at"]));
  EXPECT_EQ("object[1]", shortValue(node["list"]));
  EXPECT_EQ("node[2] n n", shortValue(node["links"]));
  EXPECT_EQ("string[1] \"a\"", shortValue(node["names"]));
  EXPECT_EQ("null", shortValue(node["none"]));
  EXPECT_EQ("null", shortValue(node["source"]));
  EXPECT_EQ("n.out", vsa_tools::shortConnection(node["source"]));
  EXPECT_EQ("", vsa_tools::shortConnection(node["at"]));
  EXPECT_EQ("null", shortValue(vsa::InputView()));
}

TEST(ShortValueTest, ElementsOfABuffer) {
  const auto result = vsa::readText("thing n: .a = vec2f[2] {0 1 2 3}; .b = float[2] {0.5 7};");
  EXPECT_EQ("(2 3)", vsa_tools::shortElement(result.scene["n"]["a"].buffer(), 1));
  EXPECT_EQ("7", vsa_tools::shortElement(result.scene["n"]["b"].buffer(), 1));
  EXPECT_EQ("", vsa_tools::shortElement(result.scene["n"]["b"].buffer(), 2));
}

TEST(ShortValueTest, LongAndHostileTexts) {
  EXPECT_EQ(std::string(60, 'x'), shortText(std::string(60, 'x')));
  EXPECT_EQ(std::string(60, 'x').append("..."), shortText(std::string(61, 'x')));
  EXPECT_EQ("ab...", shortText("abc", 2));
  EXPECT_EQ("größe", shortText("größe", 5));
  EXPECT_EQ("€€€€...", shortText("€€€€€", 4));
  EXPECT_EQ("\\x1b[2J\\xff", shortText("\x1B[2J\xFF"));
}

}  // namespace
