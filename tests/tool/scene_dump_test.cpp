#include "tools/scene_text/scene_dump.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>
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

/// Sets the header of the scene and adds two nodes. One of them has inputs of most types, one
/// reference, one connection, an array and an object.
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
  return {{true, std::nullopt},
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
  dumpJson({{false, "INVALID TOKEN (1,0): '}'"}, {}}, Scene(), out);
  EXPECT_EQ(
      out.text(),
      R"({"result":false,"escaped":"INVALID TOKEN (1,0): '}'","log":[],"fileVersion":0,"fileTime":"",)"
      R"("fileComments":[],"nodes":[]})"
      "\n");
}

TEST(DumpJsonTest, OmitsRemovedNodes) {
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

TEST(DumpJsonTest, EveryByteGivesValidJson) {
  std::string all;
  for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
  Scene scene;
  scene.setFileTime(zn::String(all.c_str()));
  TextOutput out;
  dumpJson({}, scene, out);
  const std::string read = nlohmann::json::parse(out.text())["fileTime"];
  EXPECT_EQ(all.substr(0, 127), read.substr(0, 127));
  EXPECT_EQ(127u + 128 * 3, read.size());
  EXPECT_EQ(out.text().find('\x7F'), std::string::npos);
}

/// Returns the lines about nodes in a dump of the scene. The log and the header must be empty.
std::string nodesOf(const Scene& scene) {
  constexpr std::string_view HEAD =
      R"({"result":true,"escaped":null,"log":[],"fileVersion":0,"fileTime":"","fileComments":[],)"
      "\"nodes\":[\n";
  constexpr std::string_view TAIL = "\n]}\n";
  TextOutput out;
  dumpJson({{true, std::nullopt}, {}}, scene, out);
  const std::string& text = out.text();
  EXPECT_TRUE(nlohmann::json::accept(text)) << text;
  EXPECT_TRUE(text.starts_with(HEAD) && text.ends_with(TAIL)) << text;
  return text.substr(HEAD.size(), text.size() - HEAD.size() - TAIL.size());
}

TEST(DumpJsonTest, AConnectionIsTheLastKey) {
  Scene scene;
  Node* node = scene.createNode("lamp", "a", "");
  Output* output = node->output("out");
  node->createInput("i", AttrType::Int)->connect(output);
  node->createInput("v", AttrType::Vec3)->connect(output);
  Input* ids = node->createInput("ids", AttrType::Buffer);
  ids->assign(bufferValue<std::int32_t>(DataType::Int32, {5}));
  ids->connect(output);
  Input* keys = node->createArray("keys", AttrType::Int);
  keys->appendElement();
  keys->element(0)->connect(output);
  keys->connect(output);
  Input* lens = node->createInput("lens", AttrType::Object);
  lens->createInput("f", AttrType::Bool)->connect(output);
  lens->connect(output);
  node->createInput("n", AttrType::Node)->connect(output);
  EXPECT_EQ(
      nodesOf(scene),
      R"({"type":"lamp","name":"a","inputs":[{"name":"i","type":"Int","value":0,"connection":"a.out"},)"
      R"({"name":"v","type":"Vec3","value":[0,0,0],"connection":"a.out"},)"
      R"({"name":"ids","type":"Buffer","bufferType":"Int32","count":1,"value":[5],"connection":"a.out"},)"
      R"({"name":"keys","type":"Array","elementType":"Int","elements":[)"
      R"({"type":"Int","value":0,"connection":"a.out"}],"connection":"a.out"},)"
      R"({"name":"lens","type":"Object","members":[)"
      R"({"name":"f","type":"Bool","value":false,"connection":"a.out"}],"connection":"a.out"},)"
      R"({"name":"n","type":"Node","value":null,"connection":"a.out"}]})");
}

TEST(DumpJsonTest, ElementsHaveTheKeysOfInputsExceptName) {
  Scene scene;
  Node* node = scene.createNode("lamp", "a", "");
  Input* objects = node->createArray("o", AttrType::Object);
  objects->appendElement();
  objects->element(0)->createInput("x", AttrType::Int);
  objects->appendElement();
  Input* arrays = node->createArray("r", AttrType::Array);
  arrays->appendElement();
  arrays->element(0)->set(
      {.type = AttrType::Array, .elementType = static_cast<int>(AttrType::Real)});
  arrays->element(0)->appendElement();
  arrays->appendElement();
  Input* buffers = node->createArray("b", AttrType::Buffer);
  buffers->appendElement();
  buffers->element(0)->assign(bufferValue<float>(DataType::Vec2f, {1, 2, 3, 4}));
  Input* nodes = node->createArray("n", AttrType::Node);
  nodes->appendElement();
  nodes->element(0)->setNode(node);
  node->createArray("none", AttrType::Null);
  EXPECT_EQ(nodesOf(scene),
            R"({"type":"lamp","name":"a","inputs":[)"
            R"({"name":"o","type":"Array","elementType":"Object","elements":[)"
            R"({"type":"Object","members":[{"name":"x","type":"Int","value":0}]},)"
            R"({"type":"Object","members":[]}]},)"
            R"({"name":"r","type":"Array","elementType":"Array","elements":[)"
            R"({"type":"Array","elementType":"Real","elements":[{"type":"Real","value":0}]},)"
            R"({"type":"Array","elementType":"Null","elements":[]}]},)"
            R"({"name":"b","type":"Array","elementType":"Buffer","elements":[)"
            R"({"type":"Buffer","bufferType":"Vec2f","count":2,"value":[1,2,3,4]}]},)"
            R"({"name":"n","type":"Array","elementType":"Node","elements":[)"
            R"({"type":"Node","value":"a"}]},)"
            R"({"name":"none","type":"Array","elementType":"Null","elements":[]}]})");
}

TEST(DumpJsonTest, NonFiniteRealsAreStrings) {
  constexpr double INF = std::numeric_limits<double>::infinity();
  constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
  Scene scene;
  Node* node = scene.createNode("lamp", "a", "");
  node->createInput("a", AttrType::Real)->assign(realValue(NOT_A_NUMBER));
  node->createInput("b", AttrType::Real)->assign(realValue(INF));
  node->createInput("c", AttrType::Real)->assign(realValue(-INF));
  node->createInput("d", AttrType::Real)->assign(realValue(-0.0));
  node->createInput("e", AttrType::Vec3)->assign(vec3Value(-INF, -0.0, -NOT_A_NUMBER));
  node->createInput("f", AttrType::Buffer)
      ->assign(bufferValue<float>(DataType::Float,
                                  {static_cast<float>(NOT_A_NUMBER), static_cast<float>(INF),
                                   static_cast<float>(-INF), -0.0F}));
  node->createInput("g", AttrType::Buffer)
      ->assign(bufferValue<double>(DataType::Vec2d, {NOT_A_NUMBER, INF, -INF, -0.0}));
  EXPECT_EQ(
      nodesOf(scene),
      R"({"type":"lamp","name":"a","inputs":[{"name":"a","type":"Real","value":"nan"},)"
      R"({"name":"b","type":"Real","value":"inf"},{"name":"c","type":"Real","value":"-inf"},)"
      R"({"name":"d","type":"Real","value":-0.0},)"
      R"({"name":"e","type":"Vec3","value":["-inf",-0.0,"nan"]},)"
      R"({"name":"f","type":"Buffer","bufferType":"Float","count":4,"value":["nan","inf","-inf",-0.0]},)"
      R"({"name":"g","type":"Buffer","bufferType":"Vec2d","count":2,"value":["nan","inf","-inf",-0.0]}]})");
}

TEST(DumpJsonTest, NumbersAtTheLimitsOfTheirRanges) {
  constexpr std::int64_t LEAST = std::numeric_limits<std::int64_t>::min();
  Scene scene;
  Node* node = scene.createNode("lamp", "a", "");
  node->createInput("i", AttrType::Int)->assign(intValue(AttrType::Int, LEAST));
  node->createInput("u", AttrType::UInt)->assign(intValue(AttrType::UInt, LEAST));
  node->createInput("c", AttrType::Buffer)
      ->assign(bufferValue<std::int8_t>(DataType::Char, {-128, 0, 65, 127}));
  node->createInput("b", AttrType::Buffer)
      ->assign(bufferValue<std::uint8_t>(DataType::Byte, {0, 65, 255}));
  node->createInput("l", AttrType::Buffer)
      ->assign(bufferValue<std::int64_t>(DataType::Int64, {LEAST, -(LEAST + 1)}));
  node->createInput("m", AttrType::Buffer)
      ->assign(bufferValue<std::uint64_t>(DataType::UInt64,
                                          {0, std::numeric_limits<std::uint64_t>::max()}));
  node->createInput("f", AttrType::Buffer)
      ->assign(bufferValue<float>(DataType::Float,
                                  {std::numeric_limits<float>::max(),
                                   std::numeric_limits<float>::denorm_min(), 16777216.0F, 0.1F}));
  node->createInput("d", AttrType::Buffer)
      ->assign(bufferValue<double>(DataType::Double,
                                   {std::numeric_limits<double>::max(),
                                    std::numeric_limits<double>::denorm_min(), 0.1F, 1e21}));
  EXPECT_EQ(
      nodesOf(scene),
      R"({"type":"lamp","name":"a","inputs":[{"name":"i","type":"Int","value":-9223372036854775808},)"
      R"({"name":"u","type":"UInt","value":9223372036854775808},)"
      R"({"name":"c","type":"Buffer","bufferType":"Char","count":4,"value":[-128,0,65,127]},)"
      R"({"name":"b","type":"Buffer","bufferType":"Byte","count":3,"value":[0,65,255]},)"
      R"({"name":"l","type":"Buffer","bufferType":"Int64","count":2,"value":[-9223372036854775808,9223372036854775807]},)"
      R"({"name":"m","type":"Buffer","bufferType":"UInt64","count":2,"value":[0,18446744073709551615]},)"
      R"({"name":"f","type":"Buffer","bufferType":"Float","count":4,"value":[3.4028235e+38,1e-45,16777216,0.1]},)"
      R"({"name":"d","type":"Buffer","bufferType":"Double","count":4,"value":[1.7976931348623157e+308,5e-324,0.10000000149011612,1e+21]}]})");
}

// In every text of a JSON dump, U+FFFD replaces each byte that is not valid UTF-8.
TEST(DumpJsonTest, InvalidUtf8IsReplacedByteByByte) {
  const std::string bad = "\xE2\x82(\xC3\xA6\xFF\x80";
  const std::string shown = "\xEF\xBF\xBD\xEF\xBF\xBD(\xC3\xA6\xEF\xBF\xBD\xEF\xBF\xBD";
  const zn::String text(bad.c_str());
  Scene scene;
  Node* node = scene.createNode(text, text, "");
  Input* input = node->createInput(text, AttrType::Object);
  input->createInput(text, AttrType::String)->assign(stringValue(bad.c_str()));
  input->connect(node->output(text));
  EXPECT_EQ(nodesOf(scene), R"({"type":")" + shown + R"(","name":")" + shown +
                                R"(","inputs":[{"name":")" + shown +
                                R"(","type":"Object","members":[{"name":")" + shown +
                                R"(","type":"String","value":")" + shown + R"("}],"connection":")" +
                                shown + "." + shown + R"("}]})");
  Scene header;
  header.pushFileComment(text);
  header.setFileTime(text);
  TextOutput out;
  ReadOutcome outcome;
  outcome.escaped = bad;
  outcome.log.push_back({zn::LogLevel::Error, bad});
  dumpJson(outcome, header, out);
  EXPECT_EQ(out.text(), R"({"result":false,"escaped":")" + shown +
                            R"(","log":[{"level":"error","text":")" + shown +
                            R"("}],"fileVersion":0,"fileTime":")" + shown +
                            R"(","fileComments":[")" + shown + "\"],\"nodes\":[]}\n");
}

TEST(DumpCaseTest, WritesEveryValue) {
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

TEST(DumpCaseTest, WritesOnlyTheResultOfAnEmptyScene) {
  TextOutput out;
  dumpCase({{false, "costs 5 $"}, {}}, Scene(), out);
  EXPECT_EQ("result throws costs 5 $$\n", out.text());
}

}  // namespace

}  // namespace vsa_tools
