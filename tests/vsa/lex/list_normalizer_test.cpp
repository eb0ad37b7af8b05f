// Tests of the list normaliser and its kernels. A kernel is an implementation for one set of
// processor instructions. The kernels with vector instructions give the same result as the portable
// one, and do not write past the documented size of the output.
#include "vsa/lex/list_normalizer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "foundation/base/cpu_features.h"
#include "tests/support/text.h"

namespace zn::korvo_sdk::impl {
namespace {

using vsa_tests::visible;

using Normalizer = NormalizedList (*)(const char*, const char*, char*);

/// Returns all kernels that this processor supports, and normalizeList(), which chooses one.
std::vector<Normalizer> normalizers() {
  std::vector<Normalizer> all{normalizeListPortable, normalizeList};
#if defined(__x86_64__)
  if (cpuHasSse42()) all.push_back(normalizeListSse42);
  if (cpuHasAvx2()) all.push_back(normalizeListAvx2);
#endif
  return all;
}

/// Returns "output|unread input" for `text`. The output buffer has exactly the documented size.
std::string run(Normalizer copy, const std::string& text) {
  const std::vector<char> from(text.begin(), text.end());
  std::vector<char> to(text.size() + NORMALIZER_SLACK, '?');
  const NormalizedList copied = copy(from.data(), from.data() + from.size(), to.data());
  return std::string(to.data(), static_cast<std::size_t>(copied.to - to.data())) + '|' +
         std::string(copied.from, from.data() + from.size());
}

struct ListRow {
  const char* text;
  const char* run;
};

TEST(NormalizedList, Rows) {
  constexpr ListRow ROWS[] = {
      {"1", "1|"},
      {"1 2 3", "1 2 3|"},
      {"1,2,,3", "1 2 3|"},
      {"1 ,\n\t2", "1 2|"},
      {"1 ", "1| "},
      {"1, ", "1|, "},
      {"1 }", "1| }"},
      {"1}", "1|}"},
      {"1 (2)", "1| (2)"},
      {"-1.5e+3 inf NaN 2u 3U .5", "-1.5e+3 inf NaN 2u 3U .5|"},
      {"1\x01"
       "2",
       "1|\x01"
       "2"},
      {"1 x", "1| x"},
      {"12345678901234567890 1 2 3 4 5 6 7 8 9", "12345678901234567890 1 2 3 4 5 6 7 8 9|"},
      {"123456789012345  ,  67", "123456789012345 67|"},
      {"123456789012345;67", "123456789012345|;67"},
      {"1234567890123456                    }", "1234567890123456|                    }"},
  };
  for (const ListRow& row : ROWS) {
    for (const Normalizer copy : normalizers()) {
      EXPECT_EQ(visible(run(copy, row.text)), visible(row.run)) << row.text;
    }
  }
}

/// Expects that all kernels give the same result for `text`.
void expectAgreement(const std::string& text) {
  const std::string expected = run(normalizeListPortable, text);
  for (const Normalizer copy : normalizers())
    ASSERT_EQ(visible(run(copy, text)), visible(expected));
}

TEST(NormalizedList, EveryByteAtEveryPositionOfAStep) {
  const std::string digits(100, '7');
  for (int byte = 0; byte < 256; ++byte) {
    for (std::size_t at = 1; at < 66; ++at) {
      std::string text = digits;
      text[at] = static_cast<char>(byte);
      ASSERT_NO_FATAL_FAILURE(expectAgreement(text)) << byte << " at " << at;
    }
  }
}

// A run of 65 equal bytes is longer than the block that a kernel processes in one step.
TEST(NormalizedList, EverySingleByte) {
  for (int byte = 0; byte < 256; ++byte) {
    for (const char* const first : {"1", "b", "."}) {
      ASSERT_NO_FATAL_FAILURE(expectAgreement(first + std::string(65, static_cast<char>(byte))));
    }
  }
}

TEST(NormalizedList, LongRunsOfSeparators) {
  for (std::size_t count = 0; count < 70; ++count) {
    expectAgreement("1234567890123456" + std::string(count, ' ') + "7");
    expectAgreement("1" + std::string(count, ',') + "7");
    expectAgreement("1" + std::string(count, '\n') + "}");
  }
}

TEST(NormalizedList, AgreesOnRandomLists) {
  std::mt19937 random(11);
  const std::string alphabet = "0123456789012345678901234567890123456789,   -.\n";
  for (int round = 0; round < 5000; ++round) {
    std::string text = "1";
    const std::size_t length = random() % 160;
    for (std::size_t i = 0; i < length; ++i) text += alphabet[random() % alphabet.size()];
    if (round % 3 == 0) text += '}';
    expectAgreement(text);
  }
}

}  // namespace
}  // namespace zn::korvo_sdk::impl
