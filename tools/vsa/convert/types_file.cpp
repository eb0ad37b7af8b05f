#include "tools/vsa/convert/types_file.h"

#include <array>
#include <optional>

#include <vsa/types.h>
#include "tools/vsa/common/diagnostic.h"
#include "tools/vsa/common/output/exit_status.h"
#include "tools/vsa/common/output/output.h"
#include "tools/vsa/fmt/text_file.h"
#include "tools/vsa/input/input_file.h"

namespace vsa_tools {

bool declareTypesOf(const std::string& name) {
  TextFile file;
  if (!file.open(name)) {
    printError(shownName(name) + ": " + file.problem());
    return false;
  }
  TextFileSource source(file);
  std::string json;
  std::array<char, 4096> block;
  while (const std::size_t count = source.read(block)) json.append(block.data(), count);
  if (!source.error().empty()) {
    printError(shownName(name) + ": " + source.error());
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
