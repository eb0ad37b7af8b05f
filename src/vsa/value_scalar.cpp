// Scalar literals: booleans, numbers, strings and typed tuples. Untyped lists are object or array
// values, and their contents are not parsed.
#include <memory>
#include <string_view>

#include <vsa/foundation/tuple_parse.h>
#include "foundation/containers/hash_map.h"
#include "vsa/apply/string_literal.h"
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

// Removes the parentheses at both ends of the list.
std::string_view withoutParens(std::string_view list) {
  while (!list.empty() && (list.front() == '(' || list.front() == ')')) list.remove_prefix(1);
  while (!list.empty() && (list.back() == '(' || list.back() == ')')) list.remove_suffix(1);
  return list;
}

// `42` is an Int, `42u` a UInt; both are converted as signed 64-bit numbers.
bool convertInteger(const String& text, AttrData& data) {
  data.type = text.endsWith("u", false) ? AttrType::UInt : AttrType::Int;
  long long number = 0;
  if (!String::parse(text, number, String::Radix::Decimal)) return false;
  data.payload.integer = number;
  return true;
}

}  // namespace

// Returns false and consumes nothing when the next token begins no scalar. When a scalar does not
// convert, returns false after consuming its tokens, so the error is reported at the next token.
bool VsaParser::scalar(AssignInfo& info) {
  AttrData& data = info.data;
  switch (peek(0).type) {
    case Type::True:
    case Type::False:
      advanceInto(info.valueToken);
      data.type = AttrType::Bool;
      return String::parse(info.valueToken.text, data.payload.boolean);
    case Type::Int:
      advanceInto(info.valueToken);
      return convertInteger(info.valueToken.text, data);
    case Type::Real:
      advanceInto(info.valueToken);
      data.type = AttrType::Real;
      return String::parse(info.valueToken.text, data.payload.real);
    case Type::Str:
      advanceInto(info.valueToken);
      data.type = AttrType::String;
      if (session != nullptr) session->charge(info.valueToken.text.len());
      data.payload.string = copyOfStringValue(info.valueToken);
      if (session != nullptr) session->hold(data.payload.string, info.valueToken.text.len());
      return true;
    case Type::Braces:
      advanceInto(info.valueToken);
      data.type = AttrType::Object;
      return true;
    case Type::Brackets:
      advanceInto(info.valueToken);
      data.type = AttrType::Array;
      return true;
    case Type::Id:
      return tuple(info);
    default:
      return false;
  }
}

// keyword "(" numbers ")"   `vec3(0 1 0)`
bool VsaParser::tuple(AssignInfo& info) {
  if (peek(1).type != Type::Parens) return false;
  // Never destroyed: another thread may still read while the process exits.
  static const TypeTable& scalarTypes = *makeScalarTypes();
  const TypeTable::Node* const type = scalarTypes.findNode(peek(0).text.toLower(true));
  if (type == nullptr) return false;
  match(info.valueToken, Type::Id);
  match(info.listToken, Type::Parens);
  info.data.type = type->value;
  // The components of every tuple are at the start of the payload, in storage order.
  const std::string_view numbers = withoutParens(info.listToken.text.view());
  double* const components = info.data.payload.components;
  if (info.data.type == AttrType::Rgba) return parseColour(numbers, components);
  return parseTuple(numbers, componentCount(info.data.type), components);
}

}  // namespace zn::korvo_sdk::impl
