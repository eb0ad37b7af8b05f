// Tests the status of a reading with a table of ways in which a reading can end. Further tests of a
// single status are in read_status_test.cpp.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <vsa/read.h>
#include "tests/api/reading/api_read.h"
#include "tests/support/disk_file.h"
#include "tests/support/host_scene.h"

namespace vsa_tests {

namespace {

using vsa::Limit;
using vsa::ReadLimits;
using vsa::ReadOptions;
using vsa::ReadOutcome;
using vsa::ReadProgress;
using vsa::ReadStatus;

struct EndingRow {
  const char* way;
  ReadStatus status;
  std::function<ReadOutcome()> read;
  std::optional<Limit> limit = std::nullopt;
};

// --- functions that return the readings of the table ---

std::function<ReadOutcome()> text(const char* bytes) {
  return [bytes] { return ReadOutcome(vsa::readText(bytes)); };
}

std::function<ReadOutcome()> limited(const std::function<void(ReadLimits&)>& set,
                                     const char* bytes) {
  return [set, bytes] {
    ReadOptions options;
    set(options.limits);
    return ReadOutcome(vsa::readText(bytes, options));
  };
}

// Returns a reading from a source in which one function throws `thrown`: error(), size(), or read()
// at every call or at every call except the first one.
enum class Failing { Read, LaterRead, Size, Error };

template <class Thrown>
std::function<ReadOutcome()> sourceThatThrows(Failing failing, const Thrown& thrown) {
  return [failing, thrown] {
    struct ThrowingSource final : vsa::Source {
      std::size_t read(std::span<char> to) override {
        const bool isLater = std::exchange(isSecond, true);
        if (failing == Failing::Read || (isLater && failing == Failing::LaterRead)) throw thrown;
        return isLater ? 0 : std::string_view("lamp sun; ").copy(to.data(), to.size());
      }
      std::optional<std::uint64_t> size() const override {
        if (failing == Failing::Size) throw thrown;
        return std::nullopt;
      }
      std::string error() const override {
        if (failing == Failing::Error) throw thrown;
        return {};
      }
      ThrowingSource(Failing where, const Thrown& what) : failing(where), thrown(what) {}
      Failing failing;
      Thrown thrown;
      bool isSecond = false;
    } source(failing, thrown);
    return ReadOutcome(vsa::readSource(source));
  };
}

std::function<ReadOutcome()> sourceThatFailsAt(std::size_t offset) {
  return [offset] {
    TestSource source("lamp sun; lamp moon; sun.power ", 4);
    source.onRead = [&](std::size_t at) {
      if (at >= offset) source.failure = "the line is dead";
    };
    return ReadOutcome(vsa::readSource(source));
  };
}

// Returns a reading into a host's scene that throws at each call whose text contains `call`.
template <class Thrown>
std::function<ReadOutcome()> sceneThatThrows(const char* call, const Thrown& thrown) {
  return [call, thrown] {
    HostScene scene;
    scene.options.onCall = [&](const std::string& made) {
      if (made.find(call) != std::string::npos) throw thrown;
    };
    return vsa::readTextInto(scene, "lamp sun: .power = 1; .next = sun;");
  };
}

template <class Thrown>
std::function<ReadOutcome()> progressThatThrows(const Thrown& thrown) {
  return [thrown] {
    ReadOptions options;
    options.onProgress = [&](const ReadProgress&) -> bool { throw thrown; };
    return ReadOutcome(vsa::readText("lamp sun;", options));
  };
}

ReadOutcome diagnosticCallbackThatThrows(const char* bytes) {
  ReadOptions options;
  options.onDiagnostic = [](const vsa::Diagnostic&) { throw std::logic_error("no"); };
  return vsa::readText(bytes, options);
}

ReadOutcome sceneThatIsReadInto() {
  vsa::Scene scene;
  std::optional<ReadOutcome> nested;
  ReadOptions options;
  options.onProgress = [&](const ReadProgress&) {
    nested = vsa::readTextInto(scene, "lamp sun;");
    return true;
  };
  EXPECT_TRUE(vsa::readTextInto(scene, "", options).isComplete());
  return std::move(nested).value();
}

ReadOutcome textLongerThanAnnounced() {
  TestSource source(std::string(100, ' '), 10);
  ReadOptions options;
  options.limits.textBytes = 50;
  return vsa::readSource(source, options);
}

ReadOutcome manyEmptyElements() {
  vsa::Scene scene;
  scene.plain().setEmptyElementLimit(2);
  return vsa::readTextInto(scene, "lamp sun; sun.a[9] = 1;");
}

ReadOutcome deeperThanTheScene() {
  vsa::Scene scene;
  scene.plain().setDepthLimit(1);
  return vsa::readTextInto(scene, "lamp sun; sun.b.c = 1;");
}

// Waits longer than the 5 milliseconds that must pass before a reader that is not at the end calls
// the progress callback again.
void passProgressInterval() {
  std::this_thread::sleep_for(std::chrono::milliseconds(6));
}

ReadOptions cancellingWhen(const std::function<bool(const ReadProgress&)>& isReached) {
  ReadOptions options;
  options.onProgress = [isReached](const ReadProgress& progress) { return !isReached(progress); };
  return options;
}

ReadOutcome cancelledAtOnce() {
  return vsa::readText("lamp sun;", cancellingWhen([](const ReadProgress&) { return true; }));
}

ReadOutcome cancelledInTheText() {
  TestSource source("lamp sun; lamp moon;", 4);
  source.onRead = [](std::size_t) { passProgressInterval(); };
  return vsa::readSource(source,
                         cancellingWhen([](const ReadProgress& now) { return now.bytesRead > 0; }));
}

// Cancels a reading when all bytes are read, which is before the value is converted.
ReadOutcome cancelledInAValue() {
  std::string bytes = "a x: .b = double[800000] {";
  for (int i = 0; i < 800'000; ++i) bytes += "1 ";
  bytes += "};";
  TestSource source(bytes);
  source.onRead = [&](std::size_t at) {
    if (at == bytes.size()) passProgressInterval();
  };
  return vsa::readSource(source, cancellingWhen([&](const ReadProgress& now) {
                           return now.bytesRead == bytes.size();
                         }));
}

ReadOutcome cancelledInTheLinks() {
  std::string bytes = "lamp sun:\n";
  for (int i = 0; i < 3000; ++i) bytes += ".a" + std::to_string(i) + " = sun;\n";
  HostScene scene;
  bool isFirst = true;
  scene.options.onCall = [&](const std::string& call) {
    if (call.ends_with("setNode sun") && std::exchange(isFirst, false)) passProgressInterval();
  };
  return vsa::readTextInto(
      scene, bytes, cancellingWhen([](const ReadProgress& now) { return now.linksTotal > 0; }));
}

// --- the table ---

std::vector<EndingRow> rows() {
  using enum ReadStatus;
  return {
      {"a whole text", Complete, text("lamp sun; sun.next = sun;")},
      {"a text with warnings and errors", Complete, text("a x: .n = 1; .n = 2.5; .n = \"s\";")},
      {"an empty text", Complete, text("")},
      {"an error in the first tokens", StoppedByError, text("}")},
      {"an error in a statement", StoppedByError, text("lamp sun; moon.power = 1;")},
      {"an error in a file", StoppedByError,
       [] {
         const DiskFile file("lamp sun; moon.x = 1;");
         return ReadOutcome(vsa::readFile(file.path()));
       }},
      {"the end in a statement", CutOff, text("lamp sun; sun.power = 2")},
      {"the end in a string", CutOff, text("lamp sun; sun.name = \"su")},
      {"the end in a list", CutOff, text("lamp sun; sun.name = vec3(1 2")},
      {"the end in a string between statements", CutOff, text("lamp sun; \"su")},
      {"a byte 0xFF", CutOff, text("lamp sun; \xFF lamp moon;")},
      {"a missing file", Unreadable, [] { return ReadOutcome(vsa::readFile("no/such.vsa")); }},
      {"a folder", Unreadable,
       [] { return ReadOutcome(vsa::readFile(std::filesystem::temp_directory_path())); }},
      {"an empty path", Unreadable, [] { return ReadOutcome(vsa::readFile("")); }},
      {"a null path", Unreadable, [] { return ReadOutcome(vsa::readFile(nullptr)); }},
      {"a path with a NUL", Unreadable,
       [] { return ReadOutcome(vsa::readFile(std::filesystem::path(std::string("a\0b", 3)))); }},
      {"a null text", Unreadable, [] { return ReadOutcome(vsa::readText(nullptr)); }},
      {"a source that fails at once", Unreadable, sourceThatFailsAt(0)},
      {"a source that fails later", Unreadable, sourceThatFailsAt(20)},
      {"a scene that is being read into", Unreadable, sceneThatIsReadInto},
      {"cancelled before the text", Cancelled, cancelledAtOnce},
      {"cancelled in the text", Cancelled, cancelledInTheText},
      {"cancelled in a value", Cancelled, cancelledInAValue},
      {"cancelled in the links", Cancelled, cancelledInTheLinks},
      {"a text that is too long", OverLimit,
       limited([](ReadLimits& limits) { limits.textBytes = 8; }, "lamp sun;"), Limit::TextBytes},
      {"a source that goes on", OverLimit, textLongerThanAnnounced, Limit::TextBytes},
      {"memory for a name", OverLimit,
       limited([](ReadLimits& limits) { limits.memory = 0; }, "lamp sun;"), Limit::Memory},
      {"memory for a buffer", OverLimit,
       limited([](ReadLimits& limits) { limits.memory = 9000; }, "a x: .b = byte[9000] {1};"),
       Limit::Memory},
      {"a buffer that is too large", OverLimit,
       limited([](ReadLimits& limits) { limits.bufferBytes = 3; }, "a x: .b = float[1] {1};"),
       Limit::BufferBytes},
      {"too many nodes", OverLimit,
       limited([](ReadLimits& limits) { limits.nodes = 1; }, "a x; a y;"), Limit::Nodes},
      {"too many elements", OverLimit,
       limited([](ReadLimits& limits) { limits.elements = 1; }, "a x: .v[1] = 1;"),
       Limit::Elements},
      {"too many empty elements", OverLimit, manyEmptyElements, Limit::EmptyElements},
      {"too many inputs on a path", OverLimit,
       limited([](ReadLimits& limits) { limits.depth = 1; }, "a x: .v.w = 1;"), Limit::Depth},
      {"more inputs on a path than the scene allows", OverLimit, deeperThanTheScene, Limit::Depth},
      {"too many diagnostics", OverLimit,
       limited([](ReadLimits& limits) { limits.diagnostics = 1; },
               "# version: x\n# version: x\nlamp sun;"),
       Limit::Diagnostics},
      {"a buffer that cannot be allocated", OutOfMemory,
       limited([](ReadLimits& limits) { limits.memory = vsa::UNLIMITED; },
               "a x; x.b = float[18446744073709551615] {0};")},
      {"a scene without memory", OutOfMemory, sceneThatThrows("createNode", std::bad_alloc())},
      {"a source without memory", OutOfMemory, sourceThatThrows(Failing::Read, std::bad_alloc())},
      {"a callback without memory", OutOfMemory, progressThatThrows(std::bad_alloc())},
      {"a source that throws at once", HostException, sourceThatThrows(Failing::Read, 5)},
      {"a source that throws later", HostException, sourceThatThrows(Failing::LaterRead, 5)},
      {"a source that throws for its size", HostException, sourceThatThrows(Failing::Size, 5)},
      {"a source that throws for its error", HostException, sourceThatThrows(Failing::Error, 5)},
      {"a scene that throws for its header", HostException,
       sceneThatThrows("clearComments", std::runtime_error("no"))},
      {"a scene that throws a std::runtime_error", HostException,
       sceneThatThrows("createNode", std::runtime_error("no"))},
      {"a scene that throws a std::logic_error", HostException,
       sceneThatThrows("createNode", std::logic_error("no"))},
      {"a scene that throws what is no std::exception", HostException,
       sceneThatThrows("createNode", "no")},
      {"a scene that throws for a link", HostException,
       sceneThatThrows("setNode", std::runtime_error("no"))},
      {"a progress callback that throws", HostException,
       progressThatThrows(std::runtime_error("no"))},
      {"a callback that throws for a warning", HostException,
       [] { return diagnosticCallbackThatThrows("# version: x"); }},
      {"a callback that throws for the last error", HostException,
       [] { return diagnosticCallbackThatThrows("}"); }},
  };
}

void expectConsistent(const ReadOutcome& outcome) {
  EXPECT_EQ(outcome.limit.has_value(), outcome.status == ReadStatus::OverLimit);
  EXPECT_EQ(outcome.message.empty(), outcome.isComplete());
  const bool hasException =
      outcome.status == ReadStatus::HostException || outcome.status == ReadStatus::OutOfMemory;
  EXPECT_EQ(outcome.exception != nullptr, hasException);
  EXPECT_EQ(outcome.errorCount + outcome.warningCount,
            outcome.diagnostics.size() + outcome.droppedDiagnostics);
}

TEST(ReadEndings, HaveAStatusEach) {
  for (const EndingRow& row : rows()) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, row.way);
    const ReadOutcome outcome = row.read();
    EXPECT_STREQ(vsa::name(outcome.status), vsa::name(row.status)) << outcome.message;
    EXPECT_EQ(outcome.limit, row.limit);
    expectConsistent(outcome);
  }
}

TEST(ReadEndings, AreOfEveryStatusAndEveryLimit) {
  std::set<ReadStatus> statuses;
  std::set<Limit> limits;
  for (const EndingRow& row : rows()) {
    statuses.insert(row.status);
    if (row.limit) limits.insert(*row.limit);
  }
  for (int i = 0; i < 256; ++i) {
    const auto status = static_cast<ReadStatus>(i);
    const auto limit = static_cast<Limit>(i);
    const bool isStatus = std::string_view(vsa::name(status)) != "unknown";
    const bool isLimit = std::string_view(vsa::name(limit)) != "unknown";
    EXPECT_EQ(statuses.contains(status), isStatus) << vsa::name(status);
    EXPECT_EQ(limits.contains(limit), isLimit) << vsa::name(limit);
  }
}

}  // namespace

}  // namespace vsa_tests
