// Tests of the options of vsa dump. tests/tool/command_test.cpp tests dumps without options.
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tool/command_fixture.h"

namespace {

using nlohmann::json;
using vsa_tests::CommandOutcome;

constexpr char TEXT[] =
    "# hi\nt n: .a = 1; .b = vec3f[3] {1 2 3 4 5 6 7 8 9}; .o.x = \"s,[{\\\"\"; .o.y[1] = 2.5;\n"
    "u m: .l = n; .e = {}; .a = true;";

class DumpOptionsTest : public vsa_tests::CommandFixture {
 protected:
  void SetUp() override {
    CommandFixture::SetUp();
    write("a.vsa", TEXT);
  }

  json dump(const std::string& options) {
    const CommandOutcome run = vsa("dump a.vsa " + options);
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
};

// Each of the 70 messages has 1,000,047 bytes. 67 of them fit into the 64 MiB of the log.
TEST_F(DumpOptionsTest, AHugeLogIsCut) {
  std::string text = "lamp " + std::string(1'000'000, 'a') + ": .k = 1;\n";
  for (int i = 0; i < 70; ++i) text += ".k = 2.5;\n";
  write("long.vsa", text);
  EXPECT_EQ(statusOf(VSA_COMMAND " dump --full long.vsa >/dev/null 2>err.txt"), 0);
  EXPECT_EQ(content("err.txt"), "long.vsa: 3 more diagnostics (--max-diagnostics N prints more)\n");
}

TEST_F(DumpOptionsTest, Ndjson) {
  const json whole = dump("");
  std::istringstream lines(vsa("dump --ndjson a.vsa").out);
  std::vector<json> parsed;
  for (std::string line; std::getline(lines, line);) parsed.push_back(json::parse(line));
  ASSERT_EQ(parsed.size(), 3U);
  json header = whole;
  header.erase("nodes");
  EXPECT_EQ(parsed[0], header);
  EXPECT_EQ(parsed[1], whole["nodes"][0]);
  EXPECT_EQ(parsed[2], whole["nodes"][1]);
}

TEST_F(DumpOptionsTest, NdjsonOfNoNodes) {
  write("empty.vsa", "");
  EXPECT_EQ(vsa("dump --ndjson empty.vsa").out,
            "{\"result\":true,\"escaped\":null,\"log\":[],\"fileVersion\":1,\"fileTime\":\"\","
            "\"fileComments\":[]}\n");
}

TEST_F(DumpOptionsTest, SelectsNodes) {
  const json whole = dump("");
  EXPECT_EQ(dump("--select n")["nodes"], json::array({whole["nodes"][0]}));
  EXPECT_EQ(dump("--select m --select n")["nodes"], whole["nodes"]);
  EXPECT_EQ(dump("--select '?'")["nodes"], whole["nodes"]);
}

TEST_F(DumpOptionsTest, SelectsInputs) {
  EXPECT_EQ(dump("--select n.a")["nodes"].dump(),
            R"([{"inputs":[{"name":"a","type":"Int","value":1}],"name":"n","type":"t"}])");
  const json inputs = dump("--select 'n.o.y[1]'")["nodes"][0]["inputs"];
  EXPECT_EQ(inputs.dump(), R"([{"name":"o.y[1]","type":"Real","value":2.5}])");
  const json both = dump("--select n.a --select 'n.o.y[1]'")["nodes"][0]["inputs"];
  EXPECT_EQ(both.size(), 2U);
  EXPECT_EQ(dump("--select '*.a'")["nodes"].size(), 2U);
  EXPECT_EQ(dump("--select 'n.o*'")["nodes"][0]["inputs"].size(), 1U);
}

TEST_F(DumpOptionsTest, SelectsNothing) {
  const CommandOutcome run = vsa("dump --select n.zz a.vsa");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "vsa: a.vsa: nothing in it matches --select\n");
  EXPECT_TRUE(json::parse(run.out)["nodes"].empty());
}

TEST_F(DumpOptionsTest, NoBuffers) {
  EXPECT_EQ(dump("--no-buffers")["nodes"][0]["inputs"][1].dump(),
            R"({"bufferType":"Vec3f","count":3,"name":"b","type":"Buffer"})");
}

TEST_F(DumpOptionsTest, MaxElements) {
  const json buffer = dump("--max-elements 2")["nodes"][0]["inputs"][1];
  EXPECT_EQ(buffer["value"], (json{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(buffer["count"], 3);
  EXPECT_EQ(dump("--max-elements 0")["nodes"][0]["inputs"][1]["value"], json::array());
  EXPECT_EQ(dump("--max-elements 9"), dump(""));
}

TEST_F(DumpOptionsTest, PrettyIsTheSameJson) {
  EXPECT_EQ(dump("--pretty"), dump(""));
  const std::string text = vsa("dump --pretty a.vsa").out;
  EXPECT_TRUE(text.starts_with("{\n  \"result\": true,\n")) << text;
  EXPECT_NE(text.find("\n          \"value\": [1, 2, 3, 4, 5, 6, 7, 8, 9]\n"), std::string::npos)
      << text;
  EXPECT_NE(text.find("\"members\": []\n"), std::string::npos);
  EXPECT_TRUE(text.ends_with("\n}\n"));
}

TEST_F(DumpOptionsTest, PrettyWritesListsOfNumbersInOneLine) {
  write("a.vsa", "t n: .l[*] = 1; .b = vec2f[1] {1 2};");
  const std::string text = vsa("dump --pretty --select n a.vsa").out;
  const std::string nodes = R"(  "nodes": [
    {
      "type": "t",
      "name": "n",
      "inputs": [
        {
          "name": "l",
          "type": "Array",
          "elementType": "Int",
          "elements": [
            {
              "type": "Int",
              "value": 1
            }
          ]
        },
        {
          "name": "b",
          "type": "Buffer",
          "bufferType": "Vec2f",
          "count": 1,
          "value": [1, 2]
        }
      ]
    }
  ]
}
)";
  EXPECT_TRUE(text.ends_with(nodes)) << text;
}

TEST_F(DumpOptionsTest, PrettyWrapsLongLists) {
  std::string numbers;
  for (int i = 0; i < 500; ++i) numbers += std::to_string(i) + ' ';
  write("a.vsa", "t n: .b = int32[500] {" + numbers + "};");
  EXPECT_EQ(dump("--pretty"), dump(""));
  std::istringstream lines(vsa("dump --pretty a.vsa").out);
  for (std::string line; std::getline(lines, line);) EXPECT_LT(line.size(), 110U) << line;
}

TEST_F(DumpOptionsTest, RefusesLargeBuffers) {
  write("a.vsa", "t n: .b = byte[1073741825] {1}; .o.c[0] = 1; .d = byte[1073741824] {1};");
  const CommandOutcome run = vsa("dump --memory 8G a.vsa");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.substr(0, 43), "vsa: n.b: a buffer of more than 1 GiB is pr");
  write("b.vsa", "t n: .a = 5; .b = byte[1073741825] {1}; .c = byte[1073741826] {1};");
  const std::string first = vsa("dump --memory 8G b.vsa").err;
  EXPECT_TRUE(first.starts_with("vsa: n.b: a buffer of ")) << first;
  for (const char* options : {"--no-buffers", "--max-elements 3", "--select n.o"}) {
    EXPECT_EQ(vsa(std::string("dump --memory 8G a.vsa ") + options).status, 0) << options;
  }
  EXPECT_EQ(statusOf(VSA_COMMAND " dump --memory 8G --large-buffers --select n.b a.vsa 2>err.txt "
                                 "| head -c 3000 | grep -q '\"value\":\\[1,0,0,0'"),
            0);
}

TEST_F(DumpOptionsTest, WrongUse) {
  for (const char* options :
       {"--ndjson --pretty", "--max-elements x", "--max-elements -1", "--select"}) {
    EXPECT_EQ(vsa(std::string("dump a.vsa ") + options).status, 2) << options;
  }
}

TEST_F(DumpOptionsTest, DamagedFiles) {
  write("a.vsa", "t n: .a = 1; .b = \"cut");
  for (const char* options : {"--ndjson", "--pretty", "--no-buffers", "--select n"}) {
    const CommandOutcome run = vsa(std::string("dump a.vsa ") + options);
    EXPECT_EQ(run.status, 1) << options;
    EXPECT_NE(run.out.find("\"name\""), std::string::npos);
  }
}

}  // namespace
