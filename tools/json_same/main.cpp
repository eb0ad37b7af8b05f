// json_same FILE FILE: compares two JSON files by value. "1", "1.0" and "1e0" are equal; white
// space and the order of keys are ignored. Exits with 0 if the files are equal. Otherwise exits
// with 1 and prints the first difference to standard error, as the first 200 bytes of an operation
// of a JSON Patch (RFC 6902). Exits with 2 after any other problem: a file that cannot be read or
// is not JSON, or not exactly two arguments.
#include <cstdio>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

nlohmann::json read(const char* name) {
  std::ifstream file(name);
  if (!file) throw std::runtime_error(std::string(name) + ": cannot be opened");
  return nlohmann::json::parse(file);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    std::fprintf(stderr, "usage: json_same FILE FILE\n");
    return 2;
  }
  try {
    const auto patch = nlohmann::json::diff(read(arguments[1]), read(arguments[2]));
    if (patch.empty()) return 0;
    std::fprintf(stderr, "%s and %s differ: %.200s\n", arguments[1], arguments[2],
                 patch[0].dump().c_str());
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "json_same: %s\n", error.what());
    return 2;
  }
}
