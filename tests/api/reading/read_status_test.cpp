// Tests of the status of a reading: each status, and what else the result has in that case.
#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/disk_file.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::Limit;
using vsa::ReadOptions;
using vsa::ReadResult;
using vsa::ReadStatus;

static_assert(!std::is_copy_constructible_v<ReadResult>);
static_assert(std::is_nothrow_move_constructible_v<ReadResult>);

std::string thrownText(const vsa::ReadOutcome& outcome) {
  try {
    if (outcome.exception) std::rethrow_exception(outcome.exception);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "nothing";
}

TEST(ReadStatus, IsCompleteForAWholeText) {
  const ReadResult result = vsa::readText("lamp sun; sun.power = 2.5; sun.next = sun;");
  EXPECT_EQ(result.status, ReadStatus::Complete);
  EXPECT_TRUE(result.isComplete());
  EXPECT_TRUE(result.message.empty());
  EXPECT_EQ(result.bytesRead, 42U);
  EXPECT_EQ(result.applied.statements, 3U);
  EXPECT_EQ(result.applied.nodes, 1U);
  EXPECT_EQ(result.applied.values, 1U);
  EXPECT_EQ(result.applied.links, 1U);
  EXPECT_TRUE(result.applied.linksResolved);
  EXPECT_EQ(result.scene.plain().nodeCount(), 1U);
}

TEST(ReadStatus, IsCompleteWithWarnings) {
  const ReadResult result = vsa::readText("lamp sun; sun.count = 1; sun.count = 2.7;");
  EXPECT_TRUE(result.isComplete());
  EXPECT_EQ(result.warningCount, 1U);
  EXPECT_EQ(result.errorCount, 0U);
}

TEST(ReadStatus, IsCompleteForAnEmptyText) {
  EXPECT_TRUE(vsa::readText("").isComplete());
  EXPECT_TRUE(vsa::readText(std::span<const std::byte>()).isComplete());
  TestSource none("");
  EXPECT_TRUE(vsa::readSource(none).isComplete());
}

TEST(ReadStatus, IsStoppedByAnErrorAfterTheFirstTokens) {
  const ReadResult result = vsa::readText("lamp sun;\nmoon.power = 1;\nlamp later;");
  EXPECT_EQ(result.status, ReadStatus::StoppedByError);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_TRUE(result.diagnostics[0].endedReading);
  EXPECT_EQ(result.message, result.diagnostics[0].logLine());
  EXPECT_EQ(result.scene.plain().nodeCount(), 1U);
  EXPECT_FALSE(result.applied.linksResolved);
  EXPECT_EQ(result.applied.links, 0U);
}

TEST(ReadStatus, IsStoppedByAnErrorInTheFirstTokens) {
  const ReadResult result = vsa::readText("}");
  EXPECT_EQ(result.status, ReadStatus::StoppedByError);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].logLine(), "INVALID TOKEN (1,0): '}'");
}

TEST(ReadStatus, IsCutOffInsideAStatement) {
  EXPECT_EQ(vsa::readText("lamp sun; sun.power = 2").status, ReadStatus::CutOff);
  EXPECT_EQ(vsa::readText("lamp sun; sun.power").status, ReadStatus::CutOff);
  EXPECT_EQ(vsa::readText("lamp sun; sun.name = \"su").status, ReadStatus::CutOff);
}

// Each statement is truncated after each of its bytes except the last one. The reading of each such
// text ends with the status CutOff.
TEST(ReadStatus, IsCutOffAtEachByteOfAStatement) {
  const std::string before = "lamp sun: .a = 1;\n";
  for (const std::string statement :
       {"lamp moon;", "mesh wall :", "define moon;", "remove sun;", "sun.power = -1.5e3;",
        ".v[2].w = vec3(1, 2, 3);", ".s = \"a\\\"b\";", ".r |= dusk.out;", ".r |= .out[0].x;",
        ".r |= null;", ".n = sun;", ".t = true;", ".pts = float[3]{1, 2e1 3};", ".o = {1 2};",
        ".o = [1 2];", ".b = byte [4] {.78da6364626601000018000b};"}) {
    for (std::size_t bytes = 1; bytes < statement.size(); ++bytes) {
      const std::string text = before + statement.substr(0, bytes);
      EXPECT_EQ(vsa::readText(text).status, ReadStatus::CutOff) << text;
    }
  }
}

TEST(ReadStatus, IsStoppedByAnErrorThatIsNearTheEnd) {
  for (const std::string text :
       {"lamp sun; 42", "lamp sun; sun.a b", "lamp sun; sun.a |= 3", "lamp sun; sun.a = b.",
        "lamp sun; sun.a = b[3]", "lamp sun; sun.a = 3 4", "lamp sun; lamp moon moon"}) {
    EXPECT_EQ(vsa::readText(text).status, ReadStatus::StoppedByError) << text;
  }
}

TEST(ReadStatus, IsCutOffInsideAStringWhereAStatementBegins) {
  const ReadResult result = vsa::readText("lamp sun; \"never closed");
  EXPECT_EQ(result.status, ReadStatus::CutOff);
  EXPECT_TRUE(result.applied.linksResolved);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].id, vsa::DiagnosticId::UnexpectedEof);
}

TEST(ReadStatus, IsCutOffAtTheEndMark) {
  const ReadResult result = vsa::readText("lamp sun; \xFF lamp moon;");
  EXPECT_EQ(result.status, ReadStatus::CutOff);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].id, vsa::DiagnosticId::EndMark);
  EXPECT_EQ(result.scene.plain().nodeCount(), 1U);
}

TEST(ReadStatus, IsUnreadableForWhatIsNoFile) {
  const vsa::ReadResult missing = vsa::readFile("no/such/file.vsa");
  EXPECT_EQ(missing.status, ReadStatus::Unreadable);
  EXPECT_EQ(missing.bytesRead, 0U);
  EXPECT_EQ(vsa::readFile(std::filesystem::temp_directory_path()).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::readFile("").status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::readFile(std::filesystem::path()).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::readFile(nullptr).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::readText(nullptr).status, ReadStatus::Unreadable);
  EXPECT_FALSE(vsa::readFile("no/such/file.vsa").message.empty());
}

TEST(ReadStatus, IsUnreadableForAPathWithANul) {
  const DiskFile file("lamp sun;");
  const std::filesystem::path path(file.path() + std::string("\0zzz", 4));
  EXPECT_EQ(vsa::readFile(path).status, ReadStatus::Unreadable);
  vsa::Scene scene;
  EXPECT_EQ(vsa::readFileInto(scene, path).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::loadBuffer(path, vsa::SkippedBuffer()).message, "the path has a NUL");
  EXPECT_TRUE(vsa::readFile(std::filesystem::path(file.path())).isComplete());
}

TEST(ReadStatus, IsUnreadableForASourceThatFails) {
  TestSource source("lamp sun; lamp moon; sun.power ", 4);
  source.onRead = [&](std::size_t at) {
    if (at >= 20) source.failure = "the line is dead";
  };
  const ReadResult result = vsa::readSource(source);
  EXPECT_EQ(result.status, ReadStatus::Unreadable);
  EXPECT_EQ(result.message, "the line is dead");
}

TEST(ReadStatus, UnreadableLeavesTheSceneAsItIs) {
  vsa::Scene scene;
  scene.plain().setFileVersion(7);
  EXPECT_EQ(vsa::readFileInto(scene, "no/such/file.vsa").status, ReadStatus::Unreadable);
  EXPECT_EQ(scene.plain().fileVersion(), 7U);
}

TEST(ReadStatus, IsCancelledByTheProgressCallback) {
  ReadOptions options;
  options.onProgress = [](const vsa::ReadProgress&) { return false; };
  EXPECT_EQ(vsa::readText("lamp sun;", options).status, ReadStatus::Cancelled);
}

TEST(ReadStatus, IsHostExceptionForWhatASourceThrows) {
  TestSource source("lamp sun; lamp moon;", 4);
  source.onRead = [](std::size_t at) {
    if (at >= 12) throw std::out_of_range("beyond the archive");
  };
  const ReadResult result = vsa::readSource(source);
  EXPECT_EQ(result.status, ReadStatus::HostException);
  EXPECT_EQ(thrownText(result), "beyond the archive");
  EXPECT_EQ(result.message, "beyond the archive");
}

TEST(ReadStatus, IsHostExceptionForWhatASceneThrows) {
  for (const bool isRuntimeError : {true, false}) {
    HostScene scene;
    scene.options.onCall = [&](const std::string& call) {
      if (!call.starts_with("createNode lamp moon")) return;
      if (isRuntimeError) throw std::runtime_error("no moon");
      throw std::logic_error("no moon");
    };
    const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun; lamp moon;");
    EXPECT_EQ(outcome.status, ReadStatus::HostException);
    EXPECT_EQ(thrownText(outcome), "no moon");
    EXPECT_EQ(outcome.applied.nodes, 1U);
  }
}

TEST(ReadStatus, IsHostExceptionForWhatIsNoStandardException) {
  HostScene scene;
  scene.options.onCall = [](const std::string&) { throw 5; };
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun;");
  EXPECT_EQ(outcome.status, ReadStatus::HostException);
  EXPECT_THROW(std::rethrow_exception(outcome.exception), int);
}

TEST(ReadStatus, IsHostExceptionForWhatACallbackThrows) {
  ReadOptions options;
  options.onProgress = [](const vsa::ReadProgress&) -> bool { throw std::runtime_error("p"); };
  EXPECT_EQ(thrownText(vsa::readText("lamp sun;", options)), "p");
  ReadOptions others;
  others.onDiagnostic = [](const vsa::Diagnostic&) { throw std::runtime_error("d"); };
  const ReadResult warned = vsa::readText("# version: x\nlamp sun;", others);
  EXPECT_EQ(warned.status, ReadStatus::HostException);
  EXPECT_EQ(thrownText(warned), "d");
  const ReadResult stopped = vsa::readText("lamp sun; moon.x = 1;", others);
  EXPECT_EQ(stopped.status, ReadStatus::HostException);
  EXPECT_EQ(thrownText(stopped), "d");
}

class WithoutText final : public std::runtime_error {
 public:
  WithoutText() : std::runtime_error("") {}
  const char* what() const noexcept override { return nullptr; }
};

void expectWithoutText(const vsa::ReadOutcome& outcome) {
  EXPECT_EQ(outcome.status, ReadStatus::HostException);
  EXPECT_EQ(outcome.message, "an exception without a text");
  EXPECT_THROW(std::rethrow_exception(outcome.exception), WithoutText);
}

TEST(ReadStatus, IsHostExceptionForAnExceptionWithoutAText) {
  TestSource source("lamp sun;");
  source.onRead = [](std::size_t) { throw WithoutText(); };
  expectWithoutText(vsa::readSource(source));
  HostScene scene;
  scene.options.onCall = [](const std::string& call) {
    if (call.starts_with("createNode")) throw WithoutText();
  };
  expectWithoutText(vsa::readTextInto(scene, "lamp sun;"));
  ReadOptions options;
  options.onDiagnostic = [](const vsa::Diagnostic&) { throw WithoutText(); };
  expectWithoutText(vsa::readText("# version: x", options));
}

TEST(ReadStatus, IsOutOfMemoryForABadAllocOfTheHost) {
  HostScene scene;
  scene.options.onCall = [](const std::string& call) {
    if (call.starts_with("createNode")) throw std::bad_alloc();
  };
  TestSource source("lamp sun;");
  source.onRead = [](std::size_t) { throw std::bad_alloc(); };
  ReadOptions options;
  options.onProgress = [](const vsa::ReadProgress&) -> bool { throw std::bad_alloc(); };
  const vsa::ReadOutcome outcomes[] = {vsa::readTextInto(scene, "lamp sun;"),
                                       vsa::readSource(source),
                                       vsa::readText("lamp sun;", options)};
  for (const vsa::ReadOutcome& outcome : outcomes) {
    EXPECT_EQ(outcome.status, ReadStatus::OutOfMemory);
    EXPECT_THROW(std::rethrow_exception(outcome.exception), std::bad_alloc);
    EXPECT_TRUE(outcome.diagnostics.empty());
  }
}

TEST(ReadStatus, IsOutOfMemoryWithABadAllocForABufferThatCannotBeAllocated) {
  ReadOptions options;
  options.limits.memory = vsa::UNLIMITED;
  const ReadResult result = vsa::readText("a x; x.b = float[18446744073709551615] {0};", options);
  EXPECT_EQ(result.status, ReadStatus::OutOfMemory);
  ASSERT_TRUE(result.exception);
  EXPECT_THROW(std::rethrow_exception(result.exception), std::bad_alloc);
}

TEST(ReadStatus, IsOverLimitForTheLimitsOfTheLibrarysScene) {
  vsa::Scene scene;
  scene.plain().setEmptyElementLimit(2);
  vsa::ReadOutcome outcome = vsa::readTextInto(scene, "lamp sun; sun.a[9] = 1;");
  EXPECT_EQ(outcome.status, ReadStatus::OverLimit);
  EXPECT_EQ(outcome.limit, Limit::EmptyElements);
  scene.plain().setDepthLimit(1);
  outcome = vsa::readTextInto(scene, "sun.b.c = 1;");
  EXPECT_EQ(outcome.limit, Limit::Depth);
}

TEST(ReadStatus, NamesAreStable) {
  const std::vector<std::pair<ReadStatus, std::string>> expected = {
      {ReadStatus::Complete, "complete"},
      {ReadStatus::StoppedByError, "stopped-by-error"},
      {ReadStatus::CutOff, "cut-off"},
      {ReadStatus::Unreadable, "unreadable"},
      {ReadStatus::Cancelled, "cancelled"},
      {ReadStatus::OverLimit, "over-limit"},
      {ReadStatus::OutOfMemory, "out-of-memory"},
      {ReadStatus::HostException, "host-exception"}};
  for (const auto& [status, text] : expected) EXPECT_EQ(vsa::name(status), text);
  EXPECT_STREQ(vsa::name(static_cast<ReadStatus>(200)), "unknown");
  EXPECT_STREQ(vsa::name(Limit::BufferBytes), "buffer-bytes");
  EXPECT_STREQ(vsa::name(static_cast<Limit>(200)), "unknown");
  EXPECT_STREQ(vsa::name(vsa::Severity::Warning), "warning");
}

TEST(ReadStatus, DiagnosticIdsHaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (int i = 0; i < vsa::DIAGNOSTIC_ID_COUNT; ++i) {
    names.insert(vsa::name(static_cast<vsa::DiagnosticId>(i)));
  }
  EXPECT_EQ(names.size(), static_cast<std::size_t>(vsa::DIAGNOSTIC_ID_COUNT));
  EXPECT_EQ(names.count("unknown"), 0U);
  EXPECT_STREQ(vsa::name(vsa::DiagnosticId::TooFewElements), "too-few-elements");
}

TEST(ReadStatus, ANullTextIsUnreadable) {
  const char* const none = nullptr;
  const vsa::ReadResult read = vsa::readText(none);
  EXPECT_EQ(read.status, ReadStatus::Unreadable);
  EXPECT_EQ(read.message, "the text is null");
}

TEST(ReadStatus, ANullTextOfASkippedBufferIsUnreadable) {
  const char* const none = nullptr;
  const vsa::LoadedBuffer loaded = vsa::loadBufferFromText(none, {});
  EXPECT_EQ(loaded.status, ReadStatus::Unreadable);
  EXPECT_EQ(loaded.message, "the text is null");
}

// The functions that read into a scene of the caller give the same result, for the library's scene
// and for a host's scene.
TEST(ReadStatus, IsTheSameFromEverySource) {
  const std::string text = "lamp sun; sun.power = 2.5;";
  const DiskFile file(text);
  const std::filesystem::path path = file.path();
  const auto bytes = std::as_bytes(std::span(text.data(), text.size()));
  vsa::Scene scenes[3];
  HostScene hosts[2];
  TestSource source(text);
  for (const vsa::ReadOutcome& outcome :
       {vsa::readFileInto(scenes[0], path), vsa::readTextInto(scenes[1], bytes),
        vsa::readSourceInto(scenes[2], source), vsa::readFileInto(hosts[0], path),
        vsa::readTextInto(hosts[1], bytes)}) {
    EXPECT_TRUE(outcome.isComplete()) << outcome.message;
    EXPECT_EQ(outcome.bytesRead, text.size());
    EXPECT_EQ(outcome.applied.nodes, 1U);
    EXPECT_EQ(outcome.applied.values, 1U);
  }
  for (const vsa::Scene& scene : scenes) EXPECT_EQ(scene["sun"]["power"].real(), 2.5);
  const std::filesystem::path withNul(std::string("a\0b", 3));
  EXPECT_EQ(vsa::readFileInto(hosts[0], withNul).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::readFileInto(scenes[0], withNul).status, ReadStatus::Unreadable);
}

}  // namespace

}  // namespace vsa_tests
