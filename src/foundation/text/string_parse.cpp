// Converts Strings to booleans, integers and reals. number_text.h defines the syntax of numbers.
#include <vsa/foundation/string.h>
#include "foundation/base/white_space.h"
#include "foundation/numbers/number_text.h"
#include "foundation/text/letter_case.h"

namespace zn {

namespace {

template <class Number>
bool number(const String& text, Number& out) {
  const std::string_view chars = text.view();
  return numberFromText(chars.data(), chars.data() + chars.size(), out);
}

}  // namespace

bool String::parse(const String& text, bool& out) {
  const std::string_view word = detail::trimmed(text.view());
  const bool isTrue = isWord(word, "true");
  if (!isTrue && !isWord(word, "false")) return false;
  out = isTrue;
  return true;
}

bool String::parse(const String& text, float& out) {
  return number(text, out);
}

bool String::parse(const String& text, double& out) {
  return number(text, out);
}

bool String::parse(const String& text, signed char& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, unsigned char& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, short& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, unsigned short& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, int& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, unsigned int& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, long long& out, Radix /*radix*/) {
  return number(text, out);
}

bool String::parse(const String& text, unsigned long long& out, Radix /*radix*/) {
  return number(text, out);
}

}  // namespace zn
