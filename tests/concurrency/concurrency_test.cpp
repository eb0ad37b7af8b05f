// Tests of lifetimes and threads. Nodes are removed while something refers to them, one scene is
// read into repeatedly, threads read concurrently, and a process exits during a read.
// ThreadSanitizer and AddressSanitizer run these tests, too.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <vsa/foundation/log.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/scene/node_type.h>
#include "tests/support/byte_source.h"
#include "tests/support/silent_sink.h"
#include "tools/scene_text/scene_dump.h"

namespace vsa_tests {

namespace {

using namespace zn::korvo_sdk;

/// Reads into the scene and returns the outcome in the form of an expected result.
std::string readInto(Scene& scene, const std::string& text) {
  const auto outcome =
      vsa_tools::captureRead([&] { return impl::parseString(&scene, zn::String::copyOf(text)); });
  vsa_tools::TextOutput out;
  vsa_tools::dumpCase(outcome, scene, out);
  return out.text();
}

std::string read(const std::string& text) {
  Scene scene;
  return readInto(scene, text);
}

// --- Removed nodes ---

// Assignments to a removed "with" node do not change the scene. Links from it are only checked.
TEST(RemovalTest, ARemovedWithNodeCanStillBeUsed) {
  EXPECT_EQ(read("lamp a: .x = 1; remove a; .x = 2; .y = \"s\"; .z[3] = 1; .o.m = vec3(1 2 3);"
                 ".b = float[2] {1 2}; .r = a; .c |= a.out; lamp b;"),
            "result true\n"
            "log\n"
            "  warning Cannot connect nonexistent node a to a.c.\n"
            "  warning Cannot assign nonexistent node a to a.r.\n"
            "scene\n"
            "  node lamp b\n");
}

TEST(RemovalTest, ARemovedWithNodeIsNotTheNewNodeOfItsName) {
  EXPECT_EQ(read("lamp a: .x = 1; remove a; lamp a; .x = 2; a.y = 3;"),
            "result true\n"
            "scene\n"
            "  node lamp a\n"
            "    y Int 3\n");
}

TEST(RemovalTest, ADeclarationSetsANewWithNode) {
  EXPECT_EQ(read("lamp a: .x = 1; remove a; lamp a: .y = 2; remove a; with a: .z = 3;"),
            "result true\n"
            "scene\n"
            "  node with a\n"
            "    z Int 3\n");
}

TEST(RemovalTest, PendingLinksToARemovedNodeFail) {
  EXPECT_EQ(read("lamp a; lamp b; a.r = b; a.c |= b.out; remove b;"),
            "result true\n"
            "log\n"
            "  warning Cannot connect nonexistent node b to a.c.\n"
            "  warning Cannot assign nonexistent node b to a.r.\n"
            "scene\n"
            "  node lamp a\n"
            "    r Null\n"
            "    c Null\n");
}

TEST(RemovalTest, PendingLinksOfARemovedNodeAreDropped) {
  EXPECT_EQ(read("lamp a; lamp b; a.r = b; a.k[2] = b; a.c |= b.out; remove a;"),
            "result true\n"
            "scene\n"
            "  node lamp b\n");
}

TEST(RemovalTest, PendingLinksFindTheNewNodeOfTheName) {
  EXPECT_EQ(read("lamp a; lamp b; b.old = 1; a.r = b; a.c |= b.out; remove b; lamp b; b.new = 1;"),
            "result true\n"
            "scene\n"
            "  node lamp a\n"
            "    r Node b\n"
            "    c Null <- b.out\n"
            "  node lamp b\n"
            "    new Int 1\n");
}

TEST(RemovalTest, RemovalClearsResolvedLinks) {
  Scene scene;
  readInto(scene, "lamp a; lamp b; a.r = b; a.c |= b.out; a.k[1] |= b.out;");
  EXPECT_EQ(readInto(scene, "remove b;"),
            "result true\n"
            "scene\n"
            "  node lamp a\n"
            "    r Node null\n"
            "    c Null\n"
            "    k Array Null\n"
            "      [0] Null\n"
            "      [1] Null\n");
  EXPECT_EQ(readInto(scene, "lamp b; a.r = b; remove a; remove a; remove b; remove nobody;"),
            "result true\n"
            "log\n"
            "  warning Cannot assign nonexistent node b to a.r.\n");
}

TEST(RemovalTest, ManyNodesAreCreatedAndRemoved) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    const std::string name = "n" + std::to_string(i % 7);
    text +=
        "lamp " + name + ": .x[3] = 1; .s = \"text\"; .r = n0; .c |= n1.out; remove " + name + ";";
  }
  Scene scene;
  const std::string shown = readInto(scene, text);
  EXPECT_EQ(scene.nodeCount(), 0u);
  EXPECT_TRUE(shown.starts_with("result true\n")) << shown.substr(0, 200);
}

// --- Repeated reads into one scene ---

constexpr char EVERYTHING[] =
    "# version: 3\n# time: now\n"
    "lamp a: .i = 1; .r = 2.5; .s = \"x\\ty\"; .v = vec3(1 2 3); .m = mat4(1 0 0 0 0 1 0 0 0 0 1 0 "
    "0 0 0 1);"
    ".b = float[4] {1 2 3 4}; .k[2] = 7; .o.deep.er = true; .bufs[1] = int32[2] {5 6};"
    ".n = b; .c |= b.out; .e |= null; define c; c.x = 1; lamp b; remove c; b.s = \"again\";\n";

TEST(SameSceneTest, ReadTenTimes) {
  Scene scene;
  const std::string once = readInto(scene, EVERYTHING);
  EXPECT_TRUE(once.starts_with("result true\nscene\n")) << once;
  const std::string comments = "  comment \"# version: 3\"\n  comment \"# time: now\"\n";
  const std::size_t at = once.find(comments);
  ASSERT_NE(at, std::string::npos);
  std::string expected = once;
  for (int i = 1; i < 10; ++i) {
    expected.insert(at, comments);  // each read adds its header comments
    EXPECT_EQ(readInto(scene, EVERYTHING), expected) << "read " << i + 1;
  }
}

TEST(SameSceneTest, ReadTenTimesFromAFileAndResetTheHeader) {
  Scene scene;
  std::string once;
  for (int i = 0; i < 10; ++i) {
    const auto outcome = vsa_tools::captureRead(
        [&] { return impl::parseVsa(&scene, memoryFile(EVERYTHING, 5), false); });
    vsa_tools::TextOutput out;
    vsa_tools::dumpCase(outcome, scene, out);
    if (i == 0) once = out.text();
    EXPECT_EQ(out.text(), once) << "read " << i + 1;
  }
}

TEST(SameSceneTest, ReadAgainAfterAnError) {
  Scene scene;
  for (int i = 0; i < 10; ++i) {
    const std::string shown = readInto(scene, "lamp a: .n = a; .b = int32[1] {1 2}; .after = 1;");
    EXPECT_TRUE(shown.starts_with("result false\n")) << shown;
    EXPECT_EQ(shown.find("after"), std::string::npos) << shown;
    EXPECT_THROW(impl::parseString(&scene, "}"), std::runtime_error);
  }
  EXPECT_TRUE(readInto(scene, EVERYTHING).starts_with("result true\n"));
}

// --- Threads ---

// Reads `text` in `count` threads that start at the same time, so that they compete to initialise
// everything that is created on first use. Each thread has its own scene and sink.
std::vector<std::string> readInThreads(std::size_t count, const zn::String& text) {
  std::vector<std::string> shown(count);
  std::barrier start(static_cast<std::ptrdiff_t>(count));
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      Scene scene;
      start.arrive_and_wait();
      const auto outcome = vsa_tools::captureRead([&] { return impl::parseString(&scene, text); });
      vsa_tools::TextOutput out;
      vsa_tools::dumpCase(outcome, scene, out);
      shown[i] = out.text();
    });
  }
  for (std::thread& thread : threads) thread.join();
  return shown;
}

constexpr char ALL_TABLES[] =
    "sharedLamp a: .shape = \"spot\"; .shape = \"none\"; .old = 2; .v = vec3(1 2 3); a.c |= "
    "a.out;\n"
    "lamp b: .f = float[3] {1.5 2 3}; .p = vec3f[1] {1 2 3}; .u = 3u; .t = \"\\u00e9\"; .q = 1; .q "
    "= 2.5;\n"
    ".z = byte[4] {.789c63606060000000040001};\n";

/// The outcome of ALL_TABLES when the type sharedLamp is not declared.
constexpr char ALL_TABLES_READ[] = R"(result true
log
  warning TYPE WARNING (2,97): narrowing Real to Int @ b.q.
scene
  node sharedLamp a
    shape String "none"
    old Int 2
    v Vec3 [1, 2, 3]
    c Null <- a.out
  node lamp b
    f Buffer Float 3 [1.5, 2, 3]
    p Buffer Vec3f 1 [1, 2, 3]
    u UInt 3
    t String "é"
    q Int 3
    z Buffer Byte 4 [0, 0, 0, 0]
)";

/// Reads in 16 threads of a child process that has not read anything before. Returns the wait
/// status of that process, which is 0 if all threads had the expected outcome.
int raceForFirstUse() {
  const pid_t child = fork();
  if (child == 0) {
    const std::vector<std::string> shown = readInThreads(16, ALL_TABLES);
    const auto differs = [](const std::string& each) { return each != ALL_TABLES_READ; };
    const auto different = std::find_if(shown.begin(), shown.end(), differs);
    if (different != shown.end()) std::cerr << *different;
    std::exit(different == shown.end() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

TEST(ThreadTest, SixteenConcurrentReads) {
  NodeType lamp;
  lamp.name = "sharedLamp";
  InputDeclaration shape;
  shape.name = "shape";
  shape.type = AttrType::String;
  shape.enumValues = {"point", "spot"};
  InputDeclaration power;
  power.name = "power";
  power.type = AttrType::Real;
  InputDeclaration c;
  c.name = "c";
  InputDeclaration v;
  v.name = "v";
  v.type = AttrType::Vec3;
  lamp.inputs = {shape, power, c, v};
  lamp.outputs = {"out"};
  lamp.formerInputs = {{"old", "power"}};
  registerNodeType(lamp);
  const std::vector<std::string> shown = readInThreads(16, ALL_TABLES);
  for (const std::string& each : shown) EXPECT_EQ(each, shown[0]);
  EXPECT_NE(shown[0].find("ENUM WARNING"), std::string::npos) << shown[0];
}

// Each thread has its own text, scene and sink.
TEST(ThreadTest, EachThreadLogsToItsOwnSink) {
  constexpr std::size_t THREADS = 16;
  constexpr int STATEMENTS = 300;
  std::vector<vsa_tools::LogCapture> captures(THREADS);
  std::vector<int> results(THREADS, -1);
  std::barrier start(static_cast<std::ptrdiff_t>(THREADS));
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < THREADS; ++i) {
    threads.emplace_back([&, i] {
      const std::string name = "n" + std::to_string(i);
      std::string text = "lamp " + name + ": .q = 1;\n";
      for (int k = 0; k < STATEMENTS; ++k) text += ".q = 2.5;\n";
      text += i % 2 == 0 ? "42;" : name + ".s = float[2] {1}; .s = true;";
      const zn::ScopedLogSink scope(&captures[i]);
      Scene scene;
      start.arrive_and_wait();
      results[i] = impl::parseString(&scene, zn::String::copyOf(text)) ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < THREADS; ++i) {
    const std::string name = "n" + std::to_string(i);
    std::vector<vsa_tools::LogEntry> expected;
    for (int k = 0; k < STATEMENTS; ++k) {
      expected.push_back({zn::LogLevel::Warning, "TYPE WARNING (" + std::to_string(k + 2) +
                                                     ",9): narrowing Real to Int @ " + name +
                                                     ".q."});
    }
    if (i % 2 == 0) {
      expected.push_back({zn::LogLevel::Error, "PARSE ERROR (301,9): unrecognized token '42'.."});
    } else {
      expected.push_back({zn::LogLevel::Warning,
                          "Too few elements (1) for float[2] buffer, remainder set to zero."});
      expected.push_back(
          {zn::LogLevel::Error, "TYPE ERROR (302," + std::to_string(31 + name.size() - 2) +
                                    "): expected Buffer @ " + name + ".s but found Bool."});
    }
    EXPECT_EQ(captures[i].entries, expected) << name;
    EXPECT_EQ(results[i], i % 2 == 0 ? 0 : 1) << name;
  }
}

TEST(ThreadTest, OneSharedSink) {
  class CountingSink final : public zn::LogSink {
   public:
    void write(zn::LogLevel, const zn::String& text) override {
      if (text.view() == "TYPE WARNING (1,25): narrowing Real to Int @ b.q.") ++narrowings;
    }
    std::atomic<int> narrowings{0};
  };
  CountingSink sink;
  zn::LogSink* const before = zn::setLogSink(&sink);
  std::vector<std::thread> threads;
  for (int i = 0; i < 16; ++i) {
    threads.emplace_back([] {
      Scene scene;
      impl::parseString(&scene, "lamp b: .q = 1; .q = 2.5;");
    });
  }
  for (std::thread& thread : threads) thread.join();
  zn::setLogSink(before);
  EXPECT_EQ(sink.narrowings, 16);
}

TEST(ThreadTest, OneSharedText) {
  // All threads hold copies of the same String. Another thread destroys the scenes.
  const zn::String text(EVERYTHING);
  std::vector<std::unique_ptr<Scene>> scenes(16);
  std::vector<std::thread> threads;
  for (auto& slot : scenes) {
    threads.emplace_back([&slot, text] {
      slot = std::make_unique<Scene>();
      impl::parseString(slot.get(), text);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const auto& scene : scenes) EXPECT_EQ(scene->nodeCount(), 2u);
}

// --- Process exit ---

/// A source that returns statements without end, so that the read still runs when the process
/// exits.
class EndlessSource final : public zn::ByteSource {
 public:
  explicit EndlessSource(std::atomic<bool>& isRunning) : isRunning_(isRunning) {}
  std::size_t read(char* to, std::size_t capacity) override {
    static constexpr std::string_view TEXT =
        "lamp a: .v = vec3(1 2 3); .b = int32[2] {1 2}; .s = \"x\"; .q = 1; .q = 2.5; .r = a;\n";
    if (++blocks_ > 20) isRunning_ = true;
    const std::size_t count = std::min(capacity, TEXT.size());
    std::copy_n(TEXT.data(), count, to);
    return count;
  }

 private:
  std::atomic<bool>& isRunning_;
  int blocks_ = 0;
};

TEST(ExitTest, DuringARead) {
  for (int i = 0; i < 5; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      static std::atomic<int> running{0};
      for (int thread = 0; thread < 2; ++thread) {
        std::thread([] {
          std::atomic<bool> isRunning{false};
          auto* const source = new EndlessSource(isRunning);
          std::thread([&isRunning] {
            while (!isRunning) std::this_thread::yield();
            ++running;
          }).detach();
          SilentSink silent;
          const zn::ScopedLogSink scope(&silent);
          Scene scene;
          impl::parseVsa(&scene, zn::File(source), true);
        }).detach();
      }
      while (running < 2) std::this_thread::yield();
      std::exit(0);  // runs the destructors of static objects
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "status " << status;
  }
}

}  // namespace

}  // namespace vsa_tests

// This test of the first use runs before all others, because they would initialise the tables.
namespace {

class FirstUse : public testing::Environment {
 public:
  void SetUp() override {
    EXPECT_EQ(vsa_tests::raceForFirstUse(), 0) << "sixteen concurrent first reads differ";
  }
};

const testing::Environment* const firstUse = testing::AddGlobalTestEnvironment(new FirstUse);

}  // namespace
