// Reads descriptions of node types from a JSON text. docs/types.md explains the JSON, and
// docs/types.schema.json defines it.
//
//   const vsa::TypesResult read = vsa::readTypes(json);
//   if (!read.isValid()) std::puts(read.problem.c_str());
//   vsa::registerTypes(read.types);
//
// A program that describes its types in C++ uses zn::korvo_sdk::registerNodeType.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/reading/text_position.h>
#include <vsa/scene/node_type.h>

namespace vsa {

/// An input of a described node type.
struct InputDescription {
  /// The name, the types, the enumeration, and whether the input accepts links only.
  zn::korvo_sdk::InputDeclaration declaration;
  /// The smallest allowed value of a number, and of each component of a tuple. If it is not set,
  /// there is no minimum.
  std::optional<double> minimum = std::nullopt;
  /// The largest allowed value. If it is not set, there is no maximum.
  std::optional<double> maximum = std::nullopt;
  /// Whether each node of the type must set or connect this input.
  bool isRequired = false;
};

/// A node type with the properties that a checker of scenes uses.
struct TypeDescription {
  /// The name of the type, as in a text.
  std::string name;
  /// The inputs of its nodes.
  std::vector<InputDescription> inputs = {};
  /// The names of the outputs of its nodes.
  std::vector<std::string> outputs = {};
  /// Former names of its inputs and members.
  std::vector<zn::korvo_sdk::FormerName> formerInputs = {};
  /// Former names of its outputs.
  std::vector<zn::korvo_sdk::FormerName> formerOutputs = {};
};

/// The result of readTypes.
struct [[nodiscard]] TypesResult {
  /// The types in the order of the text. It is empty if the text has a problem.
  std::vector<TypeDescription> types;
  /// The problem, as a message for people. It is empty if the text is valid.
  std::string problem;
  /// The position of the problem in the text, without a byte order mark. It has no meaning if the
  /// text is valid.
  TextPosition place;

  /// Whether the text is valid.
  bool isValid() const noexcept { return problem.empty(); }
};

/// Reads type descriptions from JSON (RFC 8259). A byte order mark is skipped. A text has a problem
/// if it is not JSON, contains a member that the schema does not have, lacks the member "types", or
/// contains a value of the wrong type. These are problems, too:
/// - "elements" of an input that is neither an Array nor a Buffer
/// - "values" of an input that is not a String, unless the list is empty
/// - a "max" that is less than "min"
/// - a current name that is not the name of an output or input (see docs/types.md)
/// - a name that an object contains twice
/// - a number that is too large for a double
/// - an escape sequence that is only half of a surrogate pair
/// - a value inside more than 32 objects and arrays
/// If there is a problem, the result contains no types. Bytes above 0x7F in strings are accepted
/// unchanged. The memory needed is proportional to the size of the text. Throws std::bad_alloc and
/// no other exception.
VSA_API TypesResult readTypes(std::string_view json);

/// Declares the types for the whole process: see zn::korvo_sdk::registerNodeType. The nodes of
/// these types have exactly the described inputs and outputs. Ranges and required inputs do not
/// affect reading. Throws std::bad_alloc: some of the types may then be declared.
VSA_API void registerTypes(std::span<const TypeDescription> types);

}  // namespace vsa
