// Tests of the options for reading that several commands share, and of the limits that they set.
#include "tools/vsa/common/read_arguments.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>

#include "tests/tool/command_fixture.h"
#include "tools/vsa/command_line.h"

namespace vsa_tools {

namespace {

using ReadArgumentsTest = vsa_tests::CommandFixture;
using CommandRun = vsa_tests::CommandOutcome;

// A command that has only these options.
class ReadingCommand final : public Command {
 public:
  explicit ReadingCommand(ReadArguments& arguments) : Command("read", ""), arguments_(arguments) {}

  void addTo(CommandOptions& options) override { arguments_.addTo(options); }
  int run() override { return 0; }

 private:
  ReadArguments& arguments_;
};

// Returns the options that the words after "read" set, or nothing if the words are wrong.
std::optional<vsa::ReadOptions> optionsOf(const std::string& words) {
  ReadArguments arguments;
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<ReadingCommand>(arguments));
  CommandLine commandLine(std::move(commands), "");
  std::istringstream stream("read " + words);
  const Request request = commandLine.parse({std::istream_iterator<std::string>(stream), {}});
  if (request.command == nullptr) return std::nullopt;
  return arguments.options();
}

TEST(ReadArguments, Sizes) {
  EXPECT_EQ(optionsOf("")->limits.memory, std::nullopt);
  EXPECT_EQ(optionsOf("")->limits.textBytes, vsa::UNLIMITED);
  EXPECT_EQ(optionsOf("")->keptDiagnostics, 10000u);
  EXPECT_EQ(optionsOf("--memory 8G")->limits.memory, std::uint64_t{8} << 30);
  EXPECT_EQ(optionsOf("--memory 12kib")->limits.memory, std::uint64_t{12} << 10);
  EXPECT_EQ(optionsOf("--memory 100")->limits.memory, 100u);
  EXPECT_EQ(optionsOf("--max-text 1M")->limits.textBytes, std::uint64_t{1} << 20);
  EXPECT_EQ(optionsOf("--max-diagnostics 3")->keptDiagnostics, 3u);
  for (const char* wrong : {"--memory -1", "--memory 8X", "--memory 99999999999G", "--max-text x",
                            "--max-diagnostics -1"}) {
    EXPECT_FALSE(optionsOf(wrong)) << wrong;
  }
}

// The text has 28 bytes and declares two gigabytes.
TEST_F(ReadArgumentsTest, ATextMeetsTheDefaultBudgetOfMemory) {
  write("a.vsa", "t n:.b=byte[2000000000] {1};");
  for (const char* command : {"check", "dump", "convert"}) {
    const CommandRun run = vsa(std::string(command) + " a.vsa");
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_LT(run.out.size(), 1000u) << command;
    const std::string said = run.out + run.err;
    EXPECT_NE(said.find("byte[2000000000]"), said.npos) << said;
    EXPECT_NE(said.find("1 number written"), said.npos) << said;
  }
}

TEST_F(ReadArgumentsTest, MemoryAllowsMoreOrLess) {
  write("a.vsa", "t n:.b=byte[80000000] {1};");
  EXPECT_EQ(vsa("check a.vsa").status, 1);
  EXPECT_EQ(vsa("check --memory 100M a.vsa").status, 0);
  EXPECT_EQ(vsa("check --memory 1k a.vsa").status, 1);
}

// The memory that was refused to the first file is still available for the second file.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(ReadArgumentsTest, ARefusedBufferTakesNothingFromTheNextFile) {
  std::string evil = "t n;\n";
  for (int i = 0; i < 100; ++i) {
    evil +=
        "n.a" + std::to_string(i) + " = 1;\nn.a" + std::to_string(i) + " = byte[50000000] {1};\n";
  }
  write("evil.vsa", evil);
  write("good.vsa", "t n: .b = byte[50000000] {1};\n");
  EXPECT_EQ(statusOf("ulimit -v 400000 && " VSA_COMMAND " check evil.vsa good.vsa >stdout.txt"), 1);
  EXPECT_EQ(content("stdout.txt").find("unreadable-file"), std::string::npos);
  EXPECT_EQ(content("stdout.txt").find("good.vsa:1:1: error"), std::string::npos);
}
#endif

TEST_F(ReadArgumentsTest, AnEndlessInputMeetsALimit) {
  EXPECT_EQ(statusOf("yes '# x' | " VSA_COMMAND " check --max-text 1M - >stdout.txt"), 1);
  EXPECT_NE(content("stdout.txt").find("the text is longer than 1048576 bytes"), std::string::npos)
      << content("stdout.txt");
}

// The size of a file is known before the first byte is read. Read in blocks, it would have nodes.
TEST_F(ReadArgumentsTest, AFileThatIsTooLongIsNotReadAtAll) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "lamp n" + std::to_string(i) + ";\n";
  write("a.vsa", text);
  EXPECT_EQ(vsa("tree --max-text 100K a.vsa").out, "");
}

TEST_F(ReadArgumentsTest, DiagnosticsStopAtTheMaximum) {
  std::string text = "t n: .k = 1;\n";
  for (int i = 0; i < 12; ++i) text += ".k = 2.5;\n";
  write("a.vsa", text);
  const CommandRun check =
      vsa("check --ignore assigned-twice --format line --max-diagnostics 3 a.vsa");
  EXPECT_EQ(check.status, 1);
  EXPECT_EQ(std::count(check.out.begin(), check.out.end(), '\n'), 3) << check.out;
  EXPECT_TRUE(check.err.ends_with(
      "1 file checked: 0 errors, 3 warnings; ended early (--max-diagnostics)\n"))
      << check.err;
  const CommandRun dump = vsa("dump --max-diagnostics 11 a.vsa");
  EXPECT_EQ(dump.err, "a.vsa: 1 more diagnostic (--max-diagnostics N prints more)\n");
  EXPECT_EQ(nlohmann::json::parse(dump.out)["log"].size(), 11u);
  const CommandRun convert = vsa("convert --max-diagnostics 11 a.vsa");
  EXPECT_EQ(std::count(convert.err.begin(), convert.err.end(), '\n'), 12) << convert.err;
  EXPECT_TRUE(
      convert.err.ends_with("\na.vsa: 1 more diagnostic (--max-diagnostics N prints more)\n"))
      << convert.err;
}

TEST_F(ReadArgumentsTest, LongQuotesAreShortened) {
  const std::string name(20000, 'a');
  std::string text = "lamp " + name + ": .k = 1;\n";
  for (int i = 0; i < 600; ++i) text += ".k=2.5;\n";
  write("a.vsa", text);
  const CommandRun check = vsa("check --ignore assigned-twice --format line a.vsa");
  EXPECT_LT(check.out.size(), 600u * 400);
  EXPECT_NE(check.out.find("aaa[... "), std::string::npos);
  EXPECT_GT(vsa("check --full a.vsa").out.size(), 600u * 20000);
  const auto shortJson = nlohmann::json::parse(vsa("dump a.vsa").out);
  EXPECT_LT(shortJson["log"][599]["text"].get<std::string>().size(), 300u);
  const auto json = nlohmann::json::parse(vsa("dump --full a.vsa").out);
  ASSERT_EQ(json["log"].size(), 600u);
  EXPECT_EQ(json["log"][599]["text"],
            "TYPE WARNING (601,7): narrowing Real to Int @ " + name + ".k.");
}

}  // namespace

}  // namespace vsa_tools
