// Tests of a file that the reader and its host share. The host uses the file while the reader calls
// the host's scene, log sink or source. At each call of the scene or the log sink, the position of
// the file is after the reader's lookahead character, whatever the size of the source's blocks. If
// the host reads bytes during the call, the reader continues after them. While the links are
// resolved and while the source is called, the file is at its end.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <vsa/foundation/file.h>
#include <vsa/foundation/log.h>
#include <vsa/parse.h>
#include "tests/support/byte_source.h"
#include "tests/support/host_scene.h"
#include "tests/support/parser_fixture.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::HostScene;
using vsa_tests::LoggedLines;
using vsa_tests::memoryFile;
using Lines = std::vector<std::string>;

// The maximum number of bytes that a source delivers at a time. 0 means no limit.
constexpr std::size_t BLOCKS[] = {0, 1, 2, 3, 7};

/// Reads at most `count` bytes, one at a time.
std::string readBytes(File& file, std::size_t count) {
  std::string bytes;
  signed char c = 0;
  while (bytes.size() < count && file.read(c)) bytes += static_cast<char>(c);
  return bytes;
}

std::string readRest(File& file) {
  return readBytes(file, std::string::npos);
}

/// The result of a read during which the host also used the file.
struct SharedRead {
  bool result = false;
  Lines calls;
  Lines log;
  std::string rest;  // the bytes of the file that are not read

  friend bool operator==(const SharedRead&, const SharedRead&) = default;
};

void PrintTo(const SharedRead& read, std::ostream* out) {
  *out << (read.result ? "true" : "false");
  for (const std::string& line : read.calls) *out << "\n  " << line;
  for (const std::string& line : read.log) *out << "\n  " << line;
  *out << "\n  rest <" << read.rest << '>';
}

/// Reads `bytes`. At each recorded call of the scene, calls `use` with the host's handle of the
/// file.
SharedRead readShared(const std::string& bytes, std::size_t block,
                      const std::function<void(File&, const std::string&)>& use) {
  File file = memoryFile(bytes, block);
  HostScene scene;
  scene.options.onCall = [&](const std::string& call) { use(file, call); };
  const LoggedLines log;
  SharedRead read;
  read.result = parseVsa(&scene, file, true);
  read.calls = scene.options.calls;
  read.log = log.lines();
  read.rest = readRest(file);
  return read;
}

// The reader is three tokens ahead. When it executes `a b;`, it has already lexed `c d ;`, and the
// blank after that is its lookahead character.
TEST(SharedFile, SceneReadsAfterTheLookahead) {
  for (const std::size_t block : BLOCKS) {
    Lines seen;
    const SharedRead read = readShared("a b; c d; #e f; g h;", block, [&](File& file, const auto&) {
      if (seen.empty()) seen.push_back(readBytes(file, 1));
    });
    EXPECT_EQ(seen, Lines{"#"}) << block;
    EXPECT_EQ(read.calls, (Lines{"createNode a b <>", "createNode c d <>", "createNode e f <>",
                                 "createNode g h <>"}))
        << block;
    EXPECT_TRUE(read.result) << block;
  }
}

TEST(SharedFile, BytesReadByTheSceneAreNotReadAgain) {
  const std::string bytes = "a b; c d; e f; g h; i j; k l; m n; o p; q r; s t; u v; w x; y z;";
  for (const std::size_t count : {0U, 1U, 2U, 3U, 5U, 20U, 1000U}) {
    const auto use = [&](File& file, const std::string&) { readBytes(file, count); };
    const SharedRead byteByByte = readShared(bytes, 1, use);
    for (const std::size_t block : BLOCKS) {
      EXPECT_EQ(readShared(bytes, block, use), byteByByte) << count << ' ' << block;
    }
  }
}

// The calls before the one that reads are of statements that the reader recognises without tokens.
TEST(SharedFile, BytesReadInALaterCallAreNotReadAgain) {
  const std::string bytes =
      "lamp a; a.v = 1; a.w = 2.5; lamp b; b.s = \"x\"; lamp c; c.v = 3; c.w = 4;\n"
      "lamp d; d.v = 5;\nlamp e; lamp f; f.v = 6; lamp g; lamp h; h.v = 7;";
  for (const std::string later : {"a.v.assign", "createNode lamp b", "b.s.assign", "c.w.assign"}) {
    for (const std::size_t count : {1U, 2U, 5U, 9U, 30U, 1000U}) {
      const auto use = [&](File& file, const std::string& call) {
        if (call.starts_with(later)) readBytes(file, count);
      };
      const SharedRead byteByByte = readShared(bytes, 1, use);
      const SharedRead whole = readShared(bytes, 0, use);
      EXPECT_EQ(whole, byteByByte) << later << ' ' << count;
      EXPECT_NE(whole, readShared(bytes, 0, [](File&, const std::string&) {})) << later;
    }
  }
}

// The rest of the file begins after the bytes that the scene has read.
TEST(SharedFile, ALaterCallMayReadAndThrow) {
  const std::string bytes = "lamp a; lamp b; lamp c; lamp d; lamp e; #lamp f; lamp g; lamp h;";
  for (const std::size_t block : BLOCKS) {
    std::string seen;
    const SharedRead read = readShared(bytes, block, [&](File& file, const std::string& call) {
      if (call != "createNode lamp d <>") return;
      seen = readBytes(file, 5);
      throw std::runtime_error("no lamp");
    });
    EXPECT_EQ(seen, "#lamp") << block;
    EXPECT_EQ(read.rest, " f; lamp g; lamp h;") << block;
    EXPECT_EQ(read.calls.size(), 3U) << block;
    EXPECT_FALSE(read.result) << block;
  }
}

TEST(SharedFile, SceneMayFillAndSkip) {
  for (const std::size_t block : BLOCKS) {
    std::string next;
    const SharedRead read = readShared("a b; c d; #e f;", block, [&](File& file, const auto&) {
      if (!next.empty()) return;
      const File::Window window = file.fill();
      next.assign(window.begin, 1);
      file.skip(1);
    });
    EXPECT_EQ(next, "#") << block;
    EXPECT_EQ(read.calls.back(), "createNode e f <>") << block;
  }
}

TEST(SharedFile, PeekingChangesNothing) {
  const std::string bytes =
      "# c\nlamp b; b.i = 2.5; b.s = \"x\\ny\"; b.l = [3] { 1, 2 }; c d; .x |= b.o;";
  const SharedRead untouched = readShared(bytes, 0, [](File&, const std::string&) {});
  for (const std::size_t block : BLOCKS) {
    const SharedRead read = readShared(bytes, block, [](File& file, const std::string&) {
      file.fill();
      file.skip(0);
      EXPECT_TRUE(file.isOpen());
      EXPECT_FALSE(file.failed());
    });
    EXPECT_EQ(read, untouched) << block;
  }
}

TEST(SharedFile, SkipStopsAtTheEndOfTheBufferedBytes) {
  for (const std::size_t block : BLOCKS) {
    const SharedRead read = readShared("a b; c d; e f;", block, [](File& file, const std::string&) {
      file.fill();
      file.skip(std::string::npos);
      file.skip(1);
    });
    EXPECT_EQ(read.result, read.log.empty()) << block;  // the rest may be no statement
    EXPECT_EQ(read.rest, "") << block;
  }
}

TEST(SharedFile, ReadingTheRestInsideACallEndsTheText) {
  for (const std::size_t block : BLOCKS) {
    std::string seen;
    const SharedRead read = readShared("a b; c d; e f; g h;", block,
                                       [&](File& file, const auto&) { seen += readRest(file); });
    EXPECT_EQ(seen, "e f; g h;") << block;
    EXPECT_EQ(read.calls, (Lines{"createNode a b <>", "createNode c d <>"})) << block;
    EXPECT_TRUE(read.result) << block;
    EXPECT_EQ(read.rest, "") << block;
  }
}

TEST(SharedFile, HandleMayBeAssignedInsideACall) {
  for (const std::size_t block : BLOCKS) {
    const SharedRead read = readShared("a b; c d; e f; g h;", block, [](File& file, const auto&) {
      readBytes(file, 1);
      file = memoryFile("other");
    });
    EXPECT_EQ(read.result, read.log.empty()) << block;  // the rest may be no statement
    EXPECT_EQ(read.rest, "other") << block;
    EXPECT_EQ(readShared("a b; c d; e f;", block, [](File& file, const auto&) { file = File(); })
                  .calls.size(),
              3U)
        << block;
  }
}

TEST(SharedFile, NestedReadConsumesTheRest) {
  for (const std::size_t block : BLOCKS) {
    HostScene inner;
    bool innerResult = false;
    const SharedRead read =
        readShared("a b; c d; e f; g h;", block, [&](File& file, const std::string& call) {
          if (call == "createNode a b <>") {
            innerResult = parseVsa(&inner, file, true);
          }
        });
    EXPECT_TRUE(innerResult) << block;
    EXPECT_EQ(inner.options.calls, (Lines{"createNode e f <>", "createNode g h <>"})) << block;
    EXPECT_TRUE(read.result) << block;
    EXPECT_EQ(read.calls, (Lines{"createNode a b <>", "createNode c d <>"})) << block;
  }
}

// The nested reader fails at the token `1`. It has already lexed the three tokens `1 2 3`, and the
// outer reader continues after them.
TEST(SharedFile, OuterReadContinuesAfterANestedRead) {
  for (const std::size_t block : BLOCKS) {
    HostScene inner;
    const SharedRead read =
        readShared("a b; c d; 1 2 3 e f;", block, [&](File& file, const std::string& call) {
          if (call != "createNode a b <>") return;
          EXPECT_FALSE(parseVsa(&inner, file, true));
        });
    EXPECT_EQ(read.calls, (Lines{"createNode a b <>", "createNode c d <>", "createNode e f <>"}))
        << block;
    EXPECT_TRUE(read.result) << block;
  }
}

/// A sink that reads one byte of the file for each message.
class ReadingSink final : public LogSink {
 public:
  explicit ReadingSink(File& file) : file_(file) {}
  void write(LogLevel, const String&) override { seen += readBytes(file_, 1); }

  std::string seen;

 private:
  File& file_;
};

TEST(SharedFile, LogSinkReadsAfterTheLookahead) {
  for (const std::size_t block : BLOCKS) {
    File file = memoryFile("b.i = 2.5; c d; #e f; 1 2 3 x", block);
    HostScene scene;
    scene.add("lamp", "b")->add("i", AttrType::Int);
    ReadingSink sink(file);
    const ScopedLogSink scope(&sink);
    EXPECT_FALSE(parseVsa(&scene, file, true)) << block;
    EXPECT_EQ(sink.seen, "#x") << block;
    EXPECT_EQ(scene.options.calls,
              (Lines{"b.i.assign Int 3", "createNode c d <>", "createNode e f <>"}))
        << block;
  }
}

TEST(SharedFile, FileIsAtItsEndDuringLinkResolution) {
  for (const std::size_t block : BLOCKS) {
    bool isConnected = false;
    const SharedRead read =
        readShared("a b; b.x |= b.o; c d;", block, [&](File& file, const std::string& call) {
          if (call.find(".connect") == std::string::npos) return;
          isConnected = true;
          EXPECT_EQ(readRest(file), "");
        });
    EXPECT_TRUE(isConnected) << block;
    EXPECT_TRUE(read.result) << block;
  }
}

/// A source that delivers bytes in blocks and calls `onRead` before each block.
class WatchedSource final : public ByteSource {
 public:
  WatchedSource(std::string bytes, std::size_t block) : bytes_(std::move(bytes)), block_(block) {}

  std::size_t read(char* to, std::size_t capacity) override {
    if (onRead) onRead();
    return bytes_.read(to, std::min(block_, capacity));
  }

  std::function<void()> onRead;

 private:
  struct Bytes {
    explicit Bytes(std::string all) : bytes(std::move(all)) {}
    std::size_t read(char* to, std::size_t capacity) {
      const std::size_t count = bytes.copy(to, capacity, at);
      at += count;
      return count;
    }
    std::string bytes;
    std::size_t at = 0;
  } bytes_;
  std::size_t block_;
};

TEST(SharedFile, SourceThatReadsItsOwnFileIsAtTheEnd) {
  for (const std::size_t block : {1U, 2U, 3U, 1000U}) {
    auto* const source = new WatchedSource("a b; c d; e f;", block);
    File file(source);
    HostScene scene;
    int asked = 0;
    source->onRead = [&] {
      ++asked;
      EXPECT_EQ(readRest(file), "");
      const File::Window window = file.fill();
      EXPECT_EQ(window.begin, window.end);
      file.skip(5);
      EXPECT_TRUE(parseVsa(&scene, file, true));
    };
    EXPECT_TRUE(parseVsa(&scene, file, true)) << block;
    EXPECT_GT(asked, 1) << block;
    EXPECT_EQ(scene.options.calls,
              (Lines{"createNode a b <>", "createNode c d <>", "createNode e f <>"}))
        << block;
    source->onRead = nullptr;
    EXPECT_EQ(readRest(file), "") << block;
  }
}

TEST(SharedFile, SourceMayDropTheHandleBeingRead) {
  for (const std::size_t block : {1U, 1000U}) {
    auto* const source = new WatchedSource("ab", block);
    auto file = std::make_unique<File>(source);
    source->onRead = [&] { *file = File(); };
    signed char c = 0;
    EXPECT_TRUE(file->read(c)) << block;
    EXPECT_EQ(c, 'a') << block;
    EXPECT_FALSE(file->isOpen()) << block;
  }
}

TEST(SharedFile, SourceMayDropTheHandleOfATextBeingRead) {
  for (const std::size_t block : {1U, 3U, 1000U}) {
    auto* const source = new WatchedSource("a b; c d;", block);
    File file(source);
    source->onRead = [&] { file = File(); };
    HostScene scene;
    EXPECT_TRUE(parseVsa(&scene, file, true)) << block;
    EXPECT_EQ(scene.options.calls, (Lines{"createNode a b <>", "createNode c d <>"})) << block;
  }
}

/// A source that returns a greater number of bytes than was requested.
class OverreportingSource final : public ByteSource {
 public:
  std::size_t read(char* to, std::size_t capacity) override {
    std::fill_n(to, capacity, ' ');
    return isAsked_ ? 0 : (isAsked_ = true, capacity + 100);
  }

 private:
  bool isAsked_ = false;
};

TEST(SharedFile, OverreportedByteCountIsClamped) {
  File file(new OverreportingSource);
  HostScene scene;
  EXPECT_TRUE(parseVsa(&scene, file, true));
  EXPECT_TRUE(scene.options.calls.empty());
  signed char c = 0;
  EXPECT_FALSE(file.read(c));
}

// An exception of the scene ends the parse. The position of the file remains after the lookahead
// character.
TEST(SharedFile, FileIsAfterTheLookaheadWhenTheSceneThrows) {
  for (const std::size_t block : BLOCKS) {
    const SharedRead read = readShared("a b; c d; e f;", block, [](File&, const std::string&) {
      throw std::runtime_error("refused");
    });
    EXPECT_FALSE(read.result) << block;
    EXPECT_EQ(read.rest, "e f;") << block;
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
