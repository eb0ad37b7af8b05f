// Node types described in JSON: docs/types.md shows the form, docs/types.schema.json defines it.
//
//   const vsa::TypesResult read = vsa::readTypes(json);
//   if (!read.isValid()) std::puts(read.problem.c_str());
//   vsa::registerTypes(read.types);
//
// A program that has the types in code uses zn::korvo_sdk::registerNodeType.
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
  /// The range of a number, and of each component of a tuple. Both ends belong to it.
  std::optional<double> minimum = std::nullopt;
  std::optional<double> maximum = std::nullopt;
  /// Whether each node of the type has to set or connect the input.
  bool isRequired = false;
};

/// A node type as a checker needs it.
struct TypeDescription {
  std::string name;
  std::vector<InputDescription> inputs = {};
  std::vector<std::string> outputs = {};
  std::vector<zn::korvo_sdk::FormerName> formerInputs = {};
  std::vector<zn::korvo_sdk::FormerName> formerOutputs = {};
};

/// What readTypes made of a text.
struct [[nodiscard]] TypesResult {
  /// The types in the order of the text. Empty unless the text is valid.
  std::vector<TypeDescription> types;
  /// What is wrong, for people; empty if the text is valid.
  std::string problem;
  /// Where it is wrong.
  TextPosition place;

  bool isValid() const noexcept { return problem.empty(); }
};

/// Reads descriptions of types from JSON (RFC 8259). A text that is not JSON, a member that the
/// schema does not have, a wrong type of a value, a name that stands twice and nesting deeper than
/// 32 levels are problems, and nothing is returned then. Bytes above 0x7F are taken as they are.
/// The memory needed is proportional to the size of the text. Throws std::bad_alloc and nothing
/// else.
VSA_API TypesResult readTypes(std::string_view json);

/// Declares the types for the whole process, see zn::korvo_sdk::registerNodeType: their nodes have
/// the described inputs and outputs and no others. Ranges and required inputs have no effect on the
/// reader. Throws std::bad_alloc.
VSA_API void registerTypes(std::span<const TypeDescription> types);

}  // namespace vsa
