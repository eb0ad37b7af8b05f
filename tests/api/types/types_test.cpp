// Tests of node types in JSON: valid and invalid descriptions, and how the reader uses the types.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <vsa/read.h>
#include <vsa/types.h>

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;

constexpr std::string_view EXAMPLE = R"({
  "$schema": "types.schema.json",
  "types": {
    "typeFileLamp": {
      "description": "a light",
      "inputs": {
        "power": {"type": "Real", "min": 0, "max": 1e3, "required": true},
        "shape": {"type": "String", "values": ["sphere", "d\u00e9\ud83d\ude00\n"]},
        "ids": {"elements": "Int32", "type": "Buffer"},
        "keys": {"type": "Array", "elements": "Object"},
        "color": {"linksOnly": true},
        "free": {}
      },
      "outputs": ["outColor"],
      "formerInputs": {"watts": "power"},
      "formerOutputs": {"color": "outColor"}
    },
    "typeFileEmpty": {}
  }
})";

TEST(Types, AreReadFromJson) {
  const vsa::TypesResult read = vsa::readTypes(EXAMPLE);
  ASSERT_TRUE(read.isValid()) << read.problem;
  ASSERT_EQ(read.types.size(), 2U);
  const vsa::TypeDescription& lamp = read.types[0];
  EXPECT_EQ(lamp.name, "typeFileLamp");
  ASSERT_EQ(lamp.inputs.size(), 6U);
  EXPECT_EQ(lamp.inputs[0].declaration.name, "power");
  EXPECT_EQ(lamp.inputs[0].declaration.type, AttrType::Real);
  EXPECT_EQ(lamp.inputs[0].minimum, 0.0);
  EXPECT_EQ(lamp.inputs[0].maximum, 1000.0);
  EXPECT_TRUE(lamp.inputs[0].isRequired);
  EXPECT_EQ(lamp.inputs[1].declaration.enumValues.at(1), "d\xC3\xA9\xF0\x9F\x98\x80\n");
  EXPECT_FALSE(lamp.inputs[1].isRequired);
  EXPECT_EQ(lamp.inputs[2].declaration.bufferType, DataType::Int32);
  EXPECT_EQ(lamp.inputs[3].declaration.elementType, AttrType::Object);
  EXPECT_TRUE(lamp.inputs[4].declaration.refusesValues);
  EXPECT_EQ(lamp.inputs[5].declaration.type, AttrType::Null);
  EXPECT_EQ(lamp.outputs, std::vector<std::string>{"outColor"});
  EXPECT_EQ(lamp.formerInputs.at(0).current, "power");
  EXPECT_EQ(lamp.formerOutputs.at(0).former, "color");
  EXPECT_EQ(read.types[1].name, "typeFileEmpty");
}

TEST(Types, HaveTheNumbersAndCharactersOfJson) {
  const vsa::TypesResult read = vsa::readTypes(
      R"({"types": {"a": {"inputs": {
        "x": {"min": -2.5E-1, "max": 1.5e+2, "linksOnly": false},
        "y": {"type": "String", "values": ["\u0041\u00DF\uE000\uFFFD"]}}}}})");
  ASSERT_TRUE(read.isValid()) << read.problem;
  const vsa::TypeDescription& type = read.types.at(0);
  EXPECT_EQ(type.inputs.at(0).minimum, -0.25);
  EXPECT_EQ(type.inputs.at(0).maximum, 150.0);
  EXPECT_FALSE(type.inputs.at(0).declaration.refusesValues);
  EXPECT_EQ(type.inputs.at(1).declaration.enumValues.at(0), "A\xC3\x9F\xEE\x80\x80\xEF\xBF\xBD");
}

TEST(Types, AreTheClosedTypesOfTheReaderOnceRegistered) {
  vsa::registerTypes(vsa::readTypes(EXAMPLE).types);
  const vsa::ReadResult result =
      vsa::readText("typeFileLamp a:\n.watts = 1;\n.shape = \"cone\";\ntypeFileLamp b:\n.c = 1;\n");
  zn::korvo_sdk::unregisterNodeType("typeFileLamp");
  zn::korvo_sdk::unregisterNodeType("typeFileEmpty");
  ASSERT_EQ(result.diagnostics.size(), 2U);
  EXPECT_EQ(result.diagnostics[0].id, vsa::DiagnosticId::BadEnumValue);
  EXPECT_EQ(result.diagnostics[1].id, vsa::DiagnosticId::InputNotFound);
  EXPECT_EQ(result.scene["a"]["power"].real(), 1.0);
}

TEST(Types, MayBeginWithAByteOrderMark) {
  EXPECT_TRUE(vsa::readTypes("\xEF\xBB\xBF{\"types\":{}}").isValid());
}

TEST(Types, MayHaveARangeOfOneNumber) {
  EXPECT_TRUE(
      vsa::readTypes("{\"types\":{\"a\":{\"inputs\":{\"x\":{\"min\":1,\"max\":1}}}}}").isValid());
}

// The current name of a former name may be that of a member of `x`. A description does not contain
// the members of an Object, so the name is not checked.
TEST(Types, MayHaveFormerNamesOfMembers) {
  EXPECT_TRUE(vsa::readTypes("{\"types\":{\"a\":{\"inputs\":{\"x\":{\"type\":\"Object\"}},"
                             "\"formerInputs\":{\"old\":\"member\"}}}}")
                  .isValid());
  // An input without a type may become an Object.
  EXPECT_TRUE(vsa::readTypes("{\"types\":{\"a\":{\"inputs\":{\"x\":{}},"
                             "\"formerInputs\":{\"old\":\"member\"}}}}")
                  .isValid());
  EXPECT_TRUE(vsa::readTypes("{\"description\":\"of lamps\",\"types\":{}}").isValid());
}

/// An invalid text and its problem. The problem is at the byte after the mark "^".
struct Refused {
  const char* marked;
  const char* problem;
};

constexpr Refused REFUSED[] = {
    {"^", "expected a value"},
    {"  \n ^", "expected a value"},
    {"^[]", "expected an object with the member \"types\""},
    {"^{}", "the member \"types\" is missing"},
    {"{\"types\": {}} ^x", "expected the end of the text"},
    {"{\"types\": ^[]}", "expected an object of types"},
    {"{\"types\": {},^}", "expected a name in quotes"},
    {"{\"types\": {}, \"more\": ^1}", "unknown member \"more\""},
    {"{\"types\": {}, ^\"types\": {}}", "the name \"types\" stands twice"},
    {"{\"types\" ^{}}", "expected ':'"},
    {"{\"types\": {}^", "expected ',' or '}'"},
    {"{\"types\": {\"a\": ^1}}", "expected an object that describes a type"},
    {"{\"types\": {\"a\": {\"input\": ^{}}}}", "unknown member \"input\""},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"type\": ^\"real\"}}}}}",
     "\"real\" is not the type of a value"},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"type\": \"Buffer\", \"elements\": ^\"Bool\"}}}}}",
     "\"Bool\" is not the element type of a buffer"},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"type\": \"Int\", \"elements\": ^\"Int\"}}}}}",
     "only an Array and a Buffer have elements"},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": ^{\"type\": \"Int\", \"values\": [\"a\"]}}}}}",
     "only a String has values to choose from"},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"min\": ^\"0\"}}}}}", "expected a number"},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"max\": ^1, \"min\": 2}}}}}",
     "\"max\" is less than \"min\""},
    {"{\"types\": {\"a\": {\"inputs\": {\"x\": {\"required\": ^1}}}}}", "expected true or false"},
    {"{\"types\": {\"a\": {\"outputs\": ^{}}}}", "expected an array of strings"},
    {"{\"types\": {\"a\": {\"outputs\": [\"b\", ^null]}}}", "expected a string"},
    {"{\"types\": {\"a\": {\"outputs\": [\"b\" ^\"c\"]}}}", "expected ',' or ']'"},
    {"{\"types\": {\"a\": {\"formerInputs\": ^[]}}}",
     "expected an object of former names and current names"},
    {"{\"types\": {\"a\": {\"formerInputs\": {\"b\": ^\"c\"}, \"inputs\": {\"b\": {\"type\": "
     "\"Int\"}}}}}",
     "the type has no input \"c\""},
    {"{\"types\": {\"a\": {\"formerOutputs\": {\"b\": ^\"c\"}}}}", "the type has no output \"c\""},
    {"[1, 0^1]", "expected ',' or ']'"},
    {"[^+1]", "expected a value"},
    {"[1.^]", "expected a digit"},
    {"[1e+^]", "expected a digit"},
    {"[-^]", "expected a digit"},
    {"[^1e999]", "the number is too large"},
    {"[\"\\^x\"]", "an unknown escape sequence"},
    {"[\"\\^", "an unknown escape sequence"},
    {"[\"\\u00^g0\"]", "expected four hexadecimal digits"},
    {"[\"\\u00^G0\"]", "expected four hexadecimal digits"},
    {"[\"\\ud800^\"]", "half of a surrogate pair"},
    {"[\"\\ud800\\ue000^\"]", "half of a surrogate pair"},
    {"[\"\\ud800\\u0041^\"]", "half of a surrogate pair"},
    {"[\"\\udc00^\"]", "half of a surrogate pair"},
    {"[\"a^\n\"]", "a control character in a string"},
    {"[\"a^", "the string is not closed"},
};

TEST(Types, AreRefusedWithAPlace) {
  for (const Refused& row : REFUSED) {
    std::string text = row.marked;
    const std::size_t place = text.find('^');
    text.erase(place, 1);
    const vsa::TypesResult read = vsa::readTypes(text);
    EXPECT_EQ(read.problem, row.problem) << row.marked;
    EXPECT_EQ(read.place.offset, place) << row.marked;
    EXPECT_TRUE(read.types.empty()) << row.marked;
  }
}

TEST(Types, AreRefusedWithALineAndAColumn) {
  const vsa::TypesResult read = vsa::readTypes("{\n  \"types\": {\n    \"a\": 1}}");
  EXPECT_EQ(read.place.line, 3U);
  EXPECT_EQ(read.place.column, 10U);
}

// Every proper prefix of a valid text is refused. A text with one byte replaced is read or refused,
// but never crashes.
TEST(Types, AreReadOrRefusedWhateverTheText) {
  for (std::size_t i = 0; i < EXAMPLE.size(); ++i) {
    EXPECT_FALSE(vsa::readTypes(EXAMPLE.substr(0, i)).isValid()) << i;
    for (const char c : {'\0', '"', '{', ']', '\\', '9', '\xFF'}) {
      std::string text(EXAMPLE);
      text[i] = c;
      const vsa::TypesResult read = vsa::readTypes(text);
      EXPECT_LE(read.place.offset, text.size());
    }
  }
}

TEST(Types, AreRefusedWhenNestedTooDeeply) {
  const std::string levels(100000, '[');
  EXPECT_EQ(vsa::readTypes(levels).problem, "nested deeper than 32 levels");
  EXPECT_EQ(vsa::readTypes(levels).place.offset, 33U);
}

}  // namespace

}  // namespace vsa_tests
