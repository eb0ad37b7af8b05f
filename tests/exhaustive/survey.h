// Surveys of the number conversions: so many texts that no list of them could be kept, each
// written, read back and compared bit for bit. Every text is read on both roads, as a scalar
// (realFromText) and as a piece of a list (readNumberRun).
#pragma once

#include <cstdint>

namespace vsa_tests {

/// What a survey found. Each mismatch is also printed, up to a limit.
struct Survey {
  std::uint64_t texts = 0;
  std::uint64_t mismatches = 0;

  void add(const Survey& other) {
    texts += other.texts;
    mismatches += other.mismatches;
  }
};

/// The floats whose bits are first, first + step, ..., below `end` (2^32 at most): each written in
/// its shortest form must read back as the same bits; one that is no number as the one NaN of its
/// sign.
Survey surveyFloats(std::uint64_t first, std::uint64_t end, std::uint64_t step);

/// `count` doubles of random bits, the same for the same seed, held to the same.
Survey surveyDoubles(std::uint64_t count, std::uint64_t seed);

/// `count` decimal texts that are hard to round, read as double and as float, against MPFR. The
/// same for the same seed. Without MPFR at build time it surveys nothing.
Survey surveyHardDecimals(std::uint64_t count, std::uint64_t seed);

}  // namespace vsa_tests
