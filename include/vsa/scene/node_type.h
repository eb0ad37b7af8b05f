// Node types that a host declares. An undeclared type is open: its nodes get every input that a
// text assigns. A declared type is closed: its nodes have the declared inputs and outputs and no
// others.
#pragma once

#include <string>
#include <vector>

#include <vsa/foundation/api.h>
#include <vsa/scene/attr_type.h>
#include <vsa/scene/data_type.h>

namespace zn::korvo_sdk {

/// One input of a declared node type.
struct InputDeclaration {
  std::string name;                       ///< The name in a text. Its last declaration applies.
  AttrType type = AttrType::Null;         ///< The type of the value. Null accepts links or members.
  AttrType elementType = AttrType::Null;  ///< The AttrType of an array's elements.
  DataType bufferType = DataType::Null;   ///< The DataType of a buffer's elements; Null for any.
  std::vector<std::string> enumValues = {};  ///< The values that a String should have; empty: any.
  bool refusesValues = false;                ///< Whether the input takes links only.
};

/// A former name and its current name.
struct FormerName {
  std::string former;   ///< The name in older texts.
  std::string current;  ///< The name that replaces it. It is not translated again.
};

/// A declared node type.
struct NodeType {
  std::string name;                            ///< The name of the type, as in a text.
  std::vector<InputDeclaration> inputs = {};   ///< All inputs of its nodes.
  std::vector<std::string> outputs = {};       ///< The names of all outputs of its nodes.
  std::vector<FormerName> formerInputs = {};   ///< Former names of inputs and of members.
  std::vector<FormerName> formerOutputs = {};  ///< Former names of outputs.
};

/// Declares a type for the whole process and replaces an earlier declaration of that name. Existing
/// nodes keep the declaration that was valid when they were created. May be called while other
/// threads read. Throws std::bad_alloc.
VSA_API void registerNodeType(const NodeType& type);

/// Makes a type open again for nodes that are created afterwards. Does nothing for an undeclared
/// name. May be called while other threads read.
VSA_API void unregisterNodeType(const std::string& name);

}  // namespace zn::korvo_sdk
