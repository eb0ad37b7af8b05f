// readJsonFile(): reads the JSON files of vsa check, which anyone may have written.
#pragma once

#include <cerrno>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace vsa_tools {

/// The maximum depth of a JSON file. Its settings are nested 3 levels deep.
inline constexpr int MAX_JSON_DEPTH = 32;

/// Reads a JSON file. Throws std::runtime_error with the name of the file if it cannot be read or
/// is nested deeper than MAX_JSON_DEPTH, and Json::exception if it is not JSON. The limit is
/// tested during the parsing. A copy of a deeper value could overflow the stack.
template <class Json>
Json readJsonFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path + ": " + std::strerror(errno));
  return Json::parse(file, [&](int depth, typename Json::parse_event_t event, Json&) {
    using Event = typename Json::parse_event_t;
    const bool isNested = event == Event::array_start || event == Event::object_start;
    if (isNested && depth >= MAX_JSON_DEPTH) {
      throw std::runtime_error(path + ": nested deeper than " + std::to_string(MAX_JSON_DEPTH) +
                               " levels");
    }
    return true;
  });
}

}  // namespace vsa_tools
