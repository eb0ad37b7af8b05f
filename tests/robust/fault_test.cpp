// Faults around the reader: no memory, a source that fails or stops short, a host's scene that
// throws or refuses. Each ends the reading in a defined way: what was applied stays, the scene can
// be read into again, and nothing leaks but what the reader's rules let go.
#include <gtest/gtest.h>
#include <algorithm>
#include <exception>
#include <filesystem>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "foundation/log.h"
#include "scene/model/scene.h"
#include "tests/robust/allocation_watch.h"
#include "tests/robust/robust_sample.h"
#include "tests/robust/watched_scene.h"
#include "tests/support/case_run.h"
#include "tools/support/scene_dump.h"
#include "vsa/vsa.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;

/// The log as it comes, without an allocation: a sink that cannot fail.
class FixedSink final : public zn::LogSink {
 public:
  void write(zn::LogLevel, const zn::String& text) override {
    const std::string_view line = text.view();
    const std::size_t room = CAPACITY - used_;
    const std::size_t kept = std::min(room, line.size());
    std::copy_n(line.data(), kept, text_ + used_);
    used_ += kept;
    if (used_ < CAPACITY) text_[used_++] = '\n';
    ++lines;
  }

  std::string_view text() const { return {text_, used_}; }

  std::size_t lines = 0;

 private:
  static constexpr std::size_t CAPACITY = 1 << 16;
  char text_[CAPACITY];
  std::size_t used_ = 0;
};

/// A text that leaps to a far index takes one step an element: a few tell as much as many.
constexpr std::uint64_t EMPTY_ELEMENTS = 100;

std::string sceneText(const Scene& scene) {
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase({}, scene, out);
  return out.text();
}

/// The names of the nodes that a scene holds or held, in the order of their creation.
std::vector<std::string> nodeNames(const Scene& scene) {
  std::vector<std::string> names;
  for (std::uint64_t i = 0; i < scene.nodeSlots(); ++i) {
    if (const Node* const node = scene.nodeAt(i)) names.emplace_back(node->name().view());
  }
  return names;
}

constexpr char PROBE[] =
    "probeType faultProbe: .i = 1; .r = 2.5; .s = \"x\\n\"; .v = vec3(1 2 3); .b = float[2] {1 2};"
    ".a[2] = 7; .o.m = true; .ref = faultProbe; .link |= faultProbe.out;";

constexpr char PROBE_TEXT[] =
    "  node probeType faultProbe\n"
    "    i Int 1\n"
    "    r Real 2.5\n"
    "    s String \"x\\n\"\n"
    "    v Vec3 [1, 2, 3]\n"
    "    b Buffer Float 2 [1, 2]\n"
    "    a Array Int\n"
    "      [0] Int 0\n"
    "      [1] Int 0\n"
    "      [2] Int 7\n"
    "    o Object\n"
    "      m Bool true\n"
    "    ref Node faultProbe\n"
    "    link Null <- faultProbe.out\n";

/// After a fault the scene must be as good as any: it can be dumped, and another text read into it.
void expectUsable(Scene& scene, const std::string& where) {
  scene.setEmptyElementLimit(Scene::DEFAULT_EMPTY_ELEMENT_LIMIT);
  const std::string before = sceneText(scene);
  FixedSink sink;
  const zn::ScopedLogSink scope(&sink);
  EXPECT_TRUE(impl::parseString(&scene, PROBE)) << where << '\n' << sink.text();
  EXPECT_EQ(sink.lines, 0u) << where << '\n' << sink.text();
  const std::string after = sceneText(scene);
  EXPECT_TRUE(after.ends_with(PROBE_TEXT)) << where << '\n' << after;
  if (before.find("\nscene\n") != std::string::npos) {
    EXPECT_TRUE(after.starts_with(before)) << where << '\n' << before << "---\n" << after;
  }
}

/// What came of one read under a fault.
enum class End { True, False, NoMemory, OtherException };

template <class Read>
End endOf(const Read& read) {
  try {
    return read() ? End::True : End::False;
  } catch (const std::bad_alloc&) {
    return End::NoMemory;
  } catch (...) {
    return End::OtherException;
  }
}

// --- The texts: all cases together raise every message ---

struct Text {
  std::string name;
  std::string text;
};

constexpr std::uintmax_t LARGEST_EXPECTATION = 16384;

/// Cases that show a message, one for each beginning of a logged line that differs.
const std::vector<Text>& messageTexts() {
  static const std::vector<Text> found = [] {
    std::vector<Text> texts;
    std::set<std::string> seen;
    for (const Case& each : findCases(VSA_CASE_DIR).cases) {
      if (std::filesystem::file_size(each.text) > 4096) continue;
      std::istringstream expectation(contentOf(each.expectation));
      bool isNew = false;
      for (std::string line; std::getline(expectation, line) && line != "scene";) {
        // Names and numbers differ from case to case: the words are what tells messages apart.
        std::string words;
        for (std::size_t at = 0; at < line.size() && words.size() < 40; ++at) {
          const char c = line[at];
          if (c == '\'' || c == '"') break;
          if (!zn::String::isDigit(c)) words += c;
        }
        isNew = seen.insert(words).second || isNew;
      }
      // A text that builds a large scene shows nothing more, and takes long to look at.
      if (isNew && std::filesystem::file_size(each.expectation) < LARGEST_EXPECTATION) {
        texts.push_back({each.name, contentOf(each.text)});
      }
    }
    return texts;
  }();
  return found;
}

// --- No memory ---

struct MemoryFault {
  End end;
  bool hasFailed;
  /// Blocks that were taken and not given back once the scene was gone.
  std::int64_t keptBlocks;
};

/// Reads with the k-th allocation failing (0: none), and destroys the scene again.
MemoryFault readWithFault(const Text& text, std::uint64_t k, bool everAfter, bool fromFile) {
  MemoryFault fault{};
  const zn::String source = zn::String::copyOf(text.text);
  FixedSink sink;
  AllocationWatch::start();
  {
    Scene scene;
    scene.setEmptyElementLimit(EMPTY_ELEMENTS);
    {
      const zn::ScopedLogSink scope(&sink);
      AllocationWatch::failAt(k, everAfter);
      fault.end = endOf([&] {
        if (!fromFile) return impl::parseString(&scene, source);
        return impl::parseVsa(&scene, zn::File(new TextPieces(source, 7)), true);
      });
    }
    fault.hasFailed = AllocationWatch::hasFailed();
    AllocationWatch::stop();
    // Under a watch of its own, or the dump's memory would count.
    if (k != 0 && fault.hasFailed) static_cast<void>(sceneText(scene));
    AllocationWatch::resume();
  }
  AllocationWatch::stop();
  fault.keptBlocks = AllocationWatch::count().liveBlocks;
  return fault;
}

void failEveryAllocation(const Text& text, bool everAfter, bool fromFile) {
  const MemoryFault sound = readWithFault(text, 0, false, fromFile);
  for (std::uint64_t k = 1;; ++k) {
    const std::string where = text.name + ", allocation " + std::to_string(k) +
                              (everAfter ? " and later ones" : "") + (fromFile ? ", file" : "");
    const MemoryFault fault = readWithFault(text, k, everAfter, fromFile);
    if (!fault.hasFailed) break;
    EXPECT_NE(fault.end, End::OtherException) << where;
    // The payload of the one statement that the fault ended may be let go.
    EXPECT_LE(fault.keptBlocks, sound.keptBlocks + 1) << where;
    ASSERT_LT(k, 100000u) << where;
  }
}

class NoMemoryTest : public testing::TestWithParam<std::pair<bool, bool>> {};

TEST_P(NoMemoryTest, EndsTheReadingAndKeepsTheRest) {
  const auto [everAfter, fromFile] = GetParam();
  const std::size_t step = sampleStep(fromFile ? 7 : 1);
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    failEveryAllocation(messageTexts()[i], everAfter, fromFile);
  }
}

INSTANTIATE_TEST_SUITE_P(OnceAndEverAfter, NoMemoryTest,
                         testing::Values(std::pair(false, false), std::pair(true, false),
                                         std::pair(false, true), std::pair(true, true)));

TEST(NoMemoryTest, LeavesTheSceneUsable) {
  const std::size_t step = sampleStep(5);
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    const Text& text = messageTexts()[i];
    for (std::uint64_t k = 1;; ++k) {
      Scene scene;
      scene.setEmptyElementLimit(EMPTY_ELEMENTS);
      FixedSink sink;
      AllocationWatch::start();
      AllocationWatch::failAt(k, false);
      {
        const zn::ScopedLogSink scope(&sink);
        endOf([&] { return impl::parseString(&scene, zn::String::copyOf(text.text)); });
      }
      const bool hasFailed = AllocationWatch::hasFailed();
      AllocationWatch::stop();
      if (!hasFailed) break;
      expectUsable(scene, text.name + ", allocation " + std::to_string(k));
    }
  }
}

// What is applied before the fault is what a reading without faults applies: its nodes are the
// first of those. Texts that remove nodes are left out.
TEST(NoMemoryTest, KeepsWhatWasApplied) {
  for (const Text& text : messageTexts()) {
    if (text.text.find("emove") != std::string::npos) continue;
    Scene whole;
    whole.setEmptyElementLimit(EMPTY_ELEMENTS);
    FixedSink sink;
    const zn::ScopedLogSink scope(&sink);
    endOf([&] { return impl::parseString(&whole, zn::String::copyOf(text.text)); });
    const std::vector<std::string> all = nodeNames(whole);
    std::size_t most = 0;
    for (std::uint64_t k = 1;; ++k) {
      Scene scene;
      scene.setEmptyElementLimit(EMPTY_ELEMENTS);
      AllocationWatch::start();
      AllocationWatch::failAt(k, false);
      endOf([&] { return impl::parseString(&scene, zn::String::copyOf(text.text)); });
      const bool hasFailed = AllocationWatch::hasFailed();
      AllocationWatch::stop();
      const std::vector<std::string> some = nodeNames(scene);
      ASSERT_LE(some.size(), all.size()) << text.name << ' ' << k;
      EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin())) << text.name << ' ' << k;
      EXPECT_GE(some.size(), most) << text.name << ' ' << k;  // later faults keep more
      most = some.size();
      if (!hasFailed) break;
    }
    EXPECT_EQ(most, all.size()) << text.name;
  }
}

// --- A source that fails, stops short or throws ---

TEST(SourceFaultTest, AFailingReadEndsTheTextThere) {
  const std::size_t step = sampleStep(3);
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    const Text& text = messageTexts()[i];
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good * 3 < text.text.size(); ++good) {
      const std::string where = text.name + ", read " + std::to_string(good + 1);
      const std::string cut =
          outcomeOf(std::string_view(text.text).substr(0, good * 3), Source::String);
      declareCaseTypes();
      Scene scene;
      const zn::File file(new FailingPieces(whole, 3, good, FailingPieces::Fails));
      const auto outcome = vsa_tools::watchRead([&] { return impl::parseVsa(&scene, file, true); });
      vsa_tools::TextOutput out;
      vsa_tools::dumpCase(outcome, scene, out);
      EXPECT_EQ(comparable(out.text()), comparable(cut)) << where;
      // An error in the text may have ended the reading before.
      EXPECT_TRUE(file.failed() || !outcome.result) << where;
      if (good % 8 == 0) expectUsable(scene, where);
    }
  }
}

TEST(SourceFaultTest, AShortReadChangesNothing) {
  const std::size_t step = sampleStep(3);
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    const Text& text = messageTexts()[i];
    const std::string sound = comparable(outcomeOf(text.text, Source::String));
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good * 16 < text.text.size(); ++good) {
      declareCaseTypes();
      Scene scene;
      const zn::File file(new FailingPieces(whole, 16, good, FailingPieces::StopsShort));
      const auto outcome = vsa_tools::watchRead([&] { return impl::parseVsa(&scene, file, true); });
      vsa_tools::TextOutput out;
      vsa_tools::dumpCase(outcome, scene, out);
      EXPECT_EQ(comparable(out.text()), sound) << text.name << ", read " << good + 1;
      EXPECT_FALSE(file.failed());
    }
  }
}

TEST(SourceFaultTest, WhatASourceThrowsEndsTheReading) {
  const std::size_t step = sampleStep(3);
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    const Text& text = messageTexts()[i];
    const zn::String whole = zn::String::copyOf(text.text);
    for (std::size_t good = 0; good * 5 < text.text.size(); ++good) {
      const std::string where = text.name + ", read " + std::to_string(good + 1);
      Scene scene;
      FixedSink sink;
      const zn::ScopedLogSink scope(&sink);
      const zn::File file(new FailingPieces(whole, 5, good, FailingPieces::Throws));
      // Among the first three tokens it leaves the entry point, later it is an error like any.
      endOf([&] { return impl::parseVsa(&scene, file, true); });
      expectUsable(scene, where);
    }
  }
}

// --- A host's scene that throws or refuses ---

TEST(HostFaultTest, WhatASceneThrowsIsTheError) {
  const std::size_t step = sampleStep(1);
  std::set<std::string> thrown;
  for (std::size_t i = 0; i < messageTexts().size(); i += step) {
    const Text& text = messageTexts()[i];
    for (std::uint64_t n = 1;; n += 1 + n / 400) {
      const std::string where = text.name + ", call " + std::to_string(n);
      declareCaseTypes();
      Scene scene;
      scene.setEmptyElementLimit(EMPTY_ELEMENTS);
      WatchedScene host(scene);
      host.throwAt(n);
      FixedSink sink;
      const zn::ScopedLogSink scope(&sink);
      const End end =
          endOf([&] { return impl::parseString(&host, zn::String::copyOf(text.text)); });
      if (host.calls() < n) break;
      thrown.insert(host.faultyCall());
      EXPECT_EQ(end, End::False) << where << ' ' << host.faultyCall();
      EXPECT_TRUE(sink.text().ends_with("host fault in " + host.faultyCall() + "\n"))
          << where << '\n'
          << sink.text();
      expectUsable(scene, where);
    }
  }
  // Whatever the reader calls has been seen to throw.
  EXPECT_GE(thrown.size(), 30u) << testing::PrintToString(thrown);
}

TEST(HostFaultTest, ARefusedCreationIsNoCrash) {
  for (const Text& text : messageTexts()) {
    for (std::uint64_t n = 1;; n += 1 + n / 400) {
      const std::string where = text.name + ", creation " + std::to_string(n);
      declareCaseTypes();
      Scene scene;
      scene.setEmptyElementLimit(EMPTY_ELEMENTS);
      WatchedScene host(scene);
      host.refuseAt(n);
      FixedSink sink;
      const zn::ScopedLogSink scope(&sink);
      const End end =
          endOf([&] { return impl::parseString(&host, zn::String::copyOf(text.text)); });
      if (host.creations() < n) break;
      EXPECT_NE(end, End::NoMemory) << where;
      expectUsable(scene, where);
    }
  }
}

TEST(HostFaultTest, ASceneThatRefusesEverythingIsNoCrash) {
  for (const Text& text : messageTexts()) {
    Scene scene;
    WatchedScene host(scene);
    host.refuseEverything();
    FixedSink sink;
    const zn::ScopedLogSink scope(&sink);
    endOf([&] { return impl::parseString(&host, zn::String::copyOf(text.text)); });
    EXPECT_EQ(scene.nodeCount(), 0u) << text.name;
    endOf([&] { return impl::parseString(nullptr, zn::String::copyOf(text.text)); });
  }
}

}  // namespace

}  // namespace vsa_tests
