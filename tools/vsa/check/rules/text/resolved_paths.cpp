#include "tools/vsa/check/rules/text/resolved_paths.h"

#include <charconv>

namespace vsa_tools {

std::string ResolvedPaths::pathOf(const StatementView& view) {
  std::string path(view.node);
  for (std::size_t i = view.firstInput; i < view.pathEnd; ++i) {
    const vsa::SyntaxToken& token = view.token(i);
    if (token.kind == vsa::SyntaxKind::Brackets) {
      path += '[' + std::to_string(index(path, token.text)) + ']';
    } else if (!token.is('.')) {
      path += '.';
      path += token.text;
    }
  }
  return path;
}

std::uint64_t ResolvedPaths::index(const std::string& path, std::string_view brackets) {
  std::uint64_t& size = sizes_[path];
  const std::size_t digits = brackets.find_first_of("0123456789");
  if (digits == std::string_view::npos) return size++;
  std::uint64_t index = 0;
  std::from_chars(brackets.data() + digits, brackets.data() + brackets.size(), index);
  if (index >= size) size = index + 1;
  return index;
}

}  // namespace vsa_tools
