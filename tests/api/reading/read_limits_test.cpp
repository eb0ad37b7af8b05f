// Tests of limits: what each limit counts, the status and the diagnostic of a reading that exceeds
// it, and that memory beyond the limit is not allocated.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/disk_file.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::Limit;
using vsa::ReadLimits;
using vsa::ReadOptions;
using vsa::ReadResult;
using vsa::ReadStatus;

ReadOptions limitedTo(const ReadLimits& limits) {
  ReadOptions options;
  options.limits = limits;
  return options;
}

void expectOver(Limit limit, const ReadResult& result) {
  EXPECT_EQ(result.status, ReadStatus::OverLimit);
  EXPECT_EQ(result.limit, limit);
  ASSERT_FALSE(result.diagnostics.empty());
  EXPECT_EQ(result.diagnostics.back().id, vsa::DiagnosticId::OverLimit);
  EXPECT_TRUE(result.diagnostics.back().endedReading);
  EXPECT_EQ(result.diagnostics.back().message, result.message);
}

// Expects that a buffer was omitted because of a limit, and that the reading continued.
void expectLeftOut(Limit limit, const ReadResult& result) {
  EXPECT_EQ(result.status, ReadStatus::OverLimit);
  EXPECT_EQ(result.limit, limit);
  EXPECT_TRUE(result.applied.linksResolved);
  ASSERT_FALSE(result.diagnostics.empty());
  const auto isOverLimit = [](const vsa::Diagnostic& found) {
    return found.id == vsa::DiagnosticId::OverLimit;
  };
  const auto first =
      std::find_if(result.diagnostics.begin(), result.diagnostics.end(), isOverLimit);
  ASSERT_NE(first, result.diagnostics.end());
  EXPECT_EQ(first->message, result.message);
  EXPECT_FALSE(first->endedReading);
  EXPECT_FALSE(result.diagnostics.back().endedReading);
}

TEST(ReadLimits, TextBytesAllowATextOfJustThatLength) {
  const std::string text = "lamp sun; lamp moon;";
  const ReadOptions exact = limitedTo({.textBytes = text.size()});
  const ReadOptions less = limitedTo({.textBytes = text.size() - 1});
  EXPECT_TRUE(vsa::readText(text, exact).isComplete());
  expectOver(Limit::TextBytes, vsa::readText(text, less));
  EXPECT_EQ(vsa::readText(text, less).scene.plain().nodeCount(), 0U);
  for (const std::size_t bytesPerRead : {0, 1, 3}) {
    TestSource fits(text, bytesPerRead);
    EXPECT_TRUE(vsa::readSource(fits, exact).isComplete());
    TestSource longer(text, bytesPerRead);
    expectOver(Limit::TextBytes, vsa::readSource(longer, less));
  }
}

TEST(ReadLimits, TextBytesDoNotCountAByteOrderMark) {
  const std::string text = "lamp sun;";
  const DiskFile file("\xEF\xBB\xBF" + text);
  ReadOptions options = limitedTo({.textBytes = text.size()});
  std::optional<std::uint64_t> total;
  options.onProgress = [&](const vsa::ReadProgress& progress) {
    if (progress.bytesRead == 0) total = progress.bytesTotal;
    return true;
  };
  EXPECT_TRUE(vsa::readFile(file.path(), options).isComplete());
  EXPECT_EQ(total, text.size());
  expectOver(Limit::TextBytes,
             vsa::readFile(file.path(), limitedTo({.textBytes = text.size() - 1})));
}

TEST(ReadLimits, TextBytesStopAnEndlessSource) {
  class Endless final : public vsa::Source {
   public:
    std::size_t read(std::span<char> to) override {
      std::fill(to.begin(), to.end(), ' ');
      return to.size();
    }
  } endless;
  expectOver(Limit::TextBytes, vsa::readSource(endless, limitedTo({.textBytes = 10'000'000})));
}

TEST(ReadLimits, NodesCountThoseThatTheTextMakes) {
  const ReadOptions two = limitedTo({.nodes = 2});
  EXPECT_TRUE(vsa::readText("a x; a y; a x; define y;", two).isComplete());
  const ReadResult three = vsa::readText("a x; a y; define z;", two);
  expectOver(Limit::Nodes, three);
  EXPECT_EQ(three.scene.plain().nodeCount(), 2U);
}

TEST(ReadLimits, ElementsAreCountedBeforeTheyAreMade) {
  const ReadOptions five = limitedTo({.elements = 5});
  EXPECT_TRUE(vsa::readText("a x; x.v[4] = 1;", five).isComplete());
  const ReadResult result = vsa::readText("a x; x.v[1000000000] = 1;", five);
  expectOver(Limit::Elements, result);
  EXPECT_EQ(result.applied.elements, 5U);
  EXPECT_EQ(result.diagnostics.back().inputPath, "x.v[1000000000]");
}

TEST(ReadLimits, DepthCountsTheInputsOfAPath) {
  const ReadOptions two = limitedTo({.depth = 2});
  EXPECT_TRUE(vsa::readText("a x; x.v[0] = 1; x.o.p = 2;", two).isComplete());
  expectOver(Limit::Depth, vsa::readText("a x; x.v[0].w = 1;", two));
  expectOver(Limit::Depth, vsa::readText("a x: .v[0].w = 1;", two));
}

TEST(ReadLimits, BufferBytesAreCheckedBeforeTheBufferIsTaken) {
  const ReadOptions twelve = limitedTo({.bufferBytes = 12});
  EXPECT_TRUE(vsa::readText("a x; x.b = vec3f[1] {1 2 3};", twelve).isComplete());
  const ReadResult result = vsa::readText("a x; x.b = float[4] {1 2};", twelve);
  expectLeftOut(Limit::BufferBytes, result);
  EXPECT_EQ(
      result.message,
      "the buffer float[4] of x.b (16 bytes, 2 numbers written) is larger than the limit of 12 "
      "bytes");
  EXPECT_EQ(result.diagnostics.back().inputPath, "x.b");
}

// Only a buffer whose components have one byte can have a compressed text. The list of any other
// buffer may begin with a number such as ".5".
TEST(ReadLimits, AListThatBeginsWithAPointIsCountedAsNumbers) {
  const ReadOptions options = limitedTo({.bufferBytes = 3});
  EXPECT_EQ(vsa::readText("a x; x.b = float[4] {.5 1 2 3};", options).message,
            "the buffer float[4] of x.b (16 bytes, 4 numbers written) is larger than the limit of "
            "3 bytes");
  EXPECT_EQ(vsa::readText("a x; x.b = rgba8[1] {.78da};", options).message,
            "the buffer rgba8[1] of x.b (4 bytes, 5 bytes of compressed text written) is larger "
            "than the limit of 3 bytes");
}

TEST(ReadLimits, MemoryBoundsWhatIsDeclaredAndNotWritten) {
  std::string text = "a x:\n";
  for (int i = 0; i < 2000; ++i) text += ".a" + std::to_string(i) + " = byte[131000] {1};\n";
  expectLeftOut(Limit::Memory, vsa::readText(text));
  EXPECT_TRUE(vsa::readText(text, limitedTo({.memory = vsa::UNLIMITED})).isComplete());
  EXPECT_TRUE(vsa::readText(text, limitedTo({.memory = 300'000'000})).isComplete());
}

TEST(ReadLimits, ABufferThatIsLeftOutIsEmptyAndTheReadingGoesOn) {
  const ReadResult result =
      vsa::readText("a x; x.b = byte[3] {1 2 3}; x.b = byte[30000000000] {1 2}; a y; x.r = y;");
  expectLeftOut(Limit::Memory, result);
  EXPECT_EQ(result.message,
            "the buffer byte[30000000000] of x.b (30000000000 bytes, 2 numbers written) needs more "
            "memory than the limit of 67116064 bytes leaves for buffers; raise the limit of memory "
            "to allow it");
  const vsa::Diagnostic& found = result.diagnostics[0];
  EXPECT_EQ(found.inputPath, "x.b");
  EXPECT_EQ(found.severity, vsa::Severity::Error);
  EXPECT_EQ(found.range.begin.offset, 38U);
  EXPECT_EQ(found.range.end.offset, 51U);
  EXPECT_EQ(result.scene["x"]["b"].buffer().count(), 0U);
  EXPECT_EQ(result.scene["x"]["b"].buffer().elementType(), zn::korvo_sdk::DataType::Byte);
  EXPECT_EQ(result.scene["x"]["r"].node().name(), "y");
}

TEST(ReadLimits, AnErrorBehindABufferThatIsLeftOutDecidesTheStatus) {
  const std::string text = "a x; x.b = byte[30000000000] {1}; ";
  EXPECT_EQ(vsa::readText(text + "gone.x = 1;").status, ReadStatus::StoppedByError);
  EXPECT_EQ(vsa::readText(text + "gone.x = 1;").limit, std::nullopt);
  EXPECT_EQ(vsa::readText(text + "x.c =").status, ReadStatus::CutOff);
  EXPECT_EQ(vsa::readText(text + "\"x").status, ReadStatus::CutOff);
}

TEST(ReadLimits, BuffersThatAreLeftOutCountAsDiagnostics) {
  std::string text = "a x:\n";
  for (int i = 0; i < 20; ++i) text += ".b = byte[30000000000] {1};\n";
  ReadOptions options;
  options.keptDiagnostics = 3;
  ReadResult result = vsa::readText(text, options);
  expectLeftOut(Limit::Memory, result);
  EXPECT_EQ(result.diagnostics.size(), 3U);
  EXPECT_EQ(result.droppedDiagnostics, 17U);
  EXPECT_EQ(result.errorCount, 20U);
  options.limits.diagnostics = 5;
  expectOver(Limit::Diagnostics, vsa::readText(text, options));
}

// The default limit of memory grows by the bytes that compressed buffers expand to, and not by the
// bytes that they declare. Each buffer in these texts declares at least 9000 bytes and expands to
// one byte.
TEST(ReadLimits, MemoryGrowsByWhatCompressedBuffersExpandTo) {
  const std::string oneByte = ".78da4b040000620062";
  std::string text = "a x:\n";
  for (int i = 0; i < 40'000; ++i) {
    text += ".b" + std::to_string(i) + " = byte[9000] {" + oneByte + "};\n";
  }
  expectLeftOut(Limit::Memory, vsa::readText(text));
  ReadResult one = vsa::readText("a x; x.b = byte[9000] {" + oneByte + "};");
  EXPECT_TRUE(one.isComplete()) << one.message;
  one = vsa::readText("a x; x.b = byte[70000000000] {" + oneByte + "};");
  expectLeftOut(Limit::Memory, one);
  EXPECT_EQ(
      one.message,
      "the buffer byte[70000000000] of x.b (70000000000 bytes, 19 bytes of compressed text "
      "written) needs more memory than the limit of 67124800 bytes leaves for buffers; raise the "
      "limit of memory to allow it");
}

// A buffer whose compressed text has `blocks` empty blocks of ten digits and one block that expands
// to one byte. The text raises the default limit of memory while it is decompressed.
std::string oneByteInALongText(const std::string& declared, int blocks) {
  std::string text = "x.b = byte[" + declared + "] {.78da";
  for (int i = 0; i < blocks; ++i) text += "000000ffff";
  return text + "4b040000620062};\n";
}

// Before the decompression, the limit is high enough for 80,000,000 bytes, because the text could
// expand to so many. Its result of one byte does not justify them.
TEST(ReadLimits, ABufferIsLeftOutIfItsTextExpandsToTooLittle) {
  const std::string before = "a x; x.c = byte[5000000] {1};\n";
  const ReadResult fits = vsa::readText(before + oneByteInALongText("60000000", 16'000));
  EXPECT_TRUE(fits.isComplete()) << fits.message;
  const ReadResult result = vsa::readText(before + oneByteInALongText("80000000", 16'000) +
                                          "a y; x.d = byte[60000000] {2};\n");
  expectLeftOut(Limit::Memory, result);
  EXPECT_EQ(result.errorCount, 1U);
  EXPECT_EQ(result.message,
            "the buffer byte[80000000] of x.b (80000000 bytes, 160019 bytes of compressed text "
            "written) needs more memory than the limit of 83119365 bytes leaves for buffers; raise "
            "the limit of memory to allow it");
  EXPECT_EQ(result.diagnostics[1].inputPath, "x.b");
  EXPECT_EQ(result.scene["x"]["b"].buffer().count(), 0U);
  EXPECT_EQ(result.scene["x"]["b"].buffer().elementType(), zn::korvo_sdk::DataType::Byte);
  EXPECT_EQ(result.scene["x"]["d"].buffer().count(), 60'000'000U);
  EXPECT_EQ(result.scene.plain().nodeCount(), 2U);
}

// The elements of the array and the buffer together need more memory than the text allows, although
// the buffer alone does not.
TEST(ReadLimits, ABufferIsLeftOutIfOtherMemoryLeavesTooLittle) {
  const std::string buffer = oneByteInALongText("60000000", 12'000);
  vsa::Scene scene;
  scene.plain().setEmptyElementLimit(1'000'000);
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "a x; x.v[900000] = 1;\n" + buffer);
  EXPECT_EQ(outcome.limit, Limit::Memory) << outcome.message;
  EXPECT_EQ(outcome.errorCount, 1U);
  EXPECT_TRUE(outcome.applied.linksResolved);
  EXPECT_EQ(scene["x"]["b"].buffer().count(), 0U);
  EXPECT_TRUE(vsa::readText("a x;\n" + buffer).isComplete());
}

// The buffer is counted before its input. A buffer that takes all the memory leaves none for the
// input.
TEST(ReadLimits, ABufferMayTakeAllTheMemoryThatIsLeft) {
  const auto readWith = [](const std::string& text, std::uint64_t memory) {
    return vsa::readText(text, limitedTo({.memory = memory}));
  };
  std::uint64_t node = 0;  // the bytes that the declaration takes
  while (!readWith("a x;", node).isComplete()) ++node;
  const std::string text = "a x; x.b = byte[9000] {1};";
  expectLeftOut(Limit::Memory, readWith(text, node + 8999));
  expectOver(Limit::Memory, readWith(text, node + 9000));
}

// A limit that the host has set is not raised, and buffers may take all of it.
TEST(ReadLimits, ACompressedBufferMayTakeAllOfALimitOfTheHost) {
  const std::string text = "a x;\n" + oneByteInALongText("100000", 0);
  EXPECT_TRUE(vsa::readText(text, limitedTo({.memory = 101'000})).isComplete());
  expectLeftOut(Limit::Memory, vsa::readText(text, limitedTo({.memory = 100'000})));
}

// The limit is raised only for a literal that is decompressed.
TEST(ReadLimits, ACompressedBufferThatIsLeftOutDoesNotRaiseTheLimit) {
  const std::string text = "a x;\n" + oneByteInALongText("200000000", 16'000);
  const ReadResult result = vsa::readText(text + "x.c = byte[100000000] {1};\n");
  expectLeftOut(Limit::Memory, result);
  EXPECT_EQ(result.errorCount, 2U);
  EXPECT_EQ(result.scene["x"]["c"].buffer().count(), 0U);
}

TEST(ReadLimits, MemoryOfReplacedValuesIsGivenBack) {
  std::string text = "a x:\n";
  for (int i = 0; i < 100; ++i) text += ".b = byte[10000000] {1};\n";
  EXPECT_TRUE(vsa::readText(text, limitedTo({.memory = 30'000'000})).isComplete());
}

// The default limit also bounds the sum of all buffers in a text. The sum includes buffers that are
// replaced later, because zeroing their memory takes time.
TEST(ReadLimits, TheDefaultBoundsBuffersThatAreReplaced) {
  std::string text = "a x:\n";
  for (int i = 0; i < 100; ++i) text += ".b = byte[10000000] {1};\n";
  const ReadResult result = vsa::readText(text);
  expectLeftOut(Limit::Memory, result);
  EXPECT_EQ(result.message,
            "the buffer byte[10000000] of x.b (10000000 bytes, 1 number written) and those before "
            "it need more "
            "memory than the limit of 67359364 bytes leaves for buffers; raise the limit of memory "
            "to allow it");
  EXPECT_EQ(result.errorCount, 95U);
}

TEST(ReadLimits, MemoryGrowsWithTheText) {
  std::string text = "a x; x.s = \"" + std::string(1'000'000, 's') + "\";\n";
  EXPECT_TRUE(vsa::readText(text).isComplete());
  expectOver(Limit::Memory, vsa::readText(text, limitedTo({.memory = 500'000})));
}

TEST(ReadLimits, MemoryCountsThePathsOfSkippedBuffers) {
  std::string text = "mesh " + std::string(100'000, 'm') + ":\n";
  for (int i = 0; i < 20; ++i) text += ".b" + std::to_string(i) + " = byte[1] {1};\n";
  ReadOptions options = limitedTo({.memory = 1'000'000});
  EXPECT_TRUE(vsa::readText(text, options).isComplete());
  options.buffers = vsa::BufferMode::Skip;
  expectOver(Limit::Memory, vsa::readText(text, options));
}

TEST(ReadLimits, MemoryCountsNamesOfInputsAndSourcesOfLinks) {
  const std::string name(1000, 'n');
  for (const std::string format : {".N = 1;", ".i |= y.N;", ".i = N;", ".i |= N.o;", ". N = 1;"}) {
    std::string text = "a x:\n";
    for (int i = 0; i < 1000; ++i) {
      std::string statement = format;
      statement.replace(statement.find('N'), 1, name + std::to_string(i));
      if (statement.find(".i") == 0) statement.insert(2, std::to_string(i));
      text += statement + '\n';
    }
    EXPECT_TRUE(vsa::readText(text).isComplete());
    expectOver(Limit::Memory, vsa::readText(text, limitedTo({.memory = 900'000})));
  }
}

TEST(ReadLimits, MemoryOfAStringIsReportedInItsStatement) {
  const std::string text = "s n:\n.a = 1;\n.b = \"" + std::string(400, 'x') + "\";\n.c = 1;\n";
  const ReadResult result = vsa::readText(text, limitedTo({.memory = 300}));
  expectOver(Limit::Memory, result);
  ASSERT_EQ(result.diagnostics.size(), 1U);
  EXPECT_EQ(result.diagnostics[0].range.begin.line, 3U);
  EXPECT_EQ(result.diagnostics[0].inputPath, "n.b");
}

// The reading ends before the whole token is read.
TEST(ReadLimits, MemoryIsCheckedWhileALongTokenIsRead) {
  const std::string token(20'000'000, '1');
  for (const std::string& text :
       {"a x: .s = \"" + token + "\";", "a x: .b = byte[1] {" + token + "};",
        "a x: .v = vec2(" + token + ");", "a x: ." + token + " = 1;"}) {
    const ReadResult result = vsa::readText(text, limitedTo({.memory = 1'000'000}));
    expectOver(Limit::Memory, result);
    EXPECT_LT(result.bytesRead, 2'000'000U);
  }
}

TEST(ReadLimits, MemoryIsCheckedWhileALongPathIsRead) {
  std::string text = "a x: ";
  for (int i = 0; i < 500'000; ++i) text += ".x";
  const ReadResult result = vsa::readText(text + " = 1;", limitedTo({.memory = 1'000'000}));
  expectOver(Limit::Memory, result);
  EXPECT_LT(result.bytesRead, 100'000U);
}

TEST(ReadLimits, ZeroAllowsNothing) {
  expectOver(Limit::TextBytes, vsa::readText("a", limitedTo({.textBytes = 0})));
  EXPECT_TRUE(vsa::readText("", limitedTo({.textBytes = 0})).isComplete());
  expectOver(Limit::Nodes, vsa::readText("a x;", limitedTo({.nodes = 0})));
  expectOver(Limit::Elements, vsa::readText("a x; x.v[0] = 1;", limitedTo({.elements = 0})));
  expectOver(Limit::Depth, vsa::readText("a x; x.v = 1;", limitedTo({.depth = 0})));
  expectLeftOut(Limit::BufferBytes,
                vsa::readText("a x; x.b = byte[1] {1};", limitedTo({.bufferBytes = 0})));
  expectOver(Limit::Memory, vsa::readText("a x;", limitedTo({.memory = 0})));
  expectOver(Limit::Diagnostics, vsa::readText("# version: x", limitedTo({.diagnostics = 0})));
}

TEST(ReadLimits, DiagnosticsEndTheReading) {
  const std::string warning = "# version: x\n";
  const ReadOptions two = limitedTo({.diagnostics = 2});
  EXPECT_TRUE(vsa::readText(warning + warning, two).isComplete());
  const ReadResult result = vsa::readText(warning + warning + warning + "a x;", two);
  expectOver(Limit::Diagnostics, result);
  EXPECT_EQ(result.diagnostics.size(), 4U);
  EXPECT_EQ(result.scene.plain().nodeCount(), 0U);
}

TEST(ReadLimits, DiagnosticsOfLinksEndTheReadingAtTheStatementOfTheLink) {
  const std::string text = "a x;\n x.r = Nobody;\n";
  const ReadResult result = vsa::readText(text, limitedTo({.diagnostics = 0}));
  EXPECT_EQ(result.limit, Limit::Diagnostics);
  ASSERT_EQ(result.diagnostics.size(), 2U);
  const vsa::TextRange& range = result.diagnostics.front().range;
  EXPECT_EQ(result.diagnostics.front().id, vsa::DiagnosticId::OverLimit);
  EXPECT_EQ(text.substr(range.begin.offset, range.end.offset - range.begin.offset),
            "x.r = Nobody;");
}

TEST(ReadLimits, KeptDiagnosticsAreBoundedAndTheRestCounted) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "# version: x\n";
  ReadOptions options;
  options.keptDiagnostics = 10;
  std::size_t called = 0;
  options.onDiagnostic = [&](const vsa::Diagnostic&) { ++called; };
  ReadResult result = vsa::readText(text + "lamp a; ?", options);
  EXPECT_EQ(result.diagnostics.size(), 11U);  // the diagnostic that ended the reading is kept, too
  EXPECT_TRUE(result.diagnostics.back().endedReading);
  EXPECT_EQ(result.droppedDiagnostics, 90U);
  EXPECT_EQ(result.warningCount, 100U);
  EXPECT_EQ(result.errorCount, 1U);
  EXPECT_EQ(called, 101U);
  options = ReadOptions();
  options.keptDiagnosticBytes = 0;
  result = vsa::readText(text, options);
  EXPECT_TRUE(result.diagnostics.empty());
  EXPECT_EQ(result.droppedDiagnostics, 100U);
}

TEST(ReadLimits, HoldForAHostsScene) {
  HostScene scene;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "a x; a y;", limitedTo({.nodes = 1}));
  EXPECT_EQ(outcome.limit, Limit::Nodes);
  EXPECT_EQ(scene.options.calls.size(), 4U);  // the calls for the header and for one node
}

TEST(ReadLimits, ZeroDepthAllowsNoInputAfterDeclarations) {
  const std::string text = "a x; a y; a z; x.v = 1; x.w = 2;";
  expectOver(Limit::Depth, vsa::readText(text, limitedTo({.depth = 0})));
  expectOver(Limit::Depth, vsa::readText(text + text + text, limitedTo({.depth = 0})));
}

// The limits of kept diagnostics apply to messages of the host, too: their number and their bytes.
TEST(ReadLimits, KeptDiagnosticsBoundMessagesOfTheHost) {
  HostScene scene;
  scene.options.onCall = [](const std::string& call) {
    if (call.starts_with("createNode")) zn::logWarning("%s", "a message of the host");
  };
  ReadOptions options;
  options.keptDiagnostics = 1;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "a x; a y; a z;", options);
  EXPECT_EQ(outcome.diagnostics.size(), 1U);
  EXPECT_EQ(outcome.droppedDiagnostics, 2U);
  EXPECT_EQ(outcome.warningCount, 3U);
  options.keptDiagnostics = 100;
  options.keptDiagnosticBytes = 1000;
  HostScene other;
  other.options.onCall = scene.options.onCall;
  const vsa::ReadOutcome bytes = vsa::readTextInto(other, "a x; a y; a z; a u; a v; a w;", options);
  EXPECT_GT(bytes.droppedDiagnostics, 0U);
  EXPECT_GT(bytes.diagnostics.size(), 0U);
}

TEST(ReadLimits, CountNoNodeThatTheHostRefuses) {
  HostScene scene;
  scene.options.refusesNodes = true;
  const vsa::ReadOutcome outcome = vsa::readTextInto(scene, "define x; a y; a z; a u;");
  EXPECT_EQ(outcome.applied.nodes, 0U);
}

TEST(ReadLimits, TheDefaultIsUnlimitedForASourceThatAnnouncesUnlimitedBytes) {
  TestSource source("a x; x.b = float[2] {1 2};", 5);
  source.announced = vsa::UNLIMITED;
  EXPECT_TRUE(vsa::readSource(source).isComplete());
}

// The limit is 64 MiB + 100 bytes for each announced byte, or the largest number of 64 bits if that
// sum does not fit.
TEST(ReadLimits, TheDefaultIsAtMostTheLargestNumberOf64Bits) {
  constexpr std::uint64_t LAST = 184467440736424427;
  constexpr std::pair<std::uint64_t, const char*> ROWS[] = {{LAST, "18446744073709551564"},
                                                            {LAST + 1, "18446744073709551615"}};
  for (const auto& [announced, limit] : ROWS) {
    TestSource source("a x; x.b = byte[17000000000000000000] {1};");
    source.announced = announced;
    const ReadResult result = vsa::readSource(source);
    expectLeftOut(Limit::Memory, result);
    EXPECT_EQ(result.diagnostics[0].argument("maximum"), limit);
  }
}

}  // namespace

}  // namespace vsa_tests
