// Tests of buffer literals: every keyword, the elements in memory, and too many or too few
// elements.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <vsa/foundation/decompress.h>
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::PrimedParser;
using vsa_tests::text;
using vsa_tests::thrownBy;
using vsa_tests::tokenText;
using Lines = std::vector<std::string>;

/// Reads a literal. The destructor frees its memory.
class Literal {
 public:
  explicit Literal(const std::string& bytes) : primed_(bytes) {}
  Literal(const Literal&) = delete;
  Literal& operator=(const Literal&) = delete;
  ~Literal() {
    if (info.data.type == AttrType::Buffer) std::free(info.data.payload.buffer.memory);
  }

  bool read() { return primed_.parser.buffer(info); }
  std::string error() {
    return thrownBy([&] { read(); });
  }
  std::string ahead() const { return primed_.ahead(); }
  const BufferValue& value() const { return info.data.payload.buffer; }
  template <class Number>
  std::vector<Number> numbers() const {
    std::vector<Number> all(static_cast<std::size_t>(value().bytes / sizeof(Number)));
    if (!all.empty()) std::memcpy(all.data(), value().memory, all.size() * sizeof(Number));
    return all;
  }

  AssignInfo info;

 private:
  PrimedParser primed_;
};

struct KeywordRow {
  const char* keyword;
  int type;
  DataType component;
  std::uint64_t componentBytes;
  std::uint64_t elementBytes;
};

constexpr DataType CHAR = DataType::Char;
constexpr DataType BYTE = DataType::Byte;
constexpr DataType FLOAT = DataType::Float;
constexpr DataType DOUBLE = DataType::Double;
constexpr DataType INT = DataType::Int32;
constexpr DataType UINT = DataType::UInt32;

constexpr KeywordRow KEYWORDS[] = {
    {"char", 2, CHAR, 1, 1},
    {"byte", 3, BYTE, 1, 1},
    {"int16", 4, DataType::Int16, 2, 2},
    {"int32", 5, DataType::Int32, 4, 4},
    {"int64", 6, DataType::Int64, 8, 8},
    {"uint16", 7, DataType::UInt16, 2, 2},
    {"uint32", 8, DataType::UInt32, 4, 4},
    {"uint64", 9, DataType::UInt64, 8, 8},
    {"float", 10, FLOAT, 4, 4},
    {"double", 11, DOUBLE, 8, 8},
    {"vec2f", 13, FLOAT, 4, 8},
    {"vec3f", 17, FLOAT, 4, 12},
    {"vec4f", 21, FLOAT, 4, 16},
    {"pos2f", 25, FLOAT, 4, 8},
    {"pos3f", 28, FLOAT, 4, 12},
    {"quatf", 31, FLOAT, 4, 16},
    {"mat3f", 39, FLOAT, 4, 36},
    {"mat4f", 42, FLOAT, 4, 64},
    {"rgbf", 33, FLOAT, 4, 12},
    {"rgbaf", 36, FLOAT, 4, 16},
    {"hsvf", 54, FLOAT, 4, 12},
    {"hslf", 56, FLOAT, 4, 12},
    {"vec2d", 14, DOUBLE, 8, 16},
    {"vec3d", 18, DOUBLE, 8, 24},
    {"vec4d", 22, DOUBLE, 8, 32},
    {"pos2d", 26, DOUBLE, 8, 16},
    {"pos3d", 29, DOUBLE, 8, 24},
    {"quatd", 32, DOUBLE, 8, 32},
    {"mat3d", 40, DOUBLE, 8, 72},
    {"mat4d", 43, DOUBLE, 8, 128},
    {"rgbd", 34, DOUBLE, 8, 24},
    {"rgbad", 37, DOUBLE, 8, 32},
    {"hsvd", 55, DOUBLE, 8, 24},
    {"hsld", 57, DOUBLE, 8, 24},
    {"vec2i", 15, INT, 4, 8},
    {"vec3i", 19, INT, 4, 12},
    {"vec4i", 23, INT, 4, 16},
    {"pos2i", 27, INT, 4, 8},
    {"pos3i", 30, INT, 4, 12},
    {"mat3i", 41, INT, 4, 36},
    {"mat4i", 44, INT, 4, 64},
    {"vec2u", 16, UINT, 4, 8},
    {"vec3u", 20, UINT, 4, 12},
    {"vec4u", 24, UINT, 4, 16},
    {"rgb8", 35, BYTE, 1, 3},
    {"rgba8", 38, BYTE, 1, 4},
    {"argb8", 58, BYTE, 1, 4},
    {"colorref", 59, BYTE, 1, 4},
};

TEST(Buffer, EveryKeyword) {
  for (const KeywordRow& row : KEYWORDS) {
    SCOPED_TRACE(row.keyword);
    const auto type = static_cast<DataType>(row.type);
    EXPECT_EQ(componentType(type), row.component);
    EXPECT_EQ(componentBytes(type), row.componentBytes);
    EXPECT_EQ(elementBytes(type), row.elementBytes);

    std::string list = "{";
    const std::uint64_t components = 2 * row.elementBytes / row.componentBytes;
    for (std::uint64_t i = 1; i <= components; ++i) list += std::to_string(i) + ' ';
    Literal literal(std::string(row.keyword) + "[2] " + list + "};");
    const LoggedLines log;
    ASSERT_TRUE(literal.read());
    EXPECT_EQ(literal.info.data.type, AttrType::Buffer);
    EXPECT_EQ(literal.info.data.elementType, row.type);
    EXPECT_EQ(literal.value().type, type);
    EXPECT_EQ(literal.value().count, 2U);
    EXPECT_EQ(literal.value().bytes, 2 * row.elementBytes);
    EXPECT_EQ(literal.value().reserved, 0);
    EXPECT_EQ(log.lines(), Lines{});
    const auto at = [&](std::uint64_t i) {
      return literal.value().memory + i * row.componentBytes;
    };
    for (std::uint64_t i = 0; i < components; ++i) {
      std::vector<unsigned char> one(8);
      VsaParser().parseElem(String(static_cast<unsigned long long>(i + 1)), row.component,
                            one.data());
      EXPECT_EQ(std::memcmp(at(i), one.data(), row.componentBytes), 0) << i;
    }
  }
}

// Only buffers with components of one byte may be compressed. In all other buffers, "." begins a
// number.
TEST(Buffer, KeywordsThatMayBeCompressed) {
  const unsigned char bytes[] = {9, 8, 7};
  const std::string packed = text(compress(bytes, sizeof bytes));
  for (const KeywordRow& row : KEYWORDS) {
    SCOPED_TRACE(row.keyword);
    Literal literal(std::string(row.keyword) + "[1] {" + packed + "};");
    const LoggedLines log;
    if (row.componentBytes != 1) {
      const std::size_t column = std::strlen(row.keyword) + std::strlen("[1] {}") + packed.size();
      EXPECT_EQ(literal.error(), "PARSE ERROR (1," + std::to_string(column) +
                                     "): Failed to read '" + row.keyword + "' buffer..");
    } else if (row.elementBytes < 3) {
      EXPECT_EQ(literal.error(), "PARSE ERROR (1," + std::to_string(5 + 3 + packed.size() + 2) +
                                     "): compressed data is larger than the buffer.");
    } else {
      EXPECT_TRUE(literal.read());
      EXPECT_EQ(std::memcmp(literal.value().memory, bytes, 3), 0);
      EXPECT_EQ(log.lines(), Lines{});
    }
  }
}

TEST(Buffer, TokensAndCase) {
  Literal literal("Float[ 2 ]\n{1, 2} ;");
  ASSERT_TRUE(literal.read());
  EXPECT_EQ(tokenText(literal.info.valueToken), "Id<Float>1,5");
  EXPECT_EQ(tokenText(literal.info.countToken), "Brackets<[ 2 ]>1,10");
  EXPECT_EQ(tokenText(literal.info.elementsToken), "Braces<{1 2}>2,6");
  EXPECT_EQ(literal.ahead(), "; EOF EOF");
  EXPECT_EQ(literal.numbers<float>(), (std::vector<float>{1, 2}));
  EXPECT_FALSE(literal.info.isBuffer);  // value() sets it
}

TEST(Buffer, IgnoresOtherForms) {
  for (const char* const bytes :
       {"vec3f [2];", "vec3f {1 2};", "vec3f;", "vec3f [2] (1 2)", "vec3[1] {1 2 3}", "null",
        "bool[1] {1}", "int8[1] {1}", "xformf[1] {1}", "ptr[1] {1}", "1", "", "{1}", "[2] {1}"}) {
    Literal literal(bytes);
    const std::string before = literal.ahead();
    EXPECT_FALSE(literal.read()) << bytes;
    EXPECT_EQ(literal.ahead(), before) << bytes;
    EXPECT_EQ(literal.info.data.type, AttrType::Null) << bytes;
  }
}

TEST(Buffer, NoElements) {
  for (const char* const bytes : {"float[0] {1 2 3}", "float[0] {}", "float[0] {.}"}) {
    Literal literal(bytes);
    const LoggedLines log;
    EXPECT_TRUE(literal.read()) << bytes;
    EXPECT_EQ(literal.value().memory, nullptr);
    EXPECT_EQ(literal.value().count, 0U);
    EXPECT_EQ(literal.value().bytes, 0U);
    EXPECT_EQ(literal.value().type, DataType::Float);
    EXPECT_EQ(log.lines(), Lines{});
  }
}

struct BufferRow {
  const char* text;
  const char* message;
};

TEST(Buffer, Errors) {
  constexpr BufferRow ROWS[] = {
      {"int32[*] {1}", "PARSE ERROR (1,12): invalid buffer element count: [*]."},
      {"int32[] {1}", "PARSE ERROR (1,11): invalid buffer element count: []."},
      {"int32[1 2] {1}", "PARSE ERROR (1,14): invalid buffer element count: [1 2]."},
      {"int32[18446744073709551616] {}",
       "PARSE ERROR (1,30): invalid buffer element count: [18446744073709551616]."},
      {"int32[2] {1 1.5}", "PARSE ERROR (1,16): Failed to read 'int32' buffer.."},
      {"Int32[2] {1 1.5}", "PARSE ERROR (1,16): Failed to read 'Int32' buffer.."},
      {"byte[1] {256}", "PARSE ERROR (1,13): Failed to read 'byte' buffer.."},
      {"byte[1] {-1}", "PARSE ERROR (1,12): Failed to read 'byte' buffer.."},
      {"uint64[1] {5U}", "PARSE ERROR (1,14): Failed to read 'uint64' buffer.."},
      {"vec3f[1] {1 2 3 4}", "BUFFER ERROR (1,18): Cannot add 4 @ index 3 of vec3f[1].."},
      {"vec3f[1] {1 2 3 4-5 6}", "BUFFER ERROR (1,22): Cannot add 4-5 @ index 3 of vec3f[1].."},
      // Too many numbers are reported even if an earlier number does not convert.
      {"int32[1] {1.5 2}", "BUFFER ERROR (1,16): Cannot add 2 @ index 1 of int32[1].."},
      {"int32[1] {1.5 2 }", "BUFFER ERROR (1,17): Cannot add 2 @ index 1 of int32[1].."},
      {"float[18446744073709551615] {}",
       "PARSE ERROR (1,30): cannot allocate float[18446744073709551615]."},
      {"Float[4611686018427387904] {}",
       "PARSE ERROR (1,29): cannot allocate Float[4611686018427387904]."},
      {"vec3f[ 1537228672809129302 ] {}",
       "PARSE ERROR (1,31): cannot allocate vec3f[ 1537228672809129302 ]."},
      {"byte[9223372036854775807] {1}",
       "PARSE ERROR (1,29): cannot allocate byte[9223372036854775807]."},
      {"byte[3] {.}", "PARSE ERROR (1,11): compressed data is empty."},
      {"byte[3] {. }", "PARSE ERROR (1,12): compressed data is empty."},
      {"byte[3] {.7}", "PARSE ERROR (1,12): compressed data ends early."},
      {"byte[3] {.5u}",
       "PARSE ERROR (1,13): compressed data holds a character that is not a hexadecimal digit."},
      {"byte[3] {.1111}", "PARSE ERROR (1,15): compressed data is corrupt."},
      {"byte[3] {.789c030000000001}", "PARSE ERROR (1,27): compressed data is empty."},
  };
  for (const BufferRow& row : ROWS) {
    PrimedParser primed(row.text);
    const LoggedLines log;
    AssignInfo info;
    EXPECT_EQ(thrownBy([&] { primed.parser.buffer(info); }), row.message) << row.text;
    EXPECT_EQ(log.lines(), Lines{}) << row.text;
    if (info.data.type == AttrType::Buffer) std::free(info.data.payload.buffer.memory);
  }
}

// Unprintable characters are not skipped in a number, and the message contains them.
TEST(Buffer, CountsWithUnprintableCharacters) {
  using namespace std::string_literals;
  EXPECT_EQ(Literal("byte[\x01 2] {1 2}").error(),
            "PARSE ERROR (1,15): invalid buffer element count: [\x01 2].");
  EXPECT_EQ(Literal("byte[2\x7f] {1 2}").error(),
            "PARSE ERROR (1,14): invalid buffer element count: [2\x7f].");
  Literal spaces("byte[\t2\r\n\v\f] {1 2}");
  ASSERT_TRUE(spaces.read());
  EXPECT_EQ(spaces.numbers<unsigned char>(), (std::vector<unsigned char>{1, 2}));
  // The text of the token ends at the NUL.
  Literal cut("byte[2\0 9] {1 2}"s);
  ASSERT_TRUE(cut.read());
  EXPECT_EQ(cut.numbers<unsigned char>(), (std::vector<unsigned char>{1, 2}));
  EXPECT_EQ(tokenText(cut.info.countToken), "Brackets<[2>1,10");
  EXPECT_EQ(Literal("byte[\0002] {1 2}"s).error(),
            "PARSE ERROR (1,14): invalid buffer element count: [.");
}

TEST(Buffer, TooFewElementsAreAWarning) {
  constexpr BufferRow ROWS[] = {
      {"vec3f[2] {1 2 3 4 5}", "(1) for vec3f[2]"}, {"byte[3] {}", "(0) for byte[3]"},
      {"Byte[3] {1 2}", "(2) for Byte[3]"},         {"mat4d[1] {1}", "(0) for mat4d[1]"},
      {"rgb8[2] {1 2 3 4}", "(1) for rgb8[2]"},
  };
  for (const BufferRow& row : ROWS) {
    Literal literal(row.text);
    const LoggedLines log;
    EXPECT_TRUE(literal.read()) << row.text;
    EXPECT_EQ(log.lines(), Lines{std::string("warning: Too few elements ") + row.message +
                                 " buffer, remainder set to zero."});
  }
  Literal literal("vec3f[2] {1 2 3 4 5}");
  const LoggedLines log;
  EXPECT_TRUE(literal.read());
  EXPECT_EQ(literal.numbers<float>(), (std::vector<float>{1, 2, 3, 4, 5, 0}));
}

TEST(Buffer, TooFewElementsAreReportedBeforeABadOne) {
  Literal literal("int32[3] {1 1.5}");
  const LoggedLines log;
  EXPECT_EQ(literal.error(), "PARSE ERROR (1,16): Failed to read 'int32' buffer..");
  EXPECT_EQ(log.lines(),
            Lines{"warning: Too few elements (2) for int32[3] buffer, remainder set to zero."});
}

TEST(Buffer, NumbersOfManyForms) {
  Literal reals("double[7] {.5 -.5 2f 1e3 1E-2 inf -nan}");
  ASSERT_TRUE(reals.read());
  const std::vector<double> numbers = reals.numbers<double>();
  EXPECT_EQ(std::vector<double>(numbers.begin(), numbers.begin() + 6),
            (std::vector<double>{.5, -.5, 2, 1000, .01, std::numeric_limits<double>::infinity()}));
  EXPECT_NE(numbers[6], numbers[6]);
  Literal integers("int16[6] {1e2 +5 -32768 32767 7u 1,}");
  ASSERT_TRUE(integers.read());
  EXPECT_EQ(integers.numbers<std::int16_t>(),
            (std::vector<std::int16_t>{100, 5, -32768, 32767, 7, 1}));
  Literal bytes("char[4] {-128,127,,-1 , 0}");
  ASSERT_TRUE(bytes.read());
  EXPECT_EQ(bytes.numbers<signed char>(), (std::vector<signed char>{-128, 127, -1, 0}));
}

// The text of a brace list may end with a blank: "{1 }".
TEST(Buffer, BlanksAtTheEnds) {
  for (const char* const bytes : {"byte[1] {1, }", "byte[1] { 1 }", "byte[1] {,1,}"}) {
    Literal literal(bytes);
    const LoggedLines log;
    EXPECT_TRUE(literal.read()) << bytes;
    EXPECT_EQ(literal.numbers<unsigned char>(), std::vector<unsigned char>{1}) << bytes;
    EXPECT_EQ(log.lines(), Lines{});
  }
}

TEST(Buffer, LongList) {
  std::string list;
  std::vector<double> expected;
  for (int i = 0; i < 20000; ++i) {
    list += std::to_string(i) + (i % 3 == 0 ? ".25\n" : " , ");
    expected.push_back(i % 3 == 0 ? i + .25 : i);
  }
  Literal literal("double[20000] {" + list + "}");
  ASSERT_TRUE(literal.read());
  EXPECT_EQ(literal.numbers<double>(), expected);
}

TEST(Buffer, Compressed) {
  const unsigned char bytes[] = {1, 2, 3, 4};
  const std::string packed = text(compress(bytes, sizeof bytes));
  Literal whole("rgba8[1] {" + packed + "}");
  ASSERT_TRUE(whole.read());
  EXPECT_EQ(whole.numbers<unsigned char>(), (std::vector<unsigned char>{1, 2, 3, 4}));
  // Compressed data may have fewer bytes than the buffer. There is no message, and the remaining
  // bytes are zero.
  Literal shorter("rgba8[2] {" + packed.substr(0, 5) + ' ' + packed.substr(5) + "}");
  const LoggedLines log;
  ASSERT_TRUE(shorter.read());
  EXPECT_EQ(shorter.numbers<unsigned char>(), (std::vector<unsigned char>{1, 2, 3, 4, 0, 0, 0, 0}));
  EXPECT_EQ(log.lines(), Lines{});
  EXPECT_EQ(Literal("rgb8[1] {" + packed + "}").error(),
            "PARSE ERROR (1," + std::to_string(packed.size() + 10) +
                "): compressed data is larger than the buffer.");
}

// --- one number ---

template <class Number>
std::string stored(const char* number, DataType type) {
  unsigned char memory[16];
  std::memset(memory, 0xAA, sizeof memory);
  const bool ok = VsaParser().parseElem(number, type, memory);
  for (std::size_t i = ok ? sizeof(Number) : 0; i < sizeof memory; ++i) EXPECT_EQ(memory[i], 0xAA);
  if (!ok) return "refused";
  Number value;
  std::memcpy(&value, memory, sizeof value);
  return std::to_string(value);
}

TEST(ParseElem, EveryComponentType) {
  EXPECT_EQ(stored<std::int8_t>("-128", DataType::Char), "-128");
  EXPECT_EQ(stored<std::int8_t>("128", DataType::Char), "refused");
  EXPECT_EQ(stored<std::uint8_t>("255", DataType::Byte), "255");
  EXPECT_EQ(stored<std::uint8_t>("256", DataType::Byte), "refused");
  EXPECT_EQ(stored<std::int16_t>("-32768", DataType::Int16), "-32768");
  EXPECT_EQ(stored<std::int16_t>("32768", DataType::Int16), "refused");
  EXPECT_EQ(stored<std::int32_t>("2147483647", DataType::Int32), "2147483647");
  EXPECT_EQ(stored<std::int32_t>("2147483648", DataType::Int32), "refused");
  EXPECT_EQ(stored<std::int64_t>("-9223372036854775808", DataType::Int64), "-9223372036854775808");
  EXPECT_EQ(stored<std::uint16_t>("65535", DataType::UInt16), "65535");
  EXPECT_EQ(stored<std::uint16_t>("-1", DataType::UInt16), "refused");
  EXPECT_EQ(stored<std::uint32_t>("4294967295", DataType::UInt32), "4294967295");
  EXPECT_EQ(stored<std::uint64_t>("18446744073709551615", DataType::UInt64),
            "18446744073709551615");
  EXPECT_EQ(stored<float>("1.5", DataType::Float), "1.500000");
  EXPECT_EQ(stored<double>("-.5", DataType::Double), "-0.500000");
  EXPECT_EQ(stored<double>("", DataType::Double), "refused");
}

TEST(ParseElem, WhiteSpaceAroundTheNumber) {
  EXPECT_EQ(stored<std::int32_t>(" 5 ", DataType::Int32), "5");
  EXPECT_EQ(stored<std::uint8_t>("\t5\r\n", DataType::Byte), "5");
  EXPECT_EQ(stored<float>(" 1.5 ", DataType::Float), "1.500000");
  EXPECT_EQ(stored<double>("\v-.5\f", DataType::Double), "-0.500000");
  for (const DataType type :
       {DataType::Char, DataType::Byte, DataType::Int16, DataType::Int32, DataType::Int64,
        DataType::UInt16, DataType::UInt32, DataType::UInt64, DataType::Float, DataType::Double}) {
    EXPECT_EQ(stored<char>("", type), "refused") << dataTypeName(type);
    EXPECT_EQ(stored<char>("  ", type), "refused") << dataTypeName(type);
    EXPECT_EQ(stored<char>("1 2", type), "refused") << dataTypeName(type);
    EXPECT_EQ(stored<char>("\x01"
                           "5",
                           type),
              "refused")
        << dataTypeName(type);
  }
}

TEST(ParseElem, OtherTypesStoreNothing) {
  for (int type = 0; type < 62; ++type) {
    const bool isNumber = type >= 2 && type <= 11;
    if (isNumber) continue;
    EXPECT_EQ(stored<char>("1", static_cast<DataType>(type)), "refused") << type;
  }
}

// A matrix that does not convert leaves components in the payload of the record. The buffer after
// the matrix is read into the same record and uses only the first bytes of the payload. The
// components in the remaining bytes must then be zero.
TEST(Buffer, PayloadAfterTheBufferIsZeroWhenAMatrixFailedBefore) {
  PrimedParser primed("mat3(1 2 3 4 5 6 7 8 1-2) float[2] {1.5 2};");
  AssignInfo info;
  EXPECT_FALSE(primed.parser.scalar(info));
  EXPECT_EQ(info.data.type, AttrType::Mat3);
  EXPECT_EQ(info.data.payload.components[7], 8.0) << "the matrix was converted in part";
  EXPECT_EQ(primed.ahead(), "float [2] {1.5 2}");

  EXPECT_TRUE(primed.parser.buffer(info));
  EXPECT_EQ(info.data.type, AttrType::Buffer);
  EXPECT_EQ(info.data.elementType, static_cast<std::int32_t>(DataType::Float));
  const BufferValue buffer = info.data.payload.buffer;
  EXPECT_EQ(buffer.type, DataType::Float);
  EXPECT_EQ(buffer.count, 2U);
  EXPECT_EQ(buffer.bytes, 8U);
  EXPECT_EQ(buffer.reserved, 0);
  for (std::size_t i = sizeof(BufferValue) / sizeof(double); i < 16; ++i) {
    EXPECT_EQ(info.data.payload.components[i], 0.0) << i;
  }
  std::free(buffer.memory);
}

// In a statement, a buffer after a matrix that does not convert is the assigned value.
TEST(Buffer, FollowsAMatrixThatFailed) {
  HostScene scene;
  const LoggedLines log;
  scene.add("lamp", "a");
  EXPECT_TRUE(VsaParser().parse(
      &scene, "a.x = mat3(1 2 3 4 5 6 7 8 1-2) float[2] {1.5 2}; a.y = mat3(1 0 0 0 1 0 0 0 1);"));
  EXPECT_EQ(log.lines(), Lines{});
  EXPECT_EQ(scene.options.calls, (Lines{"a.createInput x Buffer", "a.x.assign Buffer Float 2",
                                        "a.createInput y Mat3", "a.y.assign Mat3"}));
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
