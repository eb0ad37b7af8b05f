// Tests of vsa convert --types: former names are replaced by current names.
#include "tests/tool/command_fixture.h"

namespace {

using vsa_tests::CommandOutcome;

constexpr char TYPES[] = R"({"types": {"lamp": {
  "inputs": {"power": {"type": "Real"}, "color": {"type": "Rgba"}},
  "outputs": ["outColor"],
  "formerInputs": {"watts": "power"}, "formerOutputs": {"out": "outColor"}}}})";

class ConvertTypesTest : public vsa_tests::CommandFixture {};

TEST_F(ConvertTypesTest, UpgradesFormerNames) {
  write("types.json", TYPES);
  write("a.vsa", "lamp sun: .watts = 60.0;\nlamp moon: .color |= sun.out;\n");
  const CommandOutcome run = vsa("convert --types types.json a.vsa");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("  .power = 60.0;\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("  .color |= sun.outColor;\n"), std::string::npos) << run.out;
}

TEST_F(ConvertTypesTest, RefusesATypesFileThatDoesNotEnd) {
  write("a.vsa", "lamp a;\n");
  for (const char* command : {"convert", "check"}) {
    const CommandOutcome run = vsa(std::string(command) + " --types /dev/zero a.vsa");
    EXPECT_EQ(run.status, 2) << command;
    EXPECT_EQ(run.err, "vsa: /dev/zero: larger than 64 MiB\n") << command;
  }
}

TEST_F(ConvertTypesTest, ReadsATypesFileOf64MiB) {
  constexpr std::size_t LIMIT = std::size_t{64} << 20;
  write("a.vsa", "lamp a: .watts = 60.0;\n");
  const std::string types = TYPES;
  write("types.json", types + std::string(LIMIT - types.size(), ' '));
  EXPECT_EQ(vsa("convert --types types.json a.vsa").out, "lamp a:\n  .power = 60.0;\n");
  write("types.json", types + std::string(LIMIT - types.size() + 1, ' '));
  EXPECT_EQ(vsa("convert --types types.json a.vsa").err, "vsa: types.json: larger than 64 MiB\n");
}

TEST_F(ConvertTypesTest, RefusesADamagedTypesFile) {
  write("a.vsa", "lamp sun;");
  write("types.json", "{\"types\": ");
  CommandOutcome run = vsa("convert --types types.json a.vsa");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_TRUE(run.err.starts_with("types.json:1:")) << run.err;
  run = vsa("convert --types missing.json a.vsa");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "vsa: missing.json: No such file or directory\n");
  EXPECT_EQ(vsa("convert --types . a.vsa").status, 2);
  run = vsa("convert --types - a.vsa <types.json");
  EXPECT_TRUE(run.err.starts_with("<stdin>:1:")) << run.err;
  run = vsa("convert --types - - <types.json");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "vsa: standard input can be read only once\n");
}

}  // namespace
