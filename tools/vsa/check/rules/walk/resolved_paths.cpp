#include "tools/vsa/check/rules/walk/resolved_paths.h"

#include "tools/vsa/check/rules/walk/path_steps.h"

namespace vsa_tools {

PathKey ResolvedPaths::keyOf(const StatementView& view) {
  PathKey key = view.nodeKey;
  PathSteps steps(view.statement.path);
  for (std::string_view step; steps.next(step);) {
    key = isIndex(step) ? keyOfElement(key, index(key, step)) : keyOfMember(key, step);
  }
  return key;
}

std::uint64_t ResolvedPaths::index(PathKey array, std::string_view brackets) {
  std::uint64_t& size = sizes_[array];
  const std::optional<std::uint64_t> index = numberIn(brackets);
  if (!index) return size++;
  if (*index >= size) size = *index + 1;
  return *index;
}

}  // namespace vsa_tools
