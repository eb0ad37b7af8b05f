// DiskFile: a temporary file with the name of the running test and a number, so that a test can
// have several. The destructor deletes it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace vsa_tests {

class DiskFile {
 public:
  explicit DiskFile(const std::string& bytes) {
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    static int count = 0;
    path_ =
        std::filesystem::path(testing::TempDir()) /
        ("vsa_" + std::to_string(::getpid()) + '_' + test->name() + '_' + std::to_string(++count));
    std::ofstream(path_, std::ios::binary) << bytes;
  }
  DiskFile(const DiskFile&) = delete;
  DiskFile& operator=(const DiskFile&) = delete;
  ~DiskFile() { std::filesystem::remove(path_); }

  std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace vsa_tests
