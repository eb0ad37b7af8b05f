// Selects a writer, and defines functions that the writers share.
#include "bench/scenes/scene_writer.h"

#include <algorithm>
#include <nlohmann/json.hpp>

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

void append(std::string& to, std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) to += part;
}

void appendJsonString(std::string& to, std::string_view text) {
  to += nlohmann::json(text).dump();
}

void appendJsonArray(std::string& to, std::string_view digits) {
  to += '[';
  const auto start = static_cast<std::ptrdiff_t>(to.size());
  to += digits;
  std::replace(to.begin() + start, to.end(), ' ', ',');
  to += ']';
}

std::string_view vectorSize(std::string_view keyword) {
  if (keyword == "vec2" || keyword == "pos2") return "2";
  return keyword == "rgba" || keyword == "quat" || keyword == "vec4" ? "4" : "3";
}

std::string quoted(std::string_view text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + '"';
}

}  // namespace bench
