// Tests of buffers that are skipped and read later.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <vsa/read.h>
#include "tests/support/disk_file.h"

namespace vsa_tests {

namespace {

using vsa::BufferMode;
using vsa::LoadedBuffer;
using vsa::ReadOptions;
using vsa::ReadResult;
using vsa::ReadStatus;

ReadOptions skipping() {
  ReadOptions options;
  options.buffers = BufferMode::Skip;
  return options;
}

const std::string TEXT =
    "mesh m:\n  .ids = int32[3] {0 1 2};\n  .far = byte[9000000000] {1};\n"
    "  .sets[*].uv = vec2f [2] { 0,0\n 1 };\n  .bad = int32[2] {1\n 1.5};\n";

TEST(SkippedBuffer, IsDescribedAndTakesNoMemory) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  ASSERT_TRUE(result.isComplete()) << result.message;
  ASSERT_EQ(result.skippedBuffers.size(), 4U);
  const std::vector<std::string> literals = {"int32[3] {0 1 2}", "byte[9000000000] {1}",
                                             "vec2f [2] { 0,0\n 1 }", "int32[2] {1\n 1.5}"};
  const std::vector<std::string> paths = {"m.ids", "m.far", "m.sets[0].uv", "m.bad"};
  for (std::size_t i = 0; i < literals.size(); ++i) {
    const vsa::SkippedBuffer& skipped = result.skippedBuffers[i];
    const std::size_t begin = skipped.literal.begin.offset;
    EXPECT_EQ(TEXT.substr(begin, skipped.literal.end.offset - begin), literals[i]);
    EXPECT_EQ(skipped.inputPath, paths[i]);
  }
  EXPECT_EQ(result.skippedBuffers[1].count, 9000000000U);
  EXPECT_EQ(result.skippedBuffers[1].type, zn::korvo_sdk::DataType::Byte);
  const vsa::BufferView ids = result.scene.view()["m"]["ids"].buffer();
  EXPECT_EQ(ids.elementType(), vsa::ElementType::Int32);
  EXPECT_EQ(ids.count(), 0U);
}

void expectLoads(const ReadResult& result, const std::string& path) {
  const LoadedBuffer ids = path.empty() ? vsa::loadBufferFromText(TEXT, result.skippedBuffers[0])
                                        : vsa::loadBuffer(path, result.skippedBuffers[0]);
  ASSERT_TRUE(ids.isComplete()) << ids.message;
  const auto numbers = ids.buffer().as<std::int32_t>();
  ASSERT_EQ(numbers.size(), 3U);
  EXPECT_EQ(numbers[2], 2);
  const LoadedBuffer uv = path.empty() ? vsa::loadBufferFromText(TEXT, result.skippedBuffers[2])
                                       : vsa::loadBuffer(path, result.skippedBuffers[2]);
  EXPECT_TRUE(uv.isComplete());
  EXPECT_EQ(uv.warningCount, 1U);
  ASSERT_EQ(uv.diagnostics.size(), 1U);
  EXPECT_EQ(uv.diagnostics[0].inputPath, "m.sets[0].uv");
  EXPECT_EQ(uv.diagnostics[0].range.begin.offset, TEXT.find("{ 0,0"));
  EXPECT_EQ(uv.diagnostics[0].range.begin.line, 4U);
  EXPECT_EQ(uv.diagnostics[0].range.begin.column, 27U);
}

TEST(SkippedBuffer, IsLoadedFromText) {
  expectLoads(vsa::readText(TEXT, skipping()), "");
}

TEST(SkippedBuffer, IsLoadedFromAFile) {
  const DiskFile file(TEXT);
  expectLoads(vsa::readFile(file.path(), skipping()), file.path());
}

TEST(SkippedBuffer, IsLoadedFromAFileWithAByteOrderMark) {
  const DiskFile file("\xEF\xBB\xBF" + TEXT);
  expectLoads(vsa::readFile(file.path(), skipping()), file.path());
}

TEST(SkippedBuffer, IsNotLoadedFromATextThatEndsEarlier) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& skipped = result.skippedBuffers[0];
  const std::size_t begin = static_cast<std::size_t>(skipped.literal.begin.offset);
  const std::size_t end = static_cast<std::size_t>(skipped.literal.end.offset);
  const std::string_view text = TEXT;
  for (const std::size_t bytes : {std::size_t{0}, begin - 1, begin, begin + 1, end - 1}) {
    const LoadedBuffer loaded = vsa::loadBufferFromText(text.substr(0, bytes), skipped);
    EXPECT_EQ(loaded.status, ReadStatus::Unreadable) << bytes;
    EXPECT_EQ(loaded.message, vsa::loadBufferFromText("", skipped).message) << bytes;
  }
  EXPECT_TRUE(vsa::loadBufferFromText(text.substr(0, end), skipped).isComplete());
}

TEST(SkippedBuffer, HasItsProblemsWhereTheyAre) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const LoadedBuffer bad = vsa::loadBufferFromText(TEXT, result.skippedBuffers[3]);
  EXPECT_EQ(bad.status, ReadStatus::StoppedByError);
  ASSERT_EQ(bad.diagnostics.size(), 1U);
  EXPECT_EQ(bad.diagnostics[0].range.begin.offset, TEXT.find("1.5"));
  EXPECT_EQ(bad.diagnostics[0].range.begin.line, 7U);
  EXPECT_EQ(bad.diagnostics[0].range.begin.column, 2U);
  EXPECT_EQ(bad.diagnostics[0].numberIndex, 1U);
  EXPECT_EQ(bad.buffer().count(), 0U);
}

// A buffer that is read later has the same log lines as a buffer that is not skipped.
TEST(SkippedBuffer, HasTheLogLinesOfTheWholeText) {
  const std::string text =
      "mesh m:\n  .sets[0].uv = vec2f [2] { 0,0\n 1 };\n  .bad = int32[2] {1 1.5};";
  const ReadResult whole = vsa::readText(text);
  const ReadResult skipped = vsa::readText(text, skipping());
  ASSERT_EQ(whole.diagnostics.size(), 2U);
  ASSERT_EQ(skipped.skippedBuffers.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    std::vector<vsa::Diagnostic> called;
    ReadOptions options;
    options.onDiagnostic = [&](const vsa::Diagnostic& found) { called.push_back(found); };
    const LoadedBuffer loaded = vsa::loadBufferFromText(text, skipped.skippedBuffers[i], options);
    ASSERT_EQ(loaded.diagnostics.size(), 1U);
    ASSERT_EQ(called.size(), 1U);
    for (const vsa::Diagnostic& found : {loaded.diagnostics[0], called[0]}) {
      EXPECT_EQ(found.logLine(), whole.diagnostics[i].logLine());
      EXPECT_EQ(found.inputPath, whole.diagnostics[i].inputPath);
      EXPECT_EQ(found.range.begin, whole.diagnostics[i].range.begin);
      EXPECT_EQ(found.range.end, whole.diagnostics[i].range.end);
    }
    EXPECT_EQ(loaded.message, i == 0 ? "" : whole.message);
  }
}

TEST(SkippedBuffer, IsAllThatLimitsAndCountsSeeWhenItIsLoaded) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& ids = result.skippedBuffers[0];
  const std::uint64_t bytes = std::string("int32[3] {0 1 2}").size();
  ReadOptions options;
  options.limits.nodes = 0;
  options.limits.depth = 0;
  options.limits.textBytes = bytes;
  options.onProgress = [&](const vsa::ReadProgress& progress) {
    EXPECT_LE(progress.bytesRead, bytes);
    EXPECT_EQ(progress.bytesTotal, bytes);
    return true;
  };
  const LoadedBuffer loaded = vsa::loadBufferFromText(TEXT, ids, options);
  EXPECT_TRUE(loaded.isComplete()) << loaded.message;
  EXPECT_EQ(loaded.bytesRead, bytes);
  EXPECT_EQ(loaded.applied.nodes, 0U);
  EXPECT_EQ(loaded.applied.statements, 0U);
  EXPECT_EQ(loaded.applied.values, 1U);
  options.limits.textBytes = bytes - 1;
  const LoadedBuffer longer = vsa::loadBufferFromText(TEXT, ids, options);
  EXPECT_EQ(longer.status, ReadStatus::OverLimit);
  EXPECT_EQ(longer.limit, vsa::Limit::TextBytes);
  ASSERT_EQ(longer.diagnostics.size(), 1U);
  EXPECT_EQ(longer.diagnostics[0].range.begin, ids.literal.begin);
}

TEST(SkippedBuffer, OverTheLimitOfTextBytesIsADiagnosticForTheCallback) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& ids = result.skippedBuffers[0];
  std::vector<vsa::Diagnostic> delivered;
  ReadOptions options;
  options.limits.textBytes = 0;
  options.keptDiagnostics = 0;
  options.onDiagnostic = [&](const vsa::Diagnostic& found) { delivered.push_back(found); };
  const LoadedBuffer loaded = vsa::loadBufferFromText(TEXT, ids, options);
  EXPECT_EQ(loaded.status, ReadStatus::OverLimit);
  ASSERT_EQ(delivered.size(), 1U);
  EXPECT_EQ(delivered[0].id, vsa::DiagnosticId::OverLimit);
  EXPECT_EQ(delivered[0].message, loaded.message);
  EXPECT_EQ(delivered[0].range, ids.literal);
  EXPECT_EQ(delivered[0].inputPath, ids.inputPath);
  EXPECT_EQ(loaded.diagnostics.size(), 1U);  // the diagnostic that ended the reading is always kept

  options.onDiagnostic = [](const vsa::Diagnostic&) { throw std::runtime_error("no more"); };
  const LoadedBuffer thrown = vsa::loadBufferFromText(TEXT, ids, options);
  EXPECT_EQ(thrown.status, ReadStatus::HostException);
  EXPECT_EQ(thrown.message, "no more");
  EXPECT_NE(thrown.exception, nullptr);
  EXPECT_FALSE(thrown.limit);
  EXPECT_EQ(thrown.droppedDiagnostics, 1U);
}

TEST(SkippedBuffer, IsUnreadableWithTheReasonOfTheSystem) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& ids = result.skippedBuffers[0];
  EXPECT_EQ(vsa::loadBuffer("no/such/file.vsa", ids).message,
            vsa::readFile("no/such/file.vsa").message);
  EXPECT_EQ(vsa::loadBuffer(nullptr, ids).message, vsa::readFile(nullptr).message);
  EXPECT_EQ(vsa::loadBuffer(std::filesystem::temp_directory_path(), ids).message,
            vsa::readFile(std::filesystem::temp_directory_path()).message);
}

TEST(SkippedBuffer, MeetsTheLimitsWhenItIsLoaded) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  EXPECT_EQ(vsa::loadBufferFromText(TEXT, result.skippedBuffers[1]).limit, vsa::Limit::Memory);
}

// A callback whose copy constructor throws after `isSet` has become true.
struct ThrowingCopy {
  ThrowingCopy() = default;
  ThrowingCopy(const ThrowingCopy& other) : isSet(other.isSet) {
    if (*isSet) throw std::runtime_error("no copy");
  }
  ThrowingCopy& operator=(const ThrowingCopy&) = delete;
  ~ThrowingCopy() = default;
  bool operator()(const vsa::ReadProgress&) const { return true; }

  std::shared_ptr<bool> isSet = std::make_shared<bool>(false);
};

TEST(SkippedBuffer, IsHostExceptionForACallbackThatThrowsWhenCopied) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  ReadOptions options;
  const ThrowingCopy callback;
  options.onProgress = callback;
  *callback.isSet = true;
  const LoadedBuffer loaded = vsa::loadBufferFromText(TEXT, result.skippedBuffers[0], options);
  EXPECT_EQ(loaded.status, ReadStatus::HostException);
  EXPECT_EQ(loaded.message, "no copy");
}

TEST(SkippedBuffer, IsUnreadableWhereTheTextHasChanged) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& ids = result.skippedBuffers[0];
  EXPECT_EQ(vsa::loadBufferFromText("short", ids).status, ReadStatus::Unreadable);
  std::string other = TEXT;
  other.replace(other.find("int32[3]"), 8, "int16[3]");
  EXPECT_EQ(vsa::loadBufferFromText(other, ids).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::loadBuffer("no/such/file.vsa", ids).status, ReadStatus::Unreadable);
  EXPECT_EQ(vsa::loadBuffer(nullptr, ids).status, ReadStatus::Unreadable);
  vsa::SkippedBuffer turned = ids;
  std::swap(turned.literal.begin, turned.literal.end);
  EXPECT_NE(vsa::loadBufferFromText(TEXT, turned).status, ReadStatus::Complete);
  other.replace(other.find("int16[3] {0 1 2}"), 16, "int32[2] {0 1  }");
  EXPECT_EQ(vsa::loadBufferFromText(other, ids).status, ReadStatus::Unreadable);
  vsa::SkippedBuffer behind = ids;
  behind.literal.begin.offset += TEXT.size();
  behind.literal.end.offset += TEXT.size();
  EXPECT_EQ(vsa::loadBufferFromText(TEXT, behind).status, ReadStatus::Unreadable);
}

TEST(SkippedBuffer, HasNoElementsIfItIsNotComplete) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const std::string_view others[] = {"int16[3] {0 1 2}", "int32[2] {0 1  }", "int32[1] {0};42;"};
  for (const std::string_view other : others) {
    std::string text = TEXT;
    text.replace(text.find("int32[3]"), other.size(), other);
    const LoadedBuffer loaded = vsa::loadBufferFromText(text, result.skippedBuffers[0]);
    EXPECT_NE(loaded.status, ReadStatus::Complete) << other;
    EXPECT_EQ(loaded.buffer().problem(), vsa::BufferProblem::Missing) << other;
    EXPECT_EQ(loaded.buffer().count(), 0U) << other;
  }
}

TEST(SkippedBuffer, IsUnreadableWhereTheFileHasChanged) {
  const ReadResult result = vsa::readText(TEXT, skipping());
  const vsa::SkippedBuffer& ids = result.skippedBuffers[0];
  EXPECT_EQ(vsa::loadBuffer(DiskFile("short").path(), ids).message, "the text has changed");
  const DiskFile cut(TEXT.substr(0, ids.literal.end.offset - 1));
  EXPECT_EQ(vsa::loadBuffer(cut.path(), ids).message, "the text has changed");
  const DiskFile file(TEXT);
  vsa::SkippedBuffer far = ids;
  far.literal.begin.offset = std::uint64_t{1} << 63;
  far.literal.end.offset = far.literal.begin.offset + 1;
  EXPECT_EQ(vsa::loadBuffer(file.path(), far).message, "the text has changed");
  const std::filesystem::path withNul(std::string("a\0b", 3));
  EXPECT_EQ(vsa::loadBuffer(withNul, ids).message, "the path has a NUL");
}

}  // namespace

}  // namespace vsa_tests
