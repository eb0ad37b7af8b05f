// Tests of the options of a reading, and of sources.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <vsa/foundation/decompress.h>
#include <vsa/foundation/log.h>
#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/disk_file.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::ReadOptions;
using vsa::ReadProgress;
using vsa::ReadResult;
using vsa::ReadStatus;

TEST(ReadOptions, DiagnosticsOf64MebibytesAreKeptByDefault) {
  EXPECT_EQ(ReadOptions().keptDiagnostics, 10'000U);
  EXPECT_EQ(ReadOptions().keptDiagnosticBytes, 67'108'864U);
}

TEST(ReadOptions, KeepHeaderKeepsCommentsVersionAndTime) {
  for (const bool keep : {true, false}) {
    vsa::Scene scene;
    ASSERT_TRUE(vsa::readTextInto(scene, "# version: 7\n# time: noon").isComplete());
    ReadOptions options;
    options.keepHeader = keep;
    ASSERT_TRUE(vsa::readTextInto(scene, "lamp sun;", options).isComplete());
    EXPECT_EQ(scene.plain().fileVersion(), keep ? 7U : 1U);
    EXPECT_EQ(scene.plain().fileCommentCount(), keep ? 2U : 0U);
    EXPECT_EQ(scene.plain().fileTime(), keep ? "noon" : "");
  }
}

// The second text has its own copies of the names.
TEST(ReadTextInto, FindsTheLongNamesOfAnEarlierText) {
  vsa::Scene scene;
  const char* const text = "lamp name_of_more_than_sixteen_bytes: .input_with_a_long_name = 1;";
  EXPECT_TRUE(vsa::readTextInto(scene, text).isComplete());
  const vsa::ReadOutcome second = vsa::readTextInto(
      scene, "with name_of_more_than_sixteen_bytes: .input_with_a_long_name = 2.5;");
  EXPECT_EQ(second.warningCount, 1U);  // the Int is narrowed
  EXPECT_EQ(scene.nodes().size(), 1U);
}

TEST(ReadOptions, ProgressEndsWithTheWholeText) {
  std::string text = "lamp sun:\n";
  while (text.size() < 3'000'000) text += "  .power = 1.5;\n";
  std::vector<ReadProgress> calls;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    calls.push_back(progress);
    return true;
  };
  ASSERT_TRUE(vsa::readText(text, options).isComplete());
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.front().bytesRead, 0U);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].bytesTotal, text.size());
    EXPECT_LE(calls[i].bytesRead, text.size());
    if (i > 0) {
      EXPECT_LE(calls[i - 1].bytesRead, calls[i].bytesRead);
    }
  }
  EXPECT_EQ(calls.back().bytesRead, text.size());
}

TEST(ReadOptions, ProgressIsNotCalledMoreOftenThanEveryFewMilliseconds) {
  using Clock = std::chrono::steady_clock;
  std::string text = "lamp sun:\n";
  while (text.size() < 8'000'000) text += "  .power = 1.5;\n";
  std::vector<Clock::time_point> calls;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress&) {
    calls.push_back(Clock::now());
    return true;
  };
  ASSERT_TRUE(vsa::readText(text, options).isComplete());
  ASSERT_GE(calls.size(), 3U);
  for (std::size_t i = 1; i + 1 < calls.size(); ++i) {  // not the last call, which is at the end
    EXPECT_GE(calls[i] - calls[i - 1], std::chrono::milliseconds(5));
  }
}

// Returns the progress calls of a short reading, which are only the first and the last one.
std::vector<ReadProgress> progressOf(vsa::Source& source) {
  std::vector<ReadProgress> calls;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    calls.push_back(progress);
    return calls.size() == 1;  // the result of the last call has no effect
  };
  EXPECT_TRUE(vsa::readSource(source, options).isComplete());
  return calls;
}

TEST(ReadOptions, ProgressEndsWithAllBytesAndLinks) {
  const std::string text = "lamp sun: .a = sun; .b = nobody; .c |= sun.out;";
  for (const std::optional<std::uint64_t> announced : {std::optional<std::uint64_t>(), {7}, {99}}) {
    TestSource source(text);
    source.announced = announced;
    const std::vector<ReadProgress> calls = progressOf(source);
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].bytesRead, 0U);
    EXPECT_EQ(calls[0].bytesTotal, announced);
    EXPECT_EQ(calls[1].bytesRead, text.size());
    EXPECT_EQ(calls[1].bytesTotal, text.size());
    EXPECT_EQ(calls[1].linksResolved, 3U);
    EXPECT_EQ(calls[1].linksTotal, 3U);
  }
}

TEST(ReadOptions, ProgressOfAPipeHasNoTotalAtFirst) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], "lamp a;", 7), 7);
  ::close(ends[1]);
  std::vector<ReadProgress> calls;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    calls.push_back(progress);
    return true;
  };
  EXPECT_TRUE(vsa::readFile("/proc/self/fd/" + std::to_string(ends[0]), options).isComplete());
  ::close(ends[0]);
  ASSERT_EQ(calls.size(), 2U);
  EXPECT_EQ(calls[0].bytesTotal, std::nullopt);
  EXPECT_EQ(calls[1].bytesTotal, 7U);
}

TEST(ReadOptions, ProgressDoesNotEndWithAllBytesOfAFaultyText) {
  std::size_t calls = 0;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress&) { return ++calls > 0; };
  EXPECT_EQ(vsa::readText("lamp sun; moon.x = 1;", options).status, ReadStatus::StoppedByError);
  EXPECT_EQ(calls, 1U);
}

// The list is converted after the whole text was read. The callback cancels the reading then.
TEST(ReadOptions, ProgressMayCancelTheConversionOfAList) {
  std::string text = "a x: .b = double[8000000] {";
  for (int i = 0; i < 8'000'000; ++i) text += "1 ";
  text += "};";
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    return progress.bytesRead < text.size();
  };
  const ReadResult result = vsa::readText(text, options);
  EXPECT_EQ(result.status, ReadStatus::Cancelled);
  EXPECT_EQ(result.applied.values, 0U);
  options.onProgress = nullptr;
  options.onDiagnostic = [](const vsa::Diagnostic&) {};
  EXPECT_EQ(vsa::readText(text, options).applied.values, 1U);
}

// Expects that a reading can be cancelled after the whole text was read and before the value is
// converted.
void expectCancelledInValue(const std::string& text) {
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    return progress.bytesRead < text.size();
  };
  const ReadResult result = vsa::readText(text, options);
  EXPECT_EQ(result.status, ReadStatus::Cancelled);
  EXPECT_EQ(result.applied.values, 0U);
}

TEST(ReadOptions, ProgressMayCancelTheExpansionOfABuffer) {
  const std::vector<unsigned char> zeros(100'000'000);
  const zn::String compressed = zn::compress(zeros.data(), zeros.size());
  expectCancelledInValue("a x: .b = byte[100000000] {" + std::string(compressed.view()) + "};");
}

TEST(ReadOptions, ProgressMayCancelTheExpansionOfAString) {
  std::string text = "a x: .s = \"";
  for (int i = 0; i < 30'000'000; ++i) text += "\\n";
  expectCancelledInValue(text + "\";");
}

TEST(ReadOptions, ProgressIsCalledWhileLinksAreResolved) {
  std::string text = "lamp sun:\n";
  for (int i = 0; i < 3000; ++i) text += ".a" + std::to_string(i) + " = sun;\n";
  HostScene scene;
  bool hasResolved = false;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    hasResolved = hasResolved || progress.linksTotal == 3000;
    return progress.linksResolved < 2000;
  };
  scene.options.onCall = [](const std::string& call) {
    if (call.ends_with("setNode sun")) std::this_thread::sleep_for(std::chrono::microseconds(10));
  };
  EXPECT_EQ(vsa::readTextInto(scene, text, options).status, ReadStatus::Cancelled);
  EXPECT_TRUE(hasResolved);
}

TEST(ReadOptions, SizeOfASourceIsTheTotal) {
  TestSource source("lamp sun;");
  source.announced = 9;
  std::optional<std::uint64_t> total;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress& progress) {
    total = progress.bytesTotal;
    return true;
  };
  EXPECT_TRUE(vsa::readSource(source, options).isComplete());
  EXPECT_EQ(total, 9U);
}

TEST(ReadOptions, DiagnosticsThatTheHostDoesNotWantAreOnlyCounted) {
  ReadOptions options;
  options.wantsDiagnostic = [](vsa::DiagnosticId id) { return id != vsa::DiagnosticId::Narrowing; };
  int calls = 0;
  options.onDiagnostic = [&](const vsa::Diagnostic&) { ++calls; };
  const ReadResult result =
      vsa::readText("lamp a: .k = 1; .k = 2.5; .s = \"x\"; .s = 1; .k = 2.5;", options);
  EXPECT_TRUE(result.isComplete());
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].id, vsa::DiagnosticId::WrongType);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(result.droppedDiagnostics, 2U);
  EXPECT_EQ(result.warningCount + result.errorCount, 3U);
}

// The diagnostics tell why the reading is not complete.
TEST(ReadOptions, TheEndAndTheFirstRefusedBufferAreAlwaysReported) {
  ReadOptions options;
  options.limits.bufferBytes = 4;
  options.wantsDiagnostic = [](vsa::DiagnosticId) { return false; };
  const ReadResult result = vsa::readText(
      "lamp a: .x = float[2] {1 2}; .y = float[2] {1 2}; .k = 1; .k = 2.5; .k = ;", options);
  ASSERT_EQ(result.diagnostics.size(), 2U);
  EXPECT_EQ(result.diagnostics[0].inputPath, "a.x");
  EXPECT_TRUE(result.diagnostics[1].endedReading);
  EXPECT_EQ(result.droppedDiagnostics, 2U);
}

TEST(ReadOptions, AnExceptionOfWantsDiagnosticEndsTheReading) {
  ReadOptions options;
  options.wantsDiagnostic = [](vsa::DiagnosticId) -> bool { throw 1; };
  EXPECT_EQ(vsa::readText("lamp a: .k = 1; .k = 2.5;", options).status, ReadStatus::HostException);
}

TEST(ReadOptions, NothingIsPrinted) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  static_cast<void>(vsa::readText("# version: x\nlamp sun; sun.a = nobody; }"));
  static_cast<void>(vsa::readText("}"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ReadOptions, SinksOfTheThreadAreAsBefore) {
  class Counting final : public zn::LogSink {
   public:
    void write(zn::LogLevel, const zn::String&) override { ++lines; }
    int lines = 0;
  } sink;
  const zn::ScopedLogSink scope(&sink);
  static_cast<void>(vsa::readText("# version: x"));
  EXPECT_EQ(sink.lines, 0);
  zn::logWarning("%s", "after");
  EXPECT_EQ(sink.lines, 1);
}

TEST(ReadOptions, MessagesOfAHostsSceneBecomeDiagnostics) {
  HostScene scene;
  scene.options.onCall = [](const std::string& call) {
    if (call.starts_with("createNode")) zn::logError("%s", "odd type");
  };
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;");
  EXPECT_TRUE(outcome.isComplete());
  ASSERT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.diagnostics[0].id, vsa::DiagnosticId::HostMessage);
  EXPECT_EQ(outcome.diagnostics[0].message, "odd type");
  EXPECT_EQ(outcome.diagnostics[0].severity, vsa::Severity::Error);
}

TEST(ReadOptions, CallbacksMayLookAtTheScene) {
  vsa::Scene scene;
  std::vector<std::size_t> nodes;
  ReadOptions options;
  options.onDiagnostic = [&](const vsa::Diagnostic&) {
    std::size_t count = 0;
    for (const vsa::NodeView node : scene.nodes()) count += node.name().empty() ? 0 : 1;
    nodes.push_back(count);
  };
  const std::string text = "# version: x\nlamp sun;\n# version: x\nlamp moon;\n# version: x\n";
  ASSERT_TRUE(vsa::readTextInto(scene, text, options).isComplete());
  EXPECT_EQ(nodes, (std::vector<std::size_t>{0, 1, 2}));
}

TEST(ReadOptions, AReadingMayReadAnotherTextInACallback) {
  ReadOptions options;
  std::size_t inner = 0;
  options.onDiagnostic = [&](const vsa::Diagnostic&) {
    inner += vsa::readText("# version: y\nlamp moon;").warningCount;
  };
  const ReadResult result = vsa::readText("# version: x\n# version: x\nlamp sun;", options);
  EXPECT_EQ(result.warningCount, 2U);
  EXPECT_EQ(inner, 2U);
}

// The host is asked between two pieces of a long string, and the reading goes on.
TEST(ReadProgress, IsAskedForWhileALongStringIsUnescaped) {
  std::string text = "a x; x.s = \"";
  for (int i = 0; i < 3'000'000; ++i) text += "\\\"b";
  ReadOptions options;
  options.onProgress = [](const vsa::ReadProgress&) { return true; };
  const vsa::ReadResult result = vsa::readText(text + "\";", options);
  EXPECT_TRUE(result.isComplete()) << result.message;
  EXPECT_EQ(result.scene["x"]["s"].string("").size(), 6'000'000U);
}

}  // namespace

}  // namespace vsa_tests
