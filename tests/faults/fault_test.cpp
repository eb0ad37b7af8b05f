// Tests of faults outside the reader: failing allocations, a source that fails or returns too few
// bytes, and a host's scene that throws or refuses. Each fault has a defined outcome. Applied
// statements stay applied, and another text can be read into the scene. Nothing leaks, with one
// exception: the reader does not free the string or buffer of a statement that fails.
#include <gtest/gtest.h>
#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include "tests/faults/fault_probe.h"
#include "tests/faults/fault_texts.h"
#include "tests/faults/watched_scene.h"
#include "tests/stress/stress_sample.h"
#include "tests/support/allocation_tracker.h"
#include "tests/support/case_run.h"
#include "tools/scene_text/read_outcome.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;

/// Returns the names of the nodes of a scene that were not removed, in creation order.
std::vector<std::string> nodeNames(const Scene& scene) {
  std::vector<std::string> names;
  for (std::uint64_t i = 0; i < scene.nodeSlots(); ++i) {
    if (const Node* const node = scene.nodeAt(i)) names.emplace_back(node->name().view());
  }
  return names;
}

// --- the texts ---

/// Returns the ids of the messages that the texts raise.
std::set<DiagnosticId> raisedByTexts() {
  std::set<DiagnosticId> raised;
  for (const Text& text : faultTexts()) {
    Scene scene;
    setSmallLimits(scene);
    const zn::String source = zn::String::copyOf(text.text);
    impl::ReadReport report;
    const auto outcome =
        vsa_tools::captureRead([&] { return impl::parseString(&scene, source, report); });
    for (const Diagnostic& diagnostic : outcome.diagnostics) raised.insert(diagnostic.id);
    if (outcome.escapedDiagnostic) raised.insert(outcome.escapedDiagnostic->id);
    if (!report.cutOff.isEmpty()) raised.insert(DiagnosticId::UnexpectedEof);
  }
  return raised;
}

TEST(FaultTextTest, EveryMessageIsRaised) {
  const std::set<DiagnosticId> raised = raisedByTexts();
  for (const DiagnosticRow& row : DIAGNOSTIC_ROWS) {
    const bool isRaised = raised.contains(row.id);
    EXPECT_NE(isRaised, neverRaised().contains(row.id))
        << row.name << " is " << (isRaised ? "raised, and exempt" : "raised by no text");
  }
  for (const auto& [id, reason] : neverRaised()) EXPECT_GT(reason.size(), 10u) << rowOf(id).name;
}

/// Returns all texts, or every n-th text if the environment variable VSA_STRESS_STEP is n.
std::vector<Text> sampledTexts() {
  const std::size_t step = sampleStep(1);
  std::vector<Text> sampled;
  for (std::size_t i = 0; i < faultTexts().size(); i += step) sampled.push_back(faultTexts()[i]);
  return sampled;
}

// --- failing allocations ---

struct MemoryFault {
  End end;
  bool hasFailed;
  /// The number of blocks that are still allocated after the scene was destroyed.
  std::int64_t keptBlocks;
};

/// Reads while the k-th allocation fails, with `everAfter` also all later ones, and then destroys
/// the scene. If the read makes fewer than k allocations, none fails.
MemoryFault readWithFault(const Text& text, std::uint64_t k, bool everAfter, bool fromFile) {
  MemoryFault fault{};
  const zn::String source = zn::String::copyOf(text.text);
  FixedSink sink;
  AllocationTracker::start();
  {
    Scene scene;
    setSmallLimits(scene);
    {
      const zn::ScopedLogSink scope(&sink);
      AllocationTracker::failAt(k, everAfter);
      fault.end = endOf([&] {
        if (!fromFile) return impl::parseString(&scene, source);
        return impl::parseVsa(&scene, zn::File(new TextPieces(source, 7)), true);
      });
    }
    fault.hasFailed = AllocationTracker::hasFailed();
    AllocationTracker::stop();
    // The memory of the dump must not count, so allocations are not tracked here.
    if (fault.hasFailed) static_cast<void>(sceneText(scene));
    AllocationTracker::resume();
  }
  AllocationTracker::stop();
  fault.keptBlocks = AllocationTracker::count().liveBlocks;
  return fault;
}

/// Returns the number of kept blocks for each failing allocation. The last entry is for a read
/// without a failure.
std::vector<std::int64_t> failEveryAllocation(const Text& text, bool everAfter, bool fromFile) {
  std::vector<std::int64_t> kept;
  for (;;) {
    const MemoryFault fault = readWithFault(text, kept.size() + 1, everAfter, fromFile);
    kept.push_back(fault.keptBlocks);
    if (!fault.hasFailed) return kept;
    // The result is False if the memory of a buffer is missing, because that is reported as an
    // error of the text.
    EXPECT_TRUE(fault.end == End::NoMemory || fault.end == End::False)
        << text.name << ", allocation " << kept.size();
  }
}

/// Returns whether a text may have a literal with an allocated payload, a string or a buffer:
/// whether it has a quote or a brace. The reader owns the payload until the end of the statement.
/// Then the scene takes ownership. If the statement fails before that, the payload leaks.
bool hasPayload(const Text& text) {
  return text.text.find_first_of("\"'{") != std::string::npos;
}

// Expects that only payloads leak. `kept` has the number of leaked blocks for each failing
// allocation, in order. A payload that has leaked before an allocation leaks whether that
// allocation fails or a later one. Therefore the number can be higher than a later number by at
// most one: the payload of the statement that failed.
void expectOnlyPayloadsKept(const Text& text, const std::vector<std::int64_t>& kept) {
  const std::int64_t pending = hasPayload(text) ? 1 : 0;
  std::int64_t least = kept.back();
  EXPECT_TRUE(hasPayload(text) || least == 0) << text.name;
  for (std::size_t k = kept.size(); k > 0; --k) {
    EXPECT_GE(kept[k - 1], 0) << text.name << ", allocation " << k;
    EXPECT_LE(kept[k - 1], least + pending) << text.name << ", allocation " << k;
    least = std::min(least, kept[k - 1]);
  }
}

/// The parameters: whether all allocations after the first failing one fail, too (otherwise only
/// that one fails), and whether the text is read from a File (otherwise from a String).
class NoMemoryTest : public testing::TestWithParam<std::pair<bool, bool>> {
 protected:
  // Loads the texts before blocks are counted. Loading makes all allocations that are never freed,
  // and they must not count as leaks.
  static void SetUpTestSuite() { faultTexts(); }
};

TEST_P(NoMemoryTest, StopsTheParseAndLeaksOnlyPayloads) {
  const auto [everAfter, fromFile] = GetParam();
  for (const Text& text : sampledTexts()) {
    expectOnlyPayloadsKept(text, failEveryAllocation(text, everAfter, fromFile));
  }
}

// Each row has a text and a sequence of digits. The sequence has the number of payloads that leak
// when the first allocation of the text fails, then the number for the second allocation, and so
// on. Consecutive equal numbers are listed once. While the reader owns a payload, a failing
// allocation makes it leak, so the number is higher by one. It is lower again after the scene has
// taken ownership. The exception is a payload that the scene refuses: it always leaks, so the
// number remains higher.
TEST_P(NoMemoryTest, LeaksAtMostThePayloadOfTheFailedStatement) {
  const std::pair<const char*, const char*> rows[] = {
      {"t n; n.i = 1; n.v = vec3(1 2 3); n.o.m[2] = 2; n.l |= n.out; n.r = n;", "0"},
      {"t n; n.s = \"some text\"; n.i = 1;", "010"},
      {"t n; n.b = float[2] {1 2}; n.i = 1;", "010"},
      {"t n; n.s = \"some text\"; n.o.b = float[2] {1 2}; n.i = 1;", "01010"},
      {"t n: .i = 1; .i = \"some text\"; .k = 1;", "01"},
      {"t n: .i = 1; .i = \"some text\"; .o.s = \"more text\"; .k = 1;", "0121"},
  };
  const auto [everAfter, fromFile] = GetParam();
  for (const auto& [text, expected] : rows) {
    std::vector<std::int64_t> kept = failEveryAllocation({text, text}, everAfter, fromFile);
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    std::string changes;
    for (const std::int64_t blocks : kept) changes += std::to_string(blocks);
    EXPECT_EQ(changes, expected) << text;
  }
}

INSTANTIATE_TEST_SUITE_P(OnceAndEverAfter, NoMemoryTest,
                         testing::Values(std::pair(false, false), std::pair(true, false),
                                         std::pair(false, true), std::pair(true, true)));

TEST(NoMemoryTest, LeavesTheSceneUsable) {
  for (const Text& text : sampledTexts()) {
    for (std::uint64_t k = 1;; ++k) {
      Scene scene;
      setSmallLimits(scene);
      FixedSink sink;
      AllocationTracker::start();
      AllocationTracker::failAt(k, false);
      {
        const zn::ScopedLogSink scope(&sink);
        endOf([&] { return impl::parseString(&scene, zn::String::copyOf(text.text)); });
      }
      const bool hasFailed = AllocationTracker::hasFailed();
      AllocationTracker::stop();
      if (!hasFailed) break;
      expectUsable(scene, text.name + ", allocation " + std::to_string(k));
    }
  }
}

// A read with a fault creates the same nodes as a read without a fault, up to the fault. Texts that
// remove nodes are skipped.
TEST(NoMemoryTest, AppliedStatementsStayApplied) {
  for (const Text& text : faultTexts()) {
    if (text.text.find("emove") != std::string::npos) continue;
    Scene whole;
    setSmallLimits(whole);
    FixedSink sink;
    const zn::ScopedLogSink scope(&sink);
    endOf([&] { return impl::parseString(&whole, zn::String::copyOf(text.text)); });
    const std::vector<std::string> all = nodeNames(whole);
    std::size_t most = 0;
    for (std::uint64_t k = 1;; ++k) {
      Scene scene;
      setSmallLimits(scene);
      AllocationTracker::start();
      AllocationTracker::failAt(k, false);
      endOf([&] { return impl::parseString(&scene, zn::String::copyOf(text.text)); });
      const bool hasFailed = AllocationTracker::hasFailed();
      AllocationTracker::stop();
      const std::vector<std::string> some = nodeNames(scene);
      ASSERT_LE(some.size(), all.size()) << text.name << ' ' << k;
      EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin())) << text.name << ' ' << k;
      EXPECT_GE(some.size(), most) << text.name << ' ' << k;  // a later fault leaves more nodes
      most = some.size();
      if (!hasFailed) break;
    }
    EXPECT_EQ(most, all.size()) << text.name;
  }
}

// --- a source that fails, returns too few bytes or throws ---

/// Returns the outcome of a read into `scene` in the form of an expected result.
template <class Read>
std::string outcomeIn(Scene& scene, const Read& read) {
  setSmallLimits(scene);
  const vsa_tools::ReadOutcome outcome = vsa_tools::captureRead([&] { return read(&scene); });
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  return comparable(out.text(), linkWarningsOf(outcome.diagnostics));
}

std::string outcomeOfString(std::string_view text) {
  Scene scene;
  const zn::String source = zn::String::copyOf(text);
  return outcomeIn(scene, [&](Scene* into) { return impl::parseString(into, source); });
}

std::string outcomeOfFile(Scene& scene, const zn::File& file) {
  return outcomeIn(scene, [&](Scene* into) { return impl::parseVsa(into, file, true); });
}

/// Returns the number of reads that return bytes. The next read returns 0.
std::size_t readsOf(const Text& text, std::size_t piece) {
  return (text.text.size() + piece - 1) / piece;
}

bool isReadWhole(const std::string& outcome) {
  return outcome.starts_with("result true\n");
}

TEST(SourceFaultTest, FailedReadEndsTheText) {
  constexpr std::size_t PIECE = 3;
  for (const Text& text : sampledTexts()) {
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good <= readsOf(text, PIECE); ++good) {
      const std::string where = text.name + ", read " + std::to_string(good + 1);
      Scene scene;
      const zn::File file(new FailingPieces(whole, PIECE, good, FailingPieces::Fails));
      const std::string outcome = outcomeOfFile(scene, file);
      EXPECT_EQ(outcome, outcomeOfString(std::string_view(text.text).substr(0, good * PIECE)))
          << where;
      // If the source has not failed, an error in the text stopped the parse before the failing
      // read.
      EXPECT_TRUE(file.failed() || !isReadWhole(outcome)) << where;
      if (good % 8 == 0 || good == readsOf(text, PIECE)) expectUsable(scene, where);
    }
  }
}

TEST(SourceFaultTest, ShortReadChangesNothing) {
  constexpr std::size_t PIECE = 16;
  for (const Text& text : sampledTexts()) {
    const std::string sound = outcomeOfString(text.text);
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good <= readsOf(text, PIECE); ++good) {
      Scene scene;
      const zn::File file(new FailingPieces(whole, PIECE, good, FailingPieces::StopsShort));
      EXPECT_EQ(outcomeOfFile(scene, file), sound) << text.name << ", read " << good + 1;
      EXPECT_FALSE(file.failed());
    }
  }
}

TEST(SourceFaultTest, SourceExceptionStopsTheParse) {
  constexpr std::size_t PIECE = 5;
  for (const Text& text : sampledTexts()) {
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good <= readsOf(text, PIECE); ++good) {
      const std::string where = text.name + ", read " + std::to_string(good + 1);
      Scene scene;
      setSmallLimits(scene);
      FixedSink sink;
      const zn::ScopedLogSink scope(&sink);
      const zn::File file(new FailingPieces(whole, PIECE, good, FailingPieces::Throws));
      const End end = endOf([&] { return impl::parseVsa(&scene, file, true); });
      // An exception in the first three tokens propagates. A later exception is logged as an error.
      // There is no exception if an error in the text stops the parse before the failing read.
      EXPECT_TRUE(end == End::False || end == End::OtherException) << where;
      if (end == End::OtherException) {
        EXPECT_EQ(sink.lines, 0u) << where;
        EXPECT_EQ(sceneText(scene), sceneText(Scene())) << where;
      } else if (file.failed()) {
        EXPECT_TRUE(sink.text().ends_with("the source broke\n")) << where << '\n' << sink.text();
      }
      expectUsable(scene, where);
    }
  }
}

// --- a host's scene that throws or refuses ---

/// A read into a host's scene.
struct HostRead {
  HostRead() { setSmallLimits(scene); }

  void read(const Text& text) {
    const zn::ScopedLogSink scope(&sink);
    end = endOf([&] { return impl::parseString(&host, zn::String::copyOf(text.text)); });
  }

  /// Reads from a file. The header is reset before that.
  void readAfterReset(const Text& text) {
    const zn::ScopedLogSink scope(&sink);
    const zn::File file(new TextPieces(zn::String::copyOf(text.text), 7));
    end = endOf([&] { return impl::parseVsa(&host, file, false); });
  }

  void expectErrorIn(const std::string& operation, const std::string& where) {
    EXPECT_EQ(end, End::False) << where << ' ' << operation;
    EXPECT_TRUE(sink.text().ends_with("host fault in " + operation + "\n")) << where << '\n'
                                                                            << sink.text();
    expectUsable(scene, where);
  }

  Scene scene;
  WatchedScene host{scene};
  FixedSink sink;
  End end = End::True;
};

/// Reads the text once for each call of the scene, and makes that call throw. Adds the names of
/// these calls to `thrown`.
void throwAtEveryCall(const Text& text, std::set<std::string>& thrown) {
  for (std::uint64_t n = 1;; ++n) {
    HostRead faulty;
    faulty.host.throwAt(n);
    faulty.read(text);
    if (faulty.host.calls() < n) break;
    thrown.insert(faulty.host.faultyCall());
    faulty.expectErrorIn(faulty.host.faultyCall(), text.name + ", call " + std::to_string(n));
  }
}

/// Returns the names of the calls that reset the header, in order. The reader does not catch their
/// exceptions.
std::vector<std::string> throwAtEveryReset() {
  const Text empty = {"nothing", ""};
  std::vector<std::string> thrown;
  for (std::uint64_t n = 1;; ++n) {
    HostRead faulty;
    faulty.host.throwAt(n);
    faulty.readAfterReset(empty);
    if (faulty.host.calls() < n) break;
    thrown.push_back(faulty.host.faultyCall());
    EXPECT_EQ(faulty.end, End::OtherException) << thrown.back();
    EXPECT_EQ(faulty.sink.lines, 0u) << thrown.back();
    expectUsable(faulty.scene, thrown.back());
  }
  return thrown;
}

TEST(HostFaultTest, SceneExceptionIsTheLoggedError) {
  const std::vector<std::string> reset = throwAtEveryReset();
  EXPECT_EQ(reset, (std::vector<std::string>{"clearComments", "setFileVersion", "setFileTime"}));
  std::set<std::string> thrown;
  for (const Text& text : faultTexts()) throwAtEveryCall(text, thrown);
  // The texts are read without a reset of the header, and only a reset clears the comments.
  EXPECT_TRUE(thrown.insert("clearComments").second);
  // All operations of the scene interface must have thrown.
  const std::vector<std::string> all = operationsOfInterface();
  const std::set<std::string> called(all.begin(), all.end());
  for (const std::string& name : called) EXPECT_TRUE(thrown.contains(name)) << name;
  for (const std::string& name : thrown) EXPECT_TRUE(called.contains(name)) << name;
}

/// A text that makes the reader create everything that a scene can create. It has only one link:
/// several links would be resolved in the order of the memory addresses of their inputs, and then
/// the order of the calls would not be predictable.
const Text CREATING = {
    "every creation", "t a; define b; a.x = 1; a.y[1] = 2; a.o.m = 3; a.o.n[0] = 4; a.l |= b.out;"};

/// Returns the calls that create something while a text is read, in order. A call has created
/// something if one more creation has been counted when the next call begins.
std::vector<std::string> creationsIn(const Text& text) {
  std::vector<std::string> names;
  std::string last;
  for (std::uint64_t n = 1;; ++n) {
    HostRead faulty;
    faulty.host.throwAt(n);
    faulty.read(text);
    if (faulty.host.creations() > names.size()) names.push_back(last);
    if (faulty.host.calls() < n) return names;
    last = faulty.host.faultyCall();
  }
}

/// Reads the text once for each creation, and makes the scene refuse that creation. Returns the
/// number of creations.
std::uint64_t refuseEveryCreation(const Text& text) {
  for (std::uint64_t n = 1;; ++n) {
    const std::string where = text.name + ", creation " + std::to_string(n);
    HostRead faulty;
    faulty.host.refuseAt(n);
    faulty.read(text);
    if (faulty.host.creations() < n) return n - 1;
    EXPECT_TRUE(faulty.end == End::True || faulty.end == End::False) << where;
    expectUsable(faulty.scene, where);
  }
}

TEST(HostFaultTest, RefusedCreationDoesNotCrash) {
  for (const Text& text : faultTexts()) refuseEveryCreation(text);
  const std::vector<std::string> creations = {
      "createNode",       "defineNode",    "node createInput",             // nodes a and b, input x
      "node createArray", "appendElement", "appendElement",    "element",  // array y
      "node createInput", "createInput",                                   // members o and m
      "createArray",      "appendElement", "element",                      // array n
      "node createInput", "node output",                                   // input l and its link
  };
  EXPECT_EQ(creationsIn(CREATING), creations);
  EXPECT_EQ(refuseEveryCreation(CREATING), creations.size());
}

// A scene that refuses everything gives the same outcome as a null pointer instead of a scene.
TEST(HostFaultTest, SceneThatRefusesEverythingDoesNotCrash) {
  for (const Text& text : faultTexts()) {
    HostRead refusing;
    refusing.host.refuseEverything();
    refusing.read(text);
    EXPECT_EQ(refusing.scene.nodeCount(), 0u) << text.name;
    FixedSink sink;
    const zn::ScopedLogSink scope(&sink);
    const End end =
        endOf([&] { return impl::parseString(nullptr, zn::String::copyOf(text.text)); });
    EXPECT_EQ(end, refusing.end) << text.name;
    EXPECT_EQ(sink.text(), refusing.sink.text()) << text.name;
  }
}

}  // namespace

}  // namespace vsa_tests
