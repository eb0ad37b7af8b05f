// Node types that a host declares. A declared type is closed: its nodes have exactly the declared
// inputs and outputs. An undeclared type is open: its nodes have every input and output that a text
// names.
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
  AttrType type =
      AttrType::Null;  ///< The type of the value. A Null input accepts links or members.
  AttrType elementType = AttrType::Null;  ///< The AttrType of an array's elements.
  DataType bufferType =
      DataType::Null;  ///< The DataType of a buffer's elements; Null allows every type.
  std::vector<std::string> enumValues =
      {};                      ///< The strings that are expected as the value; any string if empty.
  bool refusesValues = false;  ///< Whether the input accepts links only.
};

/// A former name and its current name.
struct FormerName {
  std::string former;  ///< The name in older texts.
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
/// Existing nodes keep the declaration with which they were created. Other threads may read texts
/// during the call. Throws std::bad_alloc.
VSA_API void registerNodeType(const NodeType& type);

/// Makes a type open again. Existing nodes keep its declaration. Does nothing if the type is not
/// declared. Other threads may read texts during the call.
VSA_API void unregisterNodeType(const std::string& name);

}  // namespace zn::korvo_sdk
