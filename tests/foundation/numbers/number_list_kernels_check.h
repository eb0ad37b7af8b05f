// checkList(): checks that all kernels of readNumberRun() give the expected result for a list. A
// kernel is an implementation for one set of processor instructions.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "foundation/base/cpu_features.h"
#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_list_kernels.h"
#include "foundation/numbers/number_text.h"

namespace zn::number_list_tests {

template <class Number>
using ReadFunction = NumberRun (*)(const char* from, const char* end, Number* out, size_t capacity);

template <class Number>
NumberRun readPortably(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsPortably<Number>, from, end, out,
                                            capacity);
}

#if defined(__x86_64__)
template <class Number>
NumberRun readBySse41(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsSse41<Number>, from, end, out,
                                            capacity);
}

template <class Number>
NumberRun readByAvx2(const char* from, const char* end, Number* out, size_t capacity) {
  return numbers::readNumberRunWith<Number>(numbers::readFieldsAvx2<Number>, from, end, out,
                                            capacity);
}
#endif

/// Returns all kernels that this processor can run, and readNumberRun(), which chooses one.
template <class Number>
std::vector<ReadFunction<Number>> runs() {
  std::vector<ReadFunction<Number>> all{readPortably<Number>, readNumberRun<Number>};
#if defined(__x86_64__)
  if (cpuHasSse41()) all.push_back(readBySse41<Number>);
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

inline std::vector<std::string> fieldsOf(const std::string& list) {
  std::vector<std::string> fields;
  for (size_t from = 0;;) {
    const size_t blank = list.find(' ', from);
    fields.push_back(list.substr(from, blank - from));
    if (blank == std::string::npos) return fields;
    from = blank + 1;
  }
}

/// The expected result for `list`. It is computed one number at a time with the functions of
/// number_text.h.
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

/// Checks each kernel. The memory block ends one byte after the list, so that a sanitizer detects a
/// read past that byte.
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

}  // namespace zn::number_list_tests
