// Tests of the layout options for writing a text.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/write/round_trip.h"
#include "tests/write/scene_builder.h"

namespace vsa_tests {

namespace {

using vsa::WriteOptions;
using zn::korvo_sdk::AttrType;
using zn::korvo_sdk::DataType;
using zn::korvo_sdk::Scene;

constexpr char TEXT[] =
    "# version: 2\n# made by hand\nlamp sun: .power = 2.5; .count = 3u; .color = rgba(1 0.5 "
    "1e-5);\n"
    ".color |= dusk.out; .target = ball; .tags[*] = \"a\\nb\"; .keys[*].time = 100000.0;\n"
    "sky dusk; ball ball: .points = pos3f[2] {0 0 0, 1 0.1 0}; .on = true; .none |= null;\n";

std::string written(const WriteOptions& options = {}) {
  Scene scene;
  static_cast<void>(readInto(scene, TEXT));
  return vsa::writeText(scene, options).text;
}

TEST(Layout, Blocks) {
  EXPECT_EQ(written(),
            "# version: 2\n# made by hand\n"
            "\nlamp sun:\n"
            "  .power = 2.5;\n"
            "  .count = 3u;\n"
            "  .color = rgba(1 0.5 1e-5 1);\n"
            "  .color |= dusk.out;\n"
            "  .target = ball;\n"
            "  .tags[0] = \"a\\nb\";\n"
            "  .keys[0].time = 1.0e5;\n"
            "sky dusk;\n"
            "\nball ball:\n"
            "  .points = pos3f[2] {0 0 0 1 0.1 0};\n"
            "  .on = true;\n"
            "  .none |= null;\n");
}

TEST(Layout, FullPaths) {
  WriteOptions options;
  options.paths = vsa::PathForm::Full;
  options.header = vsa::HeaderForm::None;
  EXPECT_EQ(written(options),
            "lamp sun;\n"
            "sun.power = 2.5;\n"
            "sun.count = 3u;\n"
            "sun.color = rgba(1 0.5 1e-5 1);\n"
            "sun.color |= dusk.out;\n"
            "sun.target = ball;\n"
            "sun.tags[0] = \"a\\nb\";\n"
            "sun.keys[0].time = 1.0e5;\n"
            "sky dusk;\n"
            "ball ball;\n"
            "ball.points = pos3f[2] {0 0 0 1 0.1 0};\n"
            "ball.on = true;\n"
            "ball.none |= null;\n");
}

TEST(Layout, LinksLastByName) {
  WriteOptions options;
  options.links = vsa::LinkPlace::Last;
  options.order = vsa::NodeOrder::Name;
  options.header = vsa::HeaderForm::None;
  EXPECT_EQ(written(options),
            "ball ball:\n"
            "  .points = pos3f[2] {0 0 0 1 0.1 0};\n"
            "  .on = true;\n"
            "  .none |= null;\n"
            "sky dusk;\n"
            "\nlamp sun:\n"
            "  .power = 2.5;\n"
            "  .count = 3u;\n"
            "  .color = rgba(1 0.5 1e-5 1);\n"
            "  .target = null;\n"
            "  .tags[0] = \"a\\nb\";\n"
            "  .keys[0].time = 1.0e5;\n"
            "sun.color |= dusk.out;\n"
            "sun.target = ball;\n");
}

TEST(Layout, CompressedBytes) {
  Scene scene;
  static_cast<void>(readInto(scene,
                             "image i: .pixels = rgb8[2] {1 2 3 1 2 3}; .none = byte[0] {};"
                             ".f = float[1] {1};"));
  WriteOptions options;
  options.buffers = vsa::BufferForm::Compressed;
  const std::string text = vsa::writeText(scene, options).text;
  EXPECT_NE(text.find(".pixels = rgb8[2] {.78"), std::string::npos) << text;
  EXPECT_NE(text.find(".none = byte[0] {};"), std::string::npos) << text;
  EXPECT_NE(text.find(".f = float[1] {1};"), std::string::npos) << text;
}

/// Returns the lines of a text with one buffer of zeros. Expects that the text is read back as the
/// same scene.
std::vector<std::string> linesOf(DataType type, std::size_t count, const WriteOptions& options) {
  SceneBuilder made;
  const std::size_t bytes = count * zn::korvo_sdk::elementBytes(type);
  SceneBuilder::setBuffer(made.input("x", AttrType::Buffer), type,
                          std::vector<unsigned char>(bytes));
  expectCarried(made.scene, options);
  std::istringstream text(vsa::writeText(made.scene, options).text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

std::size_t numbersIn(const std::string& line) {
  return static_cast<std::size_t>(std::count(line.begin(), line.end(), '0'));
}

TEST(Layout, LinesAreNoLongerThanTheWidth) {
  WriteOptions options;
  for (const std::size_t width : {20, 40, 41, 42, 43, 120}) {
    options.lineWidth = width;
    for (const DataType type : {DataType::Byte, DataType::Vec3f, DataType::Mat4d}) {
      for (const std::string& line : linesOf(type, 200, options)) {
        EXPECT_LE(line.size(), std::max<std::size_t>(width, 28)) << line;
      }
    }
  }
}

// The last line has the closing brace and the semicolon, too. With enough counts, it is full for
// one of them.
TEST(Layout, TheLastLineIsNoLongerThanTheWidth) {
  WriteOptions options;
  for (const std::size_t width : {24, 25, 40}) {
    options.lineWidth = width;
    std::size_t longest = 0;
    for (std::size_t count = 1; count <= 50; ++count) {
      const std::vector<std::string> lines = linesOf(DataType::Byte, count, options);
      longest = std::max(longest, lines.back().size());
    }
    EXPECT_GE(longest + 1, width);
    EXPECT_LE(longest, width);
  }
}

TEST(Layout, LinesAreFull) {
  WriteOptions options;
  options.lineWidth = 40;
  const std::vector<std::string> lines = linesOf(DataType::Byte, 200, options);
  for (std::size_t i = 2; i + 1 < lines.size(); ++i) EXPECT_GE(lines[i].size(), 38u);
}

TEST(Layout, ElementsAndRowsStayTogether) {
  WriteOptions options;
  options.lineWidth = 30;
  for (const auto& [type, unit] : {std::pair{DataType::Vec3f, 3u},
                                   {DataType::Rgba8, 4u},
                                   {DataType::Mat3d, 3u},
                                   {DataType::Mat4f, 4u}}) {
    const std::vector<std::string> lines = linesOf(type, 100, options);
    ASSERT_GT(lines.size(), 20u);
    for (std::size_t i = 2; i < lines.size(); ++i) EXPECT_EQ(numbersIn(lines[i]) % unit, 0u);
  }
}

TEST(Layout, NumbersPerLine) {
  WriteOptions options;
  options.numbersPerLine = 7;
  const std::vector<std::string> lines = linesOf(DataType::Vec3f, 100, options);
  ASSERT_EQ(lines.size(), 1u + (300 + 6) / 7);
  for (std::size_t i = 2; i + 1 < lines.size(); ++i) EXPECT_EQ(numbersIn(lines[i]), 7u);
}

TEST(Layout, UnbrokenLists) {
  WriteOptions options;
  options.lineWidth = 0;
  EXPECT_EQ(linesOf(DataType::Double, 5000, options).size(), 2u);
}

TEST(Layout, ManyNodesByName) {
  Scene scene;
  for (std::uint64_t i = 0; i < 150000; ++i) {
    scene.createNode("t", ("n" + std::to_string(i * 7919 % 150000)).c_str(), "");
  }
  WriteOptions options;
  options.order = vsa::NodeOrder::Name;
  std::istringstream text(vsa::writeText(scene, options).text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);)
    lines.push_back(line.substr(2, line.size() - 3));
  EXPECT_EQ(lines.size(), 150000u);
  EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
}

}  // namespace

}  // namespace vsa_tests
