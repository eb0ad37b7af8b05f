// CommandFixture: the base of tests that run the command vsa in a shell. Each test has a folder for
// its files.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/text.h"

namespace vsa_tests {

/// The output of a run of the command, and its exit status.
struct CommandOutcome {
  int status;
  std::string out, err;
};

/// A fixture that runs the command in the folder of the test.
class CommandFixture : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::temp_directory_path() /
              ("vsa_" + std::to_string(::getpid()) + "_" + test->test_suite_name() + test->name());
    std::filesystem::create_directories(folder_);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  /// Writes a file into the folder of the test and returns the name of the file.
  std::string write(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return name;
  }

  std::string content(const std::string& name) { return vsa_tests::contentOf(folder_ / name); }

  /// Runs a shell command in the folder of the test and returns its exit status, or -1 if a signal
  /// ended the shell.
  int statusOf(const std::string& line) {
    const int status = std::system(("cd '" + folder_.string() + "' && " + line).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  /// Runs `vsa ARGUMENTS` in the folder of the test. The shell splits `arguments`.
  CommandOutcome vsa(const std::string& arguments) {
    const int status = statusOf(VSA_COMMAND " " + arguments + " >stdout.txt 2>stderr.txt");
    return {status, content("stdout.txt"), content("stderr.txt")};
  }

  std::filesystem::path folder_;
};

}  // namespace vsa_tests
