// Tests of right-hand sides: connections, values, references, and the position of each error.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::PrimedParser;
using vsa_tests::text;
using vsa_tests::thrownBy;
using vsa_tests::tokenText;

std::string flags(const AssignInfo& info) {
  return std::string(info.isScalar ? "scalar " : "") + (info.isBuffer ? "buffer " : "") +
         (info.isConnection ? "connection " : "") + (info.isReference ? "reference " : "");
}

std::string joined(const ds::Vector<Token>& tokens) {
  std::string texts;
  for (const Token& token : tokens) texts += text(token.text);
  return texts;
}

TEST(Connect, ToAnOutput) {
  for (const char* const bytes : {"|= c.d; x", "| = c.d; x", "|\n=c . d ; x"}) {
    PrimedParser primed(bytes);
    AssignInfo info;
    EXPECT_TRUE(primed.parser.connect(info));
    EXPECT_EQ(flags(info), "connection ");
    EXPECT_EQ(joined(info.sourcePath), "c.d");
    EXPECT_EQ(tokenText(info.valueToken), "Eof<>0,0");
    EXPECT_EQ(primed.ahead(), "x EOF EOF");
    EXPECT_EQ(text(primed.parser.current.text), ";");
    EXPECT_EQ(info.data.type, AttrType::Null);
  }
}

TEST(Connect, Null) {
  PrimedParser primed("|= NULL;");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.connect(info));
  EXPECT_EQ(flags(info), "connection ");
  ASSERT_EQ(info.sourcePath.size, 1U);
  EXPECT_EQ(tokenText(info.sourcePath[0]), "Null<null>1,7");
  EXPECT_EQ(tokenText(info.valueToken), "Null<null>1,7");
  EXPECT_EQ(tokenText(info.referenceToken), "Eof<>0,0");
}

TEST(Connect, SourcesWithSuffixes) {
  for (const char* const source : {".out", "a.b[2]", "a.b.c[*].d"}) {
    PrimedParser primed(std::string("|= ") + source + ";");
    AssignInfo info;
    EXPECT_TRUE(primed.parser.connect(info));
    EXPECT_EQ(joined(info.sourcePath), source);
  }
}

TEST(Connect, IgnoresOtherForms) {
  for (const char* const bytes : {"= 1;", "c.d;", "", "+= 1;"}) {
    PrimedParser primed(bytes);
    const std::string before = primed.ahead();
    AssignInfo info;
    EXPECT_FALSE(primed.parser.connect(info)) << bytes;
    EXPECT_EQ(primed.ahead(), before);
    EXPECT_EQ(flags(info), "");
  }
}

struct ErrorRow {
  const char* text;
  const char* error;
};

TEST(Connect, Errors) {
  constexpr ErrorRow ROWS[] = {
      {"| c.d;", "BAD TOKEN (1,3): expected '=', found 'c'."},
      {"|", "BAD TOKEN (1,1): expected '=', found 'EOF'."},
      {"|= ;", "BAD TOKEN (1,4): expected '(null|path)', found ';'."},
      {"|= c;", "BAD TOKEN (1,4): expected '(null|path)', found 'c'."},
      {"|= \"c.d\";", "BAD TOKEN (1,8): expected '(null|path)', found '\"c.d\"'."},
      {"|= 1;", "BAD TOKEN (1,4): expected '(null|path)', found '1'."},
      {"|= c.d", "BAD TOKEN (1,6): expected ';', found 'EOF'."},
      {"|= null.d;", "BAD TOKEN (1,8): expected ';', found '.'."},
      {"|= c.d\n e", "BAD TOKEN (2,2): expected ';', found 'e'."},
      {"|= c.d.;", "BAD TOKEN (1,7): expected ';', found '.'."},
  };
  for (const ErrorRow& row : ROWS) {
    PrimedParser primed(row.text);
    AssignInfo info;
    EXPECT_EQ(thrownBy([&] { primed.parser.connect(info); }), row.error) << row.text;
    EXPECT_FALSE(info.isConnection);
  }
}

struct ValueRow {
  const char* text;
  const char* flags;
  const char* valueToken;
};

TEST(Value, EachForm) {
  constexpr ValueRow ROWS[] = {
      {"= 12u;", "scalar ", "Int<12u>1,5"},        {"= vec3(1 2 3);", "scalar ", "Id<vec3>1,6"},
      {"= vec3;", "reference ", "Id<vec3>1,6"},    {"= int32[0] {};", "buffer ", "Id<int32>1,7"},
      {"= int32;", "reference ", "Id<int32>1,7"},  {"= mat1;", "reference ", "Id<mat1>1,6"},
      {"= Null;", "reference ", "Null<null>1,6"},  {"= inf;", "reference ", "Id<inf>1,5"},
      {"= {1 2};", "scalar ", "Braces<{1 2}>1,7"}, {"= [4];", "scalar ", "Brackets<[4]>1,5"},
  };
  for (const ValueRow& row : ROWS) {
    PrimedParser primed(row.text);
    AssignInfo info;
    EXPECT_TRUE(primed.parser.value(info)) << row.text;
    EXPECT_EQ(flags(info), row.flags) << row.text;
    EXPECT_EQ(tokenText(info.valueToken), row.valueToken) << row.text;
    EXPECT_EQ(text(primed.parser.current.text), ";");
  }
}

TEST(Value, IgnoresOtherForms) {
  for (const char* const bytes : {"|= c.d;", "1;", "", ";"}) {
    PrimedParser primed(bytes);
    const std::string before = primed.ahead();
    AssignInfo info;
    EXPECT_FALSE(primed.parser.value(info)) << bytes;
    EXPECT_EQ(primed.ahead(), before);
  }
}

TEST(Value, Errors) {
  constexpr ErrorRow ROWS[] = {
      {"= ;", "BAD TOKEN (1,3): expected '(scalar|buffer|reference)', found ';'."},
      {"=", "BAD TOKEN (1,1): expected '(scalar|buffer|reference)', found 'EOF'."},
      {"= +5;", "BAD TOKEN (1,3): expected '(scalar|buffer|reference)', found '+'."},
      {"= .5;", "BAD TOKEN (1,3): expected '(scalar|buffer|reference)', found '.'."},
      {"= (1 2);", "BAD TOKEN (1,7): expected '(scalar|buffer|reference)', found '(1 2)'."},
      {"= c\nd;", "BAD TOKEN (2,1): expected ';', found 'd'."},
      {"= c.d;", "BAD TOKEN (1,4): expected ';', found '.'."},
      {"= 1", "BAD TOKEN (1,3): expected ';', found 'EOF'."},
      {"= 1 2;", "BAD TOKEN (1,5): expected ';', found '2'."},
      // If a literal does not convert, the error is reported at the next token.
      {"= vec3(1 2);", "BAD TOKEN (1,12): expected '(scalar|buffer|reference)', found ';'."},
      {"= 1-2 ;", "BAD TOKEN (1,7): expected '(scalar|buffer|reference)', found ';'."},
      {"= 5U;", "BAD TOKEN (1,5): expected '(scalar|buffer|reference)', found ';'."},
      {"= vec3[2] 1;", "BAD TOKEN (1,9): expected ';', found '[2]'."},
  };
  for (const ErrorRow& row : ROWS) {
    PrimedParser primed(row.text);
    AssignInfo info;
    EXPECT_EQ(thrownBy([&] { primed.parser.value(info); }), row.error) << row.text;
  }
}

// After a literal that does not convert, the next token is parsed as a reference.
TEST(Value, ReferenceAfterAFailedConversion) {
  PrimedParser primed("= 1-2 node1;");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.value(info));
  EXPECT_EQ(flags(info), "reference ");
  EXPECT_EQ(text(info.referenceToken.text), "node1");
  EXPECT_EQ(text(info.valueToken.text), "node1");
}

TEST(Reference, StoresItsTokenTwice) {
  PrimedParser primed("Lamp1;");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.reference(info));
  EXPECT_EQ(flags(info), "reference ");
  EXPECT_EQ(tokenText(info.referenceToken), "Id<Lamp1>1,5");
  EXPECT_EQ(tokenText(info.valueToken), "Id<Lamp1>1,5");
  EXPECT_EQ(primed.ahead(), "; EOF EOF");
}

TEST(Reference, Null) {
  PrimedParser primed("nUlL;");
  AssignInfo info;
  EXPECT_TRUE(primed.parser.reference(info));
  EXPECT_EQ(tokenText(info.referenceToken), "Null<null>1,4");
}

TEST(Reference, IgnoresOtherTokens) {
  for (const char* const bytes : {"1", "true", "\"a\"", ";", "", "[1]", ".a"}) {
    PrimedParser primed(bytes);
    const std::string before = primed.ahead();
    AssignInfo info;
    EXPECT_FALSE(primed.parser.reference(info)) << bytes;
    EXPECT_EQ(primed.ahead(), before);
    EXPECT_EQ(flags(info), "");
  }
}

// If a literal does not convert and a value of another form follows, the record still contains what
// the literal stored and the other value did not replace.
TEST(Value, RecordAfterAFailedConversion) {
  {
    PrimedParser primed("= 5U n;");
    AssignInfo info;
    EXPECT_TRUE(primed.parser.value(info));
    EXPECT_EQ(flags(info), "reference ");
    EXPECT_EQ(info.data.type, AttrType::Int);
    EXPECT_EQ(tokenText(info.valueToken), "Id<n>1,6");
    EXPECT_EQ(tokenText(info.referenceToken), "Id<n>1,6");
    EXPECT_EQ(tokenText(info.listToken), "Eof<>0,0");
  }
  {
    PrimedParser primed("= 1.5.2 null;");
    AssignInfo info;
    EXPECT_TRUE(primed.parser.value(info));
    EXPECT_EQ(flags(info), "reference ");
    EXPECT_EQ(info.data.type, AttrType::Real);
    EXPECT_EQ(tokenText(info.valueToken), "Null<null>1,12");
  }
  {
    PrimedParser primed("= vec3(1 2) n;");
    AssignInfo info;
    EXPECT_TRUE(primed.parser.value(info));
    EXPECT_EQ(flags(info), "reference ");
    EXPECT_EQ(info.data.type, AttrType::Vec3);
    EXPECT_EQ(tokenText(info.listToken), "Parens<(1 2)>1,11");
    EXPECT_EQ(tokenText(info.referenceToken), "Id<n>1,13");
  }
  {
    PrimedParser primed("= vec3(1 2) float[1]{1};");
    AssignInfo info;
    EXPECT_TRUE(primed.parser.value(info));
    EXPECT_EQ(flags(info), "buffer ");
    EXPECT_EQ(info.data.type, AttrType::Buffer);
    EXPECT_EQ(tokenText(info.valueToken), "Id<float>1,17");
    EXPECT_EQ(tokenText(info.countToken), "Brackets<[1]>1,20");
    EXPECT_EQ(tokenText(info.elementsToken), "Braces<{1}>1,23");
    EXPECT_EQ(tokenText(info.listToken), "Parens<(1 2)>1,11");
    std::free(info.data.payload.buffer.memory);
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
