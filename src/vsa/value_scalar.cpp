// Literals of one value: booleans, numbers, strings, typed tuples; and the lists that stand for
// objects and arrays, which are recognised by their bracket and not looked into.
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include <vsa/foundation/tuple_parse.h>
#include "foundation/containers/hash_map.h"
#include "vsa/parser.h"

namespace zn::korvo_sdk::impl {

namespace {

using Type = Token::Type;
using TypeTable = ds::HashMap<String, AttrType>;

const TypeTable* makeScalarTypes() {
  struct Row {
    const char* keyword;
    AttrType type;
  };
  static constexpr Row ROWS[] = {
      {"vec2", AttrType::Vec2}, {"vec3", AttrType::Vec3}, {"vec4", AttrType::Vec4},
      {"pos2", AttrType::Pos2}, {"pos3", AttrType::Pos3}, {"quat", AttrType::Quat},
      {"mat3", AttrType::Mat3}, {"mat4", AttrType::Mat4}, {"rgba", AttrType::Rgba},
  };
  auto table = std::make_unique<TypeTable>();
  for (const Row& row : ROWS) table->set(row.keyword, row.type);
  return table.release();
}

// The list without its parentheses, and without those of a list in a list at its ends.
std::string_view withoutParens(std::string_view list) {
  while (!list.empty() && (list.front() == '(' || list.front() == ')')) list.remove_prefix(1);
  while (!list.empty() && (list.back() == '(' || list.back() == ')')) list.remove_suffix(1);
  return list;
}

// The text between the quotes, whatever there is of it.
std::string_view withoutQuotes(std::string_view quoted) {
  if (!quoted.empty()) quoted.remove_prefix(1);
  if (!quoted.empty()) quoted.remove_suffix(1);
  return quoted;
}

// Texts of up to this size are unescaped on the stack first, to take no more than they need.
constexpr std::size_t SHORT_STRING = 1024;

char* memoryFor(std::size_t length) {
  char* const characters = static_cast<char*>(std::malloc(length + 1));
  if (characters == nullptr) throw std::bad_alloc();
  return characters;
}

char* unescapedShort(std::string_view text) {
  char unescaped[SHORT_STRING + 1];
  const std::size_t length = String::unescape(text, unescaped);
  unescaped[length] = '\0';
  return static_cast<char*>(std::memcpy(memoryFor(length), unescaped, length + 1));
}

// What the escapes took goes back, if the C library cares to have it.
char* unescapedLong(std::string_view text) {
  char* const characters = memoryFor(text.size());
  const std::size_t length = String::unescape(text, characters);
  characters[length] = '\0';
  void* const shortened = std::realloc(characters, length + 1);
  return shortened != nullptr ? static_cast<char*>(shortened) : characters;
}

}  // namespace

// False with nothing consumed where no scalar begins; false with its tokens consumed where one does
// but will not convert: the error is then raised at the token after it.
bool VsaParser::scalar(AssignInfo& info) {
  AttrData& data = info.data;
  switch (peek(0).type) {
    case Type::True:
    case Type::False:
      take(info.valueToken);
      data.type = AttrType::Bool;
      return String::parse(info.valueToken.text, data.payload.boolean);
    case Type::Int:
      take(info.valueToken);
      return integer(info);
    case Type::Real:
      take(info.valueToken);
      data.type = AttrType::Real;
      return String::parse(info.valueToken.text, data.payload.real);
    case Type::Str:
      take(info.valueToken);
      string(info);
      return true;
    case Type::Braces:
      take(info.valueToken);
      data.type = AttrType::Object;
      return true;
    case Type::Brackets:
      take(info.valueToken);
      data.type = AttrType::Array;
      return true;
    case Type::Id:
      return tuple(info);
    default:
      return false;
  }
}

// `42` is an Int, `42u` a UInt; both are converted as signed 64-bit numbers.
bool VsaParser::integer(AssignInfo& info) {
  const String& text = info.valueToken.text;
  info.data.type = text.endsWith("u", false) ? AttrType::UInt : AttrType::Int;
  long long number = 0;
  if (!String::parse(text, number, String::Radix::Decimal)) return false;
  info.data.payload.integer = number;
  return true;
}

// The text between the quotes, unescaped, in memory that goes to the scene with the value.
void VsaParser::string(AssignInfo& info) {
  const std::string_view text = withoutQuotes(info.valueToken.text.view());
  info.data.type = AttrType::String;
  const bool isShort = text.size() <= SHORT_STRING;
  info.data.payload.string = isShort ? unescapedShort(text) : unescapedLong(text);
}

// keyword "(" numbers ")"   `vec3(0 1 0)`
bool VsaParser::tuple(AssignInfo& info) {
  if (peek(1).type != Type::Parens) return false;
  // Made once, and never destroyed: another thread may still read while the process ends.
  static const TypeTable& scalarTypes = *makeScalarTypes();
  const TypeTable::Node* const type = scalarTypes.findNode(peek(0).text.toLower(true));
  if (type == nullptr) return false;
  match(info.valueToken, Type::Id);
  match(info.listToken, Type::Parens);
  info.data.type = type->value;
  // Every tuple's components lie at the start of the payload, in storage order.
  const std::string_view numbers = withoutParens(info.listToken.text.view());
  double* const components = info.data.payload.components;
  if (info.data.type == AttrType::Rgba) return parseColour(numbers, components);
  return parseTuple(numbers, componentCount(info.data.type), components);
}

}  // namespace zn::korvo_sdk::impl
