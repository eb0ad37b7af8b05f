// Tests of File: it reads bytes from a path or from a source of the host.
#include <vsa/foundation/file.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "tests/support/byte_source.h"
#include "tests/support/disk_file.h"
#include "tests/support/text.h"

namespace zn {
namespace {

using vsa_tests::DiskFile;
using vsa_tests::memoryFile;
using vsa_tests::text;
using namespace std::string_literals;

static_assert(std::is_base_of_v<RefersTo<RefCounted>, File>);

std::string rest(File& file) {
  std::string bytes;
  signed char c = 0;
  while (file.read(c)) bytes += static_cast<char>(c);
  return bytes;
}

TEST(File, ReadsFromTwoFilesAtOnce) {
  const DiskFile first("1"), second("22");
  File a = File::open(first.path().c_str()), b = File::open(second.path().c_str());
  EXPECT_EQ(rest(a), "1");
  EXPECT_EQ(rest(b), "22");
}

TEST(File, ReadsEveryByte) {
  std::string bytes;
  for (int i = 0; i < 1000000; ++i) bytes += static_cast<char>(i % 256);
  const DiskFile disk(bytes);
  File file = File::open(disk.path().c_str());
  EXPECT_TRUE(file.isOpen());
  EXPECT_EQ(rest(file), bytes);
  EXPECT_FALSE(file.failed());
  EXPECT_EQ(text(file.error()), "");
}

TEST(File, AnEmptyFile) {
  const DiskFile disk("");
  File file = File::open(disk.path().c_str());
  signed char c = 5;
  EXPECT_TRUE(file.isOpen());
  EXPECT_FALSE(file.read(c));
  EXPECT_EQ(c, 5);
  EXPECT_FALSE(file.failed());
}

TEST(File, AByteOrderMarkIsSkippedOnceAtTheBeginning) {
  const std::string rows[][2] = {
      {"\xEF\xBB\xBF"s
       "a",
       "a"},
      {"\xEF\xBB\xBF", ""},
      {"\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"},
      {"\xEF\xBB", "\xEF\xBB"},
      {" \xEF\xBB\xBF", " \xEF\xBB\xBF"},
  };
  for (const auto& [bytes, read] : rows) {
    const DiskFile disk(bytes);
    File file = File::open(disk.path().c_str());
    EXPECT_EQ(rest(file), read);
  }
}

TEST(File, MissingFileIsEmptyAndHasAnError) {
  File file = File::open("/no/such/file");
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(rest(file), "");
  EXPECT_TRUE(file.failed());
  EXPECT_EQ(text(file.error()), "No such file or directory");
}

TEST(File, ADirectoryFails) {
  File file = File::open(testing::TempDir().c_str());
  EXPECT_EQ(rest(file), "");
  EXPECT_TRUE(file.failed());
  EXPECT_NE(text(file.error()), "");
}

TEST(File, ADefaultFileIsNotOpen) {
  File file;
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(rest(file), "");
  EXPECT_TRUE(file.failed());
}

TEST(File, FillAndSkipWithoutAFile) {
  File file;
  const File::Window window = file.fill();
  EXPECT_EQ(window.begin, nullptr);
  EXPECT_EQ(window.end, nullptr);
  file.skip(1);
  signed char c = 7;
  EXPECT_FALSE(file.read(c));
  EXPECT_EQ(c, 7);
}

TEST(File, NoPath) {
  EXPECT_FALSE(File::open(nullptr).isOpen());
}

TEST(File, NoSource) {
  File file(nullptr);
  EXPECT_FALSE(file.isOpen());
  EXPECT_EQ(rest(file), "");
}

TEST(File, CopiesShareOnePosition) {
  File one = memoryFile("abc");
  File other = one;
  signed char c = 0;
  EXPECT_TRUE(one.read(c));
  EXPECT_EQ(c, 'a');
  EXPECT_TRUE(other.read(c));
  EXPECT_EQ(c, 'b');
  EXPECT_EQ(rest(one), "c");
}

TEST(File, ASourceMayDeliverFewBytesAtATime) {
  for (const std::size_t most : {std::size_t{0}, std::size_t{1}, std::size_t{3}}) {
    File file = memoryFile(
        "\xEF\xBB\xBF"s
        "abcdefgh\0\xFF"s,
        most);
    EXPECT_EQ(rest(file),
              "\xEF\xBB\xBF"s
              "abcdefgh\0\xFF"s);
    EXPECT_FALSE(file.failed());
  }
}

class FailingSource final : public ByteSource {
 public:
  std::size_t read(char* to, std::size_t) override {
    if (delivered_) {
      failed_ = true;
      return 0;
    }
    delivered_ = true;
    *to = 'a';
    return 1;
  }
  String error() const override { return failed_ ? String("connection lost") : String(); }

 private:
  bool delivered_ = false;
  bool failed_ = false;
};

TEST(File, AFailedReadIsReported) {
  File file(new FailingSource);
  signed char c = 0;
  EXPECT_TRUE(file.read(c));
  EXPECT_FALSE(file.failed());
  EXPECT_FALSE(file.read(c));
  EXPECT_TRUE(file.failed());
  EXPECT_EQ(text(file.error()), "connection lost");
}

TEST(File, ASourceThatThrewIsCalledAgain) {
  File file(new vsa_tests::InterruptedSource("abc", 1));
  signed char c = 0;
  EXPECT_TRUE(file.read(c));
  EXPECT_THROW(file.read(c), std::runtime_error);
  EXPECT_EQ(c, 'a');
  EXPECT_FALSE(file.failed());
  EXPECT_EQ(rest(file), "bc");
  File filled(new vsa_tests::InterruptedSource("abc", 0));
  EXPECT_THROW(filled.fill(), std::runtime_error);
  const File::Window window = filled.fill();
  EXPECT_EQ(std::string(window.begin, window.end), "a");
}

TEST(File, SkippingMoreThanIsBufferedSkipsAllOfIt) {
  File file = memoryFile("abcdef", 4);
  file.skip(1);
  EXPECT_EQ(file.fill().begin[0], 'a');
  file.skip(100);
  EXPECT_EQ(rest(file), "ef");
  file.skip(1);
  EXPECT_EQ(rest(file), "");
}

TEST(File, FillAndSkip) {
  File file = memoryFile("abcdef", 4);
  File::Window window = file.fill();
  EXPECT_EQ(std::string(window.begin, window.end), "abcd");
  file.skip(3);
  window = file.fill();
  EXPECT_EQ(std::string(window.begin, window.end), "d");
  signed char c = 0;
  EXPECT_TRUE(file.read(c));
  EXPECT_EQ(c, 'd');
  EXPECT_EQ(rest(file), "ef");
  window = file.fill();
  EXPECT_EQ(window.begin, window.end);
}

}  // namespace
}  // namespace zn
