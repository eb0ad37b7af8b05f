// Tests of scenes with extreme values of every type. Reading their text gives the same bits and
// logs nothing.
#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <limits>
#include <random>

#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Input;
using zn::korvo_sdk::Scene;

constexpr double EXTREMES[] = {0.0,
                               -0.0,
                               1.0,
                               -1.0,
                               0.1,
                               1e-5,
                               1e5,
                               DBL_MAX,
                               -DBL_MAX,
                               DBL_MIN,
                               DBL_TRUE_MIN,
                               1e22,
                               1e23,
                               -DBL_TRUE_MIN,
                               1e300,
                               1e-300,
                               0.3,
                               5e-324,
                               123456789012345680.0};

std::uint64_t bitsOf(double value) {
  return std::bit_cast<std::uint64_t>(value);
}

/// Writes `scene`, reads the text into `again`, and returns the input `name` of node `n`.
Input& reread(const Scene& scene, Scene& again, const char* name,
              const vsa::WriteOptions& options = {}) {
  const vsa::TextResult written = vsa::writeText(scene, options);
  EXPECT_TRUE(written.isWritten()) << written.message;
  EXPECT_TRUE(readInto(again, written.text).result) << written.text;
  zn::korvo_sdk::Node& node = *again.findNode("n");
  EXPECT_TRUE(node.hasInput(name, AttrType::Null)) << written.text;
  return *node.input(name);
}

TEST(ValueRoundTrip, RealsKeepTheirBits) {
  for (const double value : EXTREMES) {
    SceneBuilder made;
    SceneBuilder::setReal(made.input("x", AttrType::Real), value);
    Scene again;
    EXPECT_EQ(bitsOf(reread(made.scene, again, "x").real()), bitsOf(value)) << value;
    expectCarried(made.scene);
  }
}

TEST(ValueRoundTrip, MinusInfinityAndMinusNanStandAlone) {
  for (const double value : {-INF, -NAN_OF_TEXT}) {
    SceneBuilder made;
    SceneBuilder::setReal(made.input("x", AttrType::Real), value);
    Scene again;
    EXPECT_EQ(bitsOf(reread(made.scene, again, "x").real()), bitsOf(value)) << value;
  }
}

TEST(ValueRoundTrip, IntegersKeepTheirBits) {
  for (const AttrType type : {AttrType::Int, AttrType::UInt}) {
    for (const std::int64_t value : {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, INT64_MAX,
                                     INT64_MIN, INT64_MIN + 1}) {
      SceneBuilder made;
      SceneBuilder::setInteger(made.input("x", type), value);
      Scene again;
      EXPECT_EQ(reread(made.scene, again, "x").integer(), value);
      expectCarried(made.scene);
    }
  }
}

TEST(ValueRoundTrip, EveryByteButNulStandsInAString) {
  std::string text;
  for (int byte = 1; byte < 256; ++byte) text += static_cast<char>(byte);
  for (int byte = 1; byte < 256; ++byte) {
    (text += static_cast<char>(byte)) += '"';
    (text += '\\') += static_cast<char>(byte);
  }
  for (const std::string& value :
       {text, std::string(), std::string("\\"), std::string("\""), std::string("\\\""),
        std::string("\\x41\\u0041\\n"), std::string(20000, '"')}) {
    SceneBuilder made;
    SceneBuilder::setString(made.input("x", AttrType::String), value);
    Scene again;
    EXPECT_EQ(reread(made.scene, again, "x").string(), value);
    expectCarried(made.scene);
  }
}

TEST(ValueRoundTrip, TuplesKeepTheirBits) {
  std::vector<double> numbers(std::begin(EXTREMES), std::end(EXTREMES));
  for (const double value : {INF, -INF, NAN_OF_TEXT, -NAN_OF_TEXT}) numbers.push_back(value);
  std::mt19937_64 random(1);
  for (const AttrType type :
       {AttrType::Vec2, AttrType::Vec3, AttrType::Vec4, AttrType::Pos2, AttrType::Pos3,
        AttrType::Quat, AttrType::Rgba, AttrType::Mat3, AttrType::Mat4}) {
    for (int round = 0; round < 20; ++round) {
      std::vector<double> values(zn::korvo_sdk::componentCount(type));
      for (double& value : values) value = numbers[random() % numbers.size()];
      SceneBuilder made;
      SceneBuilder::setComponents(made.input("x", type), values);
      Scene again;
      const double* const read = reread(made.scene, again, "x").components();
      ASSERT_NE(read, nullptr);
      for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(bitsOf(read[i]), bitsOf(values[i]));
    }
  }
}

/// Returns random bytes for elements of `type`. If the components are floats or doubles, each NaN
/// among them is one that a text can represent.
std::vector<unsigned char> carriedBytes(DataType type, std::size_t count, std::uint64_t seed) {
  std::mt19937_64 random(seed);
  std::vector<unsigned char> bytes(count * zn::korvo_sdk::elementBytes(type));
  const DataType component = zn::korvo_sdk::componentType(type);
  const std::size_t width = zn::korvo_sdk::componentBytes(type);
  for (std::size_t i = 0; i < bytes.size(); i += width) {
    std::uint64_t bits = random();
    const bool isExtreme = random() % 8 == 0;
    if (isExtreme) bits = random() % 2 == 0 ? 0 : ~std::uint64_t{0};
    if (component == DataType::Float) {
      constexpr std::uint32_t SPECIAL[] = {0x7FC00000, 0xFFC00000, 0x7F800000, 0xFF800000,
                                           0x80000000, 1,          0x007FFFFF, 0x7F7FFFFF};
      const auto word = static_cast<std::uint32_t>(bits);
      bits = (word & 0x7F800000) == 0x7F800000 ? SPECIAL[random() % 8] : word;
    } else if (component == DataType::Double && (bits >> 52 & 0x7FF) == 0x7FF) {
      constexpr std::uint64_t SPECIAL[] = {0x7FF8000000000000, 0xFFF8000000000000,
                                           0x7FF0000000000000, 0xFFF0000000000000,
                                           0x8000000000000000, 1};
      bits = SPECIAL[random() % 6];
    }
    std::memcpy(&bytes[i], &bits, width);
  }
  return bytes;
}

TEST(ValueRoundTrip, BuffersOfEveryTypeKeepTheirBits) {
  std::vector<vsa::WriteOptions> forms(3);
  forms[1].buffers = vsa::BufferForm::Compressed;
  forms[2].numbersPerLine = 3;
  for (int index = 0; index < zn::korvo_sdk::DATA_TYPE_COUNT; ++index) {
    const auto type = static_cast<DataType>(index);
    if (!zn::korvo_sdk::isBufferElement(type)) continue;
    for (const std::size_t count : {0, 1, 2, 5, 1000}) {
      const std::vector<unsigned char> bytes = carriedBytes(type, count, count);
      SceneBuilder made;
      SceneBuilder::setBuffer(made.input("x", AttrType::Buffer), type, bytes.data(), bytes.size());
      for (const vsa::WriteOptions& form : forms) {
        Scene again;
        const auto read = reread(made.scene, again, "x", form).buffer();
        EXPECT_EQ(read.type, type);
        ASSERT_EQ(read.count, count);
        ASSERT_EQ(read.bytes, bytes.size());
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), read.memory))
            << zn::korvo_sdk::dataTypeName(type);
        expectCarried(made.scene, form);
      }
    }
  }
}

TEST(ValueRoundTrip, ZeroValuesAreInputs) {
  SceneBuilder made;
  for (const AttrType type :
       {AttrType::Null, AttrType::Bool, AttrType::Int, AttrType::UInt, AttrType::Real,
        AttrType::Vec2, AttrType::Vec3, AttrType::Vec4, AttrType::Pos2, AttrType::Pos3,
        AttrType::Quat, AttrType::Rgba, AttrType::Mat3, AttrType::Mat4, AttrType::String,
        AttrType::Node, AttrType::Object}) {
    const std::string name = std::string("in") + zn::korvo_sdk::attrTypeName(type);
    made.input(name.c_str(), type);
  }
  expectCarried(made.scene);
}

}  // namespace

}  // namespace vsa_tests
