// ResolvedPaths: the inputs that the statements of a text name, with an index for each "[*]".
#pragma once

#include <cstdint>
#include <unordered_map>

#include "tools/vsa/check/rules/walk/statement_rule.h"

namespace vsa_tools {

class ResolvedPaths {
 public:
  /// The key of the path of an assignment or a connection. Call it for each of them, in the order
  /// of the text.
  PathKey keyOf(const StatementView& view);

 private:
  std::uint64_t index(PathKey array, std::string_view brackets);

  std::unordered_map<PathKey, std::uint64_t> sizes_;  // the sizes of arrays
};

}  // namespace vsa_tools
