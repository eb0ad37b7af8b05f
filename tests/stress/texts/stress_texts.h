// Families of nasty texts: each family is a way to make a text of any size that asks much of the
// reader for few bytes. What they must not bring about is in proportion.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vsa_tests {

struct NastyText {
  std::string text;
  /// What the buffers of the text hold, were all of them kept.
  std::uint64_t declaredBytes = 0;
};

struct Family {
  const char* name;
  /// A text of about `bytes` bytes.
  NastyText (*make)(std::size_t bytes);
};

/// All of them, grouped by what they are after.
std::vector<Family> families();

// The groups, a source file each.

std::vector<Family> lexicalFamilies();
std::vector<Family> statementFamilies();
std::vector<Family> inputFamilies();
std::vector<Family> linkFamilies();
std::vector<Family> valueFamilies();
std::vector<Family> bufferFamilies();
std::vector<Family> compressedFamilies();

// How texts are put together.

/// `head`, then `unit` again and again. Each "@" in the unit is the number of its turn, from 0.
NastyText flood(std::size_t bytes, const char* head, const char* unit, const char* tail = "");

/// `head`, then `count` times the character, then `tail`.
NastyText run(std::size_t count, const char* head, char character, const char* tail);

}  // namespace vsa_tests
