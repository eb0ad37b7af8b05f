// Tests of readNumberRun() and of all its kernels: uncommon numbers at the beginning, in the middle
// and at the end of a list, and lists next to inaccessible memory pages. The functions of
// number_text.h compute the expected values. As in the reader, one more byte follows each list in
// memory.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "tests/foundation/numbers/number_list_kernels_check.h"

namespace zn {
namespace {

using namespace number_list_tests;

const char* const LISTS[] = {
    "",
    " ",
    "  ",
    "   ",
    "1",
    "1 ",
    " 1",
    " 1 ",
    "1 2",
    "1 2 ",
    "1  2",
    "1 2  ",
    "1  2 ",
    "1 x 2",
    "1 2 x",
    "x",
    "-",
    "1 - 2",
    "1 -",
    "1 . 2",
    "1 .",
    "1 2.5 3",
    "1 -2 3",
    "1 +2 3",
    "1 2u 3",
    "1 2u",
    "1 1e2 3",
    "1 1e2",
    "1e",
    "1 2e 3",
    "1 2e+ 3",
    "1 2.5f 3",
    "1 inf 3",
    "1 -inf nan 3",
    "1 1.2.3 4",
    "1 1..2 4",
    "1 1-2 4",
    "1 --2 4",
    "1 1,2 4",
    "1 2\t 3",
    "1 \t2 3",
    "1 2\n",
    "1 2}",
    "1 0.5 .5 5. -.5 -0 -0.0 00",
    "127 128",
    "-128 -129",
    "255 256",
    "65535 65536",
    "-32768 -32769",
    "2147483647 2147483648",
    "-2147483648 -2147483649",
    "4294967295 4294967296",
    "1 -0 2",
    "9223372036854775807 9223372036854775808",
    "-9223372036854775808 -9223372036854775809",
    "18446744073709551615 18446744073709551616",
    "99999999999999999999 1",
    "000000000000000000000000000000000000000000000000000000000000000000000000000000007 8",
    "0000000000000007 00000000000000008 0000000000000000000000009 1",
    "1 123456789012345 1234567890123456 12345678901234567 123456789012345678 1234567890123456789 2",
    "1 0000000000000001.5 00000000000000123.25 0000000000100000.5 000000000012.000000034 2",
    "1 00000000000000012 -0000000000000001 0.00000000000000012 -000000000000.0000000001 2",
    "1 1e38 1e39 2",
    "1 -1e400 2",
    "1 1e-400 2",
    "3.4028235e38 3.4028236e38 1",
    "1e-05 1.5e-05 -1.5E+05 1e5 1e00000000000005 1e123456789 2",
    "1e22 1e23 1e-22 1e54 1e55 1e-55",
    "16777217 16777219 33554435 0.50000002980232238769531250 8388608.5 9007199254740993 1",
    "1\xFF 2",
    "1 \xB1 2",
    "1  123456789012345 2",
    "1  12345678.012345 2",
    "16777217 16777219 33554434 33554438 8388608.5 8388609.5 4194304.25 4194304.75",
    "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27"};

TEST(NumberList, UncommonLists) {
  forAllTypes([](auto type) {
    for (const std::string list : LISTS) {
      for (size_t capacity = 0; capacity < 6; ++capacity) checkList<decltype(type)>(list, capacity);
      // In a longer list, the main loop of the kernel converts the numbers. In a short list, only
      // the code for the last numbers does.
      const std::string more = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25";
      checkList<decltype(type)>(list + " " + more, 100);
      checkList<decltype(type)>(more + " " + list + " " + more, 100);
      checkList<decltype(type)>(more + " " + list, 100);
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

// Some kernels convert several numbers at once. They pass uncommon numbers to another kernel and
// continue after them. Such numbers are, for example, the smallest integer, a number with more
// characters than the kernel loads at once, and a value half-way between two floats. The double
// that is nearest to .53068408370018 is half-way, but the number itself is below it.
TEST(NumberList, AnUncommonFieldAmongPlainOnes) {
  forAllTypes([](auto type) {
    for (const std::string odd :
         {"-2147483648", "-128", "0000000000000007", "1234567890.1234567", "16777217",
          ".53068408370018", "1e2", "-7", "7.", "1.2.3", "-", ".", "x", ""}) {
      for (size_t position = 40; position < 48; ++position) {
        std::string list;
        for (size_t i = 0; i < 120; ++i) list += (i == position ? odd : "7") + " ";
        checkList<decltype(type)>(list + "8", 200);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

/// Returns a number of `length` characters. Its last digits are those of its index in the list, as
/// many as fit. The other digits are 1. In a real of at least three characters, a point replaces
/// the character in the middle.
template <class Number>
std::string numberedField(size_t position, size_t length) {
  std::string field(length, '1');
  for (size_t i = length; i-- > 0 && position > 0; position /= 10) {
    field[i] = static_cast<char>('0' + position % 10);
  }
  if (std::is_floating_point_v<Number> && length >= 3) field[length / 2] = '.';
  return field;
}

/// A kernel reads a chunk of characters and stores the offsets at which the numbers in the chunk
/// end. In these lists, a chunk has as many numbers as possible, or the offsets are as large as
/// possible. The output has room for all numbers, or for only some of them.
TEST(NumberList, ShortFieldsInALongList) {
  std::mt19937 random(20);
  forTypes<float, double, int, unsigned int, long long>([&](auto type) {
    for (size_t longest = 1; longest <= 9; ++longest) {
      std::string list;
      size_t count = 0;
      for (; list.size() < 6000; ++count) {
        list += numberedField<decltype(type)>(count, 1 + random() % longest) + " ";
      }
      for (const size_t capacity : {size_t{3}, size_t{66}, count / 2 - 1, count, count + 1}) {
        checkList<decltype(type)>(list + "1", capacity);
      }
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

/// All numbers of a list but the last are the same single character. They must be converted only if
/// that character is a digit.
TEST(NumberList, FieldsOfEveryCharacter) {
  forAllTypes([](auto type) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string list;
      for (int i = 0; i < 70; ++i) list += std::string(1, static_cast<char>(byte)) + " ";
      checkList<decltype(type)>(list + "1", 80);
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

/// The lists have long runs of blanks. Between two blanks is an empty number.
TEST(NumberList, ManyBlanks) {
  forAllTypes([](auto type) {
    const std::string blanks(3000, ' ');
    checkList<decltype(type)>(blanks, 9);
    checkList<decltype(type)>("1 2 3 4 5" + blanks, 9);
    checkList<decltype(type)>("1 2 3 4 5" + blanks + "6", 9);
  });
}

/// A memory page between two inaccessible pages.
class GuardedPages {
 public:
  GuardedPages()
      : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))),
        base_(static_cast<char*>(
            mmap(nullptr, 3 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    if (mprotect(base_ + page_, page_, PROT_READ | PROT_WRITE) != 0) std::abort();
  }
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;
  ~GuardedPages() { munmap(base_, 3 * page_); }

  /// Places `text` at the beginning of the page, directly after the first inaccessible page.
  char* atStart(const std::string& text) { return put(base_ + page_, text); }
  /// Places `text` at the end of the page, directly before the second inaccessible page.
  char* atEnd(const std::string& text) { return put(base_ + 2 * page_ - text.size(), text); }

 private:
  static char* put(char* at, const std::string& text) {
    std::memcpy(at, text.data(), text.size());
    return at;
  }

  size_t page_;
  char* base_;
};

/// Returns a small number of exactly `length` characters.
template <class Number>
std::string fieldOfLength(size_t length, bool withPoint) {
  std::string field(length, '0');
  field.back() = '7';
  if (std::is_floating_point_v<Number> && withPoint && length >= 3) field[length / 2] = '.';
  return field;
}

TEST(NumberList, NothingOutsideIsRead) {
  GuardedPages pages;
  forAllTypes([&](auto type) {
    using Number = decltype(type);
    for (size_t length = 1; length <= 70; ++length) {
      for (const std::string& before :
           {std::string(), std::string("1 "), std::string("12 -3 4 ")}) {
        const std::string list = before + fieldOfLength<Number>(length, length % 2 == 0);
        for (const ReadFunction<Number> run : runs<Number>()) {
          ASSERT_NO_FATAL_FAILURE(checkRun(run, pages.atEnd(list + "}"), list, 9));
          ASSERT_NO_FATAL_FAILURE(checkRun(run, pages.atStart(list + "}"), list, 9));
        }
      }
    }
    std::string list = "1";
    while (list.size() < 200) {
      for (const ReadFunction<Number> run : runs<Number>()) {
        ASSERT_NO_FATAL_FAILURE(checkRun(run, pages.atEnd(list + "}"), list, 200));
      }
      list += list.size() % 3 == 0 ? "2" : list.back() == ' ' ? "9" : " 1";
    }
  });
}

/// Checks each text of a file of tests/numbers, alone, inside a list, and before a long list. Texts
/// with a blank are skipped.
template <class Number>
void checkFile(const char* name) {
  std::ifstream file(std::filesystem::path(VSA_TEST_DIR) / "numbers" / name, std::ios::binary);
  ASSERT_TRUE(file.is_open()) << name;
  std::string line;
  while (std::getline(file, line)) {
    const std::string text = line.substr(0, line.rfind('\t'));
    if (text.find(' ') != std::string::npos) continue;
    checkList<Number>(text, 1);
    checkList<Number>("3 " + text + " 4", 3);
    checkList<Number>(text + " 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25", 30);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(NumberList, FilesOfNumbers) {
  for (const std::string end : {"_accept.txt", "_refuse.txt"}) {
    checkFile<float>(("float" + end).c_str());
    checkFile<double>(("double" + end).c_str());
    checkFile<signed char>(("int8" + end).c_str());
    checkFile<unsigned char>(("uint8" + end).c_str());
    checkFile<short>(("int16" + end).c_str());
    checkFile<unsigned short>(("uint16" + end).c_str());
    checkFile<int>(("int32" + end).c_str());
    checkFile<unsigned int>(("uint32" + end).c_str());
    checkFile<long long>(("int64" + end).c_str());
    checkFile<unsigned long long>(("uint64" + end).c_str());
  }
}

}  // namespace
}  // namespace zn
