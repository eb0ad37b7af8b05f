// Stress texts: generators of texts of any size that make the reader do much work for few bytes.
// growth_bounds.cpp defines how much time and memory reading them may take.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vsa_tests {

struct GeneratedText {
  std::string text;
  /// The size in bytes of all buffers that the text declares.
  std::uint64_t declaredBytes = 0;
};

struct StressText {
  /// Calls of `generate(bytes, arguments...)` must return a GeneratedText of about `bytes` bytes.
  template <class Generate, class... Arguments>
  StressText(const char* title, Generate generate, Arguments... arguments)
      : name(title), make([=](std::size_t bytes) { return generate(bytes, arguments...); }) {}

  const char* name;
  std::function<GeneratedText(std::size_t bytes)> make;
  /// Whether each line is a separate text. All lines are read into one scene.
  bool isOneTextPerLine = false;
};

/// Returns all stress texts except those of manyTexts().
std::vector<StressText> stressTexts();

// Return the stress texts of one group each.

std::vector<StressText> lexicalTexts();
std::vector<StressText> statementTexts();
std::vector<StressText> inputTexts();
std::vector<StressText> linkTexts();
std::vector<StressText> valueTexts();
std::vector<StressText> bufferTexts();
std::vector<StressText> compressedTexts();

/// Returns stress texts of many short texts that are read into one scene.
std::vector<StressText> manyTexts();

/// Returns `head`, then `unit` repeated until the text has at least `bytes` bytes, then `tail`.
/// Each "@" in the unit is replaced by the number of the repetition, from 0.
GeneratedText repeatUnit(std::size_t bytes, std::string_view head, std::string_view unit,
                         std::string_view tail = "");

/// Returns `head`, then `character` repeated `count` times, then `tail`.
GeneratedText repeatCharacter(std::size_t count, std::string_view head, char character,
                              std::string_view tail);

}  // namespace vsa_tests
