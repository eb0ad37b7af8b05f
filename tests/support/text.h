// Texts as tests handle them: Strings as std::string, and bytes in a form that can be read.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include <vsa/foundation/string.h>

namespace vsa_tests {

inline std::string text(const zn::String& s) {
  return std::string(s.buf(), s.len());
}

/// A String of exactly these bytes, NULs included.
inline zn::String string(std::string_view bytes) {
  return zn::String::copyOf(bytes);
}

/// The bytes with everything but printable ASCII as \n, \r, \t or \xHH.
inline std::string visible(std::string_view bytes) {
  std::string shown;
  for (const char c : bytes) {
    const unsigned byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      shown += "\\n";
    } else if (c == '\r') {
      shown += "\\r";
    } else if (c == '\t') {
      shown += "\\t";
    } else if (byte < 0x20 || byte > 0x7E) {
      char hex[5];
      std::snprintf(hex, sizeof hex, "\\x%02x", byte);
      shown += hex;
    } else {
      shown += c;
    }
  }
  return shown;
}

}  // namespace vsa_tests
