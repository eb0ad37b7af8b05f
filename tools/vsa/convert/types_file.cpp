#include "tools/vsa/convert/types_file.h"

#include <array>
#include <optional>
#include <string>

#include <vsa/types.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

namespace {

// The maximum size in bytes of the file, which may be a device that does not end.
constexpr std::size_t MAX_BYTES = std::size_t{64} << 20;

/// Reads the file into `json`. Returns why it cannot be read, or an empty text.
std::string readFile(const std::string& name, std::string& json) {
  TextFile file;
  if (!file.open(name, MAX_BYTES)) return file.problem();
  TextFileSource source(file);
  std::array<char, 4096> block;
  while (const std::size_t count = source.read(block)) {
    json.append(block.data(), count);
    if (json.size() > MAX_BYTES) return "larger than 64 MiB";
  }
  return source.error();
}

}  // namespace

bool declareTypesOf(const std::string& name) {
  std::string json;
  if (const std::string problem = readFile(name, json); !problem.empty()) {
    printError(shownName(name) + ": " + problem);
    return false;
  }
  const vsa::TypesResult read = vsa::readTypes(json);
  if (!read.isValid()) {
    const Position place{static_cast<long>(read.place.line), static_cast<long>(read.place.column)};
    printLine(diagnosticLine(shownName(name), place, "error", read.problem));
    return false;
  }
  vsa::registerTypes(read.types);
  return true;
}

}  // namespace vsa_tools
