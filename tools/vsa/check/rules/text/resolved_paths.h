// ResolvedPaths: the inputs that the statements of a text name, with indices for "[*]".
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "tools/vsa/check/rules/text/statement_rule.h"

namespace vsa_tools {

class ResolvedPaths {
 public:
  /// The path of an assignment or a connection, as in messages: "rig.bones[2].at". To be called for
  /// each of them in the order of the text.
  std::string pathOf(const StatementView& view);

 private:
  std::uint64_t index(const std::string& path, std::string_view brackets);

  std::unordered_map<std::string, std::uint64_t> sizes_;  // of arrays
};

}  // namespace vsa_tools
