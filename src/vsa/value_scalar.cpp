// Parses scalar literals: booleans, numbers, strings and typed tuples. A brace list without a
// keyword is an Object, and a bracket list without a keyword is an Array. Its content is not
// parsed.
#include <cstdint>
#include <string_view>

#include <vsa/foundation/tuple_parse.h>
#include "foundation/base/white_space.h"
#include "foundation/numbers/number_field.h"
#include "foundation/numbers/number_text.h"
#include "vsa/apply/values/string_literal.h"
#include "vsa/parser.h"
#include "vsa/type_keywords.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;

// Converts a text of `count` plain numbers with one blank between them. FIELD_WINDOW bytes after
// the text must be readable. Returns false for any other text, and if readPlain does not convert a
// number. `out` may then be changed. For a short tuple, the function is faster than parseTuple,
// which copies the text: it saves 10 % of the time of the benchmark nodes 100k, 4 % of them for
// tuples. For a matrix it would be slower, so it returns false for more than four numbers. `count`
// is at least 1.
template <class Number>
bool convertPlain(std::string_view text, std::size_t count, Number* out) {
  if (count > 4) return false;
  const char* at = text.data();
  for (;; --count, ++at, ++out) {
    at = numbers::readPlain(at, *out);
    if (at == nullptr) return false;
    if (count == 1) return at == text.data() + text.size();
    if (*at != ' ') return false;
  }
}

// Converts an integer: `42` becomes an Int, and `42u` becomes a UInt. Both are converted as signed
// 64-bit numbers.
bool convertInteger(std::string_view text, bool hasWindow, AttrData& data) {
  data.type = text.ends_with('u') ? AttrType::UInt : AttrType::Int;
  if (hasWindow && convertPlain(text, 1, &data.payload.integer)) return true;
  return integerFromText(text.data(), text.data() + text.size(), data.payload.integer);
}

bool convertReal(std::string_view text, bool hasWindow, AttrData& data) {
  data.type = AttrType::Real;
  if (hasWindow && convertPlain(text, 1, &data.payload.real)) return true;
  return realFromText(text.data(), text.data() + text.size(), data.payload.real);
}

// Converts a tuple. Its components are stored at the start of the payload, in their order in the
// text.
bool convertTuple(AttrType type, std::string_view list, bool hasWindow, AttrData& data) {
  data.type = type;
  const unsigned count = componentCount(type);
  double* const components = data.payload.components;
  if (hasWindow && convertPlain(list, count, components)) return true;
  if (type == AttrType::Rgba) return parseColour(list, components);
  return parseTuple(list, count, components);
}

// Whether a token of this type is a scalar by itself.
bool isScalar(Type type) {
  return type == Type::True || type == Type::False || type == Type::Int || type == Type::Real ||
         type == Type::Str || type == Type::Braces || type == Type::Brackets;
}

}  // namespace

// Parses a scalar. Returns false and consumes nothing if the next tokens have no such form. If a
// scalar does not convert, returns false after its tokens are consumed. The caller then expects a
// buffer or a reference at the next token. So it reports the error there, unless such a value
// follows.
bool VsaParser::scalar(AssignInfo& info) {
  const Type type = peek(0).type;
  if (type == Type::Id) return tuple(info);
  if (!isScalar(type)) return false;
  advanceInto(info.valueToken);
  return convert({.type = type, .text = info.valueToken.text.view(), .list = {}}, info.data);
}

// keyword "(" numbers ")"
// Example: `vec3(0 1 0)`
bool VsaParser::tuple(AssignInfo& info) {
  if (peek(1).type != Type::Parens) return false;
  const AttrType type = tupleTypeOf(peek(0).text.view());
  if (type == AttrType::Null) return false;
  match(info.valueToken, Type::Id);
  match(info.listToken, Type::Parens);
  return convertTuple(type, zn::detail::trimmedChars(info.listToken.text.view(), "()"), false,
                      info.data);
}

// Returns the characters of a string literal in new memory. Passes this memory to `hold`.
char* VsaParser::makeString(std::string_view literal, bool hasBackslash) {
  if (session != nullptr) session->charge(literal.size());
  char* const characters = copyOfStringValue(literal, hasBackslash, session);
  hold(characters, literal.size());
  return characters;
}

// Stores the address of a value's memory until the value is assigned. If the value is not assigned,
// a session frees the memory. Without a session, the memory is never freed.
void VsaParser::hold(void* memory, std::uint64_t bytes) {
  if (session != nullptr) {
    session->hold(memory, bytes);
  } else {
    unassigned_.hold(memory);
  }
}

// Stores the value of a literal. Returns false if it does not convert.
bool VsaParser::convert(const ScalarLiteral& literal, AttrData& data) {
  const bool hasWindow = literal.bytesAfter >= numbers::FIELD_WINDOW;
  switch (literal.type) {
    case Type::Int:
      return convertInteger(literal.text, hasWindow, data);
    case Type::Real:
      return convertReal(literal.text, hasWindow, data);
    case Type::Str:
      data.type = AttrType::String;
      data.payload.string = makeString(literal.text, literal.hasBackslash);
      return true;
    case Type::Id: {
      const AttrType tuple = tupleTypeOf(literal.text);
      return tuple != AttrType::Null && convertTuple(tuple, literal.list, hasWindow, data);
    }
    case Type::Braces:
      data.type = AttrType::Object;
      return true;
    case Type::Brackets:
      data.type = AttrType::Array;
      return true;
    default:
      data.type = AttrType::Bool;
      data.payload.boolean = literal.type == Type::True;
      return true;
  }
}

}  // namespace zn::korvo_sdk::impl
