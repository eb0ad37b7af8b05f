// readNumberRun and all of its kernels, compared with strtod and number_text, at every edge of a
// list and next to guard pages. As in the reader, one more byte follows a list in memory.

#include "foundation/numbers/number_list.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "foundation/base/cpu_features.h"
#include "foundation/numbers/number_list_kernels.h"
#include "foundation/numbers/number_text.h"

namespace zn {
namespace {

template <class Number>
using ReadFunction = NumberRun (*)(const char* from, const char* end, Number* out, size_t capacity);

template <class Number>
NumberRun readPortably(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsPortably<Number>, from, end, out,
                                            capacity);
}

#if VSA_HAS_SSE41_KERNEL
template <class Number>
NumberRun readBySse41(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsSse41<Number>, from, end, out,
                                            capacity);
}
#endif

#if VSA_HAS_AVX2_KERNEL
template <class Number>
NumberRun readByAvx2(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsAvx2<Number>, from, end, out,
                                            capacity);
}
#endif

/// Every kernel that this processor runs, and the one that is chosen.
template <class Number>
std::vector<ReadFunction<Number>> runs() {
  std::vector<ReadFunction<Number>> all{readPortably<Number>, readNumberRun<Number>};
#if VSA_HAS_SSE41_KERNEL
  if (cpuHasSse41()) all.push_back(readBySse41<Number>);
#endif
#if VSA_HAS_AVX2_KERNEL
  if constexpr (numbers::HAS_AVX2_KERNEL<Number>) {
    if (cpuHasAvx2()) all.push_back(readByAvx2<Number>);
  }
#endif
  return all;
}

template <class Number>
bool fromText(const std::string& text, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return realFromText(text.data(), text.data() + text.size(), out);
  } else {
    return integerFromText(text.data(), text.data() + text.size(), out);
  }
}

template <class Number>
bool isSame(Number a, Number b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || (a != a && b != b);
}

std::vector<std::string> fieldsOf(const std::string& list) {
  std::vector<std::string> fields;
  for (size_t from = 0;;) {
    const size_t blank = list.find(' ', from);
    fields.push_back(list.substr(from, blank - from));
    if (blank == std::string::npos) return fields;
    from = blank + 1;
  }
}

/// The expected result for `list`, by number_text alone.
template <class Number>
struct Expected {
  std::vector<Number> numbers;
  size_t next = 0;

  Expected(const std::string& list, size_t capacity) {
    if (list.empty()) return;
    const std::vector<std::string> fields = fieldsOf(list);
    const bool endsInBlank = fields.back().empty();
    for (size_t i = 0; i < fields.size() && numbers.size() < capacity; ++i) {
      Number number;
      if (!fromText(fields[i], number) || (endsInBlank && i + 2 == fields.size())) return;
      numbers.push_back(number);
      next = std::min(next + fields[i].size() + 1, list.size());
    }
  }
};

template <class Number>
void checkRun(ReadFunction<Number> run, const char* text, const std::string& list,
              size_t capacity) {
  const Expected<Number> expected(list, capacity);
  const auto out = std::make_unique<Number[]>(capacity + 1);
  out[capacity] = 77;
  const NumberRun got = run(text, text + list.size(), out.get(), capacity);
  ASSERT_EQ(got.count, expected.numbers.size()) << '"' << list << "\" capacity " << capacity;
  ASSERT_EQ(got.next, text + expected.next) << '"' << list << "\" capacity " << capacity;
  ASSERT_EQ(out[capacity], Number{77});
  for (size_t i = 0; i < got.count; ++i) {
    ASSERT_TRUE(isSame(out[i], expected.numbers[i])) << '"' << list << "\" at " << i;
  }
}

/// Each kernel, from a heap block that ends one byte after the list.
template <class Number>
void checkList(const std::string& list, size_t capacity) {
  const auto text = std::make_unique<char[]>(list.size() + 1);
  std::memcpy(text.get(), list.data(), list.size());
  text[list.size()] = '}';
  for (const ReadFunction<Number> run : runs<Number>()) {
    ASSERT_NO_FATAL_FAILURE(checkRun(run, text.get(), list, capacity));
  }
}

template <class... Numbers, class Check>
void forTypes(Check check) {
  (check(Numbers{}), ...);
}

template <class Check>
void forAllTypes(Check check) {
  forTypes<float, double, signed char, unsigned char, short, unsigned short, int, unsigned int,
           long long, unsigned long long>(check);
}

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
    "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27"};

TEST(NumberList, UncommonLists) {
  forAllTypes([](auto type) {
    for (const std::string list : LISTS) {
      for (size_t capacity = 0; capacity < 6; ++capacity) checkList<decltype(type)>(list, capacity);
      // In a longer list every field also passes through the kernel's loop, not only the tail.
      const std::string more = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25";
      checkList<decltype(type)>(list + " " + more, 100);
      checkList<decltype(type)>(more + " " + list + " " + more, 100);
      checkList<decltype(type)>(more + " " + list, 100);
      if (testing::Test::HasFatalFailure()) return;
    }
  });
}

// The kernels that convert several fields at once leave some fields to another kernel and continue
// after them: the smallest integer, more characters than one load, a value half-way between two
// floats.
TEST(NumberList, AnUncommonFieldAmongPlainOnes) {
  forAllTypes([](auto type) {
    for (const std::string odd : {"-2147483648", "-128", "0000000000000007", "1234567890.1234567",
                                  "16777217", "1e2", "-7", "7.", "1.2.3", "-", ".", "x", ""}) {
      for (size_t position = 40; position < 48; ++position) {
        std::string list;
        for (size_t i = 0; i < 120; ++i) list += (i == position ? odd : "7") + " ";
        checkList<decltype(type)>(list + "8", 200);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

/// A field of `length` characters with the digits of its index in the list.
template <class Number>
std::string numberedField(size_t position, size_t length) {
  std::string field(length, '1');
  for (size_t i = length; i-- > 0 && position > 0; position /= 10) {
    field[i] = static_cast<char>('0' + position % 10);
  }
  if (std::is_floating_point_v<Number> && length >= 3) field[length / 2] = '.';
  return field;
}

/// A kernel reads a chunk of characters and stores the ends of its fields. The lists have the
/// maximum number of fields in a chunk and the largest offsets, with enough capacity and with too
/// little.
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

/// A group of equal fields with a character that is not a digit must not be converted.
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

/// Every character ends a field, and all fields are empty.
TEST(NumberList, ManyBlanks) {
  forAllTypes([](auto type) {
    const std::string blanks(3000, ' ');
    checkList<decltype(type)>(blanks, 9);
    checkList<decltype(type)>("1 2 3 4 5" + blanks, 9);
    checkList<decltype(type)>("1 2 3 4 5" + blanks + "6", 9);
  });
}

/// A page between two inaccessible ones.
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

  /// Places `text` directly after the first inaccessible page.
  char* atStart(const std::string& text) { return put(base_ + page_, text); }
  /// Places `text` directly before the second inaccessible page.
  char* atEnd(const std::string& text) { return put(base_ + 2 * page_ - text.size(), text); }

 private:
  static char* put(char* at, const std::string& text) {
    std::memcpy(at, text.data(), text.size());
    return at;
  }

  size_t page_;
  char* base_;
};

/// A small number as a field of exactly `length` characters.
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

/// The files of tests/numbers, as lists.
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

/// Random texts of all kinds that exporters write or that are hard to round. Seeded, so failures
/// are reproducible.
class RandomTexts {
 public:
  explicit RandomTexts(uint64_t seed) : random_(seed) {}

  std::string real() {
    switch (random_() % 10) {
      case 0:
        return printed('f', upTo(10), uniform() * 1000);
      case 1:
        return printed('g', 1 + upTo(17), uniform() * std::pow(10.0, upTo(12) - 6));
      case 2:
        return printed('e', upTo(18), uniform() * std::pow(10.0, upTo(70) - 40));
      case 3:
        return printed('g', 9, static_cast<double>(anyFloat()));
      case 4:
        return printed('g', 17, anyDouble());
      case 5:
        return halfWay();
      case 6:
        return digits(1 + upTo(20)) + "." + digits(upTo(20));
      case 7:
        return "0." + std::string(static_cast<size_t>(upTo(12)), '0') + digits(1 + upTo(19));
      case 8:
        return nearPower();
      default:
        return sign() + digits(1 + upTo(9)) + "." + digits(upTo(7));
    }
  }

  std::string integer() {
    const uint64_t bits = random_() >> (random_() % 64);
    switch (random_() % 4) {
      case 0:
        return sign() + std::to_string(bits);
      case 1:
        return std::to_string(static_cast<int64_t>(bits));
      case 2:
        return sign() + digits(1 + upTo(21));
      default:
        return sign() + std::to_string(bits % 100000);
    }
  }

 private:
  int upTo(int last) { return static_cast<int>(random_() % static_cast<uint64_t>(last + 1)); }
  std::string sign() { return random_() % 2 != 0 ? "-" : ""; }
  double uniform() { return static_cast<double>(random_() >> 11) * 0x1p-52 - 1; }

  std::string digits(int count) {
    std::string text;
    while (count-- > 0) text += static_cast<char>('0' + upTo(9));
    return text;
  }

  /// As printf writes %f, %e or %g.
  static std::string printed(char kind, int digits, double value) {
    char text[512];
    std::snprintf(text, sizeof text,
                  kind == 'f'   ? "%.*f"
                  : kind == 'e' ? "%.*e"
                                : "%.*g",
                  digits, value);
    return text;
  }

  float anyFloat() {
    const auto bits = static_cast<uint32_t>(random_());
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : 1.5F;
  }

  double anyDouble() {
    const uint64_t bits = random_();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : 1.5;
  }

  /// Odd numbers of 25 and 54 bits over small powers of two, exact or with another last digit.
  std::string halfWay() {
    const int bits = random_() % 2 != 0 ? 25 : 54;
    const uint64_t odd = (random_() >> (64 - bits)) | 1 | (uint64_t{1} << (bits - 1));
    char text[128];
    std::snprintf(text, sizeof text, "%.*Lf", upTo(22),
                  std::ldexp(static_cast<long double>(odd), -upTo(20)));
    std::string result = sign() + text;
    if (random_() % 3 == 0) result.back() = static_cast<char>('0' + upTo(9));
    return result;
  }

  /// 2^24, 2^53, powers of ten and the type's limits, slightly more or less.
  std::string nearPower() {
    const uint64_t centres[] = {uint64_t{1} << 24, uint64_t{1} << 53, uint64_t{1} << 63,
                                1000000000000000,  10000000000000000, 1000000000000000000};
    const uint64_t number = centres[random_() % 6] + random_() % 9 - 4;
    std::string text = std::to_string(number);
    if (random_() % 2 != 0)
      text.insert(static_cast<size_t>(upTo(static_cast<int>(text.size()))), ".");
    if (random_() % 4 == 0) text += "e" + std::to_string(upTo(60) - 30);
    return sign() + text;
  }

  std::mt19937_64 random_;
};

/// The value by the C library; false where it is out of range.
bool reference(const std::string& text, float& out) {
  out = std::strtof(text.c_str(), nullptr);
  return std::isfinite(out);
}

bool reference(const std::string& text, double& out) {
  out = std::strtod(text.c_str(), nullptr);
  return std::isfinite(out);
}

template <class Integer>
bool reference(const std::string& text, Integer& out) {
  if (std::is_unsigned_v<Integer> && text[0] == '-') return false;
  uint64_t magnitude = 0;
  for (const char c : text) {
    if (c == '-') continue;
    const auto digit = static_cast<uint64_t>(c - '0');
    if (magnitude > (std::numeric_limits<uint64_t>::max() - digit) / 10) return false;
    magnitude = magnitude * 10 + digit;
  }
  const auto max = static_cast<uint64_t>(std::numeric_limits<Integer>::max());
  if (magnitude > max + (text[0] == '-' ? 1 : 0)) return false;
  out = static_cast<Integer>(text[0] == '-' ? ~magnitude + 1 : magnitude);
  return true;
}

/// A list of random texts, and their values.
template <class Number>
struct RandomList {
  struct Field {
    size_t start;
    bool isNumber;
    Number value;
  };
  std::string text;
  std::vector<Field> fields;

  RandomList(RandomTexts& texts, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const std::string field = std::is_floating_point_v<Number> ? texts.real() : texts.integer();
      if (i != 0) text += ' ';
      Field row{text.size(), false, 0};
      row.isNumber = reference(field, row.value);
      fields.push_back(row);
      text += field;
    }
  }
};

/// Reads the list in runs, skips refused fields, and compares every value.
template <class Number>
void checkRandomList(ReadFunction<Number> run, const RandomList<Number>& list) {
  const char* const end = list.text.data() + list.text.size();
  std::vector<Number> out(list.fields.size());
  size_t field = 0;
  while (field < list.fields.size()) {
    const char* const from = list.text.data() + list.fields[field].start;
    const NumberRun got = run(from, end, out.data() + field, out.size() - field);
    for (const size_t last = field + got.count; field < last; ++field) {
      const auto& row = list.fields[field];
      ASSERT_TRUE(row.isNumber && isSame(out[field], row.value))
          << list.text.substr(row.start, 60) << " gives " << +out[field];
    }
    if (field == list.fields.size()) {
      ASSERT_EQ(got.next, end);
      return;
    }
    const auto& row = list.fields[field];
    ASSERT_EQ(got.next, list.text.data() + row.start);
    ASSERT_FALSE(row.isNumber) << list.text.substr(row.start, 60);
    ++field;
  }
}

template <class Number>
void checkRandomLists(uint64_t seed, int lists) {
  RandomTexts texts(seed);
  for (int i = 0; i < lists; ++i) {
    const RandomList<Number> list(texts, 50);
    for (const ReadFunction<Number> run : runs<Number>()) {
      ASSERT_NO_FATAL_FAILURE(checkRandomList(run, list));
    }
  }
}

/// VSA_NUMBER_ROUNDS=100 makes the search a hundred times as long.
int rounds() {
  const char* const text = std::getenv("VSA_NUMBER_ROUNDS");
  return text == nullptr ? 1 : std::max(1, std::atoi(text));
}

TEST(NumberList, RandomReals) {
  for (int round = 0; round < rounds(); ++round) {
    const auto seed = static_cast<uint64_t>(round);
    checkRandomLists<float>(1000 + seed, 10000);
    checkRandomLists<double>(500000 + seed, 10000);
    if (HasFatalFailure()) return;
  }
}

TEST(NumberList, RandomIntegers) {
  for (int round = 0; round < rounds(); ++round) {
    uint64_t seed = 900000 + static_cast<uint64_t>(round);
    forTypes<signed char, unsigned char, short, unsigned short, int, unsigned int, long long,
             unsigned long long>(
        [&](auto type) { checkRandomLists<decltype(type)>(seed += 1000000, 1500); });
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace zn
