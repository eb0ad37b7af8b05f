// The checks of the fuzzers. A failed check prints a message and aborts the process.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/support/text.h"

namespace vsa_fuzz {

[[noreturn]] inline void fail(const std::string& what) {
  std::fprintf(stderr, "FINDING: %s\n", what.c_str());
  std::abort();
}

/// Fails if the two texts differ. `about` names the compared result in the message.
inline void checkSame(std::string_view expected, std::string_view found, std::string_view about) {
  if (expected == found) return;
  fail("differs: " + std::string(about) + "\nexpected: " + vsa_tests::visible(expected) +
       "\nfound:    " + vsa_tests::visible(found));
}

/// An input whose last byte contains settings of the fuzzer.
struct InputWithSettings {
  std::string_view text;
  unsigned settings;
};

inline InputWithSettings splitSettings(std::string_view input) {
  if (input.empty()) return {input, 0};
  return {input.substr(0, input.size() - 1), static_cast<unsigned char>(input.back())};
}

/// Returns the text of the input. If the lowest bit of the settings is set, maps each byte to a
/// character of `alphabet`. This makes well-formed texts more frequent.
inline std::string mapToAlphabet(std::string_view alphabet, const InputWithSettings& input) {
  std::string text(input.text);
  if ((input.settings & 1) == 0) return text;
  for (char& c : text) c = alphabet[static_cast<unsigned char>(c) % alphabet.size()];
  return text;
}

}  // namespace vsa_fuzz
