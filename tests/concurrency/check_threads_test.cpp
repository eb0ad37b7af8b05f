// Tests of the threads of vsa check: several workers check the files of a folder, and the rules
// about a large text run while it is read. ThreadSanitizer runs these tests, too.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tools/vsa/check/check_run.h"
#include "tools/vsa/check/file_check.h"

namespace vsa_tests {

namespace {

namespace fs = std::filesystem;
using vsa_tools::Finding;

class CheckThreadsTest : public testing::Test {
 protected:
  void SetUp() override { fs::create_directories(folder_); }
  void TearDown() override { fs::remove_all(folder_); }

  std::string write(const std::string& name, const std::string& text) {
    const std::string path = folder_ / name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  std::string outputOf(unsigned workers) {
    vsa_tools::CheckOptions options;
    options.files = {folder_.string()};
    options.isConfigIgnored = true;
    options.workers = workers;
    testing::internal::CaptureStdout();
    EXPECT_EQ(1, vsa_tools::CheckRun(options).run());
    return testing::internal::GetCapturedStdout();
  }

  // The findings of a file, of which the consumer takes at most `wanted`.
  static std::vector<std::string> findingsOf(const std::string& path, bool isConcurrent,
                                             std::size_t wanted) {
    std::vector<std::string> findings;
    vsa_tools::CheckedText text(path);
    const vsa_tools::ReadArguments reading;
    const vsa_tools::RuleSet rules([](const vsa_tools::Rule&) { return true; });
    vsa_tools::FileCheckOptions options{reading};
    if (isConcurrent) options.minConcurrentBytes = 0;
    const vsa_tools::FileCheck::Consumer consumer = [&](Finding&& finding) {
      findings.push_back(std::string(finding.id).append(": ").append(finding.message));
      return findings.size() < wanted;
    };
    vsa_tools::FileCheck(text, options, rules, consumer).run();
    return findings;
  }

  static void expectSameFindings(const std::string& path, std::size_t wanted = 100'000) {
    EXPECT_EQ(findingsOf(path, false, wanted), findingsOf(path, true, wanted));
  }

  fs::path folder_ =
      fs::temp_directory_path() / ("vsa_check_threads_" + std::to_string(::getpid()));
};

// Returns a text with mistakes, which depend on the number: the reader, the rules about texts and
// the rules about scenes find them.
std::string sceneWithMistakes(int number) {
  std::string text = "lamp sun" + std::to_string(number) + ":\n  .power = 1;\n  .power = 2;\n";
  if (number % 2 == 0) text += "  .color = vec3(1 2 3 4);\n";
  if (number % 3 == 0) text += "  .power = 1e-5;\n";
  if (number % 5 == 0) text += "  .link |= sun" + std::to_string(number) + ".out;\n";
  if (number % 7 == 0) text += "  .label = \"C:\\new\";\n";
  return text;
}

TEST_F(CheckThreadsTest, FourWorkersPrintWhatOneWorkerPrints) {
  constexpr int FILES = 300;
  for (int i = 0; i < FILES; ++i) write(std::to_string(i) + ".vsa", sceneWithMistakes(i));
  const std::string one = outputOf(1);
  EXPECT_EQ(one, outputOf(4));
  EXPECT_NE(one.find("300 files checked: 100 errors"), std::string::npos) << one.substr(0, 2000);
}

TEST_F(CheckThreadsTest, RulesDuringTheReadingFindTheSame) {
  std::string text = "lamp sun;\n";
  constexpr int NODES = 3000;
  for (int i = 0; i < NODES; ++i) {
    const std::string name = "box" + std::to_string(i);
    text += "box " + name +
            ":\n  .size = vec3(1 2 3 4);\n  .lamp = " + (i % 2 == 0 ? "sun" : "\"sun\"") +
            ";\n  .weight = 0.5;\n" + "  .weight = 12345678901234567890123;\n";
  }
  const std::string path = write("a.vsa", text);
  EXPECT_LT(std::size_t{2 * NODES}, findingsOf(path, true, 100'000).size());
  expectSameFindings(path);
}

TEST_F(CheckThreadsTest, RulesDuringTheReadingEndEarly) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "lamp a" + std::to_string(i) + ": .c = vec3(1 2 3 4);\n";
  const std::string path = write("a.vsa", text);
  for (const std::size_t wanted : {1, 100, 1024, 1025, 4000}) expectSameFindings(path, wanted);
}

TEST_F(CheckThreadsTest, RulesDuringTheReadingSurviveAFatalMistake) {
  expectSameFindings(write("a.vsa", sceneWithMistakes(210)));
  expectSameFindings(write("b.vsa", "lamp a:\n  .x = 1 .y = 2;\n  .z = \"a\"; .z = a;\n"));
  expectSameFindings(write("c.vsa", "lamp a: .x = 1e-5;\n.s = \"a\"; .s = \"b\"; .s = a; lamp b:"));
  expectSameFindings(write("d.vsa", ""));
}

}  // namespace

}  // namespace vsa_tests
