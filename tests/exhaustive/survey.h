// Surveys of the number conversions. They have too many texts for a file, so each text is
// generated, read and compared bit for bit. Every text is read in both ways: as a scalar
// (realFromText) and as a field of a list (readNumberRun).
#pragma once

#include <cstdint>

namespace vsa_tests {

/// The result of a survey. Mismatches are also printed, up to a limit.
struct Survey {
  std::uint64_t texts = 0;
  std::uint64_t mismatches = 0;

  void add(const Survey& other) {
    texts += other.texts;
    mismatches += other.mismatches;
  }
};

/// Reads the floats whose bits are first, first + step, ... below `end` (2^32 at most). Each is
/// written in its shortest form and must be read as the same bits; a NaN as the quiet NaN of its
/// sign.
Survey surveyFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step);

/// The same for `count` doubles of random bits, reproducible by the seed.
Survey surveyDoubles(std::uint64_t count, std::uint64_t seed);

/// The floats as in `surveyFloats`, and `count` doubles of random bits, as the writer prints them:
/// the digits must be those of std::to_chars.
Survey surveyPrintedFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step);
Survey surveyPrintedDoubles(std::uint64_t count, std::uint64_t seed);

/// `count` decimal texts that are hard to round, read as double and as float and compared with
/// MPFR; reproducible by the seed.
Survey surveyHardDecimals(std::uint64_t count, std::uint64_t seed);

}  // namespace vsa_tests
