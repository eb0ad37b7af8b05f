// Tests that the rules about what a text can represent agree with the reader. What a rule allows is
// read back from a text without any change. What a rule refuses, no text can represent.
#include <vsa/text_rules.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/api/scene_of.h"

namespace {

using api_test::sceneOf;
using vsa::EditError;
using vsa::ElementType;

bool isReadInto(vsa::Scene& scene, const std::string& text) {
  vsa_tools::LogCapture log;
  const zn::ScopedLogSink scope(&log);
  try {
    return zn::korvo_sdk::impl::parseString(&scene.plain(), zn::String::copyOf(text));
  } catch (const std::runtime_error&) {
    return false;
  }
}

bool isRead(const std::string& text) {
  vsa::Scene scene;
  return isReadInto(scene, text);
}

// Returns whether the reader accepts the name as the name of a node, input, member and output.
bool isReadAsName(const std::string& name) {
  if (!isRead("t " + name + ": ." + name + "." + name + " = " + name + "; .o |= " + name + "." +
              name + ";")) {
    return false;
  }
  const vsa::Scene scene = sceneOf("t " + name + ": ." + name + "." + name + " = " + name + ";");
  return scene[name] && scene[name][name][name].node() == scene[name];
}

TEST(TextRules, NamesAreWhatTheReaderTakesForNames) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string c(1, static_cast<char>(byte));
    for (const std::string& name : {c, "a" + c, "a" + c + "b", "_" + c}) {
      EXPECT_EQ(vsa::isName(name), isReadAsName(name)) << byte << " in " << name;
    }
  }
  for (const std::string word : {"true", "FALSE", "nUlL"}) {
    EXPECT_FALSE(vsa::isName(word));
    EXPECT_FALSE(isReadAsName(word));
    EXPECT_TRUE(vsa::isName(word + "_"));
    EXPECT_TRUE(isReadAsName(word + "_"));
  }
  for (const std::string word : {"with", "vec3", "float", "nan", "inf", "remove", "define"}) {
    EXPECT_TRUE(vsa::isName(word));
    EXPECT_TRUE(isReadAsName(word)) << word;
  }
  EXPECT_FALSE(vsa::isName(""));
}

TEST(TextRules, OutputsMayHaveBracketLists) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string c(1, static_cast<char>(byte));
    for (const std::string& name :
         {"out[" + c + "]", "out[1]" + c, "out" + c + "[1]", "out[1][" + c + "2]"}) {
      vsa::Scene scene;
      const bool isConnected = isReadInto(scene, "t a: .x |= a." + name + ";") &&
                               scene["a"]["x"].connection().output() == name;
      EXPECT_EQ(vsa::isOutputName(name), isConnected) << byte << " in " << name;
    }
  }
  EXPECT_TRUE(vsa::isOutputName("out[ 1 ][*]"));
  EXPECT_FALSE(vsa::isOutputName("[1]"));
  EXPECT_FALSE(vsa::isOutputName("out[1"));
}

TEST(TextRules, TypesOfNodesMayBeStatementWords) {
  for (const std::string word : {"remove", "define", "with"}) {
    EXPECT_EQ(sceneOf(word + " x:")["x"].type(), word);
  }
}

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double QUIET = std::numeric_limits<double>::quiet_NaN();

TEST(TextRules, RealsAreWhatTheReaderCanMake) {
  EXPECT_TRUE(vsa::checkReal(-0.0));
  EXPECT_TRUE(vsa::checkReal(std::numeric_limits<double>::denorm_min()));
  EXPECT_TRUE(vsa::checkReal(-INFINITE));
  EXPECT_TRUE(vsa::checkReal(-QUIET));
  EXPECT_EQ(vsa::checkReal(INFINITE), EditError::PlusInfinity);
  EXPECT_EQ(vsa::checkReal(QUIET), EditError::NotANumber);
  const auto bits = [](std::string_view text) {
    return std::bit_cast<std::uint64_t>(*sceneOf(text)["a"]["x"].real());
  };
  EXPECT_EQ(bits("t a: .x = -nan;"), std::bit_cast<std::uint64_t>(-QUIET));
  EXPECT_EQ(bits("t a: .x = -inf;"), std::bit_cast<std::uint64_t>(-INFINITE));
  EXPECT_EQ(bits("t a: .x = -0.0;"), std::bit_cast<std::uint64_t>(-0.0));
  EXPECT_FALSE(isRead("t a: .x = 1.0e999;"));
  // "inf" is read as a reference to a node, and not as a number.
  EXPECT_FALSE(sceneOf("t a: .x = inf;")["a"]["x"].real());
}

TEST(TextRules, ANaNHasTheBitsOfTheReader) {
  const double other = std::bit_cast<double>(std::uint64_t{0xFFF8000000000001});
  EXPECT_EQ(vsa::checkReal(other), vsa::EditError::NotANumber);
  EXPECT_TRUE(vsa::checkReal(-std::numeric_limits<double>::quiet_NaN()));
}

TEST(TextRules, ListsHaveBothInfinitiesAndTwoNaNs) {
  const vsa::Scene scene = sceneOf("t a: .x = vec4(inf -inf nan -nan);");
  const std::span<const double> read = scene["a"]["x"].components();
  EXPECT_TRUE(vsa::checkNumbers(read));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(read[2]), std::bit_cast<std::uint64_t>(QUIET));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(read[3]), std::bit_cast<std::uint64_t>(-QUIET));
  const double other[] = {1.0, std::bit_cast<double>(std::bit_cast<std::uint64_t>(QUIET) + 1)};
  EXPECT_EQ(vsa::checkNumbers(other), EditError::NotANumber);
}

TEST(TextRules, BuffersHaveTheSameNumbers) {
  const vsa::Scene scene =
      sceneOf("t a: .x = float[4] {inf -inf nan -nan}; .y = double[2] {nan -nan};");
  EXPECT_TRUE(vsa::checkBuffer(ElementType::Float, scene["a"]["x"].buffer().bytes()));
  EXPECT_TRUE(vsa::checkBuffer(ElementType::Double, scene["a"]["y"].buffer().bytes()));
  const float single[] = {std::bit_cast<float>(0x7FC00001U)};
  EXPECT_EQ(vsa::checkBuffer(ElementType::Float, std::as_bytes(std::span(single))),
            EditError::NotANumber);
  EXPECT_TRUE(vsa::checkBuffer(ElementType::Int32, std::as_bytes(std::span(single))));
  const double other[] = {std::bit_cast<double>(0x7FF0000000000001ULL)};
  EXPECT_EQ(vsa::checkBuffer(ElementType::Double, std::as_bytes(std::span(other))),
            EditError::NotANumber);
  EXPECT_EQ(vsa::checkBuffer(ElementType::Vec3f, std::as_bytes(std::span(other))),
            EditError::BufferSize);
}

TEST(TextRules, BufferTypesAreThoseWithAKeyword) {
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT + 1; ++i) {
    const auto type = static_cast<ElementType>(i);
    const std::string keyword(vsa::typeName(type));
    EXPECT_EQ(vsa::checkBuffer(type, {}) == EditError::None,
              isRead("t a: .x = " + keyword + "[0] {};"))
        << keyword;
  }
}

TEST(TextRules, StringsHaveAnyByteButNul) {
  std::string all;
  std::string text = "t a: .x = \"";
  for (int byte = 1; byte < 256; ++byte) {
    const auto c = static_cast<char>(byte);
    all += c;
    if (c == '"' || c == '\\') text += '\\';
    text += byte == 0xFF ? std::string("\\xff") : std::string(1, c);
  }
  EXPECT_TRUE(vsa::checkString(all));
  EXPECT_EQ(sceneOf(text + "\";")["a"]["x"].string(), all);
  EXPECT_EQ(vsa::checkString(std::string(1, '\0')), EditError::NulCharacter);
  EXPECT_EQ(sceneOf(R"(t a: .x = "\x00";)")["a"]["x"].string(), R"(\x00)");
}

TEST(TextRules, CommentsAreLines) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string comment = std::string("# a") + static_cast<char>(byte) + "b";
    vsa::Scene scene;
    const bool isKept = isReadInto(scene, comment) && scene.comments().size() == 1 &&
                        scene.comments()[0] == comment;
    EXPECT_EQ(vsa::checkComment(comment) == EditError::None, isKept) << byte;
  }
  EXPECT_EQ(vsa::checkComment("# colour conversion: linear"), EditError::BadVersionComment);
  EXPECT_TRUE(vsa::checkComment("# version: 18446744073709551615"));
  EXPECT_TRUE(vsa::checkComment("# lifetime: 4 s"));
}

TEST(TextRules, TimesStandInOneComment) {
  for (const std::string time : {"noon", "2024-05-14 09:30:00", "a: b", "#"}) {
    EXPECT_TRUE(vsa::checkTime(time));
    EXPECT_EQ(sceneOf("# time: " + time).fileTime(), time);
  }
  for (const std::string time : {" noon", "noon ", "a\tversion: b", "\v"}) {
    EXPECT_EQ(vsa::checkTime(time), EditError::BadTime) << time;
    EXPECT_NE(sceneOf("# time: " + time).fileTime(), time);
  }
  for (const std::string time : {"a\nb", "a\rb", "a\xFF"}) {
    EXPECT_EQ(vsa::checkTime(time), EditError::BadTime);
    EXPECT_EQ(vsa::Scene().setFileTime(time), EditError::BadTime);
  }
  EXPECT_EQ(vsa::checkTime(std::string_view("a\0b", 3)), EditError::NulCharacter);
}

}  // namespace
