// Stress texts: generators of texts of any size that demand much of the reader for few bytes.
// growth_bounds.cpp defines what reading them may cost.
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
  /// The memory of all buffers that the text declares.
  std::uint64_t declaredBytes = 0;
};

struct StressText {
  /// `generate(bytes, arguments...)` returns a GeneratedText of about `bytes` bytes.
  template <class Generate, class... Arguments>
  StressText(const char* title, Generate generate, Arguments... arguments)
      : name(title), make([=](std::size_t bytes) { return generate(bytes, arguments...); }) {}

  const char* name;
  std::function<GeneratedText(std::size_t bytes)> make;
  /// Each line is a text of its own. All are read into one scene.
  bool isOneTextPerLine = false;
};

/// All stress texts.
std::vector<StressText> stressTexts();

// The groups, each in its own part of a source file.

std::vector<StressText> lexicalTexts();
std::vector<StressText> statementTexts();
std::vector<StressText> inputTexts();
std::vector<StressText> linkTexts();
std::vector<StressText> valueTexts();
std::vector<StressText> bufferTexts();
std::vector<StressText> compressedTexts();

/// Many short texts that are read into one scene.
std::vector<StressText> manyTexts();

/// `head`, then `unit` repeated up to a text of `bytes` bytes, then `tail`. Each "@" in the unit
/// becomes the number of its repetition, from 0.
GeneratedText repeatUnit(std::size_t bytes, std::string_view head, std::string_view unit,
                         std::string_view tail = "");

/// `head`, then `character` `count` times, then `tail`.
GeneratedText repeatCharacter(std::size_t count, std::string_view head, char character,
                              std::string_view tail);

}  // namespace vsa_tests
