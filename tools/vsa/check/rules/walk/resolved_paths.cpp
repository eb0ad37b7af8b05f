#include "tools/vsa/check/rules/walk/resolved_paths.h"

namespace vsa_tools {

std::uint64_t ResolvedPaths::index(PathKey array, std::string_view brackets) {
  std::uint64_t& size = sizes_[array];
  const std::optional<std::uint64_t> index = numberIn(brackets);
  if (!index) return size++;
  if (*index >= size) size = *index + 1;
  return *index;
}

}  // namespace vsa_tools
