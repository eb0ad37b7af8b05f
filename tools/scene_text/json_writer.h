// A writer of compact JSON that escapes control characters in strings.
#pragma once

#include <cmath>
#include <concepts>
#include <string_view>

#include "tools/scene_text/text_output.h"

namespace vsa_tools {

/// Writes JSON in pieces. Only text() escapes, namely quotes, backslashes and the characters of
/// isTerminalControl(). The caller writes brackets, and commas between elements.
class JsonWriter {
 public:
  explicit JsonWriter(TextOutput& out) : out_(out) {}

  /// Writes JSON syntax as it is.
  void raw(std::string_view text) { out_.put(text); }

  /// Writes `"name":`, after a comma unless `first` is true. The name must need no escape.
  void key(std::string_view name, bool first = false) {
    if (!first) out_.put(',');
    out_.put('"');
    out_.put(name);
    out_.put("\":");
  }

  /// Writes a string with its quotes. Each byte that is not valid UTF-8 becomes U+FFFD.
  void text(std::string_view text);

  void boolean(bool value) { out_.put(value ? "true" : "false"); }

  void number(std::integral auto value) { out_.put(value); }

  /// NaN and infinities become the strings "nan", "inf" and "-inf".
  void number(std::floating_point auto value) {
    const bool isNumber = std::isfinite(value);
    if (!isNumber) out_.put('"');
    out_.putReal(value);
    if (!isNumber) out_.put('"');
  }

 private:
  void character(char32_t character, std::string_view bytes);

  TextOutput& out_;
};

}  // namespace vsa_tools
