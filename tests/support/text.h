// Functions that convert texts for tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include <vsa/foundation/string.h>
#include "tools/scene_text/printable_text.h"

namespace vsa_tests {

inline std::string text(const zn::String& s) {
  return std::string(s.buf(), s.len());
}

/// Returns a String with exactly these bytes, which may include NUL.
inline zn::String string(std::string_view bytes) {
  return zn::String::copyOf(bytes);
}

/// Returns the bytes as text: bytes that are not printable ASCII become \n, \r, \t or \xHH.
inline std::string visible(std::string_view bytes) {
  std::string shown;
  for (const char c : bytes) {
    if (c >= 0x20 && c < 0x7F) {
      shown += c;
    } else {
      shown += vsa_tools::escapedByte(c);
    }
  }
  return shown;
}

/// Returns the bytes of a file. Throws std::runtime_error if the file cannot be read.
inline std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace vsa_tests
