#include "tests/stress/texts/stress_texts.h"

namespace vsa_tests {

std::vector<StressText> stressTexts() {
  std::vector<StressText> all;
  for (const auto group : {lexicalTexts, statementTexts, inputTexts, linkTexts, valueTexts,
                           bufferTexts, compressedTexts}) {
    for (const StressText& text : group()) all.push_back(text);
  }
  return all;
}

GeneratedText repeatUnit(std::size_t bytes, std::string_view head, std::string_view unit,
                         std::string_view tail) {
  std::string text(head);
  text.reserve(bytes + unit.size() + tail.size() + 64);
  for (std::uint64_t repetition = 0; text.size() < bytes; ++repetition) {
    for (const char c : unit) {
      if (c == '@') {
        text += std::to_string(repetition);
      } else {
        text += c;
      }
    }
  }
  text += tail;
  return {text};
}

GeneratedText repeatCharacter(std::size_t count, std::string_view head, char character,
                              std::string_view tail) {
  std::string text(head);
  text.append(count, character).append(tail);
  return {text};
}

}  // namespace vsa_tests
