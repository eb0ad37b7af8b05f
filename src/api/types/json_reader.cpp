// Reads JSON: a recursive descent parser for the grammar of RFC 8259 with a limited depth. Does not
// check whether strings are valid UTF-8.
#include <algorithm>
#include <cstdint>
#include <set>

#include <vsa/foundation/string.h>
#include "api/types/json_value.h"
#include "foundation/base/hex_digits.h"
#include "foundation/text/utf8.h"

namespace vsa {

namespace {

using Kind = JsonValue::Kind;
using namespace zn::detail;

constexpr int MAX_DEPTH = 32;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  JsonValue whole() {
    JsonValue result = value(0);
    skipWhite();
    if (at_ != text_.size()) fail("expected the end of the text");
    return result;
  }

 private:
  [[noreturn]] void fail(const std::string& message) const { throw JsonError(at_, message); }
  char peek() const noexcept { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool consume(char c) noexcept {
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  void skipWhite() noexcept {
    constexpr std::string_view WHITE = " \t\r\n";
    at_ = std::min(text_.find_first_not_of(WHITE, at_), text_.size());
  }

  JsonValue value(int depth);
  void object(JsonValue& result, int depth);
  void array(JsonValue& result, int depth);
  void word(JsonValue& result);
  void number(JsonValue& result);
  void digits();
  std::string string();
  void escape(std::string& to);
  std::uint32_t character();
  std::uint32_t codeUnit();

  std::string_view text_;
  std::size_t at_ = 0;
};

JsonValue Reader::value(int depth) {
  skipWhite();
  if (depth > MAX_DEPTH) fail("nested deeper than 32 levels");
  JsonValue result;
  result.offset = at_;
  const char first = peek();
  if (first == '{') {
    object(result, depth);
  } else if (first == '[') {
    array(result, depth);
  } else if (first == '"') {
    result.kind = Kind::String;
    result.text = string();
  } else if (first == '-' || isDigit(first)) {
    number(result);
  } else {
    word(result);
  }
  return result;
}

// "{" [ string ":" value { "," string ":" value } ] "}"
void Reader::object(JsonValue& result, int depth) {
  result.kind = Kind::Object;
  consume('{');
  skipWhite();
  if (consume('}')) return;
  std::set<std::string> names;
  do {
    skipWhite();
    const std::size_t place = at_;
    if (peek() != '"') fail("expected a name in quotes");
    std::string name = string();
    if (!names.insert(name).second) {
      throw JsonError(place, "the name \"" + name + "\" stands twice");
    }
    skipWhite();
    if (!consume(':')) fail("expected ':'");
    JsonValue member = value(depth + 1);
    result.members.push_back({std::move(name), std::move(member)});
    skipWhite();
  } while (consume(','));
  if (!consume('}')) fail("expected ',' or '}'");
}

// "[" [ value { "," value } ] "]"
void Reader::array(JsonValue& result, int depth) {
  result.kind = Kind::Array;
  consume('[');
  skipWhite();
  if (consume(']')) return;
  do {
    result.elements.push_back(value(depth + 1));
    skipWhite();
  } while (consume(','));
  if (!consume(']')) fail("expected ',' or ']'");
}

void Reader::word(JsonValue& result) {
  const std::string_view rest = text_.substr(at_);
  const auto takes = [&](std::string_view name) {
    if (!rest.starts_with(name)) return false;
    at_ += name.size();
    return true;
  };
  if (takes("null")) return;
  result.kind = Kind::Bool;
  result.boolean = takes("true");
  if (!result.boolean && !takes("false")) fail("expected a value");
}

void Reader::digits() {
  if (!isDigit(peek())) fail("expected a digit");
  while (isDigit(peek())) ++at_;
}

// [ "-" ] ( "0" | digits ) [ "." digits ] [ ( "e" | "E" ) [ "+" | "-" ] digits ]
// `digits` is one digit or more. Before the point, only the number 0 begins with the digit 0.
void Reader::number(JsonValue& result) {
  result.kind = Kind::Number;
  const std::size_t begin = at_;
  consume('-');
  if (!consume('0')) digits();
  if (consume('.')) digits();
  if (consume('e') || consume('E')) {
    if (!consume('+')) consume('-');
    digits();
  }
  const std::string_view written = text_.substr(begin, at_ - begin);
  if (!zn::String::parse(zn::String::copyOf(written), result.number)) {
    throw JsonError(begin, "the number is too large");
  }
}

std::string Reader::string() {
  std::string result;
  consume('"');
  while (!consume('"')) {
    if (at_ >= text_.size()) fail("the string is not closed");
    if (static_cast<unsigned char>(peek()) < 0x20) fail("a control character in a string");
    if (consume('\\')) {
      escape(result);
    } else {
      result += text_[at_++];
    }
  }
  return result;
}

void Reader::escape(std::string& to) {
  constexpr std::string_view LETTERS = "\"\\/bfnrt";
  constexpr std::string_view MEANT = "\"\\/\b\f\n\r\t";
  const std::size_t letter = at_ < text_.size() ? LETTERS.find(peek()) : std::string_view::npos;
  if (letter != std::string_view::npos) {
    to += MEANT[letter];
    ++at_;
  } else if (consume('u')) {
    char bytes[MAX_UTF8_BYTES];
    to.append(bytes, appendUtf8(bytes, character()));
  } else {
    fail("an unknown escape sequence");
  }
}

// Reads one character: one code unit, or the two code units of a surrogate pair.
std::uint32_t Reader::character() {
  const std::uint32_t first = codeUnit();
  if (isLowSurrogate(first)) fail("half of a surrogate pair");
  if (!isHighSurrogate(first)) return first;
  if (!consume('\\') || !consume('u')) fail("half of a surrogate pair");
  const std::uint32_t second = codeUnit();
  if (!isLowSurrogate(second)) fail("half of a surrogate pair");
  return characterOf(first, second);
}

std::uint32_t Reader::codeUnit() {
  std::uint32_t unit = 0;
  for (int i = 0; i < 4; ++i) {
    const unsigned digit = hexValue(peek());
    if (digit == NOT_A_DIGIT) fail("expected four hexadecimal digits");
    unit = unit << 4 | digit;
    ++at_;
  }
  return unit;
}

}  // namespace

JsonValue readJson(std::string_view text) {
  return Reader(text).whole();
}

}  // namespace vsa
