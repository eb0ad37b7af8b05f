// Tests of scalar literals: the type and the value of each.
#include <gtest/gtest.h>
#include <malloc.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <vsa/model/input.h>
#include <vsa/model/node.h>
#include <vsa/model/scene.h>
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::PrimedParser;
using vsa_tests::text;
using vsa_tests::tokenText;
using vsa_tests::visible;
using namespace std::string_literals;

/// Returns "Type value" for a literal, "failed Type" if it was consumed but did not convert, or "-"
/// if nothing was consumed.
std::string scalarOf(const std::string& bytes) {
  PrimedParser primed(bytes);
  const std::string before = primed.ahead();
  AssignInfo info;
  const bool ok = primed.parser.scalar(info);
  const std::string type = attrTypeName(info.data.type);
  if (!ok) return primed.ahead() == before ? "-" : "failed " + type;
  switch (info.data.type) {
    case AttrType::Bool:
      return type + (info.data.payload.boolean ? " true" : " false");
    case AttrType::Int:
    case AttrType::UInt:
      return type + ' ' + std::to_string(info.data.payload.integer);
    case AttrType::Real:
      return type + text(String::format(" %.17g", info.data.payload.real));
    case AttrType::String: {
      const std::string value = info.data.payload.string;
      std::free(info.data.payload.string);
      return type + " <" + visible(value) + '>';
    }
    default:
      break;
  }
  std::string shown = type;
  for (unsigned i = 0; i < componentCount(info.data.type); ++i) {
    shown += text(String::format(" %g", info.data.payload.components[i]));
  }
  return shown;
}

struct ScalarRow {
  std::string text;
  std::string value;
};

template <std::size_t N>
void expectScalars(const ScalarRow (&rows)[N]) {
  for (const ScalarRow& row : rows) EXPECT_EQ(scalarOf(row.text), row.value) << visible(row.text);
}

TEST(Scalar, Booleans) {
  const ScalarRow rows[] = {
      {"true", "Bool true"}, {"FALSE", "Bool false"}, {"True", "Bool true"}, {"truth", "-"}};
  expectScalars(rows);
}

TEST(Scalar, Integers) {
  const ScalarRow rows[] = {
      {"42", "Int 42"},
      {"-7", "Int -7"},
      {"42u", "UInt 42"},
      {"-1u", "UInt -1"},
      {"1e5", "Int 100000"},
      {"1E+2u", "UInt 100"},
      {"007", "Int 7"},
      {"9223372036854775807", "Int 9223372036854775807"},
      {"-9223372036854775808", "Int -9223372036854775808"},
      {"9223372036854775808", "failed Int"},
      {"18446744073709551615u", "failed UInt"},
      {"42U", "failed Int"},
      {"2e-3", "failed Int"},
      {"1-2", "failed Int"},
      {"-", "failed Int"},
      {"1ue", "failed Int"},
      {"+5", "-"},
  };
  expectScalars(rows);
}

TEST(Scalar, Reals) {
  const ScalarRow rows[] = {
      {"1.5", "Real 1.5"},      {"-0.25", "Real -0.25"},
      {"2.", "Real 2"},         {"2f", "Real 2"},
      {"5.0", "Real 5"},        {"1.5e3", "Real 1500"},
      {"-inf", "Real -inf"},    {"-.5", "Real -0.5"},
      {"1.e5f", "Real 100000"}, {"1.5.2", "failed Real"},
      {"1a", "failed Real"},    {"1.e999", "failed Real"},
      {"1.5u", "failed Real"},  {".5", "-"},
  };
  expectScalars(rows);
}

TEST(Scalar, Strings) {
  const ScalarRow rows[] = {
      {R"("red")", "String <red>"},
      {R"("")", "String <>"},
      {R"("a\"b\\\n")", R"(String <a"b\\n>)"},
      {"\"\xc3\xa9\"", "String <\\xc3\\xa9>"},
      {R"("\u00e9\q")", R"(String <\xc3\xa9\q>)"},
      // The text of the token ends at the NUL. Its last character is removed as if it were the
      // closing quote.
      {"\"abc\0d\""s, "String <ab>"},
      {"\"a\0\""s, "String <>"},
      {"\"\0\""s, "String <>"},
  };
  expectScalars(rows);
}

// The allocated block has the size of the characters and the NUL, even if the text with escape
// sequences was longer. malloc rounds a size up to the size of its blocks, and it uses a whole free
// block if the rest would be too small for a block.
TEST(Scalar, StringAllocationHasTheExactSize) {
  constexpr std::size_t MAX_ROUNDING = 40;
  const auto bytesOf = [](const std::string& characters) {
    PrimedParser primed('"' + characters + '"');
    AssignInfo info;
    EXPECT_TRUE(primed.parser.scalar(info));
    const std::size_t usable = malloc_usable_size(info.data.payload.string);
    std::free(info.data.payload.string);
    return usable;
  };
  for (const std::size_t length : {0, 20, 100, 170, 171, 1000, 10'000}) {
    std::string escapes;
    for (std::size_t i = 0; i < length; ++i) escapes += R"(\u0041)";
    EXPECT_LE(bytesOf(std::string(length, 'A')), length + 1 + MAX_ROUNDING);
    EXPECT_LE(bytesOf(escapes), length + 1 + MAX_ROUNDING);
  }
}

// The reader unescapes a long text in pieces of 4 MiB. Between them it polls the host, if there is
// one.
TEST(Scalar, LongStringsHaveAllTheirPieces) {
  constexpr std::size_t PIECE = std::size_t{4} << 20;
  const std::string piece(PIECE - 2, 'a');
  const std::string literal = "\"" + piece + "\\n" + piece + "\\t\"";
  EXPECT_EQ(scalarOf(literal), "String <" + visible(piece + '\n' + piece + '\t') + '>');
}

TEST(Scalar, Lists) {
  const ScalarRow rows[] = {
      {"{1 2}", "Object"}, {"{}", "Object"}, {"[3]", "Array"}, {"[]", "Array"}, {"[*]", "Array"}};
  expectScalars(rows);
}

TEST(Scalar, EveryTupleKeyword) {
  const ScalarRow rows[] = {
      {"vec2(1 2)", "Vec2 1 2"},
      {"vec3(1 2 3)", "Vec3 1 2 3"},
      {"vec4(1 2 3 4)", "Vec4 1 2 3 4"},
      {"pos2(1 2)", "Pos2 1 2"},
      {"pos3(1 2 3)", "Pos3 1 2 3"},
      {"quat(1 2 3 4)", "Quat 1 2 3 4"},
      {"rgba(1 0.5 0 0.25)", "Rgba 1 0.5 0 0.25"},
      {"mat3(1 2 3 4 5 6 7 8 9)", "Mat3 1 2 3 4 5 6 7 8 9"},
      {"mat4(1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16)",
       "Mat4 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"},
      // The tuple has one number too few.
      {"vec2(1)", "failed Vec2"},
      {"vec3(1 2)", "failed Vec3"},
      {"vec4(1 2 3)", "failed Vec4"},
      {"pos2(1)", "failed Pos2"},
      {"pos3(1 2)", "failed Pos3"},
      {"quat(1 2 3)", "failed Quat"},
      {"rgba(1 2)", "failed Rgba"},
      {"mat3(1 2 3 4 5 6 7 8)", "failed Mat3"},
      {"mat4(1 2 3 4 5 6 7 8 9 10 11 12 13 14 15)", "failed Mat4"},
      // The list or the keyword is wrong.
      {"vec3", "-"},
      {"vec3 {1 2 3}", "-"},
      {"vec3[3]", "-"},
      {"vec3f(1 2 3)", "-"},
      {"vec5(1 2 3)", "-"},
      {"vec(1 2 3)", "-"},
      {"(1 2 3)", "-"},
  };
  expectScalars(rows);
}

TEST(Scalar, TupleForms) {
  const ScalarRow rows[] = {
      {"vec3(1 2 3 4)", "Vec3 1 2 3"},
      {"vec3( 1   2 3 )", "Vec3 1 2 3"},
      {"vec3(1,2,3)", "Vec3 1 2 3"},
      {"VEC3 (1 2 3)", "Vec3 1 2 3"},
      {"Vec3\n(1 2 3)", "Vec3 1 2 3"},
      {"vec3()", "failed Vec3"},
      {"vec2(1 1-2)", "failed Vec2"},
      {"vec2(inf -nan)", "Vec2 inf -nan"},
      {"vec2(1e2 2f)", "Vec2 100 2"},
      {"rgba(1 0 0)", "Rgba 1 0 0 1"},
      {"rgba(1 0 0 1-2)", "Rgba 1 0 0 1"},
      {"mat3((1 0 0) (0 1 0) (0 0 1))", "Mat3 1 0 0 0 1 0 0 0 1"},
      {"mat3((1 0 0)(0 1 0)(0 0 1))", "failed Mat3"},
      {"vec3(1 u 3)", "failed Vec3"},
  };
  expectScalars(rows);
}

/// Returns the value of a literal in which the text of one token is replaced by `made`, or "failed"
/// if it does not convert. Callers of the parser's members may create such tokens.
std::string scalarOfTokens(const std::string& bytes, std::uint64_t slot, const std::string& made) {
  PrimedParser primed(bytes);
  primed.parser.tokens[slot].text = vsa_tests::string(made);
  AssignInfo info;
  if (!primed.parser.scalar(info)) return "failed";
  if (info.data.type == AttrType::Vec2) {
    return text(
        String::format("%g %g", info.data.payload.components[0], info.data.payload.components[1]));
  }
  const std::string value = info.data.payload.string;
  std::free(info.data.payload.string);
  return visible(value);
}

TEST(Scalar, ParenthesesAtTheEndsOfAList) {
  for (const char* list : {"(1 2)", "((1 2))", "(1 2", "1 2)", ")(1 2", "(1 2("}) {
    EXPECT_EQ(scalarOfTokens("vec2(7 7)", 1, list), "1 2") << list;
  }
  for (const char* list : {"", "(", "()", "((", "(1)"}) {
    EXPECT_EQ(scalarOfTokens("vec2(7 7)", 1, list), "failed") << list;
  }
}

/// Returns the components after `list` was read as the tuple of `keyword`, such as "failed 1 0".
/// `list` may be a text that the lexer does not accept as a list.
std::string componentsOf(const std::string& keyword, const std::string& list) {
  PrimedParser primed(keyword + "(7 7 7 7)");
  primed.parser.tokens[1].text = vsa_tests::string(list);
  AssignInfo info;
  std::string shown = primed.parser.scalar(info) ? "read" : "failed";
  for (unsigned i = 0; i < componentCount(info.data.type); ++i) {
    shown += text(String::format(" %g", info.data.payload.components[i]));
  }
  return shown;
}

// A tuple fails if the word for one of its components is not a number. The exception is the fourth
// word of a colour: it is ignored if it is not a number, and the alpha is then 1. Words after the
// last component are always ignored.
TEST(Scalar, WordsThatAreNoNumbers) {
  EXPECT_EQ(componentsOf("vec2", "(1 x)"), "failed 1 0");
  EXPECT_EQ(componentsOf("vec2", "(x 2)"), "failed 0 2");
  EXPECT_EQ(componentsOf("vec2", "(1 2 x)"), "read 1 2");
  EXPECT_EQ(componentsOf("rgba", "(1 0 0 x)"), "read 1 0 0 1");
  EXPECT_EQ(componentsOf("rgba", "(1 0 x 1)"), "failed 1 0 0 1");
  EXPECT_EQ(componentsOf("rgba", "(1 0 x)"), "failed 1 0 0 0");
}

TEST(Scalar, QuotesAtTheEndsOfAString) {
  EXPECT_EQ(scalarOfTokens("\"lamp\"", 0, "\"oak\""), "oak");
  EXPECT_EQ(scalarOfTokens("\"lamp\"", 0, "\""), "");
  EXPECT_EQ(scalarOfTokens("\"lamp\"", 0, ""), "");
}

TEST(Scalar, TokensOfATuple) {
  PrimedParser primed("Vec3( 1, 2 3);");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.scalar(info));
  EXPECT_EQ(tokenText(info.valueToken), "Id<Vec3>1,4");
  EXPECT_EQ(tokenText(info.listToken), "Parens<(1 2 3)>1,13");
  EXPECT_EQ(primed.ahead(), "; EOF EOF");
}

TEST(Scalar, PayloadAfterATupleStaysZero) {
  PrimedParser primed("vec2(1 2);");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.scalar(info));
  for (int i = 2; i < 16; ++i) EXPECT_EQ(info.data.payload.components[i], 0.0) << i;
}

TEST(Scalar, StringIsCopied) {
  PrimedParser primed("\"red\";");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.scalar(info));
  EXPECT_STREQ(info.data.payload.string, "red");
  EXPECT_EQ(tokenText(info.valueToken), "Str<\"red\">1,5");
  std::free(info.data.payload.string);
}

TEST(Scalar, IgnoresOtherTokens) {
  const ScalarRow rows[] = {{";", "-"}, {"", "-"},  {"null", "-"},
                            {"|", "-"}, {".", "-"}, {"# c", "-"}};
  expectScalars(rows);
}

// --- simple statements ---

/// Returns the type and the bits of the value that a statement assigns if the text `after` follows
/// the statement. Returns "none" if it assigns no value.
std::string assignedValue(const std::string& literal, const std::string& after) {
  Scene scene;
  VsaParser().parse(&scene, vsa_tests::string("lamp n;\nn.z = 1;\nn.a = " + literal + ';' + after));
  const Input* const input = scene.nodeNamed("n")->inputNamed("a");
  if (input == nullptr) return "none";
  std::string shown = attrTypeName(input->type());
  shown += ' ' + std::to_string(input->integer());
  shown += ' ' + std::to_string(std::bit_cast<std::uint64_t>(input->real()));
  for (unsigned i = 0; i < componentCount(input->type()); ++i) {
    shown += ' ' + std::to_string(std::bit_cast<std::uint64_t>(input->components()[i]));
  }
  return shown;
}

// If enough bytes follow the statement, its numbers are converted directly in the buffer of the
// source. The value must be the same if fewer bytes follow.
TEST(Scalar, ValueDoesNotDependOnTheBytesAfterTheStatement) {
  const vsa_tests::LoggedLines log;
  for (const char* const literal : {"0",
                                    "-0",
                                    "42",
                                    "42u",
                                    "-7e2",
                                    "9223372036854775807",
                                    "-9223372036854775808",
                                    "9223372036854775808",
                                    "1.",
                                    "1.5",
                                    "-0.0",
                                    "1.5f",
                                    "0.1e-3",
                                    "1e400.",
                                    "2.5E",
                                    "1.5.2",
                                    "12345678901234567890.5",
                                    "0.000000000000000000012",
                                    "4.35e-320",
                                    "vec2(1 2)",
                                    "vec2(1 2 3)",
                                    "vec2(1)",
                                    "vec3(-1 .5 2e1)",
                                    "vec3(1 nan inf)",
                                    "vec3(1 2 3f)",
                                    "vec3(1 2  3)",
                                    "quat(1 2 3 4)",
                                    "rgba(1 2 3)",
                                    "rgba(1 2 3 4)",
                                    "rgba(1 2)",
                                    "mat3(1 2 3 4 5 6 7 8 9)"}) {
    const std::string next = "\nn.y = 1;";
    EXPECT_EQ(assignedValue(literal, next), assignedValue(literal, next + std::string(64, ' ')))
        << literal;
  }
  EXPECT_EQ(assignedValue("12", std::string(64, ' ') + "\nn.y = 1;"), "Int 12 0");
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
