// The log of a dump: the same text from memory and from a temporary file.
#include "tools/vsa/dump/log_spool.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tools/scene_text/scene_dump.h"

namespace {

using vsa_tools::LogEntry;
using vsa_tools::LogSpool;
using vsa_tools::TextOutput;

std::string spooled(const std::vector<LogEntry>& entries, size_t memoryLimit) {
  LogSpool spool(memoryLimit);
  for (const LogEntry& entry : entries) spool.write(entry.level, zn::String(entry.text.c_str()));
  TextOutput out;
  spool.moveTo(out);
  EXPECT_EQ("", spool.problem());
  return out.text();
}

TEST(LogSpoolTest, ReturnsAllEntries) {
  const std::vector<LogEntry> entries = {{zn::LogLevel::Warning, "one"},
                                         {zn::LogLevel::Error, ""},
                                         {zn::LogLevel::Warning, std::string(100000, 'a') + '"'}};
  const std::string expected =
      R"({"level":"warning","text":"one"},{"level":"error","text":""},{"level":"warning","text":")" +
      std::string(100000, 'a') + R"(\""})";
  for (const size_t memoryLimit : {0u, 1u, 31u, 32u, 33u, 60u, 99999u, 1000000u}) {
    EXPECT_EQ(expected, spooled(entries, memoryLimit)) << memoryLimit;
    EXPECT_EQ("", spooled({}, memoryLimit)) << memoryLimit;
  }
}

/// Sets TMPDIR for the lifetime of the object.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(const char* value) {
    if (const char* before = std::getenv("TMPDIR")) before_ = before;
    ::setenv("TMPDIR", value, 1);
  }
  ~TemporaryFolder() {
    before_.empty() ? ::unsetenv("TMPDIR") : ::setenv("TMPDIR", before_.c_str(), 1);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

 private:
  std::string before_;
};

TEST(LogSpoolTest, ReportsAFailingTemporaryFile) {
  const TemporaryFolder nowhere("/nonexistent");
  LogSpool spool(10);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NO_THROW(spool.write(zn::LogLevel::Warning, "more than ten bytes"));
    EXPECT_NE("", spool.problem());
  }
}

}  // namespace
