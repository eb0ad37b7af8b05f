// Node types that a host declares. In a scene of the library, the nodes of a declared type have
// exactly the declared inputs and outputs. An undeclared type is open: its nodes have every input
// and output that a text names. In a scene of a host, a declaration has only one effect: the reader
// replaces former names by current names.
#pragma once

#include <string>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// One input of a declared node type.
struct InputDeclaration {
  std::string name;  ///< The name in a text. For a repeated name, the last declaration applies.
  /// The type of the value. An input of type Null refuses values: it accepts a connection, a
  /// reference (it then becomes a Node) or members (it then becomes an Object).
  AttrType type = AttrType::Null;
  /// The AttrType of an array's elements. With Null, the elements accept links only.
  AttrType elementType = AttrType::Null;
  DataType bufferType =
      DataType::Null;  ///< The DataType of a buffer's elements; Null allows every type.
  /// For a String: the values that it should have. Another string is assigned, too, but the reader
  /// logs a warning. If the list is empty, every string is allowed.
  std::vector<std::string> enumValues = {};
  bool refusesValues = false;  ///< Whether the input refuses values and accepts links only.
};

/// A former name and its current name.
struct FormerName {
  std::string former;  ///< The name in older texts. For a repeated name, the last one applies.
  /// The name that replaces it. It is not translated again, even if it is the former name of
  /// another input or output.
  std::string current;
};

/// A declared node type.
struct NodeType {
  std::string name;                            ///< The name of the type, as in a text.
  std::vector<InputDeclaration> inputs = {};   ///< All inputs of its nodes.
  std::vector<std::string> outputs = {};       ///< The names of all outputs of its nodes.
  std::vector<FormerName> formerInputs = {};   ///< Former names of its inputs and members.
  std::vector<FormerName> formerOutputs = {};  ///< Former names of its outputs.
};

/// Declares a type for the whole process. Replaces an earlier declaration with the same name.
/// Existing nodes keep the declaration with which they were created, except for its former names:
/// these are always the ones of the last declaration. Other threads may read texts during the call.
/// Throws std::bad_alloc.
VSA_API void registerNodeType(const NodeType& type);

/// Makes a type open again. Existing nodes keep its declaration, except for the former names. Does
/// nothing if the type is not declared. Other threads may read texts during the call.
VSA_API void unregisterNodeType(const std::string& name);

}  // namespace zn::korvo_sdk
