// The choice among the writers, and what they share.
#include "bench/scenes/scene_writer.h"

namespace bench {

std::unique_ptr<SceneWriter> makeWriter(Format format) {
  switch (format) {
    case Format::Json:
      return makeJsonWriter();
    case Format::CompactJson:
      return makeCompactJsonWriter();
    case Format::Osgt:
      return makeOsgtWriter();
    case Format::Iv:
      return makeIvWriter();
    case Format::Obj:
      return makeObjWriter();
    case Format::Vsa:
      break;
  }
  return makeVsaWriter();
}

void appendHex(std::string& to, std::span<const unsigned char> bytes) {
  constexpr char DIGITS[] = "0123456789abcdef";
  for (const unsigned char byte : bytes) {
    to += DIGITS[byte >> 4];
    to += DIGITS[byte & 15];
  }
}

void appendJsonString(std::string& to, std::string_view text) {
  to += '"';
  for (const char c : text) {
    if (c == '\n') {
      to += "\\n";
      continue;
    }
    if (c == '"' || c == '\\') to += '\\';
    to += c;
  }
  to += '"';
}

}  // namespace bench
