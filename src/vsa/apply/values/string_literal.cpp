#include "vsa/apply/values/string_literal.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

namespace zn::korvo_sdk::impl {

namespace {

// Literals of up to this size are unescaped on the stack first and then copied to memory of the
// exact size.
constexpr std::size_t MAX_STACK_BYTES = 1024;

// Removes the first and the last character, the quotes, if there are any.
std::string_view withoutQuotes(std::string_view quoted) {
  if (!quoted.empty()) quoted.remove_prefix(1);
  if (!quoted.empty()) quoted.remove_suffix(1);
  return quoted;
}

char* allocateString(std::size_t length) {
  char* const characters = static_cast<char*>(std::malloc(length + 1));
  if (characters == nullptr) throw std::bad_alloc();
  return characters;
}

char* copyOfShort(std::string_view text) {
  char unescaped[MAX_STACK_BYTES + 1];
  const std::size_t length = String::unescape(text, unescaped);
  unescaped[length] = '\0';
  return static_cast<char*>(std::memcpy(allocateString(length), unescaped, length + 1));
}

// Unescaping shortens the text: shrinks the block if realloc can.
char* copyOfLong(std::string_view text) {
  char* const characters = allocateString(text.size());
  const std::size_t length = String::unescape(text, characters);
  characters[length] = '\0';
  void* const shortened = std::realloc(characters, length + 1);
  return shortened != nullptr ? static_cast<char*>(shortened) : characters;
}

}  // namespace

char* copyOfStringValue(std::string_view literal) {
  const std::string_view text = withoutQuotes(literal);
  return text.size() <= MAX_STACK_BYTES ? copyOfShort(text) : copyOfLong(text);
}

String stringValue(std::string_view literal) {
  const std::string_view text = withoutQuotes(literal);
  return String(String::copyOf(text).unescape().buf());  // a value ends at its first NUL
}

}  // namespace zn::korvo_sdk::impl
