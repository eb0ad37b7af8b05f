// readTypes: converts JSON objects to descriptions of node types. A member with an unknown name is
// a problem, so that misspelt names are found.
#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <vsa/types.h>
#include <vsa/values/value_types.h>
#include "api/types/json_value.h"
#include "foundation/base/byte_order_mark.h"

namespace vsa {

namespace {

using Kind = JsonValue::Kind;
using zn::korvo_sdk::FormerName;

[[noreturn]] void fail(const JsonValue& value, const std::string& message) {
  throw JsonError(value.offset, message);
}

void expect(const JsonValue& value, Kind kind, const char* what) {
  if (value.kind != kind) fail(value, std::string("expected ") + what);
}

const std::string& stringOf(const JsonValue& value) {
  expect(value, Kind::String, "a string");
  return value.text;
}

double numberOf(const JsonValue& value) {
  expect(value, Kind::Number, "a number");
  return value.number;
}

bool booleanOf(const JsonValue& value) {
  expect(value, Kind::Bool, "true or false");
  return value.boolean;
}

std::vector<std::string> stringsOf(const JsonValue& value) {
  expect(value, Kind::Array, "an array of strings");
  std::vector<std::string> result;
  for (const JsonValue& element : value.elements) result.push_back(stringOf(element));
  return result;
}

std::vector<FormerName> formerNamesOf(const JsonValue& value) {
  expect(value, Kind::Object, "an object of former names and current names");
  std::vector<FormerName> result;
  for (const JsonMember& member : value.members) {
    result.push_back({member.name, stringOf(member.value)});
  }
  return result;
}

ValueType valueTypeOf(const JsonValue& value) {
  const std::string& name = stringOf(value);
  for (int i = 0; i < zn::korvo_sdk::ATTR_TYPE_COUNT; ++i) {
    if (name == typeName(static_cast<ValueType>(i))) return static_cast<ValueType>(i);
  }
  fail(value, "\"" + name + "\" is not the type of a value");
}

ElementType elementTypeOf(const JsonValue& value) {
  const std::string& name = stringOf(value);
  for (int i = 0; i < zn::korvo_sdk::DATA_TYPE_COUNT; ++i) {
    const auto type = static_cast<ElementType>(i);
    if (name == typeName(type) && zn::korvo_sdk::isBufferElement(type)) return type;
  }
  fail(value, "\"" + name + "\" is not the element type of a buffer");
}

// Calls `read(name, value)` for each member. `read` returns false for an unknown name. The function
// then fails.
template <class Read>
void readMembers(const JsonValue& object, const Read& read) {
  for (const JsonMember& member : object.members) {
    if (!read(member.name, member.value)) {
      fail(member.value, "unknown member \"" + member.name + "\"");
    }
  }
}

// Sets the type of the elements. The meaning of "elements" depends on "type", which may be after
// "elements" in the text. So this function is called after all members were read.
void readElements(const JsonValue& value, zn::korvo_sdk::InputDeclaration& input) {
  if (input.type == ValueType::Array) {
    input.elementType = valueTypeOf(value);
  } else if (input.type == ValueType::Buffer) {
    input.bufferType = elementTypeOf(value);
  } else {
    fail(value, "only an Array and a Buffer have elements");
  }
}

InputDescription inputOf(const std::string& name, const JsonValue& value) {
  expect(value, Kind::Object, "an object that describes an input");
  InputDescription input;
  input.declaration.name = name;
  const JsonValue *elements = nullptr, *maximum = nullptr;
  readMembers(value, [&](const std::string& member, const JsonValue& content) {
    if (member == "type") {
      input.declaration.type = valueTypeOf(content);
    } else if (member == "elements") {
      elements = &content;
    } else if (member == "values") {
      input.declaration.enumValues = stringsOf(content);
    } else if (member == "linksOnly") {
      input.declaration.refusesValues = booleanOf(content);
    } else if (member == "min") {
      input.minimum = numberOf(content);
    } else if (member == "max") {
      input.maximum = numberOf(content);
      maximum = &content;
    } else if (member == "required") {
      input.isRequired = booleanOf(content);
    } else {
      return member == "description";
    }
    return true;
  });
  if (elements != nullptr) readElements(*elements, input.declaration);
  const bool isEnumeration = !input.declaration.enumValues.empty();
  if (isEnumeration && input.declaration.type != ValueType::String) {
    fail(value, "only a String has values to choose from");
  }
  if (maximum != nullptr && input.minimum > input.maximum) {
    fail(*maximum, "\"max\" is less than \"min\"");
  }
  return input;
}

std::vector<InputDescription> inputsOf(const JsonValue& value) {
  expect(value, Kind::Object, "an object of inputs");
  std::vector<InputDescription> result;
  for (const JsonMember& member : value.members) {
    result.push_back(inputOf(member.name, member.value));
  }
  return result;
}

// Fails if a current name in `formerNames` is not in `names`.
void checkCurrentNames(const JsonValue& formerNames,
                       const std::unordered_set<std::string_view>& names, const std::string& what) {
  for (const JsonMember& member : formerNames.members) {
    const std::string& current = member.value.text;
    if (names.count(current) == 0) {
      fail(member.value, "the type has no " + what + " \"" + current + "\"");
    }
  }
}

// Fails if a current name is not the name of an input. Exception: checks nothing if one of the
// inputs is an Object, an Array or of type Null. The names may then be those of its members, which
// a description does not contain.
void checkFormerInputs(const JsonValue& formerNames, const std::vector<InputDescription>& inputs) {
  const auto hasMembers = [](const InputDescription& input) {
    const ValueType type = input.declaration.type;
    return type == ValueType::Object || type == ValueType::Array || type == ValueType::Null;
  };
  if (std::any_of(inputs.begin(), inputs.end(), hasMembers)) return;
  std::unordered_set<std::string_view> names;
  for (const InputDescription& input : inputs) names.insert(input.declaration.name);
  checkCurrentNames(formerNames, names, "input");
}

void checkFormerOutputs(const JsonValue& formerNames, const std::vector<std::string>& outputs) {
  checkCurrentNames(formerNames, {outputs.begin(), outputs.end()}, "output");
}

TypeDescription typeOf(const std::string& name, const JsonValue& value) {
  expect(value, Kind::Object, "an object that describes a type");
  TypeDescription type{name};
  const JsonValue *formerInputs = nullptr, *formerOutputs = nullptr;
  readMembers(value, [&](const std::string& member, const JsonValue& content) {
    if (member == "inputs") {
      type.inputs = inputsOf(content);
    } else if (member == "outputs") {
      type.outputs = stringsOf(content);
    } else if (member == "formerInputs") {
      type.formerInputs = formerNamesOf(content);
      formerInputs = &content;
    } else if (member == "formerOutputs") {
      type.formerOutputs = formerNamesOf(content);
      formerOutputs = &content;
    } else {
      return member == "description";
    }
    return true;
  });
  if (formerInputs != nullptr) checkFormerInputs(*formerInputs, type.inputs);
  if (formerOutputs != nullptr) checkFormerOutputs(*formerOutputs, type.outputs);
  return type;
}

std::vector<TypeDescription> typesOf(const JsonValue& text) {
  expect(text, Kind::Object, "an object with the member \"types\"");
  const JsonValue* types = nullptr;
  readMembers(text, [&](const std::string& member, const JsonValue& content) {
    if (member == "types") types = &content;
    return types == &content || member == "$schema" || member == "description";
  });
  if (types == nullptr) fail(text, "the member \"types\" is missing");
  expect(*types, Kind::Object, "an object of types");
  std::vector<TypeDescription> result;
  for (const JsonMember& member : types->members) {
    result.push_back(typeOf(member.name, member.value));
  }
  return result;
}

TextPosition positionOf(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto feeds = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t feed = before.rfind('\n');
  const std::size_t start = feed == std::string_view::npos ? 0 : feed + 1;
  return {offset, feeds + 1, offset - start + 1};
}

}  // namespace

TypesResult readTypes(std::string_view json) {
  TypesResult result;
  using zn::detail::BYTE_ORDER_MARK;
  if (json.starts_with(BYTE_ORDER_MARK)) json.remove_prefix(BYTE_ORDER_MARK.size());
  try {
    result.types = typesOf(readJson(json));
  } catch (const JsonError& error) {
    result.problem = error.what();
    result.place = positionOf(json, error.offset());
  }
  return result;
}

void registerTypes(std::span<const TypeDescription> types) {
  for (const TypeDescription& type : types) {
    zn::korvo_sdk::NodeType plain{type.name};
    for (const InputDescription& input : type.inputs) plain.inputs.push_back(input.declaration);
    plain.outputs = type.outputs;
    plain.formerInputs = type.formerInputs;
    plain.formerOutputs = type.formerOutputs;
    zn::korvo_sdk::registerNodeType(plain);
  }
}

}  // namespace vsa
