#include "tools/vsa/check/rules/text/resolved_paths.h"

#include <charconv>

namespace vsa_tools {

PathKey ResolvedPaths::keyOf(const StatementView& view) {
  PathKey key = view.nodeKey;
  for (std::size_t i = view.firstInput; i < view.pathEnd; ++i) {
    const vsa::SyntaxToken& token = view.token(i);
    if (token.kind == vsa::SyntaxKind::Brackets) {
      key = keyOfElement(key, index(key, token.text));
    } else if (!token.is('.')) {
      key = keyOfMember(key, token.text);
    }
  }
  return key;
}

std::uint64_t ResolvedPaths::index(PathKey array, std::string_view brackets) {
  std::uint64_t& size = sizes_[array];
  const std::size_t digits = brackets.find_first_of("0123456789");
  if (digits == std::string_view::npos) return size++;
  std::uint64_t index = 0;
  std::from_chars(brackets.data() + digits, brackets.data() + brackets.size(), index);
  if (index >= size) size = index + 1;
  return index;
}

}  // namespace vsa_tools
