// Compares number conversion with a second implementation. The second implementation checks the
// syntax itself and converts with the C library. For lists, readNumberRun has several kernels:
// functions that do the same with different instructions of the processor. All of them must give
// the same numbers for a list and stop at the same field.
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "foundation/base/cpu_features.h"
#include "foundation/numbers/number_list.h"
#include "foundation/numbers/number_list_kernels.h"
#include "foundation/numbers/number_text.h"
#include "fuzz/support/check.h"
#include "fuzz/targets.h"

namespace vsa_fuzz {

namespace {

/// A cursor in the text of a number. Skips the white space around the number.
class Cursor {
 public:
  explicit Cursor(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos) return;
    rest_ = text.substr(first, text.find_last_not_of(" \t\n\v\f\r") - first + 1);
  }

  bool isAtEnd() const { return rest_.empty(); }

  /// Consumes the next character and returns it if it is in `set`. Otherwise consumes nothing and
  /// returns NUL.
  char consumeOneOf(std::string_view set) {
    if (rest_.empty() || set.find(rest_[0]) == std::string_view::npos) return '\0';
    const char c = rest_[0];
    rest_.remove_prefix(1);
    return c;
  }

  /// Consumes all digits and returns them.
  std::string consumeDigits() {
    std::string digits;
    while (const char c = consumeOneOf("0123456789")) digits += c;
    return digits;
  }

  /// Whether the rest of the text is the word `lower` in any letter case.
  bool isWord(const char* lower) const {
    if (rest_.size() != std::strlen(lower)) return false;
    for (std::size_t i = 0; i < rest_.size(); ++i) {
      if (rest_[i] != lower[i] && rest_[i] != lower[i] - 32) return false;
    }
    return true;
  }

 private:
  std::string_view rest_;
};

void fromC(const char* text, double& out) {
  out = std::strtod(text, nullptr);
}
void fromC(const char* text, float& out) {
  out = std::strtof(text, nullptr);
}

template <class Real>
bool plainReal(std::string_view text, Real& out) {
  Cursor cursor(text);
  const bool negative = cursor.consumeOneOf("+-") == '-';
  const auto signedOut = [&](Real value) {
    out = std::copysign(value, negative ? Real(-1) : Real(1));
    return true;
  };
  if (cursor.isWord("inf")) return signedOut(std::numeric_limits<Real>::infinity());
  if (cursor.isWord("nan")) return signedOut(std::numeric_limits<Real>::quiet_NaN());
  const std::string whole = cursor.consumeDigits();
  std::string number = whole;
  std::string fraction;
  if (cursor.consumeOneOf(".") != '\0') fraction = cursor.consumeDigits();
  if (whole.empty() && fraction.empty()) return false;
  number = (whole.empty() ? "0" : whole) + '.' + fraction;
  if (cursor.consumeOneOf("eE") != '\0') {
    const char sign = cursor.consumeOneOf("+-");
    const std::string exponent = cursor.consumeDigits();
    if (exponent.empty()) return false;
    number += std::string("e") + (sign == '-' ? "-" : "") + exponent;
  }
  cursor.consumeOneOf("fF");
  if (!cursor.isAtEnd()) return false;
  Real value;
  fromC(number.c_str(), value);
  return std::isfinite(value) && signedOut(value);
}

/// Returns `digits` followed by `exponent` zeros. Leading zeros are removed. Returns "0" if all
/// digits are zeros. Otherwise returns an empty text if the exponent is greater than 99, because
/// the number then exceeds every integer type.
std::string withoutExponent(const std::string& digits, const std::string& exponent) {
  const std::size_t first = digits.find_first_not_of('0');
  if (first == std::string::npos) return "0";
  const std::size_t firstOfExponent = exponent.find_first_not_of('0');
  const std::string zeros =
      firstOfExponent == std::string::npos ? "" : exponent.substr(firstOfExponent);
  if (zeros.size() > 2) return "";
  const int count = zeros.empty() ? 0 : std::atoi(zeros.c_str());
  return digits.substr(first) + std::string(static_cast<std::size_t>(count), '0');
}

template <class Integer>
bool plainInteger(std::string_view text, Integer& out) {
  Cursor cursor(text);
  const char sign = cursor.consumeOneOf("+-");
  const std::string digits = cursor.consumeDigits();
  if (digits.empty()) return false;
  std::string exponent;
  if (cursor.consumeOneOf("eE") != '\0') {
    cursor.consumeOneOf("+");
    exponent = cursor.consumeDigits();
    if (exponent.empty()) return false;
  }
  cursor.consumeOneOf("u");
  const std::string all = withoutExponent(digits, exponent);
  if (!cursor.isAtEnd() || all.empty()) return false;
  errno = 0;
  if constexpr (std::is_unsigned_v<Integer>) {
    const unsigned long long value = std::strtoull(all.c_str(), nullptr, 10);
    if (sign == '-' || errno == ERANGE || value > std::numeric_limits<Integer>::max()) return false;
    out = static_cast<Integer>(value);
  } else {
    const long long value = std::strtoll(((sign == '-' ? "-" : "") + all).c_str(), nullptr, 10);
    if (errno == ERANGE || value > std::numeric_limits<Integer>::max() ||
        value < std::numeric_limits<Integer>::min()) {
      return false;
    }
    out = static_cast<Integer>(value);
  }
  return true;
}

template <class Number>
bool plainNumber(std::string_view text, Number& out) {
  if constexpr (std::is_floating_point_v<Number>) {
    return plainReal(text, out);
  } else {
    return plainInteger(text, out);
  }
}

template <class Number>
bool fromText(std::string_view text, Number& out) {
  const char* const first = text.data();
  if constexpr (std::is_floating_point_v<Number>) {
    return zn::realFromText(first, first + text.size(), out);
  } else {
    return zn::integerFromText(first, first + text.size(), out);
  }
}

template <class Number>
std::string bytesOf(const Number& number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

/// Returns the initial value of a variable. The conversion of an invalid text must not change the
/// variable.
template <class Number>
Number untouched() {
  Number number;
  std::memset(&number, 0x5A, sizeof number);
  return number;
}

template <class Number>
void checkOne(const std::string& text) {
  Number expected = untouched<Number>();
  Number found = untouched<Number>();
  const bool isNumber = plainNumber(text, expected);
  if (!isNumber) expected = untouched<Number>();
  if (fromText<Number>(text, found) != isNumber) {
    fail((isNumber ? "rejected: " : "accepted: ") + vsa_tests::visible(text));
  }
  checkSame(bytesOf(expected), bytesOf(found), text);
}

/// The maximum number of values that are read from a list.
constexpr std::size_t MAX_NUMBERS = 40;

/// The result of reading a list: the offset of the first field that was not read, and the numbers
/// before it.
template <class Number>
struct Run {
  std::size_t next = 0;
  std::size_t count = 0;
  Number out[MAX_NUMBERS];

  Run() { std::memset(out, 0x5A, sizeof out); }
};

/// Converts a list field by field with the function for single numbers.
template <class Number>
void plainRun(std::string_view list, std::size_t capacity, Run<Number>& run) {
  std::size_t before = 0;
  while (run.next != list.size() && run.count < capacity) {
    const std::size_t end = std::min(list.find(' ', run.next), list.size());
    if (!fromText(list.substr(run.next, end - run.next), run.out[run.count])) return;
    ++run.count;
    before = run.next;
    run.next = std::min(end + 1, list.size());
  }
  // If the list ends in a blank, an empty field follows. readNumberRun must not skip this field.
  const bool endsInBlank = !list.empty() && list.back() == ' ';
  if (run.count == 0 || run.next != list.size() || !endsInBlank) return;
  run.next = before;
  --run.count;
}

template <class Number>
void checkRun(zn::numbers::NumberKernel<Number> kernel, std::string_view list, std::size_t capacity,
              const char* about) {
  Run<Number> expected;
  plainRun(list, capacity, expected);
  // The memory ends directly after the list and the one byte that may be read after it. The
  // sanitizer therefore reports every access behind that byte.
  const auto memory = std::make_unique<char[]>(list.size() + 1);
  std::memcpy(memory.get(), list.data(), list.size());
  memory[list.size()] = '}';
  const auto out = std::make_unique<Number[]>(capacity);
  const zn::NumberRun found = zn::numbers::readNumberRunWith(
      kernel, memory.get(), memory.get() + list.size(), out.get(), capacity);
  const auto next = static_cast<std::size_t>(found.next - memory.get());
  if (next != expected.next || found.count != expected.count) {
    fail(std::string(about) + ": stopped at " + std::to_string(next) + " after " +
         std::to_string(found.count) + ", not at " + std::to_string(expected.next) + " after " +
         std::to_string(expected.count) + ": " + vsa_tests::visible(list));
  }
  const std::size_t bytes = found.count * sizeof(Number);
  checkSame({reinterpret_cast<const char*>(expected.out), bytes},
            {reinterpret_cast<const char*>(out.get()), bytes}, about);
}

template <class Number>
void checkType(const std::string& text, unsigned settings) {
  checkOne<Number>(text);
  const std::size_t capacity = settings % 5 == 0 ? settings % 4 : MAX_NUMBERS;
  checkRun<Number>(zn::numbers::readFieldsPortably<Number>, text, capacity, "portable kernel");
#if defined(__x86_64__)
  if (zn::cpuHasSse41()) {
    checkRun<Number>(zn::numbers::readFieldsSse41<Number>, text, capacity, "SSE4.1 kernel");
  }
  if constexpr (zn::numbers::HAS_AVX2_KERNEL<Number>) {
    if (zn::cpuHasAvx2()) {
      checkRun<Number>(zn::numbers::readFieldsAvx2<Number>, text, capacity, "AVX2 kernel");
    }
  }
#endif
}

}  // namespace

void numbers(std::string_view input) {
  static constexpr void (*CHECKS[])(const std::string&, unsigned) = {
      checkType<double>,   checkType<float>,         checkType<signed char>,
      checkType<short>,    checkType<int>,           checkType<long long>,
      checkType<double>,   checkType<unsigned char>, checkType<unsigned short>,
      checkType<unsigned>, checkType<float>,         checkType<unsigned long long>,
  };
  const InputWithSettings split = splitSettings(input);
  const std::string text =
      mapToAlphabet("0123456789012345678901234567899000..--++eE  fFuinfanINFAN\t", split);
  CHECKS[split.settings / 2 % std::size(CHECKS)](text, split.settings / 2);
}

}  // namespace vsa_fuzz
