// How a fuzzer says that something is wrong: it says what, and ends the process.
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

/// `about` names what was compared, and for which input.
inline void checkSame(std::string_view expected, std::string_view found, std::string_view about) {
  if (expected == found) return;
  fail("differs: " + std::string(about) + "\nexpected: " + vsa_tests::visible(expected) +
       "\nfound:    " + vsa_tests::visible(found));
}

/// An input that ends in a byte of settings.
struct WithSettings {
  std::string_view text;
  unsigned settings;
};

inline WithSettings splitSettings(std::string_view input) {
  if (input.empty()) return {input, 0};
  return {input.substr(0, input.size() - 1), static_cast<unsigned char>(input.back())};
}

/// With the settings' lowest bit set, the text with each byte replaced by one of `alphabet`: the
/// forms that matter come up that much more often. Else the text as it is.
inline std::string textIn(std::string_view alphabet, const WithSettings& input) {
  std::string text(input.text);
  if ((input.settings & 1) == 0) return text;
  for (char& c : text) c = alphabet[static_cast<unsigned char>(c) % alphabet.size()];
  return text;
}

}  // namespace vsa_fuzz
