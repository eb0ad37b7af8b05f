// Tests of docs/dump.schema.json: the dumps of all cases and examples are valid, and wrong dumps
// are not.
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>

#include <sstream>
#include <string>

#include <vsa/read.h>
#include "tests/support/text.h"
#include "tests/support/text_files.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tools {

namespace {

class DumpSchemaTest : public testing::Test {
 protected:
  DumpSchemaTest() {
    parsed_.Parse(vsa_tests::contentOf(VSA_TEST_DIR "/../docs/dump.schema.json").c_str());
    EXPECT_FALSE(parsed_.HasParseError());
    schema_ = std::make_unique<rapidjson::SchemaDocument>(parsed_);
  }

  bool isValid(const std::string& json) const {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json.substr(0, 200);
    rapidjson::SchemaValidator validator(*schema_);
    return document.Accept(validator);
  }

  static std::string dumpOf(const std::string& text, const DumpOptions& options = {}) {
    const vsa::ReadResult result = vsa::readText(text);
    ReadStatus status;
    status.result = result.isComplete();
    TextOutput out;
    const auto log = [](TextOutput& to) { dumpLogEntry(zn::LogLevel::Warning, "w", to); };
    dumpJson(status, log, *result.scene.view().plain(), out, options);
    return out.text();
  }

 private:
  rapidjson::Document parsed_;
  std::unique_ptr<rapidjson::SchemaDocument> schema_;
};

TEST_F(DumpSchemaTest, CasesAndExamplesAreValid) {
  const auto texts = vsa_tests::textFiles({"tests/cases", "tests/regressions", "examples"});
  for (const auto& text : texts) {
    EXPECT_TRUE(isValid(dumpOf(vsa_tests::contentOf(text)))) << text;
  }
  EXPECT_GT(texts.size(), 200);
}

TEST_F(DumpSchemaTest, LinesAndReducedDumpsAreValid) {
  const std::string text =
      "t n: .a = 1; .b = vec3f[2] {1 2 3 4 5 6}; .c = {}; .d[1] = true; .e = mat3(1 2 3 4 5 6 7 8 "
      "9);"
      ".l = n; .x |= n.out; .s = \"s\"; .u = 4u; .f = double[2] {inf nan};";
  DumpOptions options;
  options.hasBuffers = false;
  EXPECT_TRUE(isValid(dumpOf(text, options)));
  options.hasBuffers = true;
  options.maxElements = 1;
  options.hasLines = true;
  std::istringstream lines(dumpOf(text, options));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) EXPECT_TRUE(isValid(line)) << line;
  EXPECT_EQ(count, 2);
}

TEST_F(DumpSchemaTest, OthersAreNot) {
  const std::string node = R"({"type":"t","name":"n","inputs":[)";
  EXPECT_TRUE(isValid(node + R"({"name":"a","type":"Int","value":1}]})"));
  for (const char* input :
       {R"({"name":"a","type":"Int","value":1.5})", R"({"name":"a","type":"Int"})",
        R"({"name":"a","type":"Real","value":"nano"})",
        R"({"name":"a","type":"Integer","value":1})",
        R"({"name":"a","type":"Buffer","bufferType":"Vec9f","count":1})",
        R"({"name":"a","type":"Object","members":[{"type":"Null"}]})",
        R"({"name":"a","type":"Bool","value":true,"more":1})"}) {
    EXPECT_FALSE(isValid(node + input + "]}")) << input;
  }
  EXPECT_FALSE(isValid(R"({"nodes":[]})"));
}

}  // namespace

}  // namespace vsa_tools
