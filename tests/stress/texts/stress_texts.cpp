#include "tests/stress/texts/stress_texts.h"

#include <cstring>

namespace vsa_tests {

std::vector<Family> families() {
  std::vector<Family> all;
  for (const auto group : {lexicalFamilies, statementFamilies, inputFamilies, linkFamilies,
                           valueFamilies, bufferFamilies, compressedFamilies}) {
    for (const Family& family : group()) all.push_back(family);
  }
  return all;
}

NastyText flood(std::size_t bytes, const char* head, const char* unit, const char* tail) {
  std::string text = head;
  text.reserve(bytes + std::strlen(unit) + 64);
  for (std::uint64_t turn = 0; text.size() < bytes; ++turn) {
    for (const char* at = unit; *at != '\0'; ++at) {
      if (*at == '@') {
        text += std::to_string(turn);
      } else {
        text += *at;
      }
    }
  }
  return {text + tail};
}

NastyText run(std::size_t count, const char* head, char character, const char* tail) {
  return {head + std::string(count, character) + tail};
}

}  // namespace vsa_tests
