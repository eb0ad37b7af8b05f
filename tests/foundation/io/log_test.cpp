// Tests of the log: which sink receives a message, and that the message is complete.
#include <vsa/foundation/log.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/text.h"
#include "tools/scene_text/read_outcome.h"

namespace zn {
namespace {

using vsa_tools::LogCapture;
using vsa_tools::LogEntry;
using Entries = std::vector<LogEntry>;

/// Sets the sink of the process. The destructor restores the previous sink.
class ScopedProcessSink {
 public:
  explicit ScopedProcessSink(LogSink* sink) : before_(setLogSink(sink)) {}
  ScopedProcessSink(const ScopedProcessSink&) = delete;
  ScopedProcessSink& operator=(const ScopedProcessSink&) = delete;
  ~ScopedProcessSink() { setLogSink(before_); }

 private:
  LogSink* before_;
};

TEST(Log, LevelsAndFormatting) {
  LogCapture capture;
  const ScopedProcessSink scope(&capture);
  logWarning("%s %d", "one", 1);
  logError("%s", "%d%s");
  EXPECT_EQ(capture.entries, (Entries{{LogLevel::Warning, "one 1"}, {LogLevel::Error, "%d%s"}}));
}

TEST(Log, ALongMessageReachesTheSinkAsAWhole) {
  LogCapture capture;
  const ScopedLogSink scope(&capture);
  const std::string text(100000, 'x');
  logWarning("<%s>", text.c_str());
  ASSERT_EQ(capture.entries.size(), 1U);
  EXPECT_EQ(capture.entries[0].text, "<" + text + ">");
}

TEST(Log, SettingASinkReturnsTheOneBefore) {
  LogCapture first;
  LogCapture second;
  LogSink* const before = setLogSink(&first);
  EXPECT_EQ(setLogSink(&second), &first);
  EXPECT_EQ(setLogSink(before), &second);
  EXPECT_EQ(setThreadLogSink(&first), nullptr);
  EXPECT_EQ(setThreadLogSink(nullptr), &first);
}

TEST(Log, TheSinkOfTheThreadIsUsedInsteadOfThatOfTheProcess) {
  LogCapture process;
  LogCapture thread;
  const ScopedProcessSink scope(&process);
  {
    const ScopedLogSink threadScope(&thread);
    logWarning("a");
  }
  logWarning("b");
  EXPECT_EQ(thread.entries, (Entries{{LogLevel::Warning, "a"}}));
  EXPECT_EQ(process.entries, (Entries{{LogLevel::Warning, "b"}}));
}

TEST(Log, ScopesNest) {
  LogCapture outer;
  LogCapture inner;
  const ScopedLogSink outerScope(&outer);
  {
    const ScopedLogSink innerScope(&inner);
    logError("a");
  }
  logError("b");
  EXPECT_EQ(inner.entries, (Entries{{LogLevel::Error, "a"}}));
  EXPECT_EQ(outer.entries, (Entries{{LogLevel::Error, "b"}}));
}

TEST(Log, ThreadsDoNotMix) {
  LogCapture captures[2];
  std::vector<std::thread> threads;
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([&captures, i] {
      const ScopedLogSink scope(&captures[i]);
      for (int k = 0; k < 1000; ++k) logWarning("%d", i);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(captures[i].entries, Entries(1000, {LogLevel::Warning, std::to_string(i)}));
  }
}

TEST(Log, WithoutASinkItGoesToStandardError) {
  const ScopedProcessSink scope(nullptr);
  testing::internal::CaptureStderr();
  logWarning("one");
  logError("two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning: one\nerror: two\n");
}

// Messages of at most 1 MiB are written to standard error with fprintf, and longer messages with
// fwrite. The two messages here have exactly that size and one byte more. Both must be complete.
TEST(Log, ALongMessageGoesToStandardErrorAsAWhole) {
  const ScopedProcessSink scope(nullptr);
  for (const std::size_t bytes : {std::size_t{1} << 20, (std::size_t{1} << 20) + 1}) {
    const std::string message(bytes, 'x');
    testing::internal::CaptureStderr();
    logWarning("%s", message.c_str());
    logError("two");
    const bool isWhole =
        testing::internal::GetCapturedStderr() == "warning: " + message + "\nerror: two\n";
    EXPECT_TRUE(isWhole) << bytes;
  }
}

}  // namespace
}  // namespace zn
