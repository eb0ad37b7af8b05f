// Tests of `vsa types` with files.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <vsa/types.h>
#include "tests/tool/command_fixture.h"

namespace {

using Json = nlohmann::json;

class TypesCommandTest : public vsa_tests::CommandFixture {};

TEST_F(TypesCommandTest, DescribesTheTypesThatTheScenesUse) {
  write("a.vsa",
        "define settings; with settings: .x = 1;\n"
        "lamp a: .power = 1; .label = \"x\"; .keys[*].t = 0.5; .keys[0].c |= b.outC; .odd = 1;\n"
        "sky b: .ids = int32[1] {1}; .tint |= a.outColor; .parent = a; .mixed = float[1] {1};\n");
  write("b.vsa", "lamp a: .power = 2.5; .odd = \"x\"; sky b: .mixed = int32[1] {1}; .k[0] = 1;\n");
  const auto run = vsa("types a.vsa b.vsa");
  EXPECT_EQ(0, run.status) << run.err;
  EXPECT_EQ("", run.err);
  const Json lamp = {{"inputs",
                      {{"power", {{"type", "Real"}}},
                       {"label", {{"type", "String"}}},
                       {"keys", {{"type", "Array"}, {"elements", "Object"}}},
                       {"odd", Json::object()}}},
                     {"outputs", {"outColor"}}};
  const Json sky = {{"inputs",
                     {{"ids", {{"type", "Buffer"}, {"elements", "Int32"}}},
                      {"tint", Json::object()},
                      {"parent", {{"type", "Node"}}},
                      {"mixed", {{"type", "Buffer"}}},
                      {"k", {{"type", "Array"}, {"elements", "Int"}}}}},
                    {"outputs", {"outC"}}};
  EXPECT_EQ(Json({{"types", {{"lamp", lamp}, {"sky", sky}}}}), Json::parse(run.out));
}

// A node that "define" creates has no type. Its name is stored as its type, so it looks like a node
// that is declared with the name of its type.
TEST_F(TypesCommandTest, DescribesATypeThatIsTheNameOfItsNode) {
  write("a.vsa",
        "lamp lamp: .power = 1;\nsky a: .c |= lamp.out;\n"
        "define settings; settings.x = 1;\n"
        "define ball; remove ball; ball ball: .radius = 1;\n");
  const Json types = Json::parse(vsa("types a.vsa").out)["types"];
  EXPECT_EQ(types["lamp"],
            Json({{"inputs", {{"power", {{"type", "Int"}}}}}, {"outputs", {"out"}}}));
  EXPECT_TRUE(types.contains("ball")) << types;
  EXPECT_FALSE(types.contains("settings")) << types;
}

TEST_F(TypesCommandTest, LeavesOutNodesThatAWithStatementCreates) {
  write("a.vsa", "with settings: .x = 1;\nlamp a: .c |= settings.out;\n");
  const Json types = Json::parse(vsa("types a.vsa").out)["types"];
  EXPECT_EQ(types,
            Json({{"lamp", {{"inputs", {{"c", Json::object()}}}, {"outputs", Json::array()}}}}));
}

TEST_F(TypesCommandTest, WritesWhatTheLibraryReads) {
  const auto run = vsa("types " VSA_TEST_DIR "/../examples/product_shot.vsa");
  EXPECT_EQ(0, run.status) << run.err;
  const vsa::TypesResult types = vsa::readTypes(run.out);
  EXPECT_EQ(types.problem, "");
  EXPECT_FALSE(types.types.empty());
}

TEST_F(TypesCommandTest, WritesNothingIfAFileHasAnError) {
  write("a.vsa", "lamp a;");
  write("b.vsa", "lamp");
  const auto run = vsa("types a.vsa b.vsa");
  EXPECT_EQ(1, run.status);
  EXPECT_EQ("", run.out);
  EXPECT_NE("", run.err);
  EXPECT_EQ(2, vsa("types a.vsa missing.vsa").status);
  EXPECT_EQ(2, vsa("types").status);
}

}  // namespace
