// Characters to numbers against a second reader: the forms checked by hand, the value left to the C
// library. A list of them, through each kernel of readNumberRun, must give what its fields
// give, and stop where they stop.
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

/// The forms, spelled out: takes characters from the front of what is left.
class Form {
 public:
  explicit Form(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos) return;
    rest_ = text.substr(first, text.find_last_not_of(" \t\n\v\f\r") - first + 1);
  }

  bool isAtEnd() const { return rest_.empty(); }

  /// One of `set`, or NUL.
  char one(std::string_view set) {
    if (rest_.empty() || set.find(rest_[0]) == std::string_view::npos) return '\0';
    const char c = rest_[0];
    rest_.remove_prefix(1);
    return c;
  }

  std::string digits() {
    std::string taken;
    while (const char c = one("0123456789")) taken += c;
    return taken;
  }

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
  Form form(text);
  const bool negative = form.one("+-") == '-';
  const auto signedOut = [&](Real value) {
    out = std::copysign(value, negative ? Real(-1) : Real(1));
    return true;
  };
  if (form.isWord("inf")) return signedOut(std::numeric_limits<Real>::infinity());
  if (form.isWord("nan")) return signedOut(std::numeric_limits<Real>::quiet_NaN());
  const std::string whole = form.digits();
  std::string number = whole;
  std::string fraction;
  if (form.one(".") != '\0') fraction = form.digits();
  if (whole.empty() && fraction.empty()) return false;
  number = (whole.empty() ? "0" : whole) + '.' + fraction;
  if (form.one("eE") != '\0') {
    const char sign = form.one("+-");
    const std::string exponent = form.digits();
    if (exponent.empty()) return false;
    number += std::string("e") + (sign == '-' ? "-" : "") + exponent;
  }
  form.one("fF");
  if (!form.isAtEnd()) return false;
  Real value;
  fromC(number.c_str(), value);
  return std::isfinite(value) && signedOut(value);
}

/// Digits and a decimal exponent as digits alone; empty when they are more than any target holds.
std::string spelledOut(const std::string& digits, const std::string& exponent) {
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
  Form form(text);
  const char sign = form.one("+-");
  const std::string digits = form.digits();
  if (digits.empty()) return false;
  std::string exponent;
  if (form.one("eE") != '\0') {
    form.one("+");
    exponent = form.digits();
    if (exponent.empty()) return false;
  }
  form.one("u");
  const std::string all = spelledOut(digits, exponent);
  if (!form.isAtEnd() || all.empty()) return false;
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

/// Some bits that a refused text must leave alone.
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
    fail((isNumber ? "refused: " : "accepted: ") + vsa_tests::visible(text));
  }
  checkSame(bytesOf(expected), bytesOf(found), text);
}

/// The most numbers of a list that are looked at.
constexpr std::size_t ROOM = 40;

template <class Number>
struct Run {
  std::size_t next = 0;
  std::size_t count = 0;
  Number out[ROOM];

  Run() { std::memset(out, 0x5A, sizeof out); }
};

/// What a list of pieces must give, piece by piece.
template <class Number>
void plainRun(std::string_view list, std::size_t room, Run<Number>& run) {
  std::size_t before = 0;
  while (run.next != list.size() && run.count < room) {
    const std::size_t end = std::min(list.find(' ', run.next), list.size());
    if (!fromText(list.substr(run.next, end - run.next), run.out[run.count])) return;
    ++run.count;
    before = run.next;
    run.next = std::min(end + 1, list.size());
  }
  // Behind a blank at the end stands an empty piece, which no run may step over.
  const bool endsInBlank = !list.empty() && list.back() == ' ';
  if (run.count == 0 || run.next != list.size() || !endsInBlank) return;
  run.next = before;
  --run.count;
}

template <class Number>
void checkRun(zn::numbers::NumberKernel<Number> kernel, std::string_view list, std::size_t room,
              const char* about) {
  Run<Number> expected;
  plainRun(list, room, expected);
  // An array of the exact size, so that reading past the list's one further byte shows.
  const auto memory = std::make_unique<char[]>(list.size() + 1);
  std::memcpy(memory.get(), list.data(), list.size());
  memory[list.size()] = '}';
  const auto out = std::make_unique<Number[]>(room);
  const zn::NumberRun found = zn::numbers::readNumberRunWith(
      kernel, memory.get(), memory.get() + list.size(), out.get(), room);
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
  const std::size_t room = settings % 5 == 0 ? settings % 4 : ROOM;
  checkRun<Number>(zn::numbers::readFieldsPortably<Number>, text, room, "portable kernel");
#if VSA_HAS_SSE41_KERNEL
  if (zn::cpuHasSse41()) {
    checkRun<Number>(zn::numbers::readFieldsSse41<Number>, text, room, "SSE4.1 kernel");
  }
#endif
#if VSA_HAS_AVX2_KERNEL
  if constexpr (zn::numbers::HAS_AVX2_KERNEL<Number>) {
    if (zn::cpuHasAvx2()) {
      checkRun<Number>(zn::numbers::readFieldsAvx2<Number>, text, room, "AVX2 kernel");
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
  const WithSettings split = splitSettings(input);
  const std::string text =
      textIn("0123456789012345678901234567899000..--++eE  fFuinfanINFAN\t", split);
  CHECKS[split.settings / 2 % std::size(CHECKS)](text, split.settings / 2);
}

}  // namespace vsa_fuzz
