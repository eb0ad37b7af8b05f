// Tests of a file that one thread reads while another thread writes it.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <future>
#include <string>
#include <string_view>

#include "tools/vsa/common/writing/string_sink.h"
#include "tools/vsa/fmt/growing_file.h"
#include "tools/vsa/fmt/sinks.h"

namespace vsa_tools {

namespace {

std::string restOf(vsa::Source& source) {
  std::string text, block(1000, '\0');
  while (const std::size_t count = source.read(block)) text.append(block, 0, count);
  return text;
}

std::string contentOf(std::FILE* written, const GrowingFile& growing) {
  TextFileSource file(::fileno(written));
  GrowingFileSource source(growing, file);
  return restOf(source);
}

TEST(GrowingFileTest, DeliversAllBytesInOrder) {
  constexpr int BLOCKS = 3000;
  const FilePointer file(std::tmpfile());
  GrowingFile growing;
  std::future<std::string> reading =
      std::async(std::launch::async, [&] { return contentOf(file.get(), growing); });
  std::string expected;
  for (int i = 0; i < BLOCKS; ++i) {
    const std::string block(3000, static_cast<char>('a' + i % 26));
    ASSERT_EQ(::write(::fileno(file.get()), block.data(), block.size()), 3000);
    growing.add(block.size());
    expected += block;
  }
  growing.end();
  EXPECT_TRUE(reading.get() == expected);
  EXPECT_FALSE(growing.isCancelled());
}

TEST(GrowingFileTest, DeliversNothingThatIsNotAdded) {
  const FilePointer file(std::tmpfile());
  ASSERT_EQ(::write(::fileno(file.get()), "abcdef", 6), 6);
  GrowingFile growing;
  growing.add(4);
  growing.end();
  EXPECT_EQ(contentOf(file.get(), growing), "abcd");
}

// A read at the end leaves errno unchanged, so an earlier error has no influence.
TEST(TextFileSourceTest, EndsAtTheEndAfterAnotherError) {
  const FilePointer file(std::tmpfile());
  ASSERT_EQ(::write(::fileno(file.get()), "abc", 3), 3);
  TextFileSource source(::fileno(file.get()));
  errno = EINTR;
  EXPECT_EQ(restOf(source), "abc");
}

// The source reads the file from an offset, as after a byte order mark.
TEST(GrowingFileTest, CountsTheBytesBeforeTheOffset) {
  const FilePointer file(std::tmpfile());
  ASSERT_EQ(::write(::fileno(file.get()), "abcdef", 6), 6);
  GrowingFile growing;
  growing.add(4);
  growing.end();
  TextFileSource rest(::fileno(file.get()));
  char first[3];
  ASSERT_EQ(rest.read(first), 3u);
  GrowingFileSource source(growing, rest, 3);
  EXPECT_EQ(restOf(source), "d");
}

TEST(GrowingFileTest, WakesTheReaderWhenItIsCancelled) {
  const FilePointer file(std::tmpfile());
  GrowingFile growing;
  std::future<std::string> reading =
      std::async(std::launch::async, [&] { return contentOf(file.get(), growing); });
  { const CancelAtEnd ending(growing); }
  EXPECT_EQ(reading.get(), "");
  EXPECT_TRUE(growing.isCancelled());
  growing.add(3);
  EXPECT_EQ(contentOf(file.get(), growing), "");
}

TEST(ComparingSinkTest, ComparesBlocksOfAnySize) {
  const FilePointer file(std::tmpfile());
  ASSERT_GE(std::fputs("abc", file.get()), 0);
  std::fflush(file.get());
  const auto isSame = [&](std::initializer_list<std::string_view> blocks) {
    TextFileSource source(::fileno(file.get()));
    ComparingSink sink(source);
    for (const std::string_view block : blocks) sink.write(block);
    return sink.isSame();
  };
  EXPECT_TRUE(isSame({"a", "b", "c"}));
  EXPECT_TRUE(isSame({"ab", "c"}));
  EXPECT_FALSE(isSame({"ab"}));
  EXPECT_FALSE(isSame({"ab", "d"}));
  EXPECT_FALSE(isSame({"abc", "d"}));
}

TEST(GrowingSinkTest, FailsIfTheNewFileFails) {
  struct FullSink final : vsa::Sink {
    bool write(std::string_view) override { return false; }
  } full;
  const FilePointer file(std::tmpfile());
  ASSERT_GE(std::fputs("abc", file.get()), 0);
  std::fflush(file.get());
  for (const std::string_view same : {"", "a"}) {
    TextFileSource whole(::fileno(file.get())), beginning(::fileno(file.get()));
    ComparingSink comparison(whole);
    GrowingFile written;
    GrowingSink sink(full, comparison, beginning, written);
    EXPECT_TRUE(sink.write(same));
    EXPECT_FALSE(sink.write("xyz"));
  }
}

TEST(GrowingSinkTest, CopiesABeginningOfOneByte) {
  const FilePointer file(std::tmpfile());
  ASSERT_GE(std::fputs("abc", file.get()), 0);
  std::fflush(file.get());
  TextFileSource whole(::fileno(file.get())), beginning(::fileno(file.get()));
  ComparingSink comparison(whole);
  GrowingFile written;
  StringSink changed;
  GrowingSink sink(changed, comparison, beginning, written);
  EXPECT_TRUE(sink.write("a"));
  EXPECT_EQ(changed.text, "");
  EXPECT_TRUE(sink.write("xyz"));
  EXPECT_TRUE(sink.end());
  EXPECT_EQ(changed.text, "axyz");
}

}  // namespace

}  // namespace vsa_tools
