// Literals of one value: booleans, numbers, strings, typed tuples; and the lists that stand for
// objects and arrays, which are recognised by their bracket and not looked into.
#include <cstdlib>
#include <cstring>
#include <new>

#include "foundation/hash_map.h"
#include "foundation/tuple_parse.h"
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
  auto* const table = new TypeTable;
  for (const Row& row : ROWS) table->set(row.keyword, row.type);
  return table;
}

// Converts a tuple's numbers; the components are in storage order in each type.
bool parseTuple(const String& numbers, AttrData& data) {
  AttrData::Payload& out = data.payload;
  switch (data.type) {
    case AttrType::Vec2:
      return String::parse(numbers, 2, out.vec2);
    case AttrType::Vec3:
      return String::parse(numbers, 3, out.vec3);
    case AttrType::Vec4:
      return String::parse(numbers, 4, out.vec4);
    case AttrType::Pos2:
      return String::parse(numbers, 2, out.pos2);
    case AttrType::Pos3:
      return String::parse(numbers, 3, out.pos3);
    case AttrType::Quat:
      return String::parse(numbers, 4, out.quat);
    case AttrType::Rgba:
      return String::parse<double>(numbers, out.rgba);
    case AttrType::Mat3:
      return String::parse(numbers, 9, out.mat3);
    case AttrType::Mat4:
      return String::parse(numbers, 16, out.mat4);
    default:
      return true;
  }
}

}  // namespace

// False with nothing consumed where no scalar begins; false with its tokens consumed where one does
// but will not convert: the error is then raised at the token after it.
bool VsaParser::scalar(AssignInfo& info) {
  AttrData& data = info.data;
  if (match(info.valueToken, Type::True) || match(info.valueToken, Type::False)) {
    data.type = AttrType::Bool;
    return String::parse(info.valueToken.text, data.payload.boolean);
  }
  if (match(info.valueToken, Type::Int)) return integer(info);
  if (match(info.valueToken, Type::Real)) {
    data.type = AttrType::Real;
    return String::parse(info.valueToken.text, data.payload.real);
  }
  if (match(info.valueToken, Type::Str)) {
    string(info);
    return true;
  }
  if (match(info.valueToken, Type::Braces)) {
    data.type = AttrType::Object;
    return true;
  }
  if (match(info.valueToken, Type::Brackets)) {
    data.type = AttrType::Array;
    return true;
  }
  return tuple(info);
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
  const String& quoted = info.valueToken.text;
  const String text = quoted.substring(1, quoted.len() - 2).unescape();
  info.data.type = AttrType::String;
  char* const characters = static_cast<char*>(std::malloc(text.len() + 1));
  if (characters == nullptr) throw std::bad_alloc();
  std::memcpy(characters, text.buf(), text.len() + 1);
  info.data.payload.string = characters;
}

// keyword "(" numbers ")"   `vec3(0 1 0)`
bool VsaParser::tuple(AssignInfo& info) {
  if (!nextIs(Type::Id)) return false;
  // Made once, and never destroyed: another thread may still read while the process ends.
  static const TypeTable& scalarTypes = *makeScalarTypes();
  const TypeTable::Node* const type = scalarTypes.findNode(peek(0).text.toLower(true));
  if (type == nullptr || peek(1).type != Type::Parens) return false;
  match(info.valueToken, Type::Id);
  match(info.listToken, Type::Parens);
  info.data.type = type->value;
  return parseTuple(info.listToken.text.trimChars("()", String()), info.data);
}

}  // namespace zn::korvo_sdk::impl
