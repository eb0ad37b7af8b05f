// Runs surveys of the number conversions:
//
//   number_survey sample                      a part of each survey, for a few seconds
//   number_survey floats PART OF              all floats, split into OF parts: number PART, from 0
//   number_survey doubles COUNT SEED          random doubles
//   number_survey decimals COUNT SEED         hard decimal texts, compared with MPFR
//   number_survey printed PART OF             the floats of that part, as the writer prints them
//   number_survey printed-doubles COUNT SEED  random doubles, as the writer prints them
//
// Prints one line for each survey. The exit status is 1 if a survey found a mismatch, and 2 if the
// arguments are wrong.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

#include "tests/exhaustive/survey.h"

namespace vsa_tests {

namespace {

constexpr std::uint64_t FLOAT_COUNT = std::uint64_t{1} << 32;

/// Prints the line of a survey and returns the exit status: 1 if there are mismatches.
int report(const char* what, const Survey& survey) {
  std::printf("%-15s %12llu texts, %llu mismatches\n", what,
              static_cast<unsigned long long>(survey.texts),
              static_cast<unsigned long long>(survey.mismatches));
  return survey.mismatches == 0 ? 0 : 1;
}

int decimals(std::uint64_t count, std::uint64_t seed) {
  return report("decimals", surveyHardDecimals(count, seed));
}

int sample() {
  constexpr std::uint64_t STEP = 8209;  // an odd step, so that the low bits vary, too
  return std::max({report("floats", surveyFloats(0, FLOAT_COUNT, STEP)),
                   report("doubles", surveyDoubles(500'000, 1)), decimals(20'000, 1),
                   report("printed", surveyPrintedFloats(0, FLOAT_COUNT, STEP)),
                   report("printed-doubles", surveyPrintedDoubles(500'000, 1))});
}

std::vector<std::uint64_t> numbersOf(int count, char** texts) {
  std::vector<std::uint64_t> numbers;
  for (int i = 0; i < count; ++i) {
    std::uint64_t number = 0;
    const char* const end = texts[i] + std::strlen(texts[i]);
    if (std::from_chars(texts[i], end, number).ptr == end) numbers.push_back(number);
  }
  return numbers;
}

int run(std::string_view what, const std::vector<std::uint64_t>& numbers) {
  if (what == "sample" && numbers.empty()) return sample();
  if (numbers.size() == 2) {
    const std::uint64_t first = numbers[0], second = numbers[1];
    if (what == "floats" && first < second) {
      return report("floats", surveyFloats(FLOAT_COUNT * first / second,
                                           FLOAT_COUNT * (first + 1) / second, 1));
    }
    if (what == "printed" && first < second) {
      return report("printed", surveyPrintedFloats(FLOAT_COUNT * first / second,
                                                   FLOAT_COUNT * (first + 1) / second, 1));
    }
    if (what == "printed-doubles") {
      return report("printed-doubles", surveyPrintedDoubles(first, second));
    }
    if (what == "doubles") return report("doubles", surveyDoubles(first, second));
    if (what == "decimals") return decimals(first, second);
  }
  std::fputs(
      "number_survey sample | floats PART OF | doubles COUNT SEED | decimals COUNT SEED | "
      "printed PART OF | printed-doubles COUNT SEED\n",
      stderr);
  return 2;
}

}  // namespace

}  // namespace vsa_tests

int main(int count, char** arguments) {
  if (count < 2) return vsa_tests::run("", {});
  return vsa_tests::run(arguments[1], vsa_tests::numbersOf(count - 2, arguments + 2));
}
