// WriteFile: a fixture for tests that write files, and a function that runs a child process.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/text.h"

namespace vsa_tests {

namespace fs = std::filesystem;

/// A fixture with a folder that exists during a test.
class WriteFile : public testing::Test {
 protected:
  WriteFile() {
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) /
             ("vsa_write_" + std::to_string(::getpid()) + '_' + test->name());
    fs::create_directory(folder);
    path = folder / "scene.vsa";
  }
  ~WriteFile() override { fs::remove_all(folder); }

  void putOld() const { std::ofstream(path, std::ios::binary) << "old\n"; }

  std::size_t filesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }

  /// Expects that the folder contains only the old file.
  void expectOld() const {
    EXPECT_EQ(contentOf(path), "old\n");
    EXPECT_EQ(filesInFolder(), 1u);
  }

  fs::path folder, path;
};

/// Runs `run` in a child process and returns its wait status.
template <class Run>
int inChild(const Run& run) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(run());
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

}  // namespace vsa_tests
