#include "vsa/apply/input_path.h"

#include <cstddef>
#include <string>

namespace zn::korvo_sdk::impl {

String collapsedPath(std::span<const Token> path) {
  if (path.size() == 1) return path[0].text;
  std::size_t length = 0;
  for (const Token& token : path) length += token.text.len();
  std::string text;
  text.reserve(length);
  for (const Token& token : path) text += token.text.view();
  return String::copyOf(text);
}

}  // namespace zn::korvo_sdk::impl
