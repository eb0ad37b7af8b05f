// json_same FILE FILE: are these two the same JSON value? Numbers count by value ("1", "1.0" and
// "1e0" are one), the layout of the text and the order of keys do not count. Prints where the two
// part, exit 1, or nothing, exit 0.
#include <cstdio>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using Json = nlohmann::json;

/// The path of the first difference ("/nodes/3/name"), or an empty text.
std::string difference(const Json& left, const Json& right, const std::string& path);

std::string objectDifference(const Json& left, const Json& right, const std::string& path) {
  for (const auto& [key, value] : left.items()) {
    if (!right.contains(key)) return path + "/" + key + " (missing in the second)";
    std::string found = difference(value, right[key], path + "/" + key);
    if (!found.empty()) return found;
  }
  for (const auto& [key, value] : right.items()) {
    if (!left.contains(key)) return path + "/" + key + " (missing in the first)";
  }
  return "";
}

std::string arrayDifference(const Json& left, const Json& right, const std::string& path) {
  for (size_t i = 0; i < left.size() && i < right.size(); ++i) {
    std::string found = difference(left[i], right[i], path + "/" + std::to_string(i));
    if (!found.empty()) return found;
  }
  if (left.size() == right.size()) return "";
  return path + " (" + std::to_string(left.size()) + " elements, " + std::to_string(right.size()) +
         " elements)";
}

std::string difference(const Json& left, const Json& right, const std::string& path) {
  if (left.is_object() && right.is_object()) return objectDifference(left, right, path);
  if (left.is_array() && right.is_array()) return arrayDifference(left, right, path);
  if (left == right) return "";
  return path + " (" + left.dump().substr(0, 60) + ", " + right.dump().substr(0, 60) + ")";
}

Json read(const char* name) {
  std::ifstream file(name);
  if (!file) throw std::runtime_error(std::string(name) + ": cannot be opened");
  return Json::parse(file);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    std::fprintf(stderr, "usage: json_same FILE FILE\n");
    return 2;
  }
  try {
    std::string found = difference(read(arguments[1]), read(arguments[2]), "");
    if (found.empty()) return 0;
    std::fprintf(stderr, "%s and %s differ at %s\n", arguments[1], arguments[2], found.c_str());
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "json_same: %s\n", error.what());
    return 2;
  }
}
