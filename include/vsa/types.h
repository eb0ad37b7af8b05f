// Node types described in JSON: docs/types.md shows the form, docs/types.schema.json defines it.
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
  /// Name, types, enumeration, and whether the input takes links only.
  zn::korvo_sdk::InputDeclaration declaration;
  /// The range of a number, and of each component of a tuple. The range includes both ends.
  std::optional<double> minimum = std::nullopt;
  std::optional<double> maximum = std::nullopt;
  /// Whether each node of the type must set or connect the input.
  bool isRequired = false;
};

/// A node type with all properties that a checker of scenes needs.
struct TypeDescription {
  std::string name;
  std::vector<InputDescription> inputs = {};
  std::vector<std::string> outputs = {};
  std::vector<zn::korvo_sdk::FormerName> formerInputs = {};
  std::vector<zn::korvo_sdk::FormerName> formerOutputs = {};
};

/// The result of readTypes.
struct [[nodiscard]] TypesResult {
  /// The types in the order of the text. Empty unless the text is valid.
  std::vector<TypeDescription> types;
  /// The problem, as a message for people; empty if the text is valid.
  std::string problem;
  /// The position of the problem.
  TextPosition place;

  bool isValid() const noexcept { return problem.empty(); }
};

/// Reads descriptions of types from JSON (RFC 8259). Problems are a text that is not JSON, a member
/// that the schema does not have, a value of the wrong type, a repeated name, and nesting deeper
/// than 32 levels. The result of a text with a problem has no types. Bytes above 0x7F are accepted
/// unchanged. The memory needed is proportional to the size of the text. Throws std::bad_alloc and
/// nothing else.
VSA_API TypesResult readTypes(std::string_view json);

/// Declares the types for the whole process, see zn::korvo_sdk::registerNodeType: their nodes have
/// the described inputs and outputs and no others. Ranges and required inputs have no effect on the
/// reader. Throws std::bad_alloc.
VSA_API void registerTypes(std::span<const TypeDescription> types);

}  // namespace vsa
