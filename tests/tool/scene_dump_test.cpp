#include "tools/support/scene_dump.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

namespace vsa_tools {

namespace {

using namespace zn::korvo_sdk;

AttrData stringValue(const char* text) {
  AttrData value{.type = AttrType::String};
  value.payload.string = ::strdup(text);
  return value;
}

AttrData realValue(double real) {
  AttrData value{.type = AttrType::Real};
  value.payload.real = real;
  return value;
}

AttrData intValue(AttrType type, std::int64_t integer) {
  AttrData value{.type = type};
  value.payload.integer = integer;
  return value;
}

AttrData boolValue(bool boolean) {
  AttrData value{.type = AttrType::Bool};
  value.payload.boolean = boolean;
  return value;
}

AttrData vec3Value(double x, double y, double z) {
  AttrData value{.type = AttrType::Vec3};
  value.payload.components[0] = x;
  value.payload.components[1] = y;
  value.payload.components[2] = z;
  return value;
}

template <class Number>
AttrData bufferValue(DataType type, std::initializer_list<Number> numbers) {
  const size_t bytes = numbers.size() * sizeof(Number);
  AttrData value{.type = AttrType::Buffer, .elementType = static_cast<std::int32_t>(type)};
  value.payload.buffer = {static_cast<unsigned char*>(std::malloc(bytes)),
                          numbers.size() / componentCount(type), bytes, type, 0};
  std::memcpy(value.payload.buffer.memory, numbers.begin(), bytes);
  return value;
}

/// One input of every kind of value, two links, and nesting.
void fill(Scene& scene) {
  scene.setFileVersion(3);
  scene.setFileTime("2024-01-01");
  scene.pushFileComment("# version: 3");
  Node* material = scene.createNode("surface", "mat1", "");
  Node* lamp = scene.createNode("lamp", "lamp1", "");
  lamp->createInput("count", AttrType::Int)->assign(intValue(AttrType::Int, -3));
  lamp->createInput("mask", AttrType::UInt)->assign(intValue(AttrType::UInt, -1));
  lamp->createInput("on", AttrType::Bool)->assign(boolValue(true));
  lamp->createInput("power", AttrType::Real)->assign(realValue(2.5));
  lamp->createInput("label", AttrType::String)
      ->assign(stringValue("a \"b\" \\ \x1B \xC3\xA6 \xE2\x82"));
  lamp->createInput("pos", AttrType::Vec3)->assign(vec3Value(1, -0.0, HUGE_VAL));
  lamp->createInput("ids", AttrType::Buffer)
      ->assign(bufferValue<std::int32_t>(DataType::Int32, {0, 1, -2}));
  lamp->createInput("uvs", AttrType::Buffer)
      ->assign(bufferValue<float>(DataType::Vec2f, {0.1f, 1.0f}));
  lamp->createInput("none", AttrType::Buffer);
  lamp->createInput("material", AttrType::Node)->setNode(material);
  lamp->createInput("nobody", AttrType::Node);
  lamp->createInput("free", AttrType::Null);
  lamp->createInput("tint", AttrType::Null)->connect(material->output("outColor"));
  Input* keys = lamp->createArray("keys", AttrType::Int);
  keys->appendElement();
  keys->appendElement();
  keys->element(1);
  lamp->createInput("lens", AttrType::Object)
      ->createInput("fstop", AttrType::Real)
      ->assign(realValue(2.8));
}

ReadOutcome outcome() {
  return {true,
          std::nullopt,
          {{zn::LogLevel::Warning, "ends in a blank "}, {zn::LogLevel::Error, "a\nb"}}};
}

TEST(DumpJsonTest, WritesTheWholeScene) {
  Scene scene;
  fill(scene);
  TextOutput out;
  dumpJson(outcome(), scene, out);
  EXPECT_EQ(
      out.text(),
      R"({"result":true,"escaped":null,"log":[{"level":"warning","text":"ends in a blank "},)"
      R"({"level":"error","text":"a\nb"}],"fileVersion":3,"fileTime":"2024-01-01",)"
      R"("fileComments":["# version: 3"],"nodes":[)"
      "\n"
      R"({"type":"surface","name":"mat1","inputs":[]},)"
      "\n"
      R"({"type":"lamp","name":"lamp1","inputs":[{"name":"count","type":"Int","value":-3},)"
      R"({"name":"mask","type":"UInt","value":18446744073709551615},)"
      R"({"name":"on","type":"Bool","value":true},{"name":"power","type":"Real","value":2.5},)"
      R"({"name":"label","type":"String","value":"a \"b\" \\ \u001b )"
      "\xC3\xA6 \xEF\xBF\xBD\xEF\xBF\xBD"
      R"("},{"name":"pos","type":"Vec3","value":[1,-0.0,"inf"]},)"
      R"({"name":"ids","type":"Buffer","bufferType":"Int32","count":3,"value":[0,1,-2]},)"
      R"({"name":"uvs","type":"Buffer","bufferType":"Vec2f","count":1,"value":[0.1,1]},)"
      R"({"name":"none","type":"Buffer","bufferType":"Null","count":0,"value":[]},)"
      R"({"name":"material","type":"Node","value":"mat1"},{"name":"nobody","type":"Node","value":null},)"
      R"({"name":"free","type":"Null","value":null},)"
      R"({"name":"tint","type":"Null","value":null,"connection":"mat1.outColor"},)"
      R"({"name":"keys","type":"Array","elementType":"Int","elements":)"
      R"([{"type":"Int","value":0},{"type":"Int","value":0}]},)"
      R"({"name":"lens","type":"Object","members":[{"name":"fstop","type":"Real","value":2.8}]}]})"
      "\n]}\n");
  EXPECT_TRUE(nlohmann::json::accept(out.text()));
}

TEST(DumpJsonTest, WritesAnEmptyScene) {
  TextOutput out;
  dumpJson({false, "INVALID TOKEN (1,0): '}'", {}}, Scene(), out);
  EXPECT_EQ(
      out.text(),
      R"({"result":false,"escaped":"INVALID TOKEN (1,0): '}'","log":[],"fileVersion":0,"fileTime":"",)"
      R"("fileComments":[],"nodes":[]})"
      "\n");
}

TEST(DumpJsonTest, LeavesRemovedNodesOut) {
  Scene scene;
  scene.createNode("a", "first", "");
  scene.createNode("a", "second", "");
  scene.removeNode("first");
  TextOutput out;
  dumpJson({}, scene, out);
  const auto json = nlohmann::json::parse(out.text());
  ASSERT_EQ(1u, json["nodes"].size());
  EXPECT_EQ("second", json["nodes"][0]["name"]);
}

TEST(DumpJsonTest, KeepsEveryTextReadable) {
  std::string all;
  for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
  Scene scene;
  scene.setFileTime(zn::String(all.c_str()));
  TextOutput out;
  dumpJson({}, scene, out);
  const std::string read = nlohmann::json::parse(out.text())["fileTime"];
  EXPECT_EQ(all.substr(0, 127), read.substr(0, 127));
  EXPECT_EQ(127u + 128 * 3, read.size());
}

TEST(DumpCaseTest, WritesTheForm) {
  Scene scene;
  fill(scene);
  TextOutput out;
  dumpCase(outcome(), scene, out);
  EXPECT_EQ(out.text(), R"(result true
log
  warning ends in a blank $
  error a\nb
scene
  fileVersion 3
  fileTime "2024-01-01"
  comment "# version: 3"
  node surface mat1
  node lamp lamp1
    count Int -3
    mask UInt 18446744073709551615
    on Bool true
    power Real 2.5
    label String "a \"b\" \\ \x1b )"
                        "\xC3\xA6"
                        R"( \xe2\x82"
    pos Vec3 [1, -0.0, inf]
    ids Buffer Int32 3 [0, 1, -2]
    uvs Buffer Vec2f 1 [0.1, 1]
    none Buffer Null 0 []
    material Node mat1
    nobody Node null
    free Null
    tint Null <- mat1.outColor
    keys Array Int
      [0] Int 0
      [1] Int 0
    lens Object
      fstop Real 2.8
)");
}

TEST(DumpCaseTest, WritesTheResultAlone) {
  TextOutput out;
  dumpCase({false, "costs 5 $", {}}, Scene(), out);
  EXPECT_EQ("result throws costs 5 $$\n", out.text());
}

}  // namespace

}  // namespace vsa_tools
